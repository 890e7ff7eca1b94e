// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/LiquifyCacheFixture.h"

#include "support/TestMedia.h"

#include <norvel/timeline/private/TrackTypes.h>

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvFault.h>

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;

// Taken before any test can set them.
const std::string rootAtFirst = RvAttributeUtility::_sCacheDir;
const std::string currentAtFirst = RvAttributeUtility::_sCurrentCacheLiquefyDir;

TEST_F(LiquifyCacheTest, ThereIsNoRootAndNoCurrentFolderAtFirst)
{
    EXPECT_EQ(rootAtFirst, "");
    EXPECT_EQ(currentAtFirst, "");
}

TEST_F(LiquifyCacheTest, TheFolderIsNamedByTheMillisecondsSinceTheEpoch)
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const auto record = capture();
    const qint64 after = QDateTime::currentMSecsSinceEpoch();

    const QString start = m_cache.root() + "/Norvel/Undo/";
    ASSERT_TRUE(record);
    ASSERT_TRUE(record->effectPath.startsWith(start)) << record->effectPath.toStdString();
    const QString name = record->effectPath.mid(start.size());
    bool isNumber = false;
    const qint64 milliseconds = name.toLongLong(&isNumber);
    EXPECT_TRUE(isNumber);
    EXPECT_EQ(name, QString::number(milliseconds));
    EXPECT_GE(milliseconds, before);
    EXPECT_LE(milliseconds, after);
    EXPECT_EQ(m_cache.folders(), QStringList{name});
}

TEST_F(LiquifyCacheTest, TheFolderIsRememberedAsTheCurrentOne)
{
    EXPECT_EQ(current(), "");
    const auto record = capture();
    EXPECT_EQ(current(), record->effectPath.toStdString());
}

TEST_F(LiquifyCacheTest, ThePendingStrokeIsConfirmedThenAllAreSaved)
{
    addStroke(1.0F);
    addStroke(2.0F);
    m_track->setTrackID(77);
    std::unique_ptr<RvARLiquifyAttribute> record;
    const Calls calls = callsOf([&] { record = capture(); });
    EXPECT_EQ(calls, (Calls{"RvARLiquifyTrack::confirmCurrentLiquify(77)",
                            "RvARLiquifyTrack::saveLiquifyConfig(77, \"" +
                                record->effectPath.toStdString() + "\")"}));
    EXPECT_EQ(savedRadii(record->effectPath), (std::vector<float>{1.0F, 2.0F}));
    EXPECT_EQ(m_track->getConfirmedOperations().size(), 2U);
    // The stroke is described although it is pending no more.
    EXPECT_EQ(record->radius, 2.0F);
}

TEST_F(LiquifyCacheTest, ATrackWithoutStrokesIsSavedToo)
{
    const auto record = capture();
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{});
}

TEST_F(LiquifyCacheTest, AnUndoneTrackHasTheStrokesOfItsRecord)
{
    addStroke(1.0F);
    const auto record = capture();
    addStroke(2.0F);
    RvAttributeUtility::updateTrack(m_timeline.get(), m_track.get(), record.get());
    ASSERT_EQ(m_track->getConfirmedOperations().size(), 1U);
    EXPECT_EQ(m_track->getConfirmedOperations().front().radius, 1.0F);
    EXPECT_EQ(m_track->getAppendOperation().radius, 1.0F);
}

TEST_F(LiquifyCacheTest, AnEmptyRootBecomesTheCacheLocationOfQt)
{
    RvAttributeUtility::_sCacheDir.clear();
    const QString location = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    ASSERT_FALSE(location.isEmpty());
    const auto record = capture();
    EXPECT_EQ(root(), location.toStdString());
    EXPECT_TRUE(record->effectPath.startsWith(location + "/Norvel/Undo/"));
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{});
}

TEST_F(LiquifyCacheTest, ARootThatIsSetStays)
{
    const std::string before = root();
    capture();
    EXPECT_EQ(root(), before);
}

TEST_F(LiquifyCacheTest, OnlyALiquifyLooksForARoot)
{
    RvAttributeUtility::_sCacheDir.clear();
    const LiveTimeline timeline;
    timeline.addDetection(1);
    timeline.addMix(owned(newLiveTrack(8)).get());
    timeline.capture();
    EXPECT_EQ(root(), "");
    EXPECT_EQ(current(), "");
}

