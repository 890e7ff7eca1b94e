// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/SoundSamples.h"

#include <QProcess>

#include <cmath>
#include <cstring>

namespace {

constexpr int patienceMs = 120000;
constexpr double pi = 3.14159265358979323846;

} // namespace

double levelOf(const Samples& samples)
{
    double sum = 0.0;
    for (const double sample : samples)
        sum += sample * sample;
    return samples.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

double amplitudeAt(const Samples& samples, double frequency, int rate)
{
    double sine = 0.0;
    double cosine = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double phase = 2 * pi * frequency * static_cast<double>(i) / rate;
        sine += samples[i] * std::sin(phase);
        cosine += samples[i] * std::cos(phase);
    }
    return 2 * std::hypot(sine, cosine) / static_cast<double>(samples.size());
}

Samples firstChannel(const QByteArray& bytes, int channels)
{
    const std::size_t frameSize = static_cast<std::size_t>(channels) * sizeof(qint16);
    Samples samples(static_cast<std::size_t>(bytes.size()) / frameSize);
    for (std::size_t frame = 0; frame < samples.size(); ++frame) {
        qint16 value;
        std::memcpy(&value, bytes.constData() + frame * frameSize, sizeof value);
        samples[frame] = value / 32768.0;
    }
    return samples;
}

Samples decoded(const QString& path, int rate)
{
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg", {"-v", "error", "-nostdin", "-i", path, "-f", "s16le", "-ac", "1", "-ar",
                            QString::number(rate), "-"});
    if (!ffmpeg.waitForFinished(patienceMs) || ffmpeg.exitCode() != 0)
        return {};
    return firstChannel(ffmpeg.readAllStandardOutput(), 1);
}
