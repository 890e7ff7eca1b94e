// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>
#include <engine/media/PictureReader.h>
#include <engine/media/SoundReader.h>
#include <engine/sound/SoundMixer.h>

#include <gtest/gtest.h>

#include "ManualClock.h"
#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

using rvengine::Compositor;
using rvengine::Layer;
using rvengine::LayerKind;
using rvengine::PictureReader;
using rvengine::SoundChannels;
using rvengine::SoundMixer;

namespace {

constexpr QSize CanvasSize(320, 180);

QByteArray noise(int count)
{
    std::mt19937 generator(1);
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() & 0xFF);
    return bytes;
}

/// Files that are missing or broken: black or silent, one warning, and the rest goes on.
class BrokenFileTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    QImage composed(long long time)
    {
        return m_compositor.compose(m_sketch.scene(), time, CanvasSize);
    }

    static bool isBlack(const QImage& picture)
    {
        QImage black(CanvasSize, QImage::Format_RGB32);
        black.fill(Qt::black);
        return picture == black;
    }

    float loudest(SoundMixer& mixer, long long startMs, long long ms)
    {
        std::vector<float> samples(
            static_cast<std::size_t>(rvengine::framesOf(ms) * SoundChannels));
        mixer.mix(m_sketch.scene(), rvengine::framesOf(startMs), samples.size() / SoundChannels,
                  samples.data());
        float most = 0.0F;
        for (const float sample : samples)
            most = std::max(most, std::abs(sample));
        return most;
    }

    /// Expects of a file that it is black and silent as each kind of layer, with one warning of
    /// the pictures and one of the sound.
    void expectUnreadable(const std::string& path)
    {
        const QString warning = "cannot read the media file " + QString::fromStdString(path);
        for (const LayerKind kind : {LayerKind::Video, LayerKind::Picture}) {
            m_sketch = SceneSketch();
            m_sketch.addMain(m_sketch.layer(kind, path));
            Compositor compositor(rvengine::makePictureSource());
            for (int frame = 0; frame < 10; ++frame)
                EXPECT_TRUE(isBlack(compositor.compose(m_sketch.scene(), frame * 40, CanvasSize)));
            EXPECT_EQ(m_warnings.take(), QStringList{warning}) << path;
        }
        m_sketch = SceneSketch();
        m_sketch.addMain(m_sketch.sound(path));
        SoundMixer mixer(rvengine::makeSoundSource());
        for (int block = 0; block < 10; ++block)
            EXPECT_EQ(loudest(mixer, block * 40, 40), 0.0F);
        EXPECT_EQ(m_warnings.take(), QStringList{warning}) << path;
    }

    /// A video with many key frames, so that what is broken soon heals, for all tests.
    static std::string healingVideo(const QString& name)
    {
        return sharedMedia::once(name, [&] {
            return TestMedia::numberedVideo(sharedMedia::folder(), name, 320, 180, "25", 100,
                                            {"-c:v", "libx264", "-g", "10", "-pix_fmt", "yuv420p"});
        });
    }

    QTemporaryDir m_folder;
    WarningCapture m_warnings;
    SceneSketch m_sketch;
    ManualClock m_clock;
    Compositor m_compositor{rvengine::makePictureSource(m_clock.clock())};
};

} // namespace

TEST_F(BrokenFileTest, AMissingFileIsBlackAndSilent)
{
    expectUnreadable((folder() + "/missing.mp4").toStdString());
}

TEST_F(BrokenFileTest, AnEmptySourceIsBlackAndSilent)
{
    expectUnreadable("");
}

TEST_F(BrokenFileTest, AFolderIsBlackAndSilent)
{
    expectUnreadable(folder().toStdString());
}

TEST_F(BrokenFileTest, AFileBelowAFileIsBlackAndSilent)
{
    expectUnreadable(sharedMedia::numbered() + "/a.mp4");
}

TEST_F(BrokenFileTest, AFileOfNoKnownFormatIsBlackAndSilent)
{
    expectUnreadable(TestMedia::file(folder(), "noise.mp4", noise(20000)));
    expectUnreadable(TestMedia::file(folder(), "empty.mp4", QByteArray()));
    expectUnreadable(TestMedia::file(folder(), "text.png", "no picture\n"));
}

TEST_F(BrokenFileTest, APathThatIsNoUtf8IsBlackAndSilent)
{
    const std::string path = folder().toStdString() + "/\xff\xfe.mp4";
    m_sketch.addMain(m_sketch.video(path));
    for (int frame = 0; frame < 3; ++frame)
        EXPECT_TRUE(isBlack(composed(frame * 40)));

    EXPECT_EQ(m_warnings.take().size(), 1);
}

TEST_F(BrokenFileTest, AFileOfAnotherKindIsBlackAndSilent)
{
    m_sketch.addMain(m_sketch.video(sharedMedia::tone()), 100);
    m_sketch.addMain(m_sketch.picture(sharedMedia::tone()), 100);
    EXPECT_TRUE(isBlack(composed(0)));
    EXPECT_TRUE(isBlack(composed(100)));

    EXPECT_EQ(m_warnings.take().size(), 2);
}

