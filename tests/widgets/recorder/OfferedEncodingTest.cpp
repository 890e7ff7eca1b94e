// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/OfferedEncoding.h>

#include <gtest/gtest.h>

using norvel::offeredEncoding;

namespace {

QAudioEncoderSettings wanted()
{
    QAudioEncoderSettings settings;
    settings.setCodec("audio/amr");
    settings.setSampleRate(16000);
    settings.setBitRate(128000);
    settings.setQuality(QMultimedia::VeryHighQuality);
    settings.setEncodingMode(QMultimedia::ConstantBitRateEncoding);
    return settings;
}

/// The wanted settings, with another codec that has its own bit rate.
QAudioEncoderSettings with(const QString& codec, int rate)
{
    QAudioEncoderSettings settings = wanted();
    settings.setCodec(codec);
    settings.setSampleRate(rate);
    settings.setBitRate(-1);
    return settings;
}

} // namespace

TEST(OfferedEncodingTest, IsTheWantedOneWhereItsCodecIsOffered)
{
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/amr"}), wanted());
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/AMR-WB", "audio/AMR", "audio/amr"}), wanted());
}

TEST(OfferedEncodingTest, IsWideBandAmrAtTheSameRateElse)
{
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/x-wav", "audio/AMR", "audio/AMR-WB"}),
              with("audio/AMR-WB", 16000));
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/amr-wb", "audio/AMR-WB"}),
              with("audio/amr-wb", 16000))
        << "in whatever case";
}

TEST(OfferedEncodingTest, IsNarrowBandAmrAtItsOwnRateWithoutAWideBand)
{
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/x-opus", "audio/AMR"}), with("audio/AMR", 8000));
    EXPECT_EQ(offeredEncoding(wanted(), {"Audio/Amr-NB"}), with("Audio/Amr-NB", 8000));
}

TEST(OfferedEncodingTest, IsLeftToABackendWithoutAmr)
{
    const QAudioEncoderSettings nothing;
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/pcm"}), nothing);
    EXPECT_EQ(offeredEncoding(wanted(), {"audio/mpeg", "x-audio/amr"}), nothing);
    EXPECT_EQ(offeredEncoding(wanted(), {}), nothing);
}

TEST(OfferedEncodingTest, ChangesNothingWhenItIsAppliedAgain)
{
    for (const QStringList& codecs :
         {QStringList{"audio/amr"}, QStringList{"audio/AMR-WB"}, QStringList{"audio/AMR"},
          QStringList{"audio/pcm"}, QStringList()}) {
        const QAudioEncoderSettings once = offeredEncoding(wanted(), codecs);
        EXPECT_EQ(offeredEncoding(once, codecs), once) << codecs.join(' ').toStdString();
    }
}
