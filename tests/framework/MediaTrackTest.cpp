// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "TrackKinds.h"
#include "support/TestMedia.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cmath>
#include <limits>
#include <memory>

using namespace qrvkp;

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quietNan = std::numeric_limits<float>::quiet_NaN();
constexpr long long longest = std::numeric_limits<long long>::max();

void expectCentre(const RvIMediaTrack& track, float x, float y)
{
    EXPECT_EQ(track.getPositionX(), x);
    EXPECT_EQ(track.getPositionY(), y);
}

/// What holds for the tracks that show a picture.
class MediaTrackTest : public testing::TestWithParam<const char*>
{
protected:
    static Reference<RvIMediaTrack> make()
    {
        return adopt(dynamic_cast<RvIMediaTrack*>(trackKind(GetParam()).make()));
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, MediaTrackTest, testing::Values("RvKpTrack", "RvSpriteTrack"),
                         [](const auto& kind) { return std::string(kind.param); });

TEST_P(MediaTrackTest, NewTrackIsUnscaledAndUnrotated)
{
    const auto track = make();
    EXPECT_EQ(track->getScale(), 1.0F);
    EXPECT_EQ(track->getRotation(), 0.0F);
}

TEST_P(MediaTrackTest, NewTrackIsCentredOnTheStandardCanvasWithoutAnApplication)
{
    expectCentre(*make(), 960.0F, 540.0F);
}

TEST_P(MediaTrackTest, NewTrackIsCentredOnTheCanvasOfTheApplication)
{
    RvKpApplication application;
    expectCentre(*make(), 960.0F, 540.0F);
    application.getRvKpConfig()->setKpSize(1280.0F, 721.0F);
    const auto track = make();
    expectCentre(*track, 640.0F, 360.5F);

    application.getRvKpConfig()->setKpSize(100.0F, 100.0F);
    expectCentre(*track, 640.0F, 360.5F);
    expectCentre(*make(), 50.0F, 50.0F);
}

TEST_P(MediaTrackTest, TheStandardCanvasIsBackWhenTheApplicationIsGone)
{
    auto application = std::make_unique<RvKpApplication>();
    application->getRvKpConfig()->setKpSize(100.0F, 100.0F);
    application.reset();
    expectCentre(*make(), 960.0F, 540.0F);
}

TEST_P(MediaTrackTest, EverySetterIsReadBack)
{
    const auto track = make();
    track->setWidthAndHeight(12.5F, -7.0F);
    track->setPosition(-100.25F, 1e9F);
    track->setScale(0.125F);
    track->setRotation(725.5F);
    EXPECT_EQ(track->getWidth(), 12.5F);
    EXPECT_EQ(track->getHeight(), -7.0F);
    expectCentre(*track, -100.25F, 1e9F);
    EXPECT_EQ(track->getScale(), 0.125F);
    EXPECT_EQ(track->getRotation(), 725.5F);

    track->setWidthAndHeight(infinite, quietNan);
    track->setScale(quietNan);
    track->setRotation(-infinite);
    EXPECT_EQ(track->getWidth(), infinite);
    EXPECT_TRUE(std::isnan(track->getHeight()));
    EXPECT_TRUE(std::isnan(track->getScale()));
    EXPECT_EQ(track->getRotation(), -infinite);
}

TEST_P(MediaTrackTest, CentreAndPositionAreTheSamePoint)
{
    const auto track = make();
    track->setCenter(3.5F, 4.5F);
    expectCentre(*track, 3.5F, 4.5F);
    track->setPosition(1.0F, 2.0F);
    expectCentre(*track, 1.0F, 2.0F);
}

TEST(SpriteTrackTest, NewTrackHasTheSizeOfItsPictureAndTheGivenTimes)
{
    const auto track = adopt(RvSpriteTrack::create(SampleMedia::picture(), 250, 4000));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getWidth(), static_cast<float>(SampleMedia::PictureWidth));
    EXPECT_EQ(track->getHeight(), static_cast<float>(SampleMedia::PictureHeight));
    EXPECT_EQ(track->getStartPos(), 250);
    EXPECT_EQ(track->getOriginDuration(), 4000);
}

TEST(VideoTrackTest, KeepsAGivenDurationAndFileStartTimeAsTheyAre)
{
    const auto track = adopt(RvKpTrack::create(SampleMedia::video(), -7, 123456, 9999));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getStartPos(), -7);
    EXPECT_EQ(track->getOriginDuration(), 123456);
    EXPECT_EQ(track->getFileStartTime(), 9999);
    EXPECT_EQ(adopt(RvKpTrack::create(SampleMedia::video(), 0, 0, 0))->getOriginDuration(), 0);

    track->setFileStartTime(longest);
    EXPECT_EQ(track->getFileStartTime(), longest);
    track->setFileStartTime(-1);
    EXPECT_EQ(track->getFileStartTime(), -1);
}