TEST_F(BrokenFileTest, ABrokenFileLeavesTheOthersAlone)
{
    Layer missing = m_sketch.video("/nowhere/missing.mp4");
    missing.placement = {320, 40, QPointF(160, 20)};
    m_sketch.addMain(m_sketch.video(sharedMedia::numbered()));
    m_sketch.addMix(missing);
    const QImage picture = composed(480);

    EXPECT_EQ(TestMedia::frameNumber(picture, QRect(0, 0, 320, 140)), 12);
    EXPECT_EQ(picture.pixelColor(160, 160), QColor(Qt::black));
    EXPECT_EQ(m_warnings.take().size(), 1);
}

TEST_F(BrokenFileTest, AVideoThatVanishedBeforeItWasReadIsBlack)
{
    const std::string path = TestMedia::copy(sharedMedia::numbered(), folder(), "gone.mp4");
    ASSERT_NE(PictureReader::open(path), nullptr);
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));

    expectUnreadable(path);
}

TEST_F(BrokenFileTest, AFileThatComesBackIsFoundAfterAWhile)
{
    const QString path = folder() + "/late.mp4";
    m_sketch.addMain(m_sketch.video(path.toStdString()));
    EXPECT_TRUE(isBlack(composed(480)));
    EXPECT_EQ(m_warnings.take().size(), 1);
    TestMedia::copy(sharedMedia::numbered(), folder(), "late.mp4");

    EXPECT_TRUE(isBlack(composed(480))) << "not tried again at once";
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);
    EXPECT_EQ(TestMedia::frameNumber(composed(480)), 12);
}

TEST_F(BrokenFileTest, AVideoThatIsCutShortWhileItIsReadIsReadOn)
{
    const std::string path = TestMedia::copy(healingVideo("healing.mp4"), folder(), "cut.mp4");
    m_sketch.addMain(m_sketch.video(path), 4000);
    EXPECT_EQ(TestMedia::frameNumber(composed(0)), 0);
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.resize(file.size() / 2));

    for (const long long time : {3960LL, 40LL, 2000LL, 3000LL, 80LL})
        EXPECT_EQ(composed(time).size(), CanvasSize);
    EXPECT_EQ(TestMedia::frameNumber(composed(0)), 0);
}

TEST_F(BrokenFileTest, AVideoOfWhichTheEndIsMissingIsReadAsFarAsItGoes)
{
    const std::string whole = healingVideo("healing.mkv");
    const std::string path =
        TestMedia::truncated(whole, folder(), "part.mkv", TestMedia::content(whole).size() / 2);
    m_sketch.addMain(m_sketch.video(path), 4000);

    EXPECT_EQ(TestMedia::frameNumber(composed(400)), 10);
    for (long long time = 0; time < 4000; time += 160)
        EXPECT_EQ(composed(time).size(), CanvasSize);
    EXPECT_EQ(TestMedia::frameNumber(composed(400)), 10);
}

TEST_F(BrokenFileTest, AVideoWithNoiseInItIsRightBeforeAndAfter)
{
    const std::string whole = healingVideo("healing.mkv");
    QByteArray bytes = TestMedia::content(whole);
    const int length = bytes.size() / 5;
    bytes.replace(bytes.size() * 2 / 5, length, noise(length));
    m_sketch.addMain(m_sketch.video(TestMedia::file(folder(), "noise.mkv", bytes)), 4000);

    for (int frame = 0; frame < 100; ++frame)
        ASSERT_EQ(composed(frame * 40).size(), CanvasSize);
    EXPECT_EQ(TestMedia::frameNumber(composed(200)), 5);
    EXPECT_EQ(TestMedia::frameNumber(composed(3800)), 95);
    EXPECT_EQ(TestMedia::frameNumber(composed(200)), 5);
}

TEST_F(BrokenFileTest, SoundWithNoiseInItIsRightAfterwards)
{
    const std::string whole = TestMedia::tone(folder(), "whole.mp3", 440, 0.5, 4);
    QByteArray bytes = TestMedia::content(whole);
    const int length = bytes.size() / 5;
    bytes.replace(bytes.size() * 2 / 5, length, noise(length));
    m_sketch.addMain(m_sketch.sound(TestMedia::file(folder(), "noise.mp3", bytes)), 4000);
    SoundMixer mixer(rvengine::makeSoundSource());

    EXPECT_NEAR(loudest(mixer, 200, 800), 0.5F, 0.05F);
    for (long long start = 1000; start < 3000; start += 100)
        EXPECT_LE(loudest(mixer, start, 100), 1.0F);
    EXPECT_NEAR(loudest(mixer, 3000, 800), 0.5F, 0.05F);
}

TEST_F(BrokenFileTest, ReadersAreNotMadeForThem)
{
    for (const std::string& path :
         {std::string(), folder().toStdString(), std::string("/nowhere/missing.mp4")}) {
        EXPECT_EQ(PictureReader::open(path), nullptr) << path;
        EXPECT_EQ(rvengine::SoundReader::open(path), nullptr) << path;
    }
}
