// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/PlayedSound.h"
#include "support/SoundServer_linux.h"

#include <QProcess>

/// A sound server, whose device is recorded by a program.
class PlayedSound::PlatformSource : public Source
{
public:
    ~PlatformSource() override { endProcess(m_recorder); }

    testing::AssertionResult start() override
    {
        auto ready = m_server.isReady();
        if (!ready)
            return ready;
        m_recorder.start("parec",
                         {"--device=norvel_sink.monitor", "--format=s16le",
                          "--rate=" + QString::number(Rate), "--channels=2", "--latency-msec=20"});
        if (!m_recorder.waitForStarted())
            return testing::AssertionFailure() << m_recorder.errorString().toStdString();
        return ready;
    }

    QByteArray read() override { return m_recorder.readAllStandardOutput(); }

private:
    SoundServer m_server;
    QProcess m_recorder;
};

std::unique_ptr<PlayedSound::Source> PlayedSound::makeSource()
{
    return std::make_unique<PlatformSource>();
}
