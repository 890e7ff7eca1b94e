// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerMedia.h"

#include <rvkpcore/RvKpTrack.h>

#include <gtest/gtest.h>

#include "support/TestMedia.h"
#include "timeline/ScopedPathEncoding.h"

#include <QDir>
#include <QMap>
#include <QTemporaryDir>

using namespace qrvkp;

namespace {

/// Makes a file once: a player may be reading it.
template <class Make>
QString madeOnce(const QString& name, const Make& make)
{
    static QMap<QString, QString> made;
    if (!made.contains(name))
        made[name] = QString::fromStdString(make());
    return made[name];
}

QString nameOf(const QColor& colour, int width, int height)
{
    return QString("%1 颜色 %2 x %3").arg(colour.name().mid(1)).arg(width).arg(height);
}

} // namespace

QString PlayerMedia::folder()
{
    // Chinese letters stand in file names under every locale, until the folder was removed at exit.
    static const ScopedPathEncoding utf8("UTF-8");
    static const QTemporaryDir directory;
    const QString path = QDir(directory.path()).filePath("比较 播放器");
    EXPECT_TRUE(QDir().mkpath(path));
    return path;
}

QString PlayerMedia::video(const QColor& colour, int width, int height, double seconds)
{
    const QString name = QString("%1 %2.mp4").arg(nameOf(colour, width, height)).arg(seconds);
    return madeOnce(name, [&] {
        return TestMedia::solidVideo(folder(), name, width, height, colour, {}, seconds);
    });
}

QString PlayerMedia::red(int width, int height, double seconds)
{
    return video(Qt::red, width, height, seconds);
}

QString PlayerMedia::blue(int width, int height, double seconds)
{
    return video(Qt::blue, width, height, seconds);
}

QString PlayerMedia::numbers(int pictures)
{
    const QString name = QString("%1 号码.mp4").arg(pictures);
    return madeOnce(
        name, [&] { return TestMedia::numberedVideo(folder(), name, 320, 180, "25", pictures); });
}

QString PlayerMedia::picture(const QColor& colour, int width, int height)
{
    const QString name = nameOf(colour, width, height) + ".png";
    return madeOnce(name,
                    [&] { return TestMedia::solidPicture(folder(), name, width, height, colour); });
}

QString PlayerMedia::text()
{
    return madeOnce("文本.mp4", [] {
        return TestMedia::file(folder(), "文本.mp4", "neither a video nor a picture\n");
    });
}

QString PlayerMedia::missing()
{
    return QDir(folder()).filePath("没有.mp4");
}

FrameworkRef<RvKpTimeLine> PlayerMedia::timelineOf(const QString& video)
{
    auto timeline = adopt(RvKpTimeLine::create());
    const auto track = adopt(RvKpTrack::create(video.toStdString(), 0, -1, 0));
    const auto group = adopt(RvKpGroup::create(track->getDuration()));
    EXPECT_TRUE(group->addTrack(track.get()));
    EXPECT_TRUE(timeline->pushBackGroup(group.get()));
    return timeline;
}
