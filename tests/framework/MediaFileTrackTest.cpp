// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "TrackKinds.h"
#include "support/TestMedia.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <limits>

using namespace qrvkp;

namespace {

constexpr long long longest = std::numeric_limits<long long>::max();
constexpr long long shortest = std::numeric_limits<long long>::min();
/// Containers keep times in ticks of their own.
constexpr long long tolerance = 2;

Reference<RvKpTrack> video(long long duration, long long fileStartTime)
{
    return adopt(RvKpTrack::create(SampleMedia::video(), 0, duration, fileStartTime));
}

Reference<RvAudioTrack> sound(long long duration, long long fileStartTime)
{
    return adopt(RvAudioTrack::create(SampleMedia::sound(), 0, duration, fileStartTime));
}

/// What the engine measures, as it arrives in new tracks.
class MediaFileTrackTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(MediaFileTrackTest, NewVideoHasTheSizeAndLengthOfItsFile)
{
    const auto track = video(-1, 0);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getWidth(), static_cast<float>(SampleMedia::VideoWidth));
    EXPECT_EQ(track->getHeight(), static_cast<float>(SampleMedia::VideoHeight));
    EXPECT_EQ(track->getFileStartTime(), 0);
    EXPECT_NEAR(static_cast<double>(track->getOriginDuration()),
                TestMedia::durationMs(SampleMedia::video()), 41.0)
        << "up to one frame of sound may stand over";
}

TEST_F(MediaFileTrackTest, NewSoundHasTheLengthOfItsFile)
{
    EXPECT_NEAR(static_cast<double>(sound(-1, 0)->getOriginDuration()), 1000.0, tolerance);
}

TEST_F(MediaFileTrackTest, TheWholeFileIsWhatIsLeftFromTheFileStartTimeOn)
{
    const long long whole = video(-1, 0)->getOriginDuration();
    EXPECT_EQ(video(-1, 300)->getOriginDuration(), whole - 300);
    EXPECT_EQ(video(-1, 300)->getFileStartTime(), 300);
    const long long wholeSound = sound(-1, 0)->getOriginDuration();
    EXPECT_EQ(sound(-1, 300)->getOriginDuration(), wholeSound - 300);
    EXPECT_EQ(sound(-1, 300)->getFileStartTime(), 300);
}

TEST_F(MediaFileTrackTest, NothingIsLeftAtAndBehindTheEndOfTheFile)
{
    const long long whole = video(-1, 0)->getOriginDuration();
    EXPECT_EQ(video(-1, whole)->getOriginDuration(), 0);
    EXPECT_EQ(video(-1, whole + 1)->getOriginDuration(), 0);
    EXPECT_EQ(video(-1, longest)->getOriginDuration(), 0);
    EXPECT_EQ(sound(-1, longest)->getOriginDuration(), 0);
}

TEST_F(MediaFileTrackTest, AFileStartTimeBeforeTheFileLeavesAllOfIt)
{
    const long long whole = video(-1, 0)->getOriginDuration();
    EXPECT_EQ(video(-1, -300)->getOriginDuration(), whole);
    EXPECT_EQ(video(-1, shortest)->getOriginDuration(), whole);
    EXPECT_EQ(video(-1, -300)->getFileStartTime(), -300);
}

TEST_F(MediaFileTrackTest, EveryNegativeDurationIsTheWholeFile)
{
    const long long whole = video(-1, 0)->getOriginDuration();
    EXPECT_EQ(video(-2, 0)->getOriginDuration(), whole);
    EXPECT_EQ(video(shortest, 0)->getOriginDuration(), whole);
}

TEST_F(MediaFileTrackTest, RefusesAStillPictureUnderTheNameOfAVideo)
{
    const std::string path = TestMedia::copy(SampleMedia::picture(), folder(), "picture.mp4");
    EXPECT_EQ(RvKpTrack::create(path, 0, -1, 0), nullptr);
    EXPECT_TRUE(adopt(RvSpriteTrack::create(path, 0, 1000)));
}

TEST_F(MediaFileTrackTest, RefusesSoundWithACoverAsAVideo)
{
    const std::string path = TestMedia::soundWithCover(folder(), "cover.mp3", 1);
    EXPECT_EQ(RvKpTrack::create(path, 0, -1, 0), nullptr);
    EXPECT_TRUE(adopt(RvAudioTrack::create(path, 0, -1, 0)));
}

TEST_F(MediaFileTrackTest, RefusesAVideoWithoutSoundAsSound)
{
    const std::string path = TestMedia::video(folder(), "mute.mp4", 64, 48, "25", 0.4, false);
    EXPECT_TRUE(adopt(RvKpTrack::create(path, 0, -1, 0)));
    EXPECT_EQ(RvAudioTrack::create(path, 0, -1, 0), nullptr);
}

TEST_F(MediaFileTrackTest, RefusesACorruptAndATruncatedVideo)
{
    const std::string noise = TestMedia::file(folder(), "noise.mp4", QByteArray(5000, '\x5a'));
    EXPECT_EQ(RvKpTrack::create(noise, 0, -1, 0), nullptr);
    EXPECT_EQ(RvAudioTrack::create(noise, 0, -1, 0), nullptr);
    const std::string cut = TestMedia::truncated(SampleMedia::video(), folder(), "cut.mp4", 600);
    EXPECT_EQ(RvKpTrack::create(cut, 0, -1, 0), nullptr);
    EXPECT_EQ(RvAudioTrack::create(cut, 0, -1, 0), nullptr);
}

TEST_F(MediaFileTrackTest, AReplacedFileIsMeasuredAgain)
{
    const std::string path = TestMedia::video(folder(), "same.mp4", 64, 48, "25", 0.4);
    EXPECT_EQ(adopt(RvKpTrack::create(path, 0, -1, 0))->getWidth(), 64.0F);
    ASSERT_EQ(TestMedia::video(folder(), "same.mp4", 96, 48, "25", 0.4), path);
    EXPECT_EQ(adopt(RvKpTrack::create(path, 0, -1, 0))->getWidth(), 96.0F);
}
