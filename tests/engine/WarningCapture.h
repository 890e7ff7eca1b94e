// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMutex>
#include <QStringList>
#include <QtGlobal>

/// Collects the Qt warnings of all threads while it lives. Those that a test does not take fail it.
/// One at a time.
class WarningCapture
{
public:
    WarningCapture();
    ~WarningCapture();
    WarningCapture(const WarningCapture&) = delete;
    WarningCapture& operator=(const WarningCapture&) = delete;

    /// Takes the warnings so far.
    QStringList take();

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static WarningCapture* s_instance;

    const QtMessageHandler m_before;
    QMutex m_mutex;
    QStringList m_texts;
};
