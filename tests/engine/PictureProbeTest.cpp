// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/MediaProbe.h>

#include <gtest/gtest.h>

#include "support/TestMedia.h"

#include <QGuiApplication>
#include <QImageReader>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>
#include <string>

using rvengine::MediaKind;
using rvengine::MediaProbe;

namespace {

/// Which files are pictures: those that Qt decodes whole, by their content.
class PictureProbeTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    /// "120x80", or "nothing".
    std::string size(const std::string& path)
    {
        const auto info = m_probe.probe(path, MediaKind::Picture);
        return info ? std::to_string(info->width) + "x" + std::to_string(info->height) : "nothing";
    }

    QTemporaryDir m_folder;
    MediaProbe m_probe;
};

/// A file cut at several places, in every format that Qt reads without further plugins.
class CutPictureProbeTest : public PictureProbeTest, public testing::WithParamInterface<const char*>
{
};

/// There is a QGuiApplication while this lives, one without a display if there was none before.
class ScopedGuiApplication
{
public:
    ScopedGuiApplication()
    {
        if (!qGuiApp)
            m_application = std::make_unique<QGuiApplication>(m_count, m_arguments);
    }

private:
    char m_name[5] = "test";
    char m_option[10] = "-platform";
    char m_platform[10] = "offscreen";
    char* m_arguments[4] = {m_name, m_option, m_platform, nullptr};
    int m_count = 3;
    std::unique_ptr<QGuiApplication> m_application;
};

std::string extension(const testing::TestParamInfo<const char*>& info)
{
    return info.param;
}

} // namespace

TEST_P(CutPictureProbeTest, TakesTheWholeFile)
{
    const QString name = QString("a.%1").arg(GetParam());

    EXPECT_EQ(size(TestMedia::picture(folder(), name, 120, 80)), "120x80");
}

TEST_P(CutPictureProbeTest, RefusesAPart)
{
    const QString name = QString("a.%1").arg(GetParam());
    const std::string whole = TestMedia::picture(folder(), name, 120, 80);
    const int bytes = TestMedia::content(whole).size();
    for (const int size : {4, 20, bytes / 10, bytes / 2, bytes * 9 / 10, bytes - 20}) {
        const QString part = QString("%1.%2").arg(size).arg(GetParam());
        const std::string path = TestMedia::truncated(whole, folder(), part, size);
        EXPECT_FALSE(m_probe.probe(path, MediaKind::Picture)) << part.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, CutPictureProbeTest,
                         testing::Values("png", "jpg", "gif", "bmp", "ppm"), extension);

TEST_F(PictureProbeTest, GoesByTheContentAndNotByTheName)
{
    const std::string png = TestMedia::picture(folder(), "a.png", 120, 80);
    const std::string jpeg = TestMedia::picture(folder(), "a.jpg", 60, 40);
    const std::string video = TestMedia::video(folder(), "a.mp4", 320, 180, "25", 0.2);

    EXPECT_EQ(size(TestMedia::copy(png, folder(), "png.jpg")), "120x80");
    EXPECT_EQ(size(TestMedia::copy(png, folder(), "png.mp4")), "120x80");
    EXPECT_EQ(size(TestMedia::copy(jpeg, folder(), "jpeg.png")), "60x40");
    EXPECT_EQ(size(TestMedia::copy(jpeg, folder(), "jpeg")), "60x40");
    EXPECT_EQ(size(TestMedia::copy(video, folder(), "video.png")), "nothing");
}

TEST_F(PictureProbeTest, RefusesWhatIsNoPicture)
{
    EXPECT_EQ(size(TestMedia::video(folder(), "a.mp4", 320, 180, "25", 0.2)), "nothing");
    EXPECT_EQ(size(TestMedia::sound(folder(), "a.wav", 0.2)), "nothing");
    EXPECT_EQ(size(TestMedia::file(folder(), "text.png", "no picture\n")), "nothing");
    EXPECT_EQ(size(TestMedia::file(folder(), "bytes.jpg", QByteArray(5000, '\x5a'))), "nothing");
}

TEST_F(PictureProbeTest, RefusesADamagedPicture)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    QByteArray bytes = TestMedia::content(path);
    std::fill(bytes.begin() + bytes.size() / 2, bytes.begin() + bytes.size() / 2 + 50, '\0');

    EXPECT_EQ(size(TestMedia::file(folder(), "damaged.png", bytes)), "nothing");
}

TEST_F(PictureProbeTest, IsNotDeceivedByTheEndOfAThumbnail)
{
    // A JPEG whose application segment holds a whole JPEG, as the thumbnails of cameras do.
    const QByteArray jpeg = TestMedia::content(TestMedia::picture(folder(), "a.jpg", 120, 80));
    const int length = jpeg.size() + 2;
    QByteArray segment("\xff\xe1");
    segment.append(static_cast<char>(length / 256)).append(static_cast<char>(length % 256));
    const QByteArray whole = jpeg.left(2) + segment + jpeg + jpeg.mid(2);

    EXPECT_EQ(size(TestMedia::file(folder(), "whole.jpg", whole)), "120x80");
    EXPECT_EQ(size(TestMedia::file(folder(), "cut.jpg", whole.left(whole.size() - 50))), "nothing");
}

TEST_F(PictureProbeTest, TakesAPictureWithBytesAfterItsEnd)
{
    const QByteArray jpeg = TestMedia::content(TestMedia::picture(folder(), "a.jpg", 120, 80));

    EXPECT_EQ(size(TestMedia::file(folder(), "b.jpg", jpeg + "appended")), "120x80");
}

TEST_F(PictureProbeTest, TakesAMovingGif)
{
    const std::string path = TestMedia::video(folder(), "a.gif", 120, 80, "10", 0.5, false);

    EXPECT_EQ(size(path), "120x80");
}

TEST_F(PictureProbeTest, TurnsAPhotographAsItsCameraWasTurned)
{
    // The orientation tag 6 of a minimal Exif segment: to be shown turned by 90 degrees.
    const QByteArray jpeg = TestMedia::content(TestMedia::picture(folder(), "a.jpg", 120, 80));
    const QByteArray exif = QByteArray::fromHex("ffe1002245786966000049492a00080000000100"
                                                "120103000100000006000000"
                                                "00000000");

    EXPECT_EQ(size(TestMedia::file(folder(), "b.jpg", jpeg.left(2) + exif + jpeg.mid(2))),
              "80x120");
}

TEST_F(PictureProbeTest, TakesAScalablePictureOnlyWhereThereAreFonts)
{
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='50' height='40'>"
                               "<text x='5' y='20'>text</text></svg>";
    const std::string path = TestMedia::file(folder(), "a.svg", drawing);
    if (!qGuiApp) {
        EXPECT_EQ(size(path), "nothing");
    }

    // Qt may have been built without the module that reads them.
    const ScopedGuiApplication application;
    EXPECT_EQ(MediaProbe().probe(path, MediaKind::Picture).has_value(),
              QImageReader::supportedImageFormats().contains("svg"));
}
