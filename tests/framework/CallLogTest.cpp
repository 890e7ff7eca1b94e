// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "Threads.h"
#include "TrackKinds.h"
#include "support/ScopedCommaLocale.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

using namespace qrvkp;
using namespace qkpar;

namespace {

using Entries = std::vector<std::string>;

/// What the log says of some calls.
Entries recorded(const std::function<void()>& calls)
{
    RvCallLog::start();
    calls();
    RvCallLog::stop();
    return RvCallLog::entries();
}

std::string idOf(const RvITrack& track)
{
    return std::to_string(track.getTrackID());
}

std::string idOf(const RvKpGroup& group)
{
    return std::to_string(group.getGroupID());
}

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

KpARKernelParamFlag flag(int number)
{
    return static_cast<KpARKernelParamFlag>(number);
}

/// Makes a track with `create` and expects that the log has one entry of it.
template <class Track>
void expectCreation(const std::function<Track*()>& create, const std::string& call)
{
    Reference<Track> track;
    const Entries entries = recorded([&] { track = adopt(create()); });
    ASSERT_TRUE(track) << call;
    EXPECT_EQ(entries, Entries{call + " -> " + idOf(*track)});
}

/// The text that stands for an image in the log.
std::string imageText(RvARBeautyTrack& track, const QImage& image)
{
    const Entries entries = recorded([&] { track.setBeautyActiveMaskImage(image); });
    const std::string before = "RvARBeautyTrack::setBeautyActiveMaskImage(" + idOf(track) + ", ";
    EXPECT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.at(0).rfind(before, 0), 0U) << entries.at(0);
    return entries.at(0).substr(before.size(), entries.at(0).size() - before.size() - 1);
}

} // namespace

TEST(CallLogTest, RecordsFromStartToStopAndKeepsTheEntries)
{
    const auto track = newTrack();
    const std::string id = idOf(*track);
    RvCallLog::start();
    EXPECT_EQ(RvCallLog::count(), 0U);
    track->setZOrder(1);
    track->setZOrder(2);
    EXPECT_EQ(RvCallLog::count(), 2U);
    RvCallLog::stop();
    track->setZOrder(3);
    const Entries expected{"RvITrack::setZOrder(" + id + ", 1)",
                           "RvITrack::setZOrder(" + id + ", 2)"};
    EXPECT_EQ(RvCallLog::entries(), expected);
    EXPECT_EQ(RvCallLog::entries(), expected);
    EXPECT_EQ(RvCallLog::count(), 2U);
}

TEST(CallLogTest, StartForgetsTheEntriesSoFar)
{
    const auto track = newTrack();
    RvCallLog::start();
    track->setZOrder(1);
    RvCallLog::start();
    EXPECT_EQ(RvCallLog::count(), 0U);
    track->setZOrder(2);
    EXPECT_EQ(RvCallLog::count(), 1U);
    RvCallLog::stop();
    RvCallLog::stop();
    EXPECT_EQ(RvCallLog::count(), 1U);
}

TEST(CallLogTest, RecordsTheSettersOfEveryTrack)
{
    const auto track = newTrack();
    const std::string id = idOf(*track);
    EXPECT_EQ(
        recorded([&] {
            track->setTag("标签");
            track->setStartPos(-1);
            track->setDuration(std::numeric_limits<long long>::max());
            track->setZOrder(-2);
            track->setAlpha(0.1F);
            track->setSpeed(2.0F);
            track->setTrackID(std::numeric_limits<std::uint64_t>::max());
            track->setAlpha(1e-7F);
        }),
        (Entries{"RvITrack::setTag(" + id + ", \"标签\")", "RvITrack::setStartPos(" + id + ", -1)",
                 "RvITrack::setDuration(" + id + ", 9223372036854775807)",
                 "RvITrack::setZOrder(" + id + ", -2)", "RvITrack::setAlpha(" + id + ", 0.1)",
                 "RvITrack::setSpeed(" + id + ", 2)",
                 "RvITrack::setTrackID(" + id + ", 18446744073709551615)",
                 "RvITrack::setAlpha(18446744073709551615, 1e-07)"}));
}

