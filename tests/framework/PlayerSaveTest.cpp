// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayedTimeline.h"
#include "SampleMedia.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>
#include <utility>
#include <vector>

using namespace qrvkp;

namespace {

/// The pictures of a video file, as another program decodes them.
std::vector<QImage> picturesOf(const QString& path, const QSize& size)
{
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg", {"-v", "error", "-nostdin", "-i", path, "-vsync", "0", "-f", "rawvideo",
                            "-pix_fmt", "bgra", "-"});
    EXPECT_TRUE(ffmpeg.waitForFinished(60000)) << ffmpeg.errorString().toStdString();
    EXPECT_EQ(ffmpeg.readAllStandardError().toStdString(), "");
    const QByteArray bytes = ffmpeg.readAllStandardOutput();
    const int bytesOfOne = size.width() * size.height() * 4;
    EXPECT_EQ(bytes.size() % bytesOfOne, 0) << "pictures of another size";
    std::vector<QImage> pictures;
    for (int start = 0; start + bytesOfOne <= bytes.size(); start += bytesOfOne) {
        const QImage picture(reinterpret_cast<const uchar*>(bytes.constData() + start),
                             size.width(), size.height(), QImage::Format_RGB32);
        pictures.push_back(picture.copy());
    }
    return pictures;
}

class PlayerSaveTest : public PlayedTimeline
{
protected:
    PlayerSaveTest() { m_settings.frameRate = 25.0; }

    QString pathOf(const QString& name) const { return QDir(m_folder.path()).filePath(name); }

    bool startSave(const QString& path)
    {
        return player().startSave(path.toStdString(), m_settings);
    }

    bool isSaved()
    {
        return QTest::qWaitFor([this] { return !player().getSaveMode(); }, 6 * PatienceMs);
    }

    /// Long enough that it is not saved before something else happens.
    void appendLongClip() { appendColour(Red, 3600000); }

    RvKpSaveSettings m_settings;
    const QTemporaryDir m_folder;
    QSignalSpy m_progress{&player(), &RvKpPlayer::sigSaveProgress};
    QSignalSpy m_finished{&player(), &RvKpPlayer::sigSaveFinished};
    QSignalSpy m_cancelled{&player(), &RvKpPlayer::sigSaveCancelled};
    QSignalSpy m_failed{&player(), &RvKpPlayer::sigSaveFailed};
};

} // namespace

TEST_F(PlayerSaveTest, SavesEveryPictureAndTellsHowFarItIs)
{
    appendNumbers();
    prepare();
    const QString path = pathOf("film.mp4");
    QElapsedTimer timer;
    timer.start();
    std::vector<double> shares;
    // On a busy machine the event loop misses some of the progress: another save may tell more.
    while (shares.size() <= 3) {
        ASSERT_FALSE(timer.hasExpired(PatienceMs)) << "no save reports its progress often";
        m_progress.clear();
        m_finished.clear();
        ASSERT_TRUE(startSave(path));
        EXPECT_TRUE(player().getSaveMode());
        ASSERT_TRUE(isSaved());
        ASSERT_EQ(m_finished.size(), 1)
            << (m_failed.isEmpty() ? "" : qPrintable(m_failed[0][1].toString()));
        EXPECT_EQ(m_finished[0][0].toString(), path);
        EXPECT_EQ(m_failed.size() + m_cancelled.size(), 0);
        shares.clear();
        for (const auto& arguments : m_progress)
            shares.push_back(arguments[0].toDouble());
    }
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_GE(shares.front(), 0.0);
    EXPECT_EQ(shares.back(), 1.0);

    EXPECT_NEAR(TestMedia::durationMs(path.toStdString()), 3000.0, 50.0);
    const auto pictures = picturesOf(path, {CanvasWidth, CanvasHeight});
    ASSERT_EQ(pictures.size(), static_cast<std::size_t>(SampleMedia::NumberedPictures));
    for (int i = 0; i < SampleMedia::NumberedPictures; ++i)
        EXPECT_EQ(numberOf(pictures[static_cast<std::size_t>(i)]), i);
}

TEST_F(PlayerSaveTest, SavesInTheSizeAndRateThatAreSet)
{
    appendColour(Green, 1000);
    player().setTimeLine(timeline.get());
    m_settings.width = 161;
    m_settings.height = 90;
    m_settings.frameRate = 10.0;
    ASSERT_TRUE(startSave(pathOf("small.mp4"))) << "what is not prepared can be saved too";
    ASSERT_TRUE(isSaved());
    ASSERT_EQ(m_finished.size(), 1);
    const auto pictures = picturesOf(pathOf("small.mp4"), {160, 90});
    ASSERT_EQ(pictures.size(), 10U);
    EXPECT_TRUE(isColour(pictures[5].pixel(80, 45), Green, 12));
}

