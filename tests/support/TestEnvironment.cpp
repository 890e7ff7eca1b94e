// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/TestEnvironment.h"

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvRef.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <mutex>

namespace {

/// The Qt warnings since they were last taken; any thread may warn.
class Warnings
{
public:
    void add(const QString& text)
    {
        const std::lock_guard lock(m_mutex);
        m_texts.append(text);
    }

    /// Takes all warnings.
    QStringList take()
    {
        const std::lock_guard lock(m_mutex);
        QStringList texts;
        texts.swap(m_texts);
        return texts;
    }

    /// Takes the warnings with this text; gives their number.
    int take(const QString& text)
    {
        const std::lock_guard lock(m_mutex);
        return m_texts.removeAll(text);
    }

    /// Takes all warnings that begin with this text; gives their number.
    int takeBeginning(const QString& beginning)
    {
        const std::lock_guard lock(m_mutex);
        const int before = m_texts.size();
        m_texts.erase(
            std::remove_if(m_texts.begin(), m_texts.end(),
                           [&](const QString& text) { return text.startsWith(beginning); }),
            m_texts.end());
        return before - m_texts.size();
    }

private:
    std::mutex m_mutex;
    QStringList m_texts;
};

Warnings& warnings()
{
    static Warnings instance;
    return instance;
}

/// What Qt's plugins tell about the machine is none of our business: that it has no sound server,
/// and that a platform without a screen has no window manager to tell the limits of a window's
/// size.
bool isAboutTheMachine(const QString& text)
{
    return text == QLatin1String("PulseAudioService: pa_context_connect() failed") ||
           text == QLatin1String("This plugin does not support propagateSizeHints()");
}

void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (isAboutTheMachine(text))
        return;
    if (type == QtWarningMsg || type == QtCriticalMsg)
        warnings().add(text);
    else
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

class Watch : public testing::EmptyTestEventListener
{
public:
    void OnTestStart(const testing::TestInfo&) override
    {
        warnings().take();
        leakedObjects = 0;
        m_liveObjects = qrvkp::RvRef::liveCount();
    }

    void OnTestEnd(const testing::TestInfo&) override
    {
        qrvkp::RvFault::clear();
        qrvkp::RvCallLog::stop();
        for (const QString& text : warnings().take())
            ADD_FAILURE() << "unexpected warning: " << text.toStdString();
        EXPECT_EQ(qrvkp::RvRef::liveCount() - m_liveObjects, leakedObjects)
            << "framework objects leaked";
    }

    static int leakedObjects;

private:
    long long m_liveObjects = 0;
};

int Watch::leakedObjects = 0;

} // namespace

void TestEnvironment::install()
{
    static const QTemporaryDir cache;
    qputenv("XDG_CACHE_HOME", cache.path().toLocal8Bit());
    qInstallMessageHandler(handleMessage);
    testing::UnitTest::GetInstance()->listeners().Append(new Watch);
}

ExpectedWarning::ExpectedWarning(const QString& text)
    : m_text(text)
{
    EXPECT_EQ(warnings().take(m_text), 0)
        << "warned before it was expected: " << m_text.toStdString();
}

ExpectedWarning::~ExpectedWarning()
{
    EXPECT_EQ(warnings().take(m_text), 1) << "expected exactly once: " << m_text.toStdString();
}

ExpectedWarnings::ExpectedWarnings(const QString& beginning)
    : m_beginning(beginning)
{
    EXPECT_EQ(warnings().takeBeginning(m_beginning), 0)
        << "warned before it was expected: " << m_beginning.toStdString();
}

ExpectedWarnings::~ExpectedWarnings()
{
    EXPECT_GT(warnings().takeBeginning(m_beginning), 0)
        << "expected once at least: " << m_beginning.toStdString();
}

void DeliberateLeak::allow(int objects)
{
    Watch::leakedObjects += objects;
}