TEST_F(LiquifyCacheTest, ALiquifyOnTheMainLineIsNotCaptured)
{
    const LiveTimeline timeline;
    const auto track = owned(newLiveTrack(13));
    timeline.addGroup({track.get()});
    timeline.capture();
    EXPECT_EQ(m_cache.folders(), QStringList{});
}

TEST_F(LiquifyCacheTest, MissingParentsAreMade)
{
    setRoot(m_cache.root() + "/a/b c/d");
    const auto record = capture();
    EXPECT_TRUE(record->effectPath.startsWith(m_cache.root() + "/a/b c/d/Norvel/Undo/"));
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{});
}

TEST_F(LiquifyCacheTest, TheRootIsTakenAsItStands)
{
    setRoot(m_cache.root() + "/x/../y/");
    const auto record = capture();
    EXPECT_TRUE(record->effectPath.startsWith(m_cache.root() + "/x/../y//Norvel/Undo/"));
    EXPECT_EQ(current(), record->effectPath.toStdString());
}

TEST_F(LiquifyCacheTest, TheRootMayBeChinese)
{
    setRoot(m_cache.root() + "/缓存 文件夹");
    addStroke(4.0F);
    std::unique_ptr<RvARLiquifyAttribute> record;
    const Calls calls = callsOf([&] { record = capture(); });
    ASSERT_TRUE(record->effectPath.startsWith(m_cache.root() + "/缓存 文件夹/Norvel/Undo/"));
    EXPECT_EQ(current(), record->effectPath.toStdString());
    EXPECT_NE(calls.back().find("/缓存 文件夹/Norvel/Undo/"), std::string::npos);
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{4.0F});
}

TEST_F(LiquifyCacheTest, TheFrameworkIsToldTheFolderInTheLocalEncoding)
{
    const ScopedPathEncoding gbk("GB18030");
    setRoot(m_cache.root() + "/缓存");
    std::unique_ptr<RvARLiquifyAttribute> record;
    const Calls calls = callsOf([&] { record = capture(); });
    EXPECT_NE(calls.back().find("/\xbb\xba\xb4\xe6/Norvel/Undo/"), std::string::npos);
    // The names kept are text all the same.
    EXPECT_TRUE(record->effectPath.startsWith(m_cache.root() + "/缓存/Norvel/Undo/"));
    EXPECT_EQ(current(), record->effectPath.toStdString());
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{});
    // Under another encoding the folder would not be found.
    EXPECT_TRUE(QDir(m_cache.root() + "/缓存").removeRecursively());
}

TEST_F(LiquifyCacheTest, AFolderOfTheSameMillisecondIsSharedAndTheLaterStrokesStay)
{
    addStroke(1.0F);
    const auto first = captureAt(m_time, *m_track);
    addStroke(2.0F);
    const auto second = captureAt(m_time, *m_track);
    EXPECT_EQ(first->effectPath, folderAt(m_time));
    EXPECT_EQ(second->effectPath, folderAt(m_time));
    EXPECT_EQ(m_cache.folders(), QStringList{QString::number(m_time)});
    EXPECT_EQ(savedRadii(folderAt(m_time)), (std::vector<float>{1.0F, 2.0F}));
    EXPECT_EQ(current(), folderAt(m_time).toStdString());
}

TEST_F(LiquifyCacheTest, AFolderOfAnotherMillisecondIsAnotherOne)
{
    addStroke(1.0F);
    captureAt(m_time, *m_track);
    addStroke(2.0F);
    captureAt(m_time + 1, *m_track);
    EXPECT_EQ(savedRadii(folderAt(m_time)), std::vector<float>{1.0F});
    EXPECT_EQ(savedRadii(folderAt(m_time + 1)), (std::vector<float>{1.0F, 2.0F}));
    EXPECT_EQ(current(), folderAt(m_time + 1).toStdString());
}

TEST_F(LiquifyCacheTest, TheFolderIsNamedInDecimalWhateverTheTime)
{
    for (const qint64 time : {qint64{0}, qint64{-1}, qint64{7}, qint64{253402300799999}})
        EXPECT_EQ(captureAt(time, *m_track)->effectPath, folderAt(time));
}

