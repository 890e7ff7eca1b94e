// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"
#include "timeline/ScopedPathEncoding.h"

#include "support/TestMedia.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvFault.h>

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Calls = std::vector<std::string>;

// Taken before any test can set them.
const std::string rootAtFirst = RvAttributeUtility::_sCacheDir;
const std::string currentAtFirst = RvAttributeUtility::_sCurrentCacheLiquefyDir;

class LiquifyCacheTest : public testing::Test
{
protected:
    void SetUp() override { m_timeline.addMix(m_track.get()); }

    /// Captures the timeline; the record of the liquify.
    std::unique_ptr<RvARLiquifyAttribute> capture() const
    {
        auto record = m_timeline.captureOnlyMix();
        return std::unique_ptr<RvARLiquifyAttribute>(
            dynamic_cast<RvARLiquifyAttribute*>(record.release()));
    }

    static void setRoot(const QString& root)
    {
        RvAttributeUtility::_sCacheDir = root.toStdString();
    }

    static std::string root() { return RvAttributeUtility::_sCacheDir; }
    static std::string current() { return RvAttributeUtility::_sCurrentCacheLiquefyDir; }

    /// The radii of the strokes that were saved in a folder.
    static std::vector<float> savedRadii(const QString& folder)
    {
        const auto track = owned(RvARLiquifyTrack::create(std::string(), 0, 0));
        EXPECT_TRUE(track->loadLiquifyConfig(folder.toLocal8Bit().toStdString()))
            << folder.toStdString();
        std::vector<float> radii;
        for (const RvARLiquifyOperation& stroke : track->getConfirmedOperations())
            radii.push_back(stroke.radius);
        return radii;
    }

    void addStroke(float radius) const
    {
        RvARLiquifyOperation stroke;
        stroke.radius = radius;
        m_track->appendToLiquifyOperation(stroke);
    }

    const ScopedPathEncoding m_encoding{"UTF-8"};
    const ScopedCache m_cache;
    const LiveTimeline m_timeline;
    const Owned<RvARLiquifyTrack> m_track =
        owned(dynamic_cast<RvARLiquifyTrack*>(newLiveTrack(13)));
};

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

/// Folders with a file in each, for every millisecond of the next while.
class MillisecondFolders
{
public:
    MillisecondFolders(const QString& root, const std::string& savedStrokes)
        : m_undo(root + "/Norvel/Undo")
    {
        EXPECT_TRUE(QDir().mkpath(m_undo));
        // Some seconds more than it takes to make them all.
        const qint64 start = QDateTime::currentMSecsSinceEpoch();
        for (qint64 name = start; name < QDateTime::currentMSecsSinceEpoch() + 5000; ++name) {
            const QString folder = m_undo + '/' + QString::number(name);
            EXPECT_TRUE(QDir().mkdir(folder));
            TestMedia::copy(savedStrokes, folder, "liquify.dat");
            ++m_count;
        }
    }

    int count() const { return m_count; }

private:
    const QString m_undo;
    int m_count = 0;
};

TEST_F(LiquifyCacheTest, AFolderOfTheSameMillisecondIsSharedAndTheLaterStrokesStay)
{
    addStroke(1.0F);
    const auto first = capture();
    const QString firstFolder = first->effectPath;
    const QTemporaryDir root;
    setRoot(root.path());
    const MillisecondFolders folders(root.path(), firstFolder.toStdString() + "/liquify.dat");

    addStroke(2.0F);
    const auto second = capture();

    const QDir undo(root.path() + "/Norvel/Undo");
    EXPECT_EQ(undo.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), folders.count());
    EXPECT_EQ(savedRadii(second->effectPath), (std::vector<float>{1.0F, 2.0F}));
    EXPECT_EQ(current(), second->effectPath.toStdString());
}

// Failure.

TEST_F(LiquifyCacheTest, AFailedSaveLeavesTheFolderAndNothingElse)
{
    const auto before = capture();
    const std::string currentBefore = current();
    RvFault::failNext("RvARLiquifyTrack::saveLiquifyConfig");
    // Another millisecond, so that the folder is another one.
    while (QDateTime::currentMSecsSinceEpoch() <= before->effectPath.section('/', -1).toLongLong())
        ;
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), currentBefore);
    ASSERT_EQ(m_cache.folders().size(), 2);
    const QDir folder(m_cache.root() + "/Norvel/Undo/" + m_cache.folders().last());
    EXPECT_TRUE(folder.isEmpty());
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

#ifdef Q_OS_UNIX
/// No file of this process may grow, as on a full disk, while it lives. Unlike the rights of a
/// folder that holds for every user.
class FullDisk
{
public:
    FullDisk()
        : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit none = m_before;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*m_signal)(int);
    rlimit m_before{};
};

TEST_F(LiquifyCacheTest, AFullDiskLeavesAnEmptyFolder)
{
    addStroke(1.0F);
    std::unique_ptr<RvARLiquifyAttribute> record;
    {
        const FullDisk disk;
        record = capture();
    }
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
    ASSERT_EQ(m_cache.folders().size(), 1);
    EXPECT_TRUE(QDir(m_cache.root() + "/Norvel/Undo/" + m_cache.folders().first()).isEmpty());
}

TEST_F(LiquifyCacheTest, ARootThatTakesNoFolderGivesNone)
{
    setRoot(QStringLiteral("/proc/self"));
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
}
#endif

} // namespace
