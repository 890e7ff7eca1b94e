// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "screenshots/PlayerScreens.h"

#include "support/FrameworkRef.h"

#include <norvel/norvel.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>
#include <QProcess>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <memory>

using namespace qrvkp;

namespace {

constexpr QSize screenSize(800, 500);
constexpr int ffmpegTimeoutMs = 60000;
constexpr int patienceMs = 120000;

/// Runs the event loop until something holds; false when it does not in time.
template <class Condition>
bool waitFor(const Condition& condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < patienceMs) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return condition();
}

/// A moving picture with fine structures, for ffmpeg.
const QString movingPicture =
    QStringLiteral("mandelbrot=size=960x540:rate=25:start_scale=2:end_scale=0.2:end_pts=100:"
                   "maxiter=100");

/// Makes a video of four seconds by a filter of ffmpeg; gives its path, empty on failure.
QString makeVideo(const QString& folder, const QString& name, const QString& filter)
{
    const QString path = QDir(folder).filePath(name);
    QProcess ffmpeg;
    // The encoder is ffmpeg's own, so that every build of it has it.
    ffmpeg.start("ffmpeg", {"-v", "error", "-nostdin", "-y", "-f", "lavfi", "-i", filter, "-t", "4",
                            "-c:v", "mpeg4", "-q:v", "2", path});
    const bool succeeded = ffmpeg.waitForFinished(ffmpegTimeoutMs) &&
                           ffmpeg.exitStatus() == QProcess::NormalExit && ffmpeg.exitCode() == 0;
    return succeeded ? path : QString();
}

/// A dark window for a widget that no layout resizes.
std::unique_ptr<QWidget> makeWindow()
{
    auto window = std::make_unique<QWidget>();
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(0x20, 0x22, 0x26));
    window->setPalette(dark);
    window->resize(screenSize);
    return window;
}

FrameworkRef<RvKpTimeLine> timelineOf(const QString& video)
{
    const auto track = adopt(RvKpTrack::create(video.toStdString(), 0, -1, 0));
    if (!track)
        return nullptr;
    auto timeline = adopt(RvKpTimeLine::create());
    const auto group = adopt(RvKpGroup::create(track->getDuration()));
    group->addTrack(track.get());
    timeline->pushBackGroup(group.get());
    return timeline;
}

/// Does something that has a picture drawn, and runs the event loop until one came and no other one
/// follows it; false when none comes in time.
template <class Act>
bool showPicture(RvKpPlayer& player, const Act& act)
{
    QElapsedTimer sinceAct;
    QElapsedTimer sincePicture;
    long long quietMs = 400;
    const auto connection =
        QObject::connect(&player, &RvKpPlayer::sigPictureRendered, [&](const QImage& picture) {
            if (picture.isNull())
                return;
            // On a machine that takes long for one picture, another one takes as long.
            quietMs = std::max(quietMs, 2 * sinceAct.elapsed());
            sincePicture.start();
        });
    sinceAct.start();
    act();
    const bool came =
        waitFor([&] { return sincePicture.isValid() && sincePicture.elapsed() >= quietMs; });
    QObject::disconnect(connection);
    return came;
}

bool showPosition(RvKpPlayer& player, long long position)
{
    return showPicture(player, [&] { player.seekTo(position, true); });
}

/// A white shape on nothing.
template <class Draw>
QImage drawIcon(int side, const Draw& draw)
{
    QImage icon(side, side, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    draw(painter);
    return icon;
}

QImage playIcon()
{
    return drawIcon(16, [](QPainter& painter) {
        painter.drawPolygon(
            QPolygonF(QVector<QPointF>{QPointF(3, 1), QPointF(14, 8), QPointF(3, 15)}));
    });
}

QImage pauseIcon()
{
    return drawIcon(16, [](QPainter& painter) {
        painter.drawRect(3, 1, 4, 14);
        painter.drawRect(9, 1, 4, 14);
    });
}

/// A disk with an arrow to either side.
QImage handleIcon()
{
    return drawIcon(36, [](QPainter& painter) {
        painter.drawEllipse(1, 1, 34, 34);
        painter.setBrush(QColor(0xff, 0x85, 0x62));
        painter.drawPolygon(
            QPolygonF(QVector<QPointF>{QPointF(15, 10), QPointF(7, 18), QPointF(15, 26)}));
        painter.drawPolygon(
            QPolygonF(QVector<QPointF>{QPointF(21, 10), QPointF(29, 18), QPointF(21, 26)}));
    });
}

QLabel* makeHint(const QString& text)
{
    auto* const hint = new QLabel(text);
    hint->setStyleSheet("background: rgba(0,0,0,160); color: white; padding: 6px 12px;");
    hint->move(16, 16);
    hint->adjustSize();
    return hint;
}

} // namespace

QImage PlayerScreens::simplePlayer(const QString& folder)
{
    const QString video = makeVideo(folder, "player.mp4", movingPicture);
    RvKpApplication application;
    application.getRvKpConfig()->setKpSize(960.0F, 540.0F);
    const auto timeline = timelineOf(video);
    if (!timeline)
        return {};
    const auto window = makeWindow();
    auto* const widget = new QLabPlayer(&application, window.get());
    widget->resize(screenSize);
    QImage play = playIcon();
    QImage pause = pauseIcon();
    widget->setupPlayIconImage(&play, &pause);
    window->show();

    RvKpPlayer& player = *application.getPlayer();
    player.setTimeLine(timeline.get());
    player.prepareAsync();
    player.start();
    if (!waitFor([&] { return player.isPlaying(); }))
        return {};
    // What playing had drawn last must not come after the picture of the position.
    if (!showPicture(player,
                     [&] {
                         player.pause();
                         player.seekTo(1000, true);
                     }) ||
        !showPosition(player, 2000))
        return {};
    return window->grab().toImage();
}

QImage PlayerScreens::comparePlayer(const QString& folder)
{
    const QString before = makeVideo(folder, "before.mp4", movingPicture + ",hue=s=0");
    const QString after = makeVideo(folder, "after.mp4", movingPicture);
    if (before.isEmpty() || after.isEmpty())
        return {};
    RvKpApplication application;
    application.getRvKpConfig()->setKpSize(960.0F, 540.0F);
    const auto window = makeWindow();
    auto* const widget = new QLabComparePlayer(&application, window.get(), true);
    widget->resize(screenSize);
    widget->setLineWidth(2);
    widget->setIconImage(handleIcon());
    widget->setLeftHintWidget(makeHint("Before"));
    widget->setRightHintWidget(makeHint("After"));
    window->show();

    RvKpPlayer& player = *application.getPlayer();
    if (!showPicture(player, [&] { widget->setupCompareVideoPath(after, before, true); }) ||
        !waitFor([&] { return player.getState() == RvKpPlayerPrepared; }) ||
        !showPosition(player, 2000))
        return {};
    widget->updateEffect();
    return window->grab().toImage();
}