TEST(CallLogTest, RecordsCreationsWithTheIdOfWhatTheyMade)
{
    const std::string video = quoted(SampleMedia::video());
    const std::string picture = quoted(SampleMedia::picture());
    const std::string sound = quoted(SampleMedia::sound());
    expectCreation<RvITrack>([] { return RvITrack::create(1, 2); }, "RvITrack::create(1, 2)");
    expectCreation<RvKpTrack>([] { return RvKpTrack::create(SampleMedia::video(), 1, -1, 3); },
                              "RvKpTrack::create(" + video + ", 1, -1, 3)");
    expectCreation<RvSpriteTrack>(
        [] { return RvSpriteTrack::create(SampleMedia::picture(), 1, 2); },
        "RvSpriteTrack::create(" + picture + ", 1, 2)");
    expectCreation<RvAudioTrack>([] { return RvAudioTrack::create(SampleMedia::sound(), 1, 2, 3); },
                                 "RvAudioTrack::create(" + sound + ", 1, 2, 3)");
    expectCreation<RvDetectionTrack>([] { return RvDetectionTrack::create(4, "model"); },
                                     "RvDetectionTrack::create(4, \"model\")");
    expectCreation<RvTrkMatteEffectTrack>(
        [] { return RvTrkMatteEffectTrack::createPathMatteTrack(1, 2); },
        "RvTrkMatteEffectTrack::createPathMatteTrack(1, 2)");
}

TEST(CallLogTest, RecordsTheCreationsOfEveryARTrack)
{
    expectCreation<RvARFilterTrack>([] { return RvARFilterTrack::create("a b", 1, 2); },
                                    "RvARFilterTrack::create(\"a b\", 1, 2)");
    expectCreation<RvARBeautyTrack>([] { return RvARBeautyTrack::create("", 1, 2); },
                                    "RvARBeautyTrack::create(\"\", 1, 2)");
    expectCreation<RvARMakeupTrack>([] { return RvARMakeupTrack::create("", 1, 2); },
                                    "RvARMakeupTrack::create(\"\", 1, 2)");
    expectCreation<RvARLiquifyTrack>([] { return RvARLiquifyTrack::create("", 1, 2); },
                                     "RvARLiquifyTrack::create(\"\", 1, 2)");
    expectCreation<RvARFrameTrack>([] { return RvARFrameTrack::create("", 1, 2); },
                                   "RvARFrameTrack::create(\"\", 1, 2)");
    expectCreation<RvARLabelTrack>([] { return RvARLabelTrack::create("", 1, 2); },
                                   "RvARLabelTrack::create(\"\", 1, 2)");
    expectCreation<RvARBorderTrack>([] { return RvARBorderTrack::create("", 1, 2); },
                                    "RvARBorderTrack::create(\"\", 1, 2)");
    expectCreation<RvARAttribsTrack>([] { return RvARAttribsTrack::create("", 1, 2); },
                                     "RvARAttribsTrack::create(\"\", 1, 2)");
}

TEST(CallLogTest, RecordsTheCreationsOfGroupsAndTimelines)
{
    Reference<RvKpGroup> group;
    const Entries entries = recorded([&] { group = adopt(RvKpGroup::create(1234)); });
    EXPECT_EQ(entries, Entries{"RvKpGroup::create(1234) -> " + idOf(*group)});
    EXPECT_EQ(recorded([] { adopt(RvKpTimeLine::create()); }), Entries{"RvKpTimeLine::create()"});
}

TEST(CallLogTest, RecordsARefusedCreationWithNull)
{
    EXPECT_EQ(recorded([] {
                  RvKpTrack::create("missing", 0, -1, 0);
                  RvSpriteTrack::create("missing", 0, 1);
                  RvAudioTrack::create("", 0, -1, 0);
              }),
              (Entries{"RvKpTrack::create(\"missing\", 0, -1, 0) -> null",
                       "RvSpriteTrack::create(\"missing\", 0, 1) -> null",
                       "RvAudioTrack::create(\"\", 0, -1, 0) -> null"}));
}