TEST_F(LiquifyCacheTest, TracksThatAreCapturedInOneMillisecondGetBackTheirOwnStrokes)
{
    const auto other = withId(qkpar::RvARLiquifyTrack::create(std::string(), 0, 0), 78);
    m_timeline.addMix(other.get());
    addStroke(1.0F);
    addStroke(*other, 2.0F);
    const auto record = captureAt(m_time, *m_track);
    const auto otherRecord = captureAt(m_time, *other);
    EXPECT_EQ(record->effectPath, otherRecord->effectPath);
    EXPECT_EQ(savedRadii(folderAt(m_time)), std::vector<float>{1.0F});
    EXPECT_EQ(savedRadii(folderAt(m_time), 78), std::vector<float>{2.0F});

    // As an undo does with both of them.
    record->type = otherRecord->type = RecordTypeARLiquify;
    addStroke(3.0F);
    RvAttributeUtility::updateTrack(m_timeline.get(), m_track.get(), record.get());
    RvAttributeUtility::updateTrack(m_timeline.get(), other.get(), otherRecord.get());
    EXPECT_EQ(radii(*m_track), std::vector<float>{1.0F});
    EXPECT_EQ(radii(*other), std::vector<float>{2.0F});
}

// Failure.

TEST_F(LiquifyCacheTest, AFailedSaveLeavesTheFolderAndNothingElse)
{
    captureAt(m_time, *m_track);
    RvFault::failNext("RvARLiquifyTrack::saveLiquifyConfig");
    const auto record = captureAt(m_time + 1, *m_track);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), folderAt(m_time).toStdString());
    ASSERT_EQ(m_cache.folders().size(), 2);
    EXPECT_TRUE(QDir(folderAt(m_time + 1)).isEmpty());
}

TEST_F(LiquifyCacheTest, StrokesDoNotGrowByUndosWithoutAFolder)
{
    setRoot(QString::fromStdString(TestMedia::file(m_cache.root(), "file", "not a folder")));
    addStroke(1.0F);
    const auto first = capture();
    addStroke(2.0F);
    const auto second = capture();
    ASSERT_EQ(first->effectPath, "");
    for (int i = 0; i < 3; ++i) {
        for (const auto* record : {&first, &second}) {
            RvAttributeUtility::updateTrack(m_timeline.get(), m_track.get(), record->get());
            EXPECT_EQ(capture()->radius, 2.0F);
            EXPECT_EQ(radii(*m_track), (std::vector<float>{1.0F, 2.0F}));
        }
    }
}

TEST_F(LiquifyCacheTest, StrokesDoNotGrowByUndosWhenTheFolderIsGone)
{
    addStroke(1.0F);
    const auto record = capture();
    ASSERT_TRUE(QDir(record->effectPath).removeRecursively());
    for (int i = 0; i < 3; ++i)
        RvAttributeUtility::updateTrack(m_timeline.get(), m_track.get(), record.get());
    m_track->confirmCurrentLiquify();
    EXPECT_EQ(radii(*m_track), std::vector<float>{1.0F});
}

TEST_F(LiquifyCacheTest, AFailedSaveHasConfirmedTheStrokeAllTheSame)
{
    addStroke(1.0F);
    RvFault::failNext("RvARLiquifyTrack::saveLiquifyConfig");
    const auto record = capture();
    EXPECT_EQ(m_track->getConfirmedOperations().size(), 1U);
    EXPECT_EQ(record->radius, 1.0F);
}

TEST_F(LiquifyCacheTest, ARootThatIsAFileGivesNoFolder)
{
    setRoot(QString::fromStdString(TestMedia::file(m_cache.root(), "file", "not a folder")));
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
}

TEST_F(LiquifyCacheTest, ARootThatIsNoTextGivesAFolderOfReplacementCharacters)
{
    RvAttributeUtility::_sCacheDir = m_cache.root().toStdString() + "/\xff\xfe";
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->effectPath.startsWith(m_cache.root() + "/\xef\xbf\xbd\xef\xbf\xbd/"));
    EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{});
}

TEST_F(LiquifyCacheTest, AVeryLongRootGivesNoFolder)
{
    setRoot(m_cache.root() + '/' + QString(100000, 'x'));
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
}

} // namespace
