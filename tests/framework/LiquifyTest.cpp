// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"
#include "support/TestMedia.h"
#include "timeline/ScopedPathEncoding.h"

#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvFault.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

using namespace qrvkp;
using namespace qkpar;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double quietNan = std::numeric_limits<double>::quiet_NaN();

RvARLiquifyOperation stroke(double number)
{
    RvARLiquifyOperation operation;
    operation.centerX = number + 0.1;
    operation.centerY = number + 0.2;
    operation.radius = static_cast<float>(number + 0.3);
    operation.strength = static_cast<float>(number + 0.4);
    operation.movePoints = {QPointF(number + 0.5, number + 0.6),
                            QPointF(number + 0.7, number + 0.8)};
    operation.liquifyStyle = static_cast<int>(number);
    return operation;
}

RvARLiquifyOperation oddStroke()
{
    RvARLiquifyOperation operation;
    operation.centerX = quietNan;
    operation.centerY = -infinite;
    operation.radius = std::numeric_limits<float>::quiet_NaN();
    operation.strength = std::numeric_limits<float>::denorm_min();
    operation.movePoints = {QPointF(infinite, -0.0), QPointF(quietNan, 1e-300)};
    operation.liquifyStyle = std::numeric_limits<int>::min();
    return operation;
}

/// The very same number: not a number is one too, and the zeros are told apart.
bool same(double a, double b)
{
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

bool same(const QPointF& a, const QPointF& b)
{
    return same(a.x(), b.x()) && same(a.y(), b.y());
}

bool same(const RvARLiquifyOperation& a, const RvARLiquifyOperation& b)
{
    return same(a.centerX, b.centerX) && same(a.centerY, b.centerY) &&
           same(static_cast<double>(a.radius), static_cast<double>(b.radius)) &&
           same(static_cast<double>(a.strength), static_cast<double>(b.strength)) &&
           same(a.movePoints[0], b.movePoints[0]) && same(a.movePoints[1], b.movePoints[1]) &&
           a.liquifyStyle == b.liquifyStyle;
}

bool same(const std::vector<RvARLiquifyOperation>& a, const std::vector<RvARLiquifyOperation>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& x, const auto& y) { return same(x, y); });
}

/// A liquify track under the id that all of the tests' tracks have, but where ids count.
Reference<RvARLiquifyTrack> newLiquify(std::uint64_t id = 5000)
{
    auto track = adopt(RvARLiquifyTrack::create("", 0, 1000));
    track->setTrackID(id);
    return track;
}

/// A liquify track with two confirmed strokes and a pending one.
Reference<RvARLiquifyTrack> paintedTrack(std::uint64_t id = 5000)
{
    auto track = newLiquify(id);
    track->appendToLiquifyOperation(stroke(1));
    track->appendToLiquifyOperation(oddStroke());
    track->appendToLiquifyOperation(stroke(3));
    return track;
}

/// Nothing of a painted track changed.
void expectPainted(RvARLiquifyTrack& track)
{
    EXPECT_TRUE(same(track.getConfirmedOperations(), {stroke(1), oddStroke()}));
    EXPECT_TRUE(same(track.getAppendOperation(), stroke(3)));
    const auto before = track.getConfirmedOperations().size();
    track.confirmCurrentLiquify();
    EXPECT_EQ(track.getConfirmedOperations().size(), before + 1) << "nothing was pending";
}

class LiquifyTest : public testing::Test
{
protected:
    const Reference<RvARLiquifyTrack> m_track = adopt(RvARLiquifyTrack::create("", 0, 1000));
};

/// With a folder to save to.
class LiquifyFileTest : public testing::Test
{
protected:
    std::string folder() const { return m_folder.path().toLocal8Bit().toStdString(); }

    /// The one file in the folder.
    QString savedFile() const
    {
        const QStringList files = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
        EXPECT_EQ(files.size(), 1);
        return files.value(0);
    }

    QByteArray savedBytes() const
    {
        return TestMedia::content((m_folder.path() + '/' + savedFile()).toStdString());
    }

    void replaceSaved(const QByteArray& bytes) const
    {
        TestMedia::file(m_folder.path(), savedFile(), bytes);
    }

