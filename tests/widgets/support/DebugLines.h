// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Collects the Qt debug lines of the main thread while it lives; warnings go on to the watch over
/// all tests. One at a time.
class DebugLines
{
public:
    DebugLines();
    ~DebugLines();
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    /// Takes the lines so far.
    QStringList take();

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static DebugLines* s_instance;

    const QtMessageHandler m_before;
    QStringList m_texts;
};
