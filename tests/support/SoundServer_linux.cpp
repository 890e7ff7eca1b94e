// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/SoundServer_linux.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>

namespace {

constexpr int patienceMs = 20000;
constexpr int channels = 2;
constexpr int frameSize = channels * static_cast<int>(sizeof(qint16));

/// Whether the server lists such a thing.
bool isListed(const QString& kind, const QByteArray& name)
{
    QProcess list;
    list.start("pactl", {"list", "short", kind});
    return list.waitForFinished(patienceMs) && list.readAllStandardOutput().contains(name);
}

void end(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(patienceMs))
        process.kill();
}

} // namespace

SoundServer::SoundServer()
{
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(m_folder.path()));
    const QString socket = QDir(m_folder.path()).filePath("socket");
    qputenv("PULSE_SERVER", QFile::encodeName("unix:" + socket));
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start("pulseaudio",
                   {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                    "--disable-shm=yes", "-L",
                    "module-native-protocol-unix auth-anonymous=1 socket=" + socket, "-L",
                    "module-null-sink sink_name=norvel_sink rate=" + QString::number(Rate)});
}

SoundServer::~SoundServer()
{
    for (QProcess* process : {&m_player, &m_recorder, &m_server})
        end(*process);
}

testing::AssertionResult SoundServer::isReady()
{
    if (!m_server.waitForStarted(patienceMs))
        return testing::AssertionFailure() << m_server.errorString().toStdString();
    if (!QTest::qWaitFor([] { return isListed("sinks", "norvel_sink"); }, patienceMs))
        return testing::AssertionFailure() << m_server.readAll().toStdString();
    return testing::AssertionSuccess();
}

testing::AssertionResult SoundServer::play(int frequency)
{
    end(m_player);
    if (frequency == 0)
        return testing::AssertionSuccess();
    const auto ready = isReady();
    if (!ready)
        return ready;
    const QString sine = QString("0.5*sin(2*PI*%1*t)").arg(frequency);
    const QString tone = QString("aevalsrc=%1|%1:s=%2").arg(sine).arg(Rate);
    m_player.start("ffmpeg", {"-v", "error", "-nostdin", "-f", "lavfi", "-i", tone, "-f", "pulse",
                              "-device", "norvel_sink", "tone"});
    if (!QTest::qWaitFor([] { return isListed("sink-inputs", "s16le 2ch"); }, patienceMs))
        return testing::AssertionFailure() << m_player.readAllStandardError().toStdString();
    return testing::AssertionSuccess();
}

testing::AssertionResult SoundServer::record()
{
    if (m_recorder.state() == QProcess::Running)
        return testing::AssertionSuccess();
    const auto ready = isReady();
    if (!ready)
        return ready;
    m_recorder.start("parec",
                     {"--device=norvel_sink.monitor", "--format=s16le",
                      "--rate=" + QString::number(Rate), "--channels=2", "--latency-msec=20"});
    if (!QTest::qWaitFor([this] { return recorded() > 0; }, patienceMs))
        return testing::AssertionFailure() << m_recorder.readAllStandardError().toStdString();
    return testing::AssertionSuccess();
}

std::size_t SoundServer::recorded()
{
    m_bytes += m_recorder.readAllStandardOutput();
    return static_cast<std::size_t>(m_bytes.size() / frameSize);
}

Samples SoundServer::sound(std::size_t from, std::size_t to) const
{
    const int begin = static_cast<int>(from) * frameSize;
    return firstChannel(m_bytes.mid(begin, static_cast<int>(to) * frameSize - begin), channels);
}

Samples SoundServer::next(std::size_t frames)
{
    const std::size_t from = recorded();
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorded() >= from + frames; }, patienceMs));
    return sound(from, std::min(from + frames, recorded()));
}