TEST(CallLogTest, RecordsTheSettersOfMediaTracks)
{
    const auto video = adopt(RvKpTrack::create(SampleMedia::video(), 0, -1, 0));
    const auto sound = adopt(RvAudioTrack::create(SampleMedia::sound(), 0, -1, 0));
    const std::string id = idOf(*video);
    EXPECT_EQ(recorded([&] {
                  video->setWidthAndHeight(640.0F, 0.5F);
                  video->setPosition(-1.25F, 1e20F);
                  video->setCenter(3.0F, 4.0F);
                  video->setScale(0.3F);
                  video->setRotation(-90.0F);
                  video->setFileStartTime(-5);
                  sound->setFileStartTime(7);
              }),
              (Entries{"RvIMediaTrack::setWidthAndHeight(" + id + ", 640, 0.5)",
                       "RvIMediaTrack::setPosition(" + id + ", -1.25, 1e+20)",
                       "RvIMediaTrack::setCenter(" + id + ", 3, 4)",
                       "RvIMediaTrack::setScale(" + id + ", 0.3)",
                       "RvIMediaTrack::setRotation(" + id + ", -90)",
                       "RvKpTrack::setFileStartTime(" + id + ", -5)",
                       "RvAudioTrack::setFileStartTime(" + idOf(*sound) + ", 7)"}));
}

TEST(CallLogTest, RecordsDetectionsAndBindings)
{
    const auto detection = adopt(RvDetectionTrack::create(1, ""));
    const auto matte = adopt(RvTrkMatteEffectTrack::createPathMatteTrack(0, 1));
    const auto track = newTrack();
    const std::string detectionId = idOf(*detection);
    const std::string matteId = idOf(*matte);
    track->retain();
    track->retain();
    EXPECT_EQ(recorded([&] {
                  detection->setDetectionMode(5);
                  detection->setModelPath("a.model");
                  detection->bind(track.get(), 2);
                  detection->bindDynamic();
                  detection->unbind();
                  matte->bind(track.get(), -1);
                  matte->bindDetect(detection.get());
                  matte->bindDynamic();
                  matte->unbind();
              }),
              (Entries{"RvDetectionTrack::setDetectionMode(" + detectionId + ", 5)",
                       "RvDetectionTrack::setModelPath(" + detectionId + ", \"a.model\")",
                       "RvDetectionTrack::bind(" + detectionId + ", " + idOf(*track) + ", 2)",
                       "RvDetectionTrack::bindDynamic(" + detectionId + ")",
                       "RvDetectionTrack::unbind(" + detectionId + ")",
                       "RvIEffectTrack::bind(" + matteId + ", " + idOf(*track) + ", -1)",
                       "RvIEffectTrack::bindDetect(" + matteId + ", " + detectionId + ")",
                       "RvIEffectTrack::bindDynamic(" + matteId + ")",
                       "RvIEffectTrack::unbind(" + matteId + ")"}));
}

TEST(CallLogTest, RecordsGroupsAndTimelines)
{
    const auto timeline = adopt(RvKpTimeLine::create());
    const auto group = adopt(RvKpGroup::create(1));
    const auto other = adopt(RvKpGroup::create(1));
    const auto track = newTrack();
    const std::string id = idOf(*group);
    const std::string trackId = idOf(*track);
    EXPECT_EQ(
        recorded([&] {
            group->setDuration(50);
            group->addTrack(track.get());
            group->removeTrack(track.get());
            timeline->insertGroup(group.get(), 3);
            timeline->pushBackGroup(other.get());
            timeline->changeGroupPosition(group.get(), -1);
            timeline->removeGroup(group.get());
            timeline->addMixTrack(track.get());
            timeline->removeMixTrack(track.get());
            timeline->invalidate();
        }),
        (Entries{"RvKpGroup::setDuration(" + id + ", 50)",
                 "RvKpGroup::addTrack(" + id + ", " + trackId + ")",
                 "RvKpGroup::removeTrack(" + id + ", " + trackId + ")",
                 "RvKpTimeLine::insertGroup(" + id + ", 3)",
                 "RvKpTimeLine::pushBackGroup(" + idOf(*other) + ")",
                 "RvKpTimeLine::changeGroupPosition(" + id + ", -1)",
                 "RvKpTimeLine::removeGroup(" + id + ")",
                 "RvKpTimeLine::addMixTrack(" + trackId + ")",
                 "RvKpTimeLine::removeMixTrack(" + trackId + ")", "RvKpTimeLine::invalidate()"}));
}