    /// Loading what the folder holds is refused and changes nothing.
    void expectRefused(const std::string& what) const
    {
        SCOPED_TRACE(what);
        const auto track = paintedTrack();
        EXPECT_FALSE(track->loadLiquifyConfig(folder()));
        expectPainted(*track);
    }

    const Reference<RvARLiquifyTrack> m_loaded = newLiquify();
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(LiquifyTest, StartsWithoutStrokes)
{
    EXPECT_TRUE(same(m_track->getAppendOperation(), RvARLiquifyOperation()));
    EXPECT_TRUE(m_track->getConfirmedOperations().empty());
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(m_track->getConfirmedOperations().empty());
}

TEST_F(LiquifyTest, AnAppendedStrokeIsPendingUntilItIsConfirmed)
{
    m_track->appendToLiquifyOperation(oddStroke());
    EXPECT_TRUE(same(m_track->getAppendOperation(), oddStroke()));
    EXPECT_TRUE(m_track->getConfirmedOperations().empty());
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {oddStroke()}));
}

TEST_F(LiquifyTest, AStrokeIsConfirmedOnceAndStaysTheOneAppendedLast)
{
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->confirmCurrentLiquify();
    m_track->confirmCurrentLiquify();
    EXPECT_EQ(m_track->getConfirmedOperations().size(), 1U);
    EXPECT_TRUE(same(m_track->getAppendOperation(), stroke(1)));
}

TEST_F(LiquifyTest, AppendingConfirmsTheStrokeBefore)
{
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->appendToLiquifyOperation(stroke(2));
    m_track->confirmCurrentLiquify();
    m_track->appendToLiquifyOperation(stroke(3));
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {stroke(1), stroke(2)}));
    EXPECT_TRUE(same(m_track->getAppendOperation(), stroke(3)));
}

TEST_F(LiquifyTest, TwoWrappersShareTheStrokes)
{
    const auto second = adopt(RvARLiquifyTrack::create(m_track->getContext()));
    m_track->appendToLiquifyOperation(stroke(1));
    second->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {stroke(1)}));
}

TEST_F(LiquifyTest, BringingItToAStateThatIsLostAddsNothingHoweverOften)
{
    for (const auto& each : {stroke(1), oddStroke(), stroke(3)})
        m_track->appendToLiquifyOperation(each);
    m_track->confirmCurrentLiquify();
    const auto before = m_track->getConfirmedOperations();
    // To and fro between states whose last strokes are these.
    for (const auto& each : {oddStroke(), stroke(3), stroke(1), stroke(1), oddStroke()}) {
        m_track->appendToLiquifyOperation(each);
        EXPECT_FALSE(m_track->loadLiquifyConfig("/missing"));
        EXPECT_TRUE(same(m_track->getAppendOperation(), stroke(3)));
    }
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), before));
}

TEST_F(LiquifyTest, BringingItToALostStateWithoutStrokesAddsNothing)
{
    for (int i = 0; i < 3; ++i) {
        m_track->appendToLiquifyOperation(RvARLiquifyOperation());
        EXPECT_FALSE(m_track->loadLiquifyConfig(""));
    }
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(m_track->getConfirmedOperations().empty());
}

TEST_F(LiquifyTest, AStrokeOfALostStateThatItDoesNotHaveIsAddedOnce)
{
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->confirmCurrentLiquify();
    for (const int last : {2, 1, 2, 1}) {
        m_track->appendToLiquifyOperation(stroke(last));
        EXPECT_FALSE(m_track->loadLiquifyConfig(""));
    }
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {stroke(1), stroke(2)}));
}

TEST_F(LiquifyTest, AStrokeThatIsMadeTwiceStaysTwo)
{
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->appendToLiquifyOperation(stroke(1));
    EXPECT_FALSE(m_track->loadLiquifyConfig(""));
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {stroke(1), stroke(1)}));
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->confirmCurrentLiquify();
    EXPECT_EQ(m_track->getConfirmedOperations().size(), 3U);
}

