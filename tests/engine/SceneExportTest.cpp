// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/PictureReader.h>
#include <engine/playback/Exporter.h>
#include <engine/sound/SoundSource.h>

#include <gtest/gtest.h>

#include "FfmpegParts.h"
#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/ScopedCommaLocale.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

using rvengine::Exporter;
using rvengine::ExportNews;
using rvengine::ExportSettings;
using rvengine::ExportState;
using rvengine::Layer;
using rvengine::PictureReader;
using rvengine::Placement;
using rvengine::Scene;

namespace {

constexpr QSize CanvasSize(320, 180);

/// An export whose news are waited for.
class Export
{
public:
    Export(const Scene& scene, const std::string& path, const ExportSettings& settings)
        : m_exporter(rvengine::startExport(std::make_shared<const Scene>(scene), path, settings,
                                           [this] { told(); }))
    {
    }

    Exporter* operator->() { return m_exporter.get(); }

    /// Waits for news that `isEnough` takes, and gives them; the last ones after a long while.
    template <class Condition>
    ExportNews await(Condition&& isEnough)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(5);
        ExportNews news = ask();
        while (!isEnough(news) && std::chrono::steady_clock::now() < end) {
            std::unique_lock lock(m_mutex);
            m_changed.wait_until(lock, end, [this] { return m_isTold; });
            lock.unlock();
            news = ask();
        }
        return news;
    }

    ExportNews awaitEnd()
    {
        return await([](const ExportNews& news) { return news.state != ExportState::Running; });
    }

    /// Whether the share that is done never fell.
    bool hasRisen() const { return m_hasRisen; }
    void destroy() { m_exporter.reset(); }

private:
    void told()
    {
        const std::lock_guard lock(m_mutex);
        m_isTold = true;
        m_changed.notify_all();
    }

    ExportNews ask()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isTold = false;
        }
        const ExportNews news = m_exporter->news();
        m_hasRisen = m_hasRisen && news.share >= m_share && news.share <= 1.0;
        m_share = news.share;
        return news;
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isTold = false;
    bool m_hasRisen = true;
    double m_share = 0.0;
    std::unique_ptr<Exporter> m_exporter; ///< the first to go: it tells until then
};

class SceneExportTest : public testing::Test
{
protected:
    std::string pathOf(const QString& name) const
    {
        return QDir(m_folder.path()).filePath(name).toStdString();
    }

    static ExportSettings settings(double frameRate = 25.0, QSize size = QSize())
    {
        ExportSettings result;
        result.frameRate = frameRate;
        result.size = size;
        result.videoBitRate = 2000000;
        return result;
    }

    Layer numbered(long long fileStart, double speed) const
    {
        Layer layer = m_sketch.video(sharedMedia::numbered());
        layer.fileStart = fileStart;
        layer.speed = speed;
        return layer;
    }

    /// Two clips, a red strip at the bottom from 400 ms on, and a tone.
    void fillScene()
    {
        m_sketch.addMain(numbered(400, 1.0), 1000);
        m_sketch.addMain(numbered(1000, 2.0), 600);
        Layer strip = m_sketch.picture(
            TestMedia::solidPicture(m_folder.path(), "red.png", 32, 32, QColor(200, 30, 40)));
        strip.placement = Placement{320, 40, QPointF(160, 20)};
        m_sketch.addMix(strip, 400, 1200);
        m_sketch.addMix(m_sketch.sound(sharedMedia::tone()), 200, 1200);
    }

    static int expectedNumber(long long time)
    {
        return static_cast<int>(time < 1000 ? 10 + time / 40 : 25 + (time - 1000) * 2 / 40);
    }

    /// Expects what `fillScene` shows in a file of 25 pictures a second.
    static void expectPictures(const std::string& path, QSize size)
    {
        const auto reader = PictureReader::open(path);
        ASSERT_NE(reader, nullptr);
        const int stripTop = size.height() - size.height() * 40 / 180;
        for (long long time = 0; time < 1600; time += 40) {
            const QImage picture = reader->picture(static_cast<double>(time), QSize());
            ASSERT_EQ(picture.size(), size);
            const QRect bars(0, 0, size.width(), stripTop);
            EXPECT_EQ(TestMedia::frameNumber(picture, bars), expectedNumber(time)) << time;
            const QColor strip =
                picture.pixelColor(size.width() / 8, (stripTop + size.height()) / 2);
            const bool isRed = std::abs(strip.red() - 200) < 12 &&
                               std::abs(strip.green() - 30) < 12 &&
                               std::abs(strip.blue() - 40) < 12;
            EXPECT_EQ(isRed, time >= 400) << time << ": " << strip.name().toStdString();
        }
    }