TEST(CallLogTest, RecordsNullObjectsAsNull)
{
    const auto timeline = adopt(RvKpTimeLine::create());
    const auto group = adopt(RvKpGroup::create(1));
    const auto detection = adopt(RvDetectionTrack::create(1, ""));
    const auto matte = adopt(RvTrkMatteEffectTrack::createPathMatteTrack(0, 1));
    EXPECT_EQ(
        recorded([&] {
            group->addTrack(nullptr);
            group->removeTrack(nullptr);
            timeline->insertGroup(nullptr, 3);
            timeline->pushBackGroup(nullptr);
            timeline->changeGroupPosition(nullptr, 0);
            timeline->removeGroup(nullptr);
            timeline->addMixTrack(nullptr);
            timeline->removeMixTrack(nullptr);
            detection->bind(nullptr, 1);
            matte->bind(nullptr, 2);
            matte->bindDetect(nullptr);
        }),
        (Entries{"RvKpGroup::addTrack(" + idOf(*group) + ", null)",
                 "RvKpGroup::removeTrack(" + idOf(*group) + ", null)",
                 "RvKpTimeLine::insertGroup(null, 3)", "RvKpTimeLine::pushBackGroup(null)",
                 "RvKpTimeLine::changeGroupPosition(null, 0)", "RvKpTimeLine::removeGroup(null)",
                 "RvKpTimeLine::addMixTrack(null)", "RvKpTimeLine::removeMixTrack(null)",
                 "RvDetectionTrack::bind(" + idOf(*detection) + ", null, 1)",
                 "RvIEffectTrack::bind(" + idOf(*matte) + ", null, 2)",
                 "RvIEffectTrack::bindDetect(" + idOf(*matte) + ", null)"}));
}

TEST(CallLogTest, RecordsThePlayerAndTheConfiguration)
{
    RvKpApplication application;
    RvKpPlayer* player = application.getPlayer();
    const auto timeline = adopt(RvKpTimeLine::create());
    EXPECT_EQ(recorded([&] {
                  application.getRvKpConfig()->setKpSize(1280.0F, 720.5F);
                  player->setTimeLine(timeline.get());
                  player->prepareAsync();
                  player->start();
                  player->seekTo(-1, true);
                  player->pause();
                  player->stop();
                  player->lockPlayer();
                  player->unlockPlayer();
                  player->setTimeLine(nullptr);
              }),
              (Entries{"RvKpConfig::setKpSize(1280, 720.5)", "RvKpPlayer::setTimeLine(timeline)",
                       "RvKpPlayer::prepareAsync()", "RvKpPlayer::start()",
                       "RvKpPlayer::seekTo(-1, true)", "RvKpPlayer::pause()", "RvKpPlayer::stop()",
                       "RvKpPlayer::lockPlayer()", "RvKpPlayer::unlockPlayer()",
                       "RvKpPlayer::setTimeLine(null)"}));
}

TEST(CallLogTest, RecordsThePlacementOfTheCanvas)
{
    RvKpApplication application;
    EXPECT_EQ(
        recorded([&] {
            application.enableGesture(false);
            application.setCanvasScale(2.5F);
            application.setCanvasPosition(-1.0F, 0.25F);
        }),
        (Entries{"RvKpApplication::enableGesture(false)", "RvKpApplication::setCanvasScale(2.5)",
                 "RvKpApplication::setCanvasPosition(-1, 0.25)"}));
}

TEST(CallLogTest, DoesNotRecordWhatThePlayerDoesByItself)
{
    RvKpApplication application;
    const auto timeline = adopt(RvKpTimeLine::create());
    application.getPlayer()->setTimeLine(timeline.get());
    application.getPlayer()->prepareAsync();
    application.getPlayer()->start();
    EXPECT_EQ(recorded([&] {
                  QCoreApplication::processEvents();
                  // An empty timeline is soon at its end.
                  EXPECT_NE(application.getPlayer()->getState(), RvKpPlayerPreparing);
                  application.getPlayer()->setTimeLine(nullptr);
              }),
              Entries{"RvKpPlayer::setTimeLine(null)"});
}

