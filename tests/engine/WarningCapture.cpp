// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "WarningCapture.h"

#include <gtest/gtest.h>

#include <QMutexLocker>

#include <cstdio>

WarningCapture* WarningCapture::s_instance = nullptr;

WarningCapture::WarningCapture()
    : m_before((s_instance = this, qInstallMessageHandler(handle)))
{
}

WarningCapture::~WarningCapture()
{
    qInstallMessageHandler(m_before);
    s_instance = nullptr;
    for (const QString& text : take())
        ADD_FAILURE() << "unexpected warning: " << text.toStdString();
}

QStringList WarningCapture::take()
{
    const QMutexLocker lock(&m_mutex);
    QStringList texts;
    texts.swap(m_texts);
    return texts;
}

void WarningCapture::handle(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const QMutexLocker lock(&s_instance->m_mutex);
        s_instance->m_texts.append(text);
    } else {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}
