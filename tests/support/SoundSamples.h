// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// A stretch of sound, of one channel, -1 to 1.
using Samples = std::vector<double>;

/// The root of the mean square; 0 for no samples.
double levelOf(const Samples& samples);

/// How much of a frequency is in the sound: the amplitude of such a sine. Both in Hz.
double amplitudeAt(const Samples& samples, double frequency, int rate);

/// The first channel of interleaved signed 16-bit samples.
Samples firstChannel(const QByteArray& bytes, int channels);

/// A sound file as ffmpeg decodes it, mixed down to one channel of that many samples a second;
/// empty when it is none.
Samples decoded(const QString& path, int rate);