TEST(CallLogTest, RecordsTheSettersOfARFilters)
{
    const auto track = adopt(RvARFilterTrack::create("", 0, 0));
    const std::string id = idOf(*track);
    EXPECT_EQ(recorded([&] {
                  track->setScriptParam("key", "值");
                  track->setGlobalParamConfiguration("{}");
                  track->setFilterAlpha(0.7F);
                  track->setFloatParam(flag(-3), 0.5F);
                  track->setFloatParamByFaceId(flag(4), 0.25F, -9);
                  track->addARFacePlist("a.plist", 12);
              }),
              (Entries{"RvARITrack::setScriptParam(" + id + ", \"key\", \"值\")",
                       "RvARITrack::setGlobalParamConfiguration(" + id + ", \"{}\")",
                       "RvARFilterTrack::setFilterAlpha(" + id + ", 0.7)",
                       "RvARFilterTrack::setFloatParam(" + id + ", -3, 0.5)",
                       "RvARFilterTrack::setFloatParamByFaceId(" + id + ", 4, 0.25, -9)",
                       "RvARFilterTrack::addARFacePlist(" + id + ", \"a.plist\", 12)"}));
}

TEST(CallLogTest, RecordsTheSettersOfBeautyTracks)
{
    const auto track = adopt(RvARBeautyTrack::create("", 0, 0));
    const std::string id = idOf(*track);
    EXPECT_EQ(recorded([&] {
                  track->setBeautyType(RvBeautyTypeBody);
                  track->setEnableBeautyGenderDistinction(true);
                  track->setApplyGenderToAR(false);
                  track->loadCoeffientParameterConfig("text");
                  track->setManualLongLegEnable(true);
                  track->setManualLongLegRange({0.1F, 0.9F});
                  track->setManualSlimHeadParam({0.1F, 0.2F, 0.3F});
                  track->setBeautyMaskFaceId(3);
                  track->setBeautyMaskBrushType("soft");
              }),
              (Entries{"RvARBeautyTrack::setBeautyType(" + id + ", 2)",
                       "RvARBeautyTrack::setEnableBeautyGenderDistinction(" + id + ", true)",
                       "RvARBeautyTrack::setApplyGenderToAR(" + id + ", false)",
                       "RvARBeautyTrack::loadCoeffientParameterConfig(" + id + ", \"text\")",
                       "RvARBeautyTrack::setManualLongLegEnable(" + id + ", true)",
                       "RvARBeautyTrack::setManualLongLegRange(" + id + ", 0.1, 0.9)",
                       "RvARBeautyTrack::setManualSlimHeadParam(" + id + ", 0.1, 0.2, 0.3)",
                       "RvARBeautyTrack::setBeautyMaskFaceId(" + id + ", 3)",
                       "RvARBeautyTrack::setBeautyMaskBrushType(" + id + ", \"soft\")"}));
}

TEST(CallLogTest, RecordsListsAndMapsOfBeautyTracks)
{
    const auto track = adopt(RvARBeautyTrack::create("", 0, 0));
    const std::string id = idOf(*track);
    EXPECT_EQ(
        recorded([&] {
            track->setKpARGenderParamCoeffients(KpARGenderFemale,
                                                {{flag(1), 0.5F}, {flag(-2), 2.0F}});
            track->setKpARGenderParamCoeffients(KpARGenderMale, {});
            track->setAllFaceBeautyParam({{5, {{flag(1), 0.5F}, {flag(2), 1.0F}}}, {-6, {}}});
            track->setAllBeautyAnattaForFaceControls({{flag(1), true}, {flag(2), false}});
            track->setMapPointsData({{1.5, -2.0}, {0.0, 1e300}});
            track->setMapPointsData({});
        }),
        (Entries{"RvARBeautyTrack::setKpARGenderParamCoeffients(" + id + ", 2, {-2: 2, 1: 0.5})",
                 "RvARBeautyTrack::setKpARGenderParamCoeffients(" + id + ", 1, {})",
                 "RvARBeautyTrack::setAllFaceBeautyParam(" + id + ", {-6: {}, 5: {1: 0.5, 2: 1}})",
                 "RvARBeautyTrack::setAllBeautyAnattaForFaceControls(" + id +
                     ", {1: true, 2: false})",
                 "RvARBeautyTrack::setMapPointsData(" + id + ", {(1.5, -2), (0, 1e+300)})",
                 "RvARBeautyTrack::setMapPointsData(" + id + ", {})"}));
}

