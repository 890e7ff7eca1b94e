// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/AudioLevels.h>

#include <QAudioBuffer>
#include <QAudioFormat>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

using norvel::getBufferLevels;
using norvel::getPeakValue;

namespace {

using Levels = std::vector<double>;

QAudioFormat formatOf(QAudioFormat::SampleType type, int size, int channels = 1)
{
    QAudioFormat format;
    format.setCodec("audio/pcm");
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setSampleRate(16000);
    format.setChannelCount(channels);
    format.setSampleSize(size);
    format.setSampleType(type);
    return format;
}

template <class Sample>
QAudioFormat formatOf(int channels)
{
    const auto type = std::is_floating_point_v<Sample> ? QAudioFormat::Float
                      : std::is_signed_v<Sample>       ? QAudioFormat::SignedInt
                                                       : QAudioFormat::UnSignedInt;
    return formatOf(type, 8 * static_cast<int>(sizeof(Sample)), channels);
}

template <class Sample>
QAudioBuffer bufferOf(const std::vector<Sample>& samples, const QAudioFormat& format)
{
    return {QByteArray(reinterpret_cast<const char*>(samples.data()),
                       static_cast<int>(samples.size() * sizeof(Sample))),
            format};
}

template <class Sample>
Levels levelsOf(const std::vector<Sample>& samples, int channels = 1)
{
    return getBufferLevels(bufferOf(samples, formatOf<Sample>(channels)));
}

/// Sample by sample, as the levels are defined.
template <class Sample>
Levels plainLevels(const std::vector<Sample>& samples, std::size_t channels)
{
    const double peak = std::is_floating_point_v<Sample>
                            ? 1.00003
                            : static_cast<double>(std::numeric_limits<Sample>::max());
    Levels levels(channels, 0.0);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double value = std::abs(static_cast<double>(samples[i]));
        levels[i % channels] = std::max(levels[i % channels], value);
    }
    for (double& level : levels)
        level = std::is_unsigned_v<Sample> ? std::abs(level - peak / 2) / (peak / 2) : level / peak;
    return levels;
}

template <class Sample>
std::vector<Sample> randomSamples(std::size_t count, std::mt19937& random)
{
    std::vector<Sample> samples(count);
    // Mostly low, so that the loudest one may be anywhere.
    std::uniform_real_distribution<double> share(-1.0, 1.0);
    for (Sample& sample : samples) {
        const double value = std::pow(share(random), 5);
        if constexpr (std::is_floating_point_v<Sample>)
            sample = static_cast<Sample>(value);
        else if constexpr (std::is_signed_v<Sample>)
            sample = static_cast<Sample>(value * std::numeric_limits<Sample>::max());
        else
            sample = static_cast<Sample>(std::abs(value) * std::numeric_limits<Sample>::max());
    }
    return samples;
}

} // namespace

TEST(PeakValueTest, IsFullScaleOfTheSampleTypesAndSizes)
{
    const auto peaks = [](QAudioFormat::SampleType type) {
        Levels values;
        for (const int size : {8, 16, 24, 32, 64})
            values.push_back(getPeakValue(formatOf(type, size)));
        return values;
    };
    EXPECT_EQ(peaks(QAudioFormat::SignedInt), (Levels{127, 32767, 0, 2147483647, 0}));
    EXPECT_EQ(peaks(QAudioFormat::UnSignedInt), (Levels{255, 65535, 0, 4294967295, 0}));
    EXPECT_EQ(peaks(QAudioFormat::Float), (Levels{0, 0, 0, 1.00003, 0}));
    EXPECT_EQ(peaks(QAudioFormat::Unknown), (Levels{0, 0, 0, 0, 0}));
}

TEST(PeakValueTest, IsThatOfEitherByteOrderAndOfAnyNumberOfChannels)
{
    QAudioFormat format = formatOf(QAudioFormat::SignedInt, 16, 6);
    format.setByteOrder(QAudioFormat::BigEndian);
    EXPECT_EQ(getPeakValue(format), 32767);
}

TEST(PeakValueTest, IsNoneOfWhatIsInvalidOrNoPcm)
{
    EXPECT_EQ(getPeakValue(QAudioFormat()), 0);
    QAudioFormat format = formatOf(QAudioFormat::SignedInt, 16);
    for (const char* codec : {"audio/amr", "audio/PCM", ""}) {
        format.setCodec(codec);
        EXPECT_EQ(getPeakValue(format), 0) << codec;
    }
    format = formatOf(QAudioFormat::SignedInt, 16);
    format.setSampleRate(-1);
    EXPECT_EQ(getPeakValue(format), 0) << "no rate";
}

