// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/SoundServer_linux.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

constexpr int patienceMs = 120000;

/// Whether the server lists such a thing.
bool isListed(const QString& kind, const QByteArray& name)
{
    QProcess list;
    list.start("pactl", {"list", "short", kind});
    return list.waitForFinished(patienceMs) && list.readAllStandardOutput().contains(name);
}

} // namespace

void endProcess(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(patienceMs))
        process.kill();
}

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
    endProcess(m_player);
    endProcess(m_server);
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
    endProcess(m_player);
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