TEST(CallLogTest, RecordsImagesByTheirSizeAndAChecksumOfTheirPixels)
{
    const auto track = adopt(RvARBeautyTrack::create("", 0, 0));
    for (const QImage::Format format :
         {QImage::Format_ARGB32, QImage::Format_Grayscale8, QImage::Format_Mono}) {
        QImage image(3, 2, format);
        image.fill(0);
        const std::string text = imageText(*track, image);
        EXPECT_TRUE(QRegularExpression("^image 3x2 #[0-9]+$").match(text.c_str()).hasMatch())
            << text;
        EXPECT_EQ(imageText(*track, image.copy()), text);
        image.scanLine(1)[0] = 0xff; // the first pixel, or eight of them
        EXPECT_NE(imageText(*track, image), text) << "format " << format;
    }
    EXPECT_EQ(imageText(*track, QImage()), "null");
}

TEST(CallLogTest, RecordsMasksWithoutTheirDataPointer)
{
    const auto track = adopt(RvARBeautyTrack::create("", 0, 0));
    const QImage image(1, 1, QImage::Format_ARGB32);
    EXPECT_EQ(
        recorded([&] { track->loadBeautyMaskDatas(7, &image, "hard", QImage()); }),
        Entries{"RvARBeautyTrack::loadBeautyMaskDatas(" + idOf(*track) + ", 7, \"hard\", null)"});
}

TEST(CallLogTest, RecordsTheSettersOfMakeupTracks)
{
    const auto track = adopt(RvARMakeupTrack::create("", 0, 0));
    const std::string id = idOf(*track);
    const RvARMakeupARGroupData lips{1, "唇", 0.5F, {{"k", "v"}, {"l", ""}}};
    const RvARMakeupARGroupData brows{2, "", 1.0F, {}};
    EXPECT_EQ(recorded([&] {
                  track->setSuitAlpha(0.75F);
                  track->setAllARGroupOrder({"lips", "brows"});
                  track->setARGroupDatas({lips, brows});
                  track->setARFaceGroupDatas({{9, 0.25F, {brows}, {"a"}}, {8, 1.0F, {}, {}}});
              }),
              (Entries{"RvARMakeupTrack::setSuitAlpha(" + id + ", 0.75)",
                       "RvARMakeupTrack::setAllARGroupOrder(" + id + ", {\"lips\", \"brows\"})",
                       "RvARMakeupTrack::setARGroupDatas(" + id +
                           ", {{1, \"唇\", 0.5, \"k\": \"v\", \"l\": \"\"}, {2, \"\", 1}})",
                       "RvARMakeupTrack::setARFaceGroupDatas(" + id +
                           ", {{9, 0.25, {{2, \"\", 1}}, {\"a\"}}, {8, 1, {}, {}}})"}));
}

TEST(CallLogTest, RecordsTheStrokesOfLiquifyTracks)
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    const auto track = adopt(RvARLiquifyTrack::create("", 0, 0));
    const std::string id = idOf(*track);
    EXPECT_EQ(recorded([&] {
                  track->appendToLiquifyOperation(
                      {1.5, -2.0, 3.0F, 0.4F, {QPointF(5, 6), QPointF(7, 8)}, 9});
                  track->confirmCurrentLiquify();
                  track->saveLiquifyConfig(path);
                  track->loadLiquifyConfig(path);
                  track->loadLiquifyConfig("");
              }),
              (Entries{"RvARLiquifyTrack::appendToLiquifyOperation(" + id +
                           ", {1.5, -2, 3, 0.4, (5, 6), (7, 8), 9})",
                       "RvARLiquifyTrack::confirmCurrentLiquify(" + id + ")",
                       "RvARLiquifyTrack::saveLiquifyConfig(" + id + ", " + quoted(path) + ")",
                       "RvARLiquifyTrack::loadLiquifyConfig(" + id + ", " + quoted(path) + ")",
                       "RvARLiquifyTrack::loadLiquifyConfig(" + id + ", \"\")"}));
}