TEST(BufferLevelsTest, OfSignedSamplesAreTheLargestMagnitudes)
{
    EXPECT_DOUBLE_EQ(levelsOf<qint16>({100, -16384, 16383})[0], 16384.0 / 32767.0);
    EXPECT_NEAR(levelsOf<qint16>({100, -16384, 16383})[0], 0.500015, 1e-6);
    EXPECT_EQ(levelsOf<qint16>({0, 32767}), Levels{1.0});
    EXPECT_EQ(levelsOf<qint8>({0, -127, 3}), Levels{1.0});
    EXPECT_DOUBLE_EQ(levelsOf<qint32>({5, -1073741824})[0], 1073741824.0 / 2147483647.0);
}

TEST(BufferLevelsTest, OfTheMostNegativeSamplesAreAHairAboveOne)
{
    EXPECT_DOUBLE_EQ(levelsOf<qint8>({-128})[0], 128.0 / 127.0);
    EXPECT_DOUBLE_EQ(levelsOf<qint16>({-32768, 32767})[0], 32768.0 / 32767.0);
    EXPECT_DOUBLE_EQ(levelsOf<qint32>({std::numeric_limits<qint32>::min()})[0],
                     2147483648.0 / 2147483647.0);
}

TEST(BufferLevelsTest, OfUnsignedSamplesAreTheDistanceOfTheLargestOneFromTheMiddle)
{
    EXPECT_DOUBLE_EQ(levelsOf<quint8>({0, 128, 7})[0], 0.5 / 127.5);
    EXPECT_NEAR(levelsOf<quint8>({128})[0], 0.0039, 0.0001);
    EXPECT_EQ(levelsOf<quint8>({128, 255}), Levels{1.0});
    EXPECT_DOUBLE_EQ(levelsOf<quint8>({127, 0})[0], 0.5 / 127.5) << "low swings do not count";
    EXPECT_EQ(levelsOf<quint8>({0, 0}), Levels{1.0}) << "far below the middle";
    EXPECT_EQ(levelsOf<quint16>({65535}), Levels{1.0});
    EXPECT_DOUBLE_EQ(levelsOf<quint16>({32768})[0], 0.5 / 32767.5);
    EXPECT_EQ(levelsOf<quint32>({4294967295U}), Levels{1.0});
    EXPECT_DOUBLE_EQ(levelsOf<quint32>({3221225472U})[0],
                     (3221225472.0 - 2147483647.5) / 2147483647.5);
}

TEST(BufferLevelsTest, OfFloatsAreAHairBelowTheMagnitudes)
{
    EXPECT_DOUBLE_EQ(levelsOf<float>({0.5F, -1.0F})[0], 1.0 / 1.00003);
    EXPECT_NEAR(levelsOf<float>({1.0F})[0], 0.99997, 1e-6);
    EXPECT_DOUBLE_EQ(levelsOf<float>({2.5F})[0], 2.5 / 1.00003) << "not limited";
}

TEST(BufferLevelsTest, OfFloatsThatAreNoNumbersAreThoseOfTheOthers)
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    for (std::size_t place = 0; place < 100; ++place) {
        std::vector<float> samples(100, 0.25F);
        samples[place] = none;
        EXPECT_DOUBLE_EQ(levelsOf(samples)[0], 0.25 / 1.00003) << place;
    }
    for (std::size_t place = 1; place < 200; ++place) {
        std::vector<float> samples(200, 0.25F);
        samples[0] = -0.9F;
        samples[place] = none;
        EXPECT_DOUBLE_EQ(levelsOf(samples)[0], static_cast<double>(0.9F) / 1.00003) << place;
        samples[0] = 0.9F;
        EXPECT_DOUBLE_EQ(levelsOf(samples)[0], static_cast<double>(0.9F) / 1.00003) << place;
    }
    EXPECT_EQ(levelsOf<float>({none, none}), Levels{0.0});
    EXPECT_EQ(levelsOf<float>({0.5F, -infinite}), Levels{static_cast<double>(infinite)});
}

