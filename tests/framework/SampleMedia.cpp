// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"

#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QString folder()
{
    static const QTemporaryDir directory;
    return directory.path();
}

std::string makeNumberedVideo()
{
    const QString path = QDir(folder()).filePath("numbered.mp4");
    const QString bars =
        QString("color=black:s=%1x%2:r=25:d=%3,format=yuv420p,"
                "geq=lum='if(mod(floor(N/pow(2\\,floor(X/(W/%4))))\\,2)\\,235\\,16)':cb=128:cr=128")
            .arg(SampleMedia::NumberedWidth)
            .arg(SampleMedia::NumberedHeight)
            .arg(SampleMedia::NumberedPictures / 25)
            .arg(SampleMedia::NumberedBits);
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg", {"-v", "error", "-nostdin", "-y", "-f", "lavfi", "-i", bars, "-c:v",
                            "libx264", "-g", "250", "-bf", "3", path});
    EXPECT_TRUE(ffmpeg.waitForFinished(60000) && ffmpeg.exitCode() == 0)
        << ffmpeg.readAllStandardError().toStdString();
    return path.toStdString();
}

} // namespace

std::string SampleMedia::video()
{
    static const std::string path =
        TestMedia::video(folder(), "video.mp4", VideoWidth, VideoHeight, "25", 1);
    return path;
}

std::string SampleMedia::picture()
{
    static const std::string path =
        TestMedia::picture(folder(), "picture.png", PictureWidth, PictureHeight);
    return path;
}

std::string SampleMedia::sound()
{
    static const std::string path = TestMedia::sound(folder(), "sound.wav", 1);
    return path;
}

std::string SampleMedia::numberedVideo()
{
    static const std::string path = makeNumberedVideo();
    return path;
}

std::string SampleMedia::colour(QRgb rgb)
{
    const QString path = QDir(folder()).filePath(QString("%1.png").arg(rgb, 8, 16, QChar('0')));
    // A player may be reading it.
    if (QFile::exists(path))
        return path.toStdString();
    QImage picture(64, 36, QImage::Format_RGB32);
    picture.fill(rgb);
    EXPECT_TRUE(picture.save(path));
    return path.toStdString();
}

std::string SampleMedia::colourTable()
{
    static const std::string path = TestMedia::file(folder(), "inverted.cube",
                                                    "LUT_3D_SIZE 2\n"
                                                    "1 1 1\n0 1 1\n1 0 1\n0 0 1\n"
                                                    "1 1 0\n0 1 0\n1 0 0\n0 0 0\n");
    return path;
}