TEST(CallLogTest, NumbersAreTheSameUnderEveryLocale)
{
    const QTemporaryDir folder;
    const auto track = newTrack();
    const auto beauty = adopt(RvARBeautyTrack::create("", 0, 0));
    const ScopedCommaLocale comma(folder.path());
    EXPECT_EQ(
        recorded([&] {
            track->setAlpha(0.5F);
            track->setStartPos(1234567);
            beauty->setMapPointsData({{0.25, 1234567.5}});
        }),
        (Entries{"RvITrack::setAlpha(" + idOf(*track) + ", 0.5)",
                 "RvITrack::setStartPos(" + idOf(*track) + ", 1234567)",
                 "RvARBeautyTrack::setMapPointsData(" + idOf(*beauty) + ", {(0.25, 1234567.5)})"}));
}

TEST(CallLogTest, NumbersThatAreNotFiniteHaveNames)
{
    const auto track = newTrack();
    const std::string before = "RvITrack::setAlpha(" + idOf(*track) + ", ";
    constexpr float infinite = std::numeric_limits<float>::infinity();
    EXPECT_EQ(recorded([&] {
                  track->setAlpha(infinite);
                  track->setAlpha(-infinite);
                  track->setAlpha(std::numeric_limits<float>::quiet_NaN());
                  track->setAlpha(-0.0F);
                  track->setAlpha(std::numeric_limits<float>::max());
              }),
              (Entries{before + "inf)", before + "-inf)", before + "nan)", before + "-0)",
                       before + "3.4028235e+38)"}));
}

namespace {

void readAll(const RvITrack& track)
{
    track.getContext();
    track.getTrackType();
    track.getTrackID();
    track.getTrackSource();
    track.getTag();
    track.getStartPos();
    track.getDuration();
    track.getOriginDuration();
    track.getOriginZOrder();
    track.getAlpha();
    track.getSpeed();
}

void readAll(const RvKpTrack& track)
{
    track.getWidth();
    track.getHeight();
    track.getPositionX();
    track.getPositionY();
    track.getScale();
    track.getRotation();
    track.getFileStartTime();
}

void readAll(const RvDetectionTrack& track)
{
    track.getDetectionMode();
    track.getModelPath();
    track.getActionRange();
    track.getMediaBindType();
    adopt(track.getBindTrack());
}

void readAll(const RvARBeautyTrack& track)
{
    track.getActionRange();
    track.getMediaBindType();
    adopt(track.getBindTrack());
    adopt(track.getBindDetect());
    track.getScriptParams();
    track.getGlobalParamConfiguration();
    track.getFilterAlpha();
    track.getFloatParams();
    track.getFloatParamsWithFaceID();
    track.getAllArFacePlists();
    track.getBeautyType();
    track.getEnableBeautyGenderDistinction();
    track.getApplyGenderToAR();
    track.getCoeffientParameterConfig();
    track.getKpARGenderParamCoeffients(KpARGenderMale);
    track.getAllFaceBeautyParam();
    track.getAllBeautyAnattaForFaceControls();
    track.getManualLongLegEnable();
    track.getManualLongLegRange();
    track.getManualSlimHeadParam();
    track.getMapPointsData();
    track.getBeautyMaskFaceId();
    track.getBeautyMaskBrushType();
    track.getBeautyActiveMaskImage();
}

void readAll(const RvARMakeupTrack& track)
{
    track.getSuitAlpha();
    track.getAllARGroupOrder();
    track.getARGroupDatas();
    track.getARFaceGroupDatas();
}

void readAll(const RvARLiquifyTrack& track)
{
    track.getAppendOperation();
    track.getConfirmedOperations();
}

void readAll(const RvKpTimeLine& timeline)
{
    timeline.getDuration();
    adopt(timeline.getMixTracks());
    for (const auto& group : adopt(timeline.getGroups())) {
        group->getGroupID();
        group->getContext();
        group->getDuration();
        adopt(group->getTracks());
    }
}

void readAll(RvKpApplication& application)
{
    application.getRvKpConfig()->getKpSizeWidth();
    application.getRvKpConfig()->getKpSizeHeight();
    application.getGraphicsView();
    application.getCanvasScale();
    application.getCanvasPosition();
    application.getCanvasShowDimension();
    application.convertViewToCanvas({});
    application.convertCanvasToView({});
    application.convertCanvasToTrack(nullptr, {});
    application.convertTrackToCanvas(nullptr, {});
    application.convertTrackOriginContentToCanvas(nullptr, {});
    const RvKpPlayer* player = application.getPlayer();
    adopt(player->getTimeLine());
    player->getCurrentPosition();
    player->getDuration();
    player->getState();
    player->isPlaying();
    player->isPaused();
    player->getSaveMode();
}

} // namespace

