// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QTextCodec>

/// Makes an encoding the local 8-bit encoding of Qt, that of file names too, while it lives: what a
/// test says does not go by the locale that it runs in.
class ScopedPathEncoding
{
public:
    explicit ScopedPathEncoding(const char* name)
        : m_before(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~ScopedPathEncoding() { QTextCodec::setCodecForLocale(m_before); }
    ScopedPathEncoding(const ScopedPathEncoding&) = delete;
    ScopedPathEncoding& operator=(const ScopedPathEncoding&) = delete;

private:
    QTextCodec* m_before;
};