TEST_F(PlayerSaveTest, IsSavedAsItWasAtTheStartHoweverItIsEditedAndSoughtMeanwhile)
{
    const auto track = appendNumbers();
    prepare();
    ASSERT_TRUE(startSave(pathOf("film.mp4")));
    track->setAlpha(0.5F);
    track->setSpeed(3.0F);
    appendColour(Red);
    for (const int number : {30, 60, 12}) {
        track->setSpeed(1.0F);
        track->setAlpha(1.0F);
        player().seekTo(number * SampleMedia::NumberedInterval, true);
        EXPECT_TRUE(becomesNumber(number)) << "the preview goes on";
        track->setAlpha(0.0F);
    }
    timeline->removeGroup(adopt(timeline->getGroups()).front().get());
    ASSERT_TRUE(isSaved());
    ASSERT_EQ(m_finished.size(), 1);
    const auto pictures = picturesOf(pathOf("film.mp4"), {CanvasWidth, CanvasHeight});
    ASSERT_EQ(pictures.size(), static_cast<std::size_t>(SampleMedia::NumberedPictures));
    for (int i = 0; i < SampleMedia::NumberedPictures; ++i)
        EXPECT_EQ(numberOf(pictures[static_cast<std::size_t>(i)]), i);
    EXPECT_TRUE(becomes({160, 90}, Red)) << "and is seen as it was edited";
}

TEST_F(PlayerSaveTest, PausesWhatIsPlayed)
{
    appendNumbers();
    prepareAndStart();
    ASSERT_TRUE(startSave(pathOf("film.mp4")));
    EXPECT_TRUE(player().isPaused());
    ASSERT_TRUE(isSaved());
    EXPECT_EQ(m_finished.size(), 1);
    player().start();
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(PlayerSaveTest, ACancelledSaveEndsAndLeavesWhatWasSaved)
{
    appendLongClip();
    prepare();
    ASSERT_TRUE(startSave(pathOf("long.mp4")));
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_progress.size() >= 3; }, PatienceMs));
    player().cancelSave();
    ASSERT_TRUE(isSaved());
    ASSERT_EQ(m_cancelled.size(), 1);
    EXPECT_EQ(m_cancelled[0][0].toString(), pathOf("long.mp4"));
    EXPECT_EQ(m_finished.size() + m_failed.size(), 0);
    EXPECT_GT(TestMedia::durationMs(pathOf("long.mp4").toStdString()), 0.0) << "it can be played";
    player().cancelSave();
    EXPECT_EQ(m_cancelled.size(), 1);
}

TEST_F(PlayerSaveTest, SavesOneFileAtATimeAndTheNextFromItsOwnSignal)
{
    appendColour(Red, 400);
    prepare();
    ASSERT_TRUE(startSave(pathOf("first.mp4")));
    EXPECT_FALSE(startSave(pathOf("second.mp4")));
    bool isSecondStarted = false;
    QObject::connect(&player(), &RvKpPlayer::sigSaveFinished, [&] {
        if (std::exchange(isSecondStarted, true))
            return;
        EXPECT_TRUE(startSave(pathOf("third.mp4")));
    });
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_finished.size() == 2; }, PatienceMs));
    EXPECT_TRUE(QFile::exists(pathOf("first.mp4")));
    EXPECT_FALSE(QFile::exists(pathOf("second.mp4")));
    EXPECT_EQ(picturesOf(pathOf("third.mp4"), {CanvasWidth, CanvasHeight}).size(), 10U);
}

TEST_F(PlayerSaveTest, RefusesToSaveNothing)
{
    EXPECT_FALSE(startSave(pathOf("film.mp4"))) << "no timeline";
    player().setTimeLine(timeline.get());
    EXPECT_FALSE(startSave(pathOf("film.mp4"))) << "an empty timeline";
    EXPECT_FALSE(player().getSaveMode());
    player().cancelSave();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_failed.size() + m_cancelled.size() + m_finished.size(), 0);
    EXPECT_FALSE(QFile::exists(pathOf("film.mp4")));
}

TEST_F(PlayerSaveTest, TellsWhyAFileCannotBeSaved)
{
    const std::string source =
        TestMedia::copy(SampleMedia::numberedVideo(), m_folder.path(), "source.mp4");
    append(*adopt(RvKpTrack::create(source, 0, -1, 0)));
    const QByteArray before = TestMedia::content(source);
    prepare();
    for (const QString& path : {pathOf("missing/film.mp4"), m_folder.path(), QString(),
                                QString::fromStdString(source), pathOf("film.nothing")}) {
        m_failed.clear();
        ASSERT_TRUE(startSave(path)) << path.toStdString();
        ASSERT_TRUE(isSaved());
        ASSERT_EQ(m_failed.size(), 1) << path.toStdString();
        EXPECT_EQ(m_failed[0][0].toString(), path);
        EXPECT_FALSE(m_failed[0][1].toString().isEmpty());
    }
    EXPECT_EQ(m_finished.size() + m_cancelled.size(), 0);
    EXPECT_EQ(TestMedia::content(source), before);
    application.reset(); // nobody reads the file when its folder goes
}

TEST_F(PlayerSaveTest, GoesWithItsApplicationWhileItSaves)
{
    appendNumbers();
    appendLongClip();
    for (const int pictures : {0, 1, 2}) {
        prepare();
        ASSERT_TRUE(startSave(pathOf("unfinished.mp4")));
        int told = 0;
        QObject::connect(&player(), &RvKpPlayer::sigSaveProgress, [&] { ++told; });
        ASSERT_TRUE(QTest::qWaitFor([&] { return told >= pictures; }, PatienceMs));
        application.reset();
        application = std::make_unique<RvKpApplication>();
        application->getRvKpConfig()->setKpSize(static_cast<float>(CanvasWidth),
                                                static_cast<float>(CanvasHeight));
    }
}