TEST(CallLogTest, DoesNotRecordGettersWrappingsAndReferences)
{
    RvKpApplication application;
    const auto timeline = adopt(RvKpTimeLine::create());
    const auto group = adopt(RvKpGroup::create(1));
    std::vector<Reference<RvITrack>> tracks;
    for (const TrackKind& kind : trackKinds())
        tracks.push_back(adopt(kind.make()));
    timeline->addMixTrack(tracks[0].get());
    group->addTrack(tracks[1].get());
    timeline->pushBackGroup(group.get());
    application.getPlayer()->setTimeLine(timeline.get());
    EXPECT_EQ(recorded([&] {
                  for (const auto& track : tracks) {
                      readAll(*track);
                      track->retain();
                      track->release();
                      adopt(RvITrack::create(track->getContext()));
                      if (const auto* video = dynamic_cast<RvKpTrack*>(track.get()))
                          readAll(*video);
                      if (const auto* detection = dynamic_cast<RvDetectionTrack*>(track.get()))
                          readAll(*detection);
                      if (const auto* beauty = dynamic_cast<RvARBeautyTrack*>(track.get()))
                          readAll(*beauty);
                      if (const auto* makeup = dynamic_cast<RvARMakeupTrack*>(track.get()))
                          readAll(*makeup);
                      if (const auto* liquify = dynamic_cast<RvARLiquifyTrack*>(track.get()))
                          readAll(*liquify);
                  }
                  for (std::size_t i = 0; i < tracks.size(); ++i)
                      adopt(trackKinds()[i].wrap(tracks[i]->getContext()));
                  readAll(*timeline);
                  readAll(application);
              }),
              Entries());
}

TEST(CallLogTest, RecordsEveryCallOfSeveralThreadsInTheOrderOfEachThread)
{
    constexpr int callCount = 2000;
    std::vector<Reference<RvITrack>> tracks;
    for (int i = 0; i < threadCount; ++i)
        tracks.push_back(newTrack());
    const Entries entries = recorded([&] {
        inThreads([&](int thread) {
            for (int call = 0; call < callCount; ++call)
                tracks[static_cast<std::size_t>(thread)]->setZOrder(call);
        });
    });
    EXPECT_EQ(entries.size(), static_cast<std::size_t>(threadCount * callCount));
    for (const auto& track : tracks) {
        const std::string before = "RvITrack::setZOrder(" + idOf(*track) + ", ";
        int next = 0;
        for (const std::string& entry : entries) {
            if (entry.rfind(before, 0) == 0) {
                ASSERT_EQ(entry, before + std::to_string(next++) + ')');
            }
        }
        EXPECT_EQ(next, callCount);
    }
}

TEST(CallLogTest, CanBeStartedStoppedAndReadWhileOtherThreadsCall)
{
    std::atomic<bool> done{false};
    const auto track = newTrack();
    std::thread caller([&] {
        while (!done)
            track->setZOrder(1);
    });
    for (int round = 0; round < 200; ++round) {
        RvCallLog::start();
        RvCallLog::entries();
        RvCallLog::stop();
        const std::size_t count = RvCallLog::count();
        EXPECT_EQ(RvCallLog::entries().size(), count);
    }
    done = true;
    caller.join();
}
