// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QDir>
#include <QString>

/// A search path of nothing but a folder while it lives.
class OnlyPath
{
public:
    explicit OnlyPath(const QString& folder)
        : m_before(qgetenv("PATH"))
    {
        qputenv("PATH", QDir::toNativeSeparators(folder).toLocal8Bit());
    }
    ~OnlyPath() { qputenv("PATH", m_before); }
    OnlyPath(const OnlyPath&) = delete;
    OnlyPath& operator=(const OnlyPath&) = delete;

private:
    const QByteArray m_before;
};