TEST_F(LiquifyTest, RightAfterAFailedLoadTheLastStrokeIsNotAppendedAgain)
{
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->confirmCurrentLiquify();
    EXPECT_FALSE(m_track->loadLiquifyConfig(""));
    m_track->appendToLiquifyOperation(stroke(1));
    m_track->confirmCurrentLiquify();
    EXPECT_EQ(m_track->getConfirmedOperations().size(), 1U);

    EXPECT_FALSE(m_track->loadLiquifyConfig(""));
    m_track->appendToLiquifyOperation(stroke(2));
    m_track->appendToLiquifyOperation(stroke(2));
    m_track->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_track->getConfirmedOperations(), {stroke(1), stroke(2), stroke(2)}));
}

TEST_F(LiquifyFileTest, SavedStrokesAreLoadedAsTheyWere)
{
    const auto painted = paintedTrack();
    painted->confirmCurrentLiquify();
    EXPECT_TRUE(painted->saveLiquifyConfig(folder()));
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
    EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(1), oddStroke(), stroke(3)}));
    EXPECT_TRUE(same(m_loaded->getAppendOperation(), stroke(3)));
}

TEST_F(LiquifyFileTest, SavingChangesNothing)
{
    const auto painted = paintedTrack();
    EXPECT_TRUE(painted->saveLiquifyConfig(folder()));
    expectPainted(*painted);
}

TEST_F(LiquifyFileTest, APendingStrokeIsNotSavedAsAConfirmedOne)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
    EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(1), oddStroke()}));
    m_loaded->confirmCurrentLiquify();
    EXPECT_EQ(m_loaded->getConfirmedOperations().size(), 2U);
}

TEST_F(LiquifyFileTest, LoadingReplacesThePendingStrokeAndTheConfirmedOnes)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    m_loaded->appendToLiquifyOperation(stroke(8));
    m_loaded->appendToLiquifyOperation(stroke(9));
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
    m_loaded->confirmCurrentLiquify();
    EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(1), oddStroke()}));
}

TEST_F(LiquifyFileTest, NoStrokesAreSavedAndLoadedToo)
{
    EXPECT_TRUE(newLiquify()->saveLiquifyConfig(folder()));
    const auto track = paintedTrack();
    EXPECT_TRUE(track->loadLiquifyConfig(folder()));
    EXPECT_TRUE(track->getConfirmedOperations().empty());
    EXPECT_TRUE(same(track->getAppendOperation(), RvARLiquifyOperation()));
}

TEST_F(LiquifyFileTest, SavingAgainReplacesWhatWasSaved)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    m_loaded->appendToLiquifyOperation(stroke(5));
    m_loaded->confirmCurrentLiquify();
    EXPECT_TRUE(m_loaded->saveLiquifyConfig(folder() + '/'));
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
    EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(5)}));
    savedFile();
}

TEST_F(LiquifyFileTest, TracksThatShareAFolderHaveAFileEach)
{
    const auto first = newLiquify(1);
    const auto second = newLiquify(std::numeric_limits<std::uint64_t>::max());
    first->appendToLiquifyOperation(stroke(1));
    second->appendToLiquifyOperation(stroke(2));
    for (const auto* track : {&first, &second}) {
        (*track)->confirmCurrentLiquify();
        EXPECT_TRUE((*track)->saveLiquifyConfig(folder()));
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files),
              (QStringList{"liquify-1.dat", "liquify-18446744073709551615.dat"}));
    for (const auto* track : {&first, &second}) {
        (*track)->appendToLiquifyOperation(stroke(3));
        EXPECT_TRUE((*track)->loadLiquifyConfig(folder()));
    }
    EXPECT_TRUE(same(first->getConfirmedOperations(), {stroke(1)}));
    EXPECT_TRUE(same(second->getConfirmedOperations(), {stroke(2)}));
}

TEST_F(LiquifyFileTest, LoadingWhatAnotherTrackSavedIsRefused)
{
    EXPECT_TRUE(paintedTrack(1)->saveLiquifyConfig(folder()));
    expectRefused("the strokes of another track");
    EXPECT_TRUE(newLiquify(1)->loadLiquifyConfig(folder()));
}

