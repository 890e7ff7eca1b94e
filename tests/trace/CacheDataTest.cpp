// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TraceFixture.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>

#include <type_traits>

using norvel::RvAttributeUtility;
using norvel::RvEditorCacheData;

static_assert(std::is_nothrow_move_constructible_v<RvEditorCacheData>);
static_assert(std::is_copy_constructible_v<RvEditorCacheData>);
static_assert(std::is_copy_assignable_v<RvEditorCacheData>);

namespace {

/// The folders that captures of a liquify track write below the cache root.
class CacheDataTest : public TraceTest
{
protected:
    CacheDataTest()
    {
        RvAttributeUtility::_sCacheDir.clear();
        RvAttributeUtility::_sCurrentCacheLiquefyDir.clear();
    }
    ~CacheDataTest() override
    {
        RvAttributeUtility::_sCacheDir = m_cacheDir;
        RvAttributeUtility::_sCurrentCacheLiquefyDir = m_current;
    }

    void addLiquify()
    {
        timeline->addMixTrack(TimelineSamples::track(norvel::RecordTypeARLiquify, 50).get());
    }

    /// Has the next captures write to other folders than those before, whatever the time is.
    void changeRoot() { trace->setCacheDir(root().toStdString() + "/next"); }

    QString root() const { return m_root.path(); }
    std::string current() const { return trace->getCurrentCacheData().liquifyCacheDir; }

private:
    const std::string m_cacheDir = RvAttributeUtility::_sCacheDir;
    const std::string m_current = RvAttributeUtility::_sCurrentCacheLiquefyDir;
    QTemporaryDir m_root;
};

} // namespace

TEST_F(CacheDataTest, IsAValue)
{
    const RvEditorCacheData none;
    EXPECT_EQ(none.liquifyCacheDir, "");
    const RvEditorCacheData some{"/cache"};
    RvEditorCacheData copy(some);
    EXPECT_EQ(copy.liquifyCacheDir, "/cache");
    const RvEditorCacheData moved(std::move(copy));
    EXPECT_EQ(moved.liquifyCacheDir, "/cache");
    RvEditorCacheData assigned;
    assigned = some;
    EXPECT_EQ(assigned.liquifyCacheDir, "/cache");
    EXPECT_EQ(some.liquifyCacheDir, "/cache");
}

TEST_F(CacheDataTest, IsEmptyBeforeALiquifyWasCaptured)
{
    EXPECT_EQ(current(), "");
    trace->initTrace();
    EXPECT_EQ(current(), "");
}

TEST_F(CacheDataTest, MakesNoFolderWhenTheRootIsSet)
{
    const QString folder = root() + "/below";
    trace->setCacheDir(folder.toStdString());
    EXPECT_EQ(RvAttributeUtility::_sCacheDir, folder.toStdString());
    trace->initTrace(); // there is no liquify to save
    EXPECT_FALSE(QDir(folder).exists());
    EXPECT_EQ(current(), "");
}

TEST_F(CacheDataTest, TellsTheFolderOfTheLastCapturedLiquify)
{
    trace->setCacheDir(root().toStdString());
    addLiquify();
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    EXPECT_TRUE(trace->initTrace());
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    const QString folder = QString::fromStdString(current());
    EXPECT_TRUE(QDir(folder).exists());
    const QString undo = root() + "/Norvel/Undo/";
    ASSERT_TRUE(folder.startsWith(undo)) << current();
    const qint64 time = folder.mid(undo.size()).toLongLong();
    EXPECT_GE(time, before);
    EXPECT_LE(time, after);

    changeRoot();
    EXPECT_TRUE(trace->recordStatus());
    EXPECT_NE(current(), folder.toStdString());
    EXPECT_TRUE(QDir(folder).exists()) << "the former one stays";
}

TEST_F(CacheDataTest, GivesACopy)
{
    trace->setCacheDir(root().toStdString());
    addLiquify();
    trace->initTrace();
    const RvEditorCacheData data = trace->getCurrentCacheData();
    RvAttributeUtility::_sCurrentCacheLiquefyDir = "/other";
    EXPECT_NE(data.liquifyCacheDir, "/other");
    EXPECT_EQ(current(), "/other");
}

TEST_F(CacheDataTest, IsSharedByAllHistories)
{
    const std::unique_ptr<norvel::RvEditorTrace> second(
        norvel::RvEditorTrace::create(&application));
    second->setCacheDir(root().toStdString());
    addLiquify();
    trace->initTrace();
    EXPECT_TRUE(QString::fromStdString(current()).startsWith(root()));
    EXPECT_EQ(second->getCurrentCacheData().liquifyCacheDir, current());
}

TEST_F(CacheDataTest, FallsBackToTheCacheLocation)
{
    addLiquify();
    trace->initTrace();
    EXPECT_NE(RvAttributeUtility::_sCacheDir, "");
    EXPECT_EQ(current().rfind(RvAttributeUtility::_sCacheDir + "/Norvel/Undo/", 0), 0U);
}

TEST_F(CacheDataTest, StepsALiquifyThroughItsSavedStrokes)
{
    trace->setCacheDir(root().toStdString());
    addLiquify();
    trace->initTrace();
    const std::string first = current();
    changeRoot();
    trace->recordStatus();
    EXPECT_NE(current(), first);
    const Calls undone = callsOf([&] { trace->undo(); });
    EXPECT_EQ(std::count(undone.begin(), undone.end(),
                         "RvARLiquifyTrack::loadLiquifyConfig(50, \"" + first + "\")"),
              1);
}
