// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/AudioLevels.h>

#include <QAudioBuffer>
#include <QAudioFormat>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace {

/// Samples are looked at in blocks of this many: a whole number of frames of all usual numbers of
/// channels, and a whole number of vector registers, so that compilers do a block in a few steps.
constexpr std::size_t blockSize = 48;

template <class Sample>
using Block = std::array<Sample, blockSize>;

/// The samples of a buffer; they need not be aligned.
struct Samples
{
    const char* data;
    std::size_t count; ///< of all channels
    std::size_t channels;
};

/// The largest and the smallest sample at each place of the blocks, and at least 0 and at most 0.
/// The two, other than an absolute value, exist for the most negative integer as well.
template <class Sample>
struct Extremes
{
    Block<Sample> high{};
    Block<Sample> low{};

    void add(const Block<Sample>& block)
    {
        for (std::size_t place = 0; place < blockSize; ++place) {
            // In this order a sample that is no number changes nothing.
            const Sample sample = block[place];
            high[place] = sample > high[place] ? sample : high[place];
            low[place] = sample < low[place] ? sample : low[place];
        }
    }

    double magnitude(std::size_t place) const
    {
        return std::max(static_cast<double>(high[place]), -static_cast<double>(low[place]));
    }
};

/// The largest absolute values of up to `blockSize` channels that lie side by side from the channel
/// `first` on, into `levels`.
template <class Sample>
void findMagnitudes(const Samples& samples, std::size_t first, std::vector<double>& levels)
{
    const std::size_t width = std::min(blockSize, samples.channels - first);
    // A few frames at a time if all of the frame fits in, else this part of each frame.
    const std::size_t step = width == samples.channels ? blockSize - blockSize % width : width;
    const std::size_t stride = width == samples.channels ? step : samples.channels;
    Extremes<Sample> extremes;
    Block<Sample> block{};
    std::size_t sample = first;
    for (; sample + blockSize <= samples.count; sample += stride) {
        // What is read beyond the step counts for places that nobody asks for.
        std::memcpy(block.data(), samples.data + sample * sizeof(Sample), sizeof block);
        extremes.add(block);
    }
    for (; sample < samples.count; sample += stride) {
        block.fill(0);
        std::memcpy(block.data(), samples.data + sample * sizeof(Sample),
                    std::min(blockSize, samples.count - sample) * sizeof(Sample));
        extremes.add(block);
    }
    for (std::size_t place = 0; place < step; ++place) {
        double& level = levels[first + place % width];
        level = std::max(level, extremes.magnitude(place));
    }
}

template <class Sample>
std::vector<double> magnitudes(const Samples& samples)
{
    std::vector<double> levels(samples.channels, 0.0);
    for (std::size_t first = 0; first < samples.channels; first += blockSize)
        findMagnitudes<Sample>(samples, first, levels);
    return levels;
}

std::vector<double> magnitudes(const Samples& samples, const QAudioFormat& format)
{
    const int size = format.sampleSize();
    if (format.sampleType() == QAudioFormat::Float)
        return magnitudes<float>(samples);
    if (format.sampleType() == QAudioFormat::UnSignedInt) {
        return size == 32   ? magnitudes<quint32>(samples)
               : size == 16 ? magnitudes<quint16>(samples)
                            : magnitudes<quint8>(samples);
    }
    return size == 32   ? magnitudes<qint32>(samples)
           : size == 16 ? magnitudes<qint16>(samples)
                        : magnitudes<qint8>(samples);
}

bool isPcm(const QAudioFormat& format)
{
    return format.isValid() && format.codec() == QLatin1String("audio/pcm");
}

template <class Sample>
constexpr double largest()
{
    return static_cast<double>(std::numeric_limits<Sample>::max());
}

} // namespace

double norvel::getPeakValue(const QAudioFormat& format)
{
    if (!isPcm(format))
        return 0.0;
    const int size = format.sampleSize();
    switch (format.sampleType()) {
    case QAudioFormat::SignedInt:
        return size == 32   ? largest<qint32>()
               : size == 16 ? largest<qint16>()
               : size == 8  ? largest<qint8>()
                            : 0.0;
    case QAudioFormat::UnSignedInt:
        return size == 32   ? largest<quint32>()
               : size == 16 ? largest<quint16>()
               : size == 8  ? largest<quint8>()
                            : 0.0;
    case QAudioFormat::Float:
        return size == 32 ? 1.00003 : 0.0;
    case QAudioFormat::Unknown:
        break;
    }
    return 0.0;
}

std::vector<double> norvel::getBufferLevels(const QAudioBuffer& buffer)
{
    const QAudioFormat format = buffer.format();
    // To Qt a format may be valid and have no channels.
    if (!isPcm(format) || format.byteOrder() != QAudioFormat::LittleEndian ||
        format.channelCount() <= 0)
        return {};
    const auto channels = static_cast<std::size_t>(format.channelCount());
    const double peak = getPeakValue(format);
    if (qFuzzyCompare(peak, 0.0))
        return std::vector<double>(channels, 0.0);

    const auto frames = static_cast<std::size_t>(buffer.frameCount());
    std::vector<double> levels =
        magnitudes({buffer.constData<char>(), frames * channels, channels}, format);
    for (double& level : levels) {
        if (format.sampleType() == QAudioFormat::UnSignedInt)
            level = std::abs(level - peak / 2) / (peak / 2);
        else
            level /= peak;
    }
    return levels;
}
