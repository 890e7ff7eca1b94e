// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/TestEnvironment.h"

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvRef.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

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

private:
    std::mutex m_mutex;
    QStringList m_texts;
};

Warnings& warnings()
{
    static Warnings instance;
    return instance;
}

/// Qt's sound plugin tells when the machine has no sound server, which is none of our business.
bool isAboutTheMachine(const QString& text)
{
    return text == QLatin1String("PulseAudioService: pa_context_connect() failed");
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

void DeliberateLeak::allow(int objects)
{
    Watch::leakedObjects += objects;
}
