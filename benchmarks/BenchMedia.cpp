// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BenchMedia.h"

#include "FfmpegProgram.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

QString pathOf(const QString& name)
{
    static const QTemporaryDir instance;
    return instance.filePath(name);
}

void require(bool made)
{
    if (made)
        return;
    std::fprintf(stderr, "ffmpeg cannot make the media\n");
    std::exit(2);
}

QString testCard(QSize size, int seconds)
{
    const QString path = pathOf(QString("%1-%2s.mp4").arg(size.height()).arg(seconds));
    if (QFile::exists(path))
        return path;
    const QString length = QString::number(seconds);
    const QString rate = QString::number(BenchMedia::picturesPerSecond);
    const QString keyFrames = QString::number(BenchMedia::picturesPerKeyFrame);
    const QString card = QString("testsrc2=size=%1x%2:rate=%3:duration=%4")
                             .arg(size.width())
                             .arg(size.height())
                             .arg(rate, length);
    require(runFfmpeg({"-f",
                       "lavfi",
                       "-i",
                       card,
                       "-f",
                       "lavfi",
                       "-i",
                       "sine=frequency=440:duration=" + length,
                       "-c:v",
                       "libx264",
                       "-preset",
                       "veryfast",
                       "-pix_fmt",
                       "yuv420p",
                       "-g",
                       keyFrames,
                       "-keyint_min",
                       keyFrames,
                       "-sc_threshold",
                       "0",
                       "-c:a",
                       "aac",
                       path}));
    return path;
}

} // namespace

std::string BenchMedia::video(QSize size)
{
    return testCard(size, 10).toStdString();
}

std::string BenchMedia::videoForSeeks(QSize size)
{
    return testCard(size, 25).toStdString();
}

std::string BenchMedia::longVideo()
{
    const QString path = pathOf("long.mp4");
    if (!QFile::exists(path))
        require(runFfmpeg(
            {"-stream_loop", "11", "-i", testCard(QSize(640, 360), 50), "-c", "copy", path}));
    return path.toStdString();
}

std::string BenchMedia::copy(int index)
{
    const QString path = pathOf(QString("copy-%1.mp4").arg(index));
    if (!QFile::exists(path))
        require(QFile::copy(testCard(QSize(1280, 720), 2), path));
    return path.toStdString();
}

std::string BenchMedia::circle()
{
    const QString path = pathOf("circle.png");
    QImage picture(640, 360, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPoint(320, 180), 180, 180);
    painter.end();
    picture.save(path);
    return path.toStdString();
}

std::string BenchMedia::folder()
{
    return pathOf({}).toStdString();
}
