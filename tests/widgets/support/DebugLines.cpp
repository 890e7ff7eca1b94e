// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/DebugLines.h"

#include <QCoreApplication>
#include <QThread>

#include <utility>

DebugLines* DebugLines::s_instance = nullptr;

DebugLines::DebugLines()
    : m_before((s_instance = this, qInstallMessageHandler(handle)))
{
}

DebugLines::~DebugLines()
{
    qInstallMessageHandler(m_before);
    s_instance = nullptr;
}

QStringList DebugLines::take()
{
    return std::exchange(m_texts, {});
}

void DebugLines::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isMainThread = QThread::currentThread() == QCoreApplication::instance()->thread();
    if (type == QtDebugMsg && isMainThread)
        s_instance->m_texts.append(text);
    else
        s_instance->m_before(type, context, text);
}