    static float loudest(const std::vector<float>& samples, long long fromMs, long long toMs)
    {
        float most = 0.0F;
        const auto end =
            std::min(static_cast<std::size_t>(rvengine::framesOf(toMs)) * 2, samples.size());
        for (auto i = static_cast<std::size_t>(rvengine::framesOf(fromMs)) * 2; i < end; ++i)
            most = std::max(most, std::abs(samples[i]));
        return most;
    }

    /// Expects the tone of `fillScene` on both sides.
    static void expectTone(const std::string& path)
    {
        const std::vector<float> samples = TestMedia::samples(path);
        ASSERT_GT(samples.size(), static_cast<std::size_t>(rvengine::framesOf(1500)) * 2);
        EXPECT_LT(loudest(samples, 0, 170), 0.02F);
        EXPECT_NEAR(loudest(samples, 250, 1350), 0.5F, 0.04F);
        EXPECT_LT(loudest(samples, 1450, 1500), 0.02F);
        for (const std::size_t side : {0U, 1U}) {
            int rises = 0;
            for (std::size_t frame = 300 * 48 + 1; frame < 1300 * 48; ++frame)
                rises += samples[frame * 2 - 2 + side] < 0.0F && samples[frame * 2 + side] >= 0.0F;
            EXPECT_NEAR(rises, 440, 1);
        }
    }

    void expectFailure(const std::string& path)
    {
        Export failing(m_sketch.scene(), path, settings());
        const ExportNews news = failing.awaitEnd();
        EXPECT_EQ(news.state, ExportState::Failed) << path;
        EXPECT_FALSE(news.error.isEmpty()) << path;
    }

    WarningCapture m_warnings;
    QTemporaryDir m_folder;
    SceneSketch m_sketch;
};

/// Formats by their extension.
struct Format
{
    const char* extension;
    std::vector<const char*> encoders; ///< of pictures; the first that can be opened is taken
    const char* audio;
};

void PrintTo(const Format& format, std::ostream* stream)
{
    *stream << format.extension;
}

/// What the first encoder of the list that works here makes, as ffprobe calls it; else empty.
QString expectedCodec(const std::vector<const char*>& encoders)
{
    const auto first = std::find_if(encoders.begin(), encoders.end(), &ffmpegParts::canEncode);
    return first == encoders.end() ? QString()
                                   : avcodec_get_name(avcodec_find_encoder_by_name(*first)->id);
}

const std::vector<const char*> H264OrMpeg4{"libx264", "h264_mf", "libopenh264", "mpeg4"};

class SceneExportFormatTest : public SceneExportTest, public testing::WithParamInterface<Format>
{
};

} // namespace

TEST_P(SceneExportFormatTest, HasThePicturesAndTheSoundOfTheScene)
{
    fillScene();
    const std::string path = pathOf(QString("out.") + GetParam().extension);
    const QString codec = expectedCodec(GetParam().encoders);
    if (codec.isEmpty()) {
        expectFailure(path);
        EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(path)));
        return;
    }
    Export exported(m_sketch.scene(), path, settings());
    const ExportNews news = exported.awaitEnd();

    ASSERT_EQ(news.state, ExportState::Finished) << news.error.toStdString();
    EXPECT_EQ(news.share, 1.0);
    EXPECT_TRUE(exported.hasRisen());
    EXPECT_EQ(exported->path(), path);
    EXPECT_EQ(TestMedia::streamEntry(path, "v", "codec_name,width,height,nb_read_frames"),
              codec + ",320,180,40");
    EXPECT_EQ(TestMedia::streamEntry(path, "a", "codec_name,channels"),
              GetParam().audio + QString(",2"));
    EXPECT_NEAR(TestMedia::durationMs(path), 1600, 60);
    expectPictures(path, CanvasSize);
    expectTone(path);
}

INSTANTIATE_TEST_SUITE_P(All, SceneExportFormatTest,
                         testing::Values(Format{"mp4", H264OrMpeg4, "aac"},
                                         Format{"mov", H264OrMpeg4, "aac"},
                                         Format{"mkv", H264OrMpeg4, "aac"},
                                         Format{"webm", {"libvpx-vp9"}, "opus"}),
                         [](const testing::TestParamInfo<Format>& format) {
                             return std::string(format.param.extension);
                         });

