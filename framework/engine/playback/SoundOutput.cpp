// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundOutput.h"

#include <engine/sound/SoundMixer.h>

#include <QAudioDeviceInfo>
#include <QAudioFormat>
#include <QAudioOutput>
#include <QCoreApplication>
#include <QTimer>

#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

constexpr int blockFrames = SoundRate / 50;
constexpr int bytesPerFrame = SoundChannels * static_cast<int>(sizeof(qint16));
/// What the device holds ready: enough for a busy machine, and short enough for a pause.
constexpr int bufferBytes = SoundRate / 8 * bytesPerFrame;
constexpr int feedIntervalMs = 10;

QAudioFormat deviceFormat()
{
    QAudioFormat format;
    format.setSampleRate(SoundRate);
    format.setChannelCount(SoundChannels);
    format.setSampleSize(16);
    format.setSampleType(QAudioFormat::SignedInt);
    format.setByteOrder(static_cast<QAudioFormat::Endian>(QSysInfo::ByteOrder));
    format.setCodec(QStringLiteral("audio/pcm"));
    return format;
}

} // namespace

/// Lives in the output's thread.
class SoundOutput::Worker : public QObject
{
public:
    explicit Worker(SoundOutput& output)
        : m_clock(output.m_clock)
        , m_owner(output)
        , m_mixer(makeSoundSource(std::chrono::steady_clock::now, output.m_interrupt))
    {
    }

    ~Worker() override
    {
        stop();
        // All that was done here comes before the owner goes on. The thread sanitizer, to which
        // Qt's wait for a thread says nothing, learns it from the mutex.
        const std::lock_guard lock(m_owner.m_mutex);
    }

    void restart()
    {
        stop();
        if (!m_clock.isRunning() || !openDevice())
            return;
        m_run = m_clock.run();
        m_frame = framesOf(m_run.start);
        m_written = 0;
        m_device = m_output->start();
        if (!m_device)
            return;
        m_feed.start(feedIntervalMs);
        feed();
    }

    void stop()
    {
        m_feed.stop();
        m_device = nullptr;
        if (m_output)
            m_output->reset();
    }

private:
    bool openDevice()
    {
        m_output.reset();
        const QAudioDeviceInfo info = QAudioDeviceInfo::defaultOutputDevice();
        if (info.isNull() || !info.isFormatSupported(deviceFormat()))
            return false;
        m_output = std::make_unique<QAudioOutput>(info, deviceFormat());
        m_output->setBufferSize(bufferBytes);
        connect(&m_feed, &QTimer::timeout, this, &Worker::feed, Qt::UniqueConnection);
        return true;
    }

    ScenePointer scene() const
    {
        const std::lock_guard lock(m_owner.m_mutex);
        return m_owner.m_scene;
    }

    void feed()
    {
        const ScenePointer now = scene();
        while (m_output->bytesFree() >= blockFrames * bytesPerFrame) {
            if (!write(now.get()))
                return;
        }
        // What is still in the buffer was not heard yet.
        const int waiting = (m_output->bufferSize() - m_output->bytesFree()) / bytesPerFrame;
        const auto heard = static_cast<double>(m_written - waiting);
        if (heard >= 0.0)
            m_clock.correct(m_run.number, heard * 1000.0 / SoundRate);
    }

    bool write(const Scene* scene)
    {
        std::array<float, static_cast<std::size_t>(blockFrames) * SoundChannels> mixed{};
        if (scene)
            m_mixer.mix(*scene, m_frame, blockFrames, mixed.data());
        std::array<qint16, mixed.size()> samples;
        for (std::size_t i = 0; i < mixed.size(); ++i)
            samples[i] = static_cast<qint16>(std::lround(mixed[i] * 32767.0F));
        constexpr qint64 bytes = static_cast<qint64>(sizeof samples);
        if (m_device->write(reinterpret_cast<const char*>(samples.data()), bytes) != bytes)
            return false;
        m_frame += blockFrames;
        m_written += blockFrames;
        return true;
    }

    PlayClock& m_clock;
    SoundOutput& m_owner;
    SoundMixer m_mixer;
    std::unique_ptr<QAudioOutput> m_output;
    QIODevice* m_device = nullptr; ///< of the output
    QTimer m_feed{this};
    PlayClock::Run m_run{0, 0};
    long long m_frame = 0;   ///< of the scene, the next one to be written
    long long m_written = 0; ///< frames written in this run
};

SoundOutput::SoundOutput(PlayClock& clock)
    : m_clock(clock)
    , m_worker(new Worker(*this))
    , m_restart(m_worker, &Worker::restart)
    , m_stop(m_worker, &Worker::stop)
{
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
}

SoundOutput::~SoundOutput()
{
    m_interrupt.raise();
    if (!m_thread.isRunning()) {
        delete m_worker;
        return;
    }
    // The worker must not look for who calls it when it ends.
    m_restart.disconnect();
    m_stop.disconnect();
    m_thread.quit();
    m_thread.wait();
    const std::lock_guard lock(m_mutex);
}

void SoundOutput::setScene(ScenePointer scene)
{
    const std::lock_guard lock(m_mutex);
    m_scene.swap(scene);
}

void SoundOutput::restart()
{
    if (!m_clock.isRunning() || !QCoreApplication::instance())
        return;
    if (!m_thread.isRunning()) {
        m_worker->moveToThread(&m_thread);
        m_thread.start();
    }
    m_restart.give();
}

void SoundOutput::stop()
{
    if (m_thread.isRunning())
        m_stop.give();
}

} // namespace rvengine