TEST(BufferLevelsTest, AreGivenForEveryChannelInOrder)
{
    EXPECT_EQ(levelsOf<qint16>({32767, 0, 0, 0, 0, -32767}, 3), (Levels{1.0, 0.0, 1.0}));
    EXPECT_EQ(levelsOf<quint8>({255, 0}, 2), (Levels{1.0, 1.0}));
}

template <class Sample>
class SampleTypesTest : public testing::Test
{
};
using SampleTypes = testing::Types<qint8, quint8, qint16, quint16, qint32, quint32, float>;
TYPED_TEST_SUITE(SampleTypesTest, SampleTypes);

TYPED_TEST(SampleTypesTest, LevelsAreThoseOfASampleBySampleLook)
{
    std::mt19937 random(20260101);
    for (const std::size_t channels : {1, 2, 3, 4, 5, 6, 7, 8, 24, 25, 47, 48, 49, 96, 100}) {
        for (const std::size_t frames : {1, 2, 3, 23, 24, 25, 47, 48, 49, 96, 160, 1001}) {
            const auto samples = randomSamples<TypeParam>(frames * channels, random);
            ASSERT_EQ(levelsOf(samples, static_cast<int>(channels)), plainLevels(samples, channels))
                << channels << " channels, " << frames << " frames";
        }
    }
}

TYPED_TEST(SampleTypesTest, TheLoudestSampleIsFoundAnywhere)
{
    for (const std::size_t channels : {1, 2, 5, 60}) {
        const std::size_t count = 4 * 60;
        for (std::size_t place = 0; place < count; ++place) {
            std::vector<TypeParam> samples(count, TypeParam(0));
            samples[place] = std::numeric_limits<TypeParam>::max();
            ASSERT_EQ(levelsOf(samples, static_cast<int>(channels)), plainLevels(samples, channels))
                << channels << " channels, sample " << place;
        }
    }
}

TYPED_TEST(SampleTypesTest, APartOfAFrameDoesNotCount)
{
    const TypeParam largest = std::numeric_limits<TypeParam>::max();
    EXPECT_EQ(levelsOf<TypeParam>({0, 1, largest}, 2), plainLevels<TypeParam>({0, 1}, 2));
}

TYPED_TEST(SampleTypesTest, AnEmptyBufferHasNoLevels)
{
    // Qt knows no buffer without a frame: it makes an invalid one of it.
    EXPECT_EQ(levelsOf(std::vector<TypeParam>(), 2), Levels());
    EXPECT_EQ(levelsOf<TypeParam>({1}, 2), Levels());
}

TYPED_TEST(SampleTypesTest, BigEndianSamplesHaveNoLevels)
{
    QAudioFormat format = formatOf<TypeParam>(2);
    format.setByteOrder(QAudioFormat::BigEndian);
    EXPECT_EQ(getBufferLevels(bufferOf(std::vector<TypeParam>(4, TypeParam(1)), format)), Levels());
}

TEST(BufferLevelsTest, OfSizesWithoutAPeakValueAreZeroForEveryChannel)
{
    const QByteArray bytes(48, '\x7f');
    for (const auto type :
         {QAudioFormat::SignedInt, QAudioFormat::UnSignedInt, QAudioFormat::Float}) {
        for (const int size : {24, 64}) {
            EXPECT_EQ(getBufferLevels({bytes, formatOf(type, size, 2)}), (Levels{0.0, 0.0}))
                << type << ", " << size << " bit";
        }
    }
    EXPECT_EQ(getBufferLevels({bytes, formatOf(QAudioFormat::Float, 16, 2)}), (Levels{0.0, 0.0}));
}

TEST(BufferLevelsTest, OfWhatIsInvalidOrNoPcmAreNone)
{
    EXPECT_EQ(getBufferLevels(QAudioBuffer()), Levels());
    QAudioFormat format = formatOf(QAudioFormat::SignedInt, 16, 2);
    format.setCodec("audio/amr");
    EXPECT_EQ(getBufferLevels({QByteArray(8, '\x7f'), format}), Levels());
    for (const int channels : {0, -1, -3})
        EXPECT_EQ(getBufferLevels(
                      {QByteArray(12, '\x7f'), formatOf(QAudioFormat::SignedInt, 16, channels)}),
                  Levels())
            << channels << " channels";
    // Qt knows no such buffer: it makes an invalid one of it.
    EXPECT_EQ(getBufferLevels({QByteArray(8, '\x7f'), formatOf(QAudioFormat::Unknown, 16, 2)}),
              Levels());
}