TEST_F(SceneExportTest, WritesTheSizeThatIsAskedFor)
{
    fillScene();
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings(25.0, QSize(640, 360)));
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    expectPictures(path, QSize(640, 360));
}

TEST_F(SceneExportTest, MakesOddSidesEven)
{
    m_sketch = SceneSketch(QSizeF(321, 181));
    fillScene();
    const std::string odd = pathOf("odd.mp4");
    Export ofTheCanvas(m_sketch.scene(), odd, settings());
    ASSERT_EQ(ofTheCanvas.awaitEnd().state, ExportState::Finished);
    EXPECT_EQ(TestMedia::streamEntry(odd, "v", "width,height"), "320,180");

    const std::string small = pathOf("small.mp4");
    Export asked(m_sketch.scene(), small, settings(25.0, QSize(161, 1)));
    ASSERT_EQ(asked.awaitEnd().state, ExportState::Finished);
    EXPECT_EQ(TestMedia::streamEntry(small, "v", "width,height"), "160,16");
}

TEST_F(SceneExportTest, WritesEveryPictureOfAFileOfTheSameFrameRate)
{
    constexpr int frames = 60;
    const std::string source =
        TestMedia::numberedVideo(m_folder.path(), "ntsc.mp4", 320, 180, "30000/1001", frames);
    m_sketch.addMain(m_sketch.video(source), 2002);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings(30000.0 / 1001.0));
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    EXPECT_EQ(TestMedia::streamEntry(path, "v", "r_frame_rate,nb_read_frames"),
              QString("30000/1001,%1").arg(frames));
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    for (int frame = 0; frame < frames; ++frame) {
        const QImage picture = reader->picture((frame + 0.5) * 1001.0 / 30.0, CanvasSize);
        EXPECT_EQ(TestMedia::frameNumber(picture), frame);
    }
}

TEST_F(SceneExportTest, WritesASceneWithoutLayersBlackAndSilent)
{
    m_sketch.scene().duration = 400;
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings());
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    EXPECT_EQ(TestMedia::streamEntry(path, "v", "nb_read_frames"), "10");
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    EXPECT_LT(qGray(reader->picture(200, CanvasSize).pixel(160, 90)), 4);
    EXPECT_LT(loudest(TestMedia::samples(path), 0, 400), 1e-3F);
}

TEST_F(SceneExportTest, WritesOnePictureOfAMillisecond)
{
    for (const long long duration : {1LL, 0LL, -5LL}) {
        m_sketch.scene().duration = duration;
        const std::string path = pathOf("out.mp4");
        Export exported(m_sketch.scene(), path, settings());
        const ExportNews news = exported.awaitEnd();

        EXPECT_EQ(news.state, ExportState::Finished) << duration << news.error.toStdString();
        EXPECT_EQ(TestMedia::streamEntry(path, "v", "nb_read_frames"), "1") << duration;
    }
}

TEST_F(SceneExportTest, WritesTheSameUnderADecimalComma)
{
    fillScene();
    const std::string path = pathOf("out.mp4");
    {
        const ScopedCommaLocale comma(m_folder.path());
        Export exported(m_sketch.scene(), path, settings(30000.0 / 1001.0));
        ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);
    }
    EXPECT_EQ(TestMedia::streamEntry(path, "v", "r_frame_rate,nb_read_frames"), "30000/1001,48");
    expectTone(path);
}

TEST_F(SceneExportTest, ShowsTheSceneUntilItsLastPicture)
{
    // The last picture begins a third of a millisecond before the end.
    m_sketch.addMain(numbered(0, 1.0), 67);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings(30.0));
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    EXPECT_EQ(TestMedia::streamEntry(path, "v", "nb_read_frames"), "3");
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(80, CanvasSize)), 1);
}

TEST_F(SceneExportTest, ReplacesAFileThatIsThere)
{
    m_sketch.addMain(numbered(0, 1.0), 200);
    const std::string path = TestMedia::file(m_folder.path(), "out.mp4", "something else\n");
    Export exported(m_sketch.scene(), path, settings());
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    EXPECT_EQ(TestMedia::streamEntry(path, "v", "nb_read_frames"), "5");
}