TEST_F(LiquifyFileTest, LoadingFromAnEmptyOrMissingFolderOrAFileIsRefused)
{
    expectRefused("an empty folder");
    const std::string file = TestMedia::file(m_folder.path(), "file", "no folder");
    const auto track = paintedTrack();
    EXPECT_FALSE(track->loadLiquifyConfig(""));
    EXPECT_FALSE(track->loadLiquifyConfig(folder() + "/missing"));
    EXPECT_FALSE(track->loadLiquifyConfig(file));
    expectPainted(*track);
}

TEST_F(LiquifyFileTest, LoadingAFileThatEndsTooEarlyIsRefused)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    const QByteArray whole = savedBytes();
    for (int size = 0; size < whole.size() && !HasFailure(); ++size) {
        replaceSaved(whole.left(size));
        expectRefused("the first " + std::to_string(size) + " bytes");
    }
    replaceSaved(whole);
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
}

TEST_F(LiquifyFileTest, LoadingAFileWithMoreThanItsStrokesIsRefused)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    replaceSaved(savedBytes() + '\0');
    expectRefused("one byte more");
}

TEST_F(LiquifyFileTest, LoadingAFileOfAnotherFormatOrVersionIsRefused)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    const QByteArray whole = savedBytes();
    for (int i = 0; i < 8; ++i) {
        QByteArray changed = whole;
        changed[i] = static_cast<char>(changed[i] ^ 0x40);
        replaceSaved(changed);
        expectRefused("byte " + std::to_string(i));
    }
    for (const char filler : {'\0', '\xff', '{'}) {
        replaceSaved(QByteArray(whole.size(), filler));
        expectRefused("a file of one byte value");
    }
}

TEST_F(LiquifyFileTest, SavingToAMissingFolderOrAFileFails)
{
    const std::string file = TestMedia::file(m_folder.path(), "file", "no folder");
    const auto track = paintedTrack();
    EXPECT_FALSE(track->saveLiquifyConfig(""));
    EXPECT_FALSE(track->saveLiquifyConfig(folder() + "/missing"));
    EXPECT_FALSE(track->saveLiquifyConfig(file));
    expectPainted(*track);
    EXPECT_EQ(savedFile(), "file");
    EXPECT_EQ(savedBytes(), "no folder");
}

TEST_F(LiquifyFileTest, SavingFailsWhenAFolderStandsInPlaceOfTheFile)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    const QString name = savedFile();
    ASSERT_TRUE(QFile::remove(m_folder.filePath(name)));
    ASSERT_TRUE(QDir().mkdir(m_folder.filePath(name)));
    EXPECT_FALSE(paintedTrack()->saveLiquifyConfig(folder()));
    expectRefused("a folder in place of the file");
}

TEST_F(LiquifyFileTest, AFailingSaveLeavesWhatWasSavedBefore)
{
    EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(folder()));
    RvFault::failNext("RvARLiquifyTrack::saveLiquifyConfig");
    EXPECT_FALSE(m_loaded->saveLiquifyConfig(folder()));
    EXPECT_TRUE(m_loaded->loadLiquifyConfig(folder()));
    EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(1), oddStroke()}));
}

TEST_F(LiquifyFileTest, FoldersAreNamedInTheLocalEncoding)
{
    const QString name = QString::fromUtf8("撤销缓存");
    for (const char* encoding : {"UTF-8", "GB18030"}) {
        SCOPED_TRACE(encoding);
        const ScopedPathEncoding scope(encoding);
        QDir whole(m_folder.path());
        ASSERT_TRUE(whole.mkdir(name));
        ASSERT_TRUE(whole.cd(name));
        const std::string below = whole.path().toLocal8Bit().toStdString();
        EXPECT_TRUE(paintedTrack()->saveLiquifyConfig(below));
        EXPECT_FALSE(whole.isEmpty());
        EXPECT_TRUE(m_loaded->loadLiquifyConfig(below));
        EXPECT_TRUE(same(m_loaded->getConfirmedOperations(), {stroke(1), oddStroke()}));
        EXPECT_TRUE(whole.removeRecursively());
    }
}
