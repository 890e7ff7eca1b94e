// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Files that another program has open.

#include <engine/compose/Compositor.h>
#include <engine/media/MediaProbe.h>
#include <engine/media/UnreadableFiles.h>

#include <gtest/gtest.h>

#include "HeldFile_windows.h"
#include "ManualClock.h"
#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "WholeScene.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QTemporaryDir>

#include <string>

using rvengine::Compositor;
using rvengine::ExportState;
using rvengine::MediaKind;

namespace {

constexpr QSize CanvasSize(320, 180);

class HeldFileTest : public testing::Test
{
protected:
    QImage composed(Compositor& compositor)
    {
        return compositor.compose(m_sketch.scene(), 480, CanvasSize);
    }

    static bool isBlack(const QImage& picture)
    {
        QImage black(CanvasSize, QImage::Format_RGB32);
        black.fill(Qt::black);
        return picture == black;
    }

    /// Expects that a file is measured, seen and heard.
    void expectRead(const std::string& path)
    {
        rvengine::MediaProbe probe;
        EXPECT_TRUE(probe.probe(path, MediaKind::Video));
        Compositor compositor(rvengine::makePictureSource());
        m_sketch.addMain(m_sketch.video(path));
        EXPECT_EQ(TestMedia::frameNumber(composed(compositor)), 12);
        EXPECT_EQ(m_warnings.take(), QStringList());
    }

    static QStringList warningOf(const std::string& path)
    {
        return {"cannot read the media file " + QString::fromStdString(path)};
    }

    QTemporaryDir m_folder;
    WarningCapture m_warnings;
    SceneSketch m_sketch;
    ManualClock m_clock;
};

} // namespace

TEST_F(HeldFileTest, IsNotMeasuredUntilItIsFree)
{
    const std::string path = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    rvengine::MediaProbe probe;
    {
        const HeldFile held(path, GENERIC_READ, 0);
        for (const MediaKind kind : {MediaKind::Video, MediaKind::Picture, MediaKind::Sound})
            EXPECT_FALSE(probe.probe(path, kind));
    }
    EXPECT_TRUE(probe.probe(path, MediaKind::Video));
}

TEST_F(HeldFileTest, AVideoIsBlackWithAWarningUntilItIsFree)
{
    const std::string path = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    m_sketch.addMain(m_sketch.video(path));
    Compositor compositor(rvengine::makePictureSource(m_clock.clock()));
    {
        const HeldFile held(path, GENERIC_READ, 0);
        EXPECT_TRUE(isBlack(composed(compositor)));
        EXPECT_TRUE(isBlack(composed(compositor)));
        EXPECT_EQ(m_warnings.take(), warningOf(path));
    }
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);
    EXPECT_EQ(TestMedia::frameNumber(composed(compositor)), 12);
}

TEST_F(HeldFileTest, APictureIsBlackWithAWarningUntilItIsFree)
{
    const QColor color(20, 200, 40);
    const std::string path = TestMedia::solidPicture(m_folder.path(), "a.png", 32, 18, color);
    m_sketch.addMain(m_sketch.picture(path));
    Compositor compositor(rvengine::makePictureSource(m_clock.clock()));
    {
        const HeldFile held(path, GENERIC_READ, 0);
        EXPECT_TRUE(isBlack(composed(compositor)));
        EXPECT_EQ(m_warnings.take(), warningOf(path));
    }
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);
    EXPECT_EQ(composed(compositor).pixelColor(160, 90), color);
}

TEST_F(HeldFileTest, SoundIsSilentWithAWarning)
{
    const std::string path = TestMedia::copy(sharedMedia::tone(), m_folder.path(), "a.wav");
    m_sketch.addMain(m_sketch.sound(path));
    {
        const HeldFile held(path, GENERIC_READ, 0);
        EXPECT_EQ(loudestOf(m_sketch.scene(), 500), 0.0F);
        EXPECT_EQ(m_warnings.take(), warningOf(path));
    }
    EXPECT_NEAR(loudestOf(m_sketch.scene(), 500), 0.5F, 0.01F);
}

TEST_F(HeldFileTest, IsReadWhereTheOtherLetsItBeRead)
{
    const std::string path = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    const HeldFile held(path, GENERIC_READ, FILE_SHARE_READ);
    expectRead(path);
}

TEST_F(HeldFileTest, IsReadWhileTheOtherMayWriteIt)
{
    const std::string path = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    const HeldFile held(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ);
    expectRead(path);
}

TEST_F(HeldFileTest, IsNotReplacedByAnExport)
{
    const std::string path = TestMedia::file(m_folder.path(), "out.mp4", "something else\n");
    m_sketch.addMain(m_sketch.video(sharedMedia::numbered()), 200);
    for (const DWORD shared : {DWORD(0), DWORD(FILE_SHARE_READ)}) {
        const HeldFile held(path, GENERIC_READ, shared);
        const auto news = finishedExport(m_sketch.scene(), path);
        EXPECT_EQ(news.state, ExportState::Failed);
        EXPECT_TRUE(
            news.error.startsWith(QString::fromStdString(path) + ": the file cannot be written: "))
            << news.error.toStdString();
        EXPECT_FALSE(news.error.contains("Unknown")) << news.error.toStdString();
    }
    EXPECT_EQ(TestMedia::content(path), "something else\n");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("out.mp4"));
    const auto news = finishedExport(m_sketch.scene(), path);
    EXPECT_EQ(news.state, ExportState::Finished) << news.error.toStdString();
}

TEST_F(HeldFileTest, AnExportIsWrittenWhileItsSourcesAreRead)
{
    const std::string source = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    const HeldFile held(source, GENERIC_READ, FILE_SHARE_READ);
    m_sketch.addMain(m_sketch.video(source), 600);
    const std::string path = QDir(m_folder.path()).filePath("out.mp4").toStdString();
    const auto news = finishedExport(m_sketch.scene(), path);
    ASSERT_EQ(news.state, ExportState::Finished) << news.error.toStdString();
    expectRead(path);
}