TEST_F(SceneExportTest, WritesOneFileAfterTheOther)
{
    m_sketch.addMain(numbered(0, 1.0), 400);
    for (const char* name : {"one.mp4", "two.mp4", "数.mp4", "a\\?b.mp4"}) {
        if (!TestMedia::isFileName(name))
            continue;
        Export exported(m_sketch.scene(), pathOf(name), settings());
        ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished) << name;
        EXPECT_EQ(TestMedia::streamEntry(pathOf(name), "v", "nb_read_frames"), "10") << name;
    }
}

TEST_F(SceneExportTest, WritesTwoFilesAtOnce)
{
    fillScene();
    Export one(m_sketch.scene(), pathOf("one.mp4"), settings());
    Export two(m_sketch.scene(), pathOf("two.mp4"), settings());

    EXPECT_EQ(one.awaitEnd().state, ExportState::Finished);
    EXPECT_EQ(two.awaitEnd().state, ExportState::Finished);
    expectPictures(pathOf("one.mp4"), CanvasSize);
    expectPictures(pathOf("two.mp4"), CanvasSize);
}

TEST_F(SceneExportTest, LeavesAShorterFileThatCanBePlayedWhenItIsCancelled)
{
    m_sketch.addMain(numbered(0, 1.0), 600000);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings());
    const ExportNews begun = exported.await([](const ExportNews& news) {
        return news.state != ExportState::Running || news.share > 50.0 / 15000.0;
    });
    ASSERT_EQ(begun.state, ExportState::Running);
    exported->cancel();
    const ExportNews news = exported.awaitEnd();

    EXPECT_EQ(news.state, ExportState::Cancelled) << news.error.toStdString();
    EXPECT_LT(news.share, 1.0);
    EXPECT_GT(TestMedia::durationMs(path), 400);
    EXPECT_LT(TestMedia::durationMs(path), 599000);
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(400, CanvasSize)), 10);
}

TEST_F(SceneExportTest, LeavesTheFileThatStoodThereWhenItIsCancelledOrDestroyed)
{
    m_sketch.addMain(numbered(0, 1.0), 600000);
    const std::string path = TestMedia::file(m_folder.path(), "out.mp4", "the film of yesterday");
    const auto hasBegun = [](const ExportNews& news) {
        return news.state != ExportState::Running || news.share > 0.0;
    };
    {
        Export exported(m_sketch.scene(), path, settings());
        exported.await(hasBegun);
        exported->cancel();
        EXPECT_EQ(exported.awaitEnd().state, ExportState::Cancelled);
    }
    EXPECT_EQ(TestMedia::content(path), "the film of yesterday");
    {
        Export exported(m_sketch.scene(), path, settings());
        exported.await(hasBegun);
        exported.destroy();
    }
    EXPECT_EQ(TestMedia::content(path), "the film of yesterday");
    const QDir::Filters all = QDir::Files | QDir::Hidden;
    EXPECT_EQ(QDir(m_folder.path()).entryList(all), QStringList{"out.mp4"}) << "nothing is left";
}

TEST_F(SceneExportTest, AnMp4FileCanBePlayedBeforeItIsAllLoaded)
{
    m_sketch.addMain(numbered(0, 1.0), 400);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings());
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);
    const QByteArray bytes = TestMedia::content(path);
    ASSERT_GT(bytes.indexOf("moov"), 0);
    EXPECT_LT(bytes.indexOf("moov"), bytes.indexOf("mdat")) << "what is where comes first";
    EXPECT_EQ(TestMedia::streamEntry(path, "v", "color_space,color_transfer,color_primaries"),
              "bt709,bt709,bt709");
}

TEST_F(SceneExportTest, TellsHowLongItStillTakes)
{
    m_sketch.addMain(numbered(0, 1.0), 4000);
    Export exported(m_sketch.scene(), pathOf("out.mp4"), settings());
    const ExportNews begun = exported.await([](const ExportNews& news) {
        return news.state != ExportState::Running || news.share > 0.0;
    });
    EXPECT_GE(begun.remaining.count(), 0);
    EXPECT_EQ(exported.awaitEnd().remaining.count(), 0);
}

TEST_F(SceneExportTest, StaysFinishedWhenItIsCancelledAfterTheEnd)
{
    m_sketch.addMain(numbered(0, 1.0), 200);
    Export exported(m_sketch.scene(), pathOf("out.mp4"), settings());
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);
    exported->cancel();

    EXPECT_EQ(exported.awaitEnd().state, ExportState::Finished);
}