TEST(AudioTrackTest, KeepsAGivenDurationAndFileStartTimeAsTheyAre)
{
    const auto track = adopt(RvAudioTrack::create(SampleMedia::sound(), -7, 123456, 9999));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getStartPos(), -7);
    EXPECT_EQ(track->getOriginDuration(), 123456);
    EXPECT_EQ(track->getFileStartTime(), 9999);
    EXPECT_EQ(adopt(RvAudioTrack::create(SampleMedia::sound(), 0, 0, 0))->getOriginDuration(), 0);

    track->setFileStartTime(longest);
    EXPECT_EQ(track->getFileStartTime(), longest);
    track->setFileStartTime(-1);
    EXPECT_EQ(track->getFileStartTime(), -1);
}

namespace {

/// Which of the three creations takes a file.
struct Acceptance
{
    bool video = false;
    bool sprite = false;
    bool audio = false;

    bool operator==(const Acceptance& other) const
    {
        return video == other.video && sprite == other.sprite && audio == other.audio;
    }
};

void PrintTo(const Acceptance& acceptance, std::ostream* stream)
{
    *stream << "video " << acceptance.video << ", sprite " << acceptance.sprite << ", audio "
            << acceptance.audio;
}

Acceptance acceptanceOf(const std::string& path)
{
    return {adopt(RvKpTrack::create(path, 0, -1, 0)) != nullptr,
            adopt(RvSpriteTrack::create(path, 0, 1000)) != nullptr,
            adopt(RvAudioTrack::create(path, 0, -1, 0)) != nullptr};
}

class MediaCreationTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    QTemporaryDir m_folder;
};

const Acceptance nothing;

} // namespace

TEST_F(MediaCreationTest, AVideoIsAlsoSoundAndAPictureIsOnlyAPicture)
{
    EXPECT_EQ(acceptanceOf(SampleMedia::video()), (Acceptance{true, false, true}));
    EXPECT_EQ(acceptanceOf(SampleMedia::picture()), (Acceptance{false, true, false}));
    EXPECT_EQ(acceptanceOf(SampleMedia::sound()), (Acceptance{false, false, true}));
}

TEST_F(MediaCreationTest, RefusesWhatIsMissingOrNoFile)
{
    EXPECT_EQ(acceptanceOf(""), nothing);
    EXPECT_EQ(acceptanceOf((folder() + "/missing.mp4").toStdString()), nothing);
    EXPECT_EQ(acceptanceOf((folder() + "/missing.png").toStdString()), nothing);
    EXPECT_EQ(acceptanceOf(folder().toStdString()), nothing);
    EXPECT_EQ(acceptanceOf(SampleMedia::video() + "/below.mp4"), nothing);
}

TEST_F(MediaCreationTest, RefusesAnEmptyFileAndText)
{
    EXPECT_EQ(acceptanceOf(TestMedia::file(folder(), "empty.png", {})), nothing);
    EXPECT_EQ(acceptanceOf(TestMedia::file(folder(), "note.txt", "no media at all\n")), nothing);
}

TEST_F(MediaCreationTest, RefusesATruncatedPicture)
{
    const int half = TestMedia::content(SampleMedia::picture()).size() / 2;
    EXPECT_EQ(acceptanceOf(TestMedia::truncated(SampleMedia::picture(), folder(), "a.png", half)),
              nothing);
}

TEST_F(MediaCreationTest, TakesAFileWhoseNameIsNotAscii)
{
    const std::string path = TestMedia::copy(SampleMedia::picture(), folder(), "图片 é.png");
    const auto track = adopt(RvSpriteTrack::create(path, 0, 1000));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->getTrackSource(), path);
}

TEST_F(MediaCreationTest, ARefusedCreationLeavesNoObjectBehind)
{
    const long long before = RvRef::liveCount();
    EXPECT_EQ(RvKpTrack::create("missing", 0, -1, 0), nullptr);
    EXPECT_EQ(RvSpriteTrack::create("missing", 0, 1), nullptr);
    EXPECT_EQ(RvAudioTrack::create("missing", 0, -1, 0), nullptr);
    EXPECT_EQ(RvRef::liveCount(), before);
}

TEST(ConfigurationTest, StartsAtTheStandardSizeAndKeepsWhatItIsGiven)
{
    RvKpApplication application;
    RvKpConfig* configuration = application.getRvKpConfig();
    ASSERT_NE(configuration, nullptr);
    EXPECT_EQ(application.getRvKpConfig(), configuration);
    EXPECT_EQ(configuration->getKpSizeWidth(), 1920.0F);
    EXPECT_EQ(configuration->getKpSizeHeight(), 1080.0F);
    configuration->setKpSize(0.5F, -3.0F);
    EXPECT_EQ(configuration->getKpSizeWidth(), 0.5F);
    EXPECT_EQ(configuration->getKpSizeHeight(), -3.0F);
}