TEST_F(SceneExportTest, EndsWhenItIsDestroyed)
{
    m_sketch.addMain(numbered(0, 1.0), 600000);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings());
    exported.await([](const ExportNews& news) { return news.share > 0.0; });
    exported.destroy();

    EXPECT_LT(TestMedia::durationMs(path), 590000);
}

TEST_F(SceneExportTest, EndsWhenItIsDestroyedAtOnce)
{
    m_sketch.addMain(numbered(0, 1.0), 600000);
    const QString path = QString::fromStdString(pathOf("out.mp4"));
    {
        const Export exported(m_sketch.scene(), path.toStdString(), settings());
    }
    const qint64 size = QFileInfo(path).size();
    m_sketch.scene().duration = 1000;
    Export next(m_sketch.scene(), path.toStdString(), settings());
    ASSERT_EQ(next.awaitEnd().state, ExportState::Finished);

    EXPECT_LT(size, QFileInfo(path).size());
}

TEST_F(SceneExportTest, FailsWhereNoFileCanBeWritten)
{
    m_sketch.addMain(numbered(0, 1.0), 200);
    expectFailure("");
    expectFailure(m_folder.path().toStdString());
    expectFailure(pathOf("missing/out.mp4"));
    expectFailure(sharedMedia::numbered() + "/out.mp4");
    expectFailure(m_folder.path().toStdString() + "/\xff\xfe.mp4");
}

TEST_F(SceneExportTest, FailsInAFormatThatItDoesNotKnow)
{
    m_sketch.addMain(numbered(0, 1.0), 200);
    for (const char* name : {"out.unknown", "out", "out.txt", "out.mp4.part", "out.wav", "out.mp3",
                             "out.flac", "out.png", "out%03d.png", "out.srt"}) {
        expectFailure(pathOf(name));
        EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(pathOf(name)))) << name;
    }
}

TEST_F(SceneExportTest, TellsWhyAnEncoderRefusesInItsOwnWords)
{
    m_sketch.addMain(numbered(0, 1.0), 200);
    // H.263 has a few sizes only.
    Export failing(m_sketch.scene(), pathOf("out.3gp"), settings());
    const ExportNews news = failing.awaitEnd();
    EXPECT_EQ(news.state, ExportState::Failed);
    EXPECT_TRUE(news.error.contains("out.3gp")) << news.error.toStdString();
    EXPECT_TRUE(news.error.contains("320x180 is not valid")) << news.error.toStdString();
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty(QDir::Files | QDir::Hidden)) << "nothing is left";
}

TEST_F(SceneExportTest, DoesNotOverwriteASource)
{
    const std::string source = TestMedia::copy(sharedMedia::numbered(), m_folder.path(), "a.mp4");
    const std::string mixed = TestMedia::tone(m_folder.path(), "b.wav", 440, 0.5, 1);
    const QByteArray before = TestMedia::content(source);
    m_sketch.addMain(m_sketch.video(source), 400);
    m_sketch.addMix(m_sketch.sound(mixed));

    expectFailure(source);
    expectFailure(mixed);
    expectFailure(source + '\0');
    expectFailure(source + '\0' + ".mp4");
    expectFailure(m_folder.path().toStdString() + "/../" +
                  QDir(m_folder.path()).dirName().toStdString() + "/a.mp4");
    EXPECT_EQ(TestMedia::content(source), before);
}

TEST_F(SceneExportTest, WarnsOnceOfASourceThatIsMissingAndWritesTheRest)
{
    m_sketch.addMain(m_sketch.video("/nowhere/missing.mp4"), 400);
    m_sketch.addMain(numbered(400, 1.0), 400);
    const std::string path = pathOf("out.mp4");
    Export exported(m_sketch.scene(), path, settings());
    ASSERT_EQ(exported.awaitEnd().state, ExportState::Finished);

    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    EXPECT_LT(qGray(reader->picture(200, CanvasSize).pixel(160, 90)), 4);
    EXPECT_EQ(TestMedia::frameNumber(reader->picture(480, CanvasSize)), 12);
    const QStringList warnings = m_warnings.take();
    EXPECT_EQ(warnings, QStringList({"cannot read the media file /nowhere/missing.mp4",
                                     "cannot read the media file /nowhere/missing.mp4"}))
        << "one of the pictures and one of the sound";
}
