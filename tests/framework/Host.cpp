// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Reference.h"

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/private/CanvasView.h>

#include <QApplication>
#include <QCoreApplication>
#include <QTimer>

#include <iostream>
#include <string>

using namespace qrvkp;

namespace {

/// Prints every state that the player signals.
void printStates(RvKpPlayer* player)
{
    QObject::connect(player, &RvKpPlayer::sigStateChanged, player,
                     [](int state) { std::cout << "state " << state << std::endl; });
}

/// Prints whether there is a view, and where the canvas has its middle.
void printCanvas(RvKpApplication& application)
{
    application.enableGesture(false);
    application.setCanvasScale(2.0F);
    application.setCanvasPosition(10.0F, 20.0F);
    const QSizeF size = application.getCanvasShowDimension();
    const QPointF middle = application.convertCanvasToView({size.width() / 2, size.height() / 2});
    std::cout << (application.getGraphicsView() ? "a view, " : "no view, ") << middle.x() << " "
              << middle.y() << std::endl;
}

Reference<RvKpTimeLine> shortTimeline()
{
    auto timeline = adopt(RvKpTimeLine::create());
    timeline->pushBackGroup(adopt(RvKpGroup::create(100)).get());
    return timeline;
}

/// A host without any Qt application edits, measures a file and asks for playing.
int hostWithoutApplication(const std::string& picture)
{
    RvKpApplication application;
    application.getRvKpConfig()->setKpSize(200.0F, 100.0F);
    RvKpPlayer* player = application.getPlayer();
    printStates(player);
    const auto timeline = shortTimeline();
    const auto sprite = adopt(RvSpriteTrack::create(picture, 0, 50));
    if (!sprite || !timeline->addMixTrack(sprite.get()))
        return 1;
    std::cout << "sprite " << sprite->getWidth() << " at " << sprite->getPositionX() << std::endl;
    printCanvas(application);
    player->setTimeLine(timeline.get());
    player->prepareAsync();
    player->start();
    player->pause();
    player->seekTo(40, true);
    std::cout << "position " << player->getCurrentPosition() << std::endl;
    player->lockPlayer();
    player->unlockPlayer();
    player->stop();
    return 0;
}

/// A host with a QCoreApplication plays to the end.
int hostWithCoreApplication(int argc, char** argv)
{
    QCoreApplication qtApplication(argc, argv);
    RvKpApplication application;
    printCanvas(application);
    RvKpPlayer* player = application.getPlayer();
    printStates(player);
    QObject::connect(player, &RvKpPlayer::sigStateChanged, &qtApplication, [](int state) {
        if (state == RvKpPlayerCompleted)
            QCoreApplication::quit();
    });
    player->setTimeLine(shortTimeline().get());
    player->prepareAsync();
    player->start();
    const int result = QCoreApplication::exec();
    std::cout << "position " << player->getCurrentPosition() << std::endl;
    return result;
}

/// A host that shows its canvas 400 x 300, and looks whether a picture of the wanted size is drawn
/// pixel for pixel.
int hostWithView(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    RvKpApplication application;
    application.getRvKpConfig()->setKpSize(1600.0F, 800.0F);
    auto& view = dynamic_cast<CanvasView&>(*application.getGraphicsView());
    view.resize(400, 300);
    view.show();
    const QSize size = view.wantedPictureSize();
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 2 * 255));
    }
    view.setPicture(picture);
    const QImage seen = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const int top = (seen.height() - size.height()) / 2;
    QImage canvas = seen.copy({QPoint(0, top), size});
    canvas.setDevicePixelRatio(1.0);
    const QSizeF shown = application.getCanvasShowDimension();
    std::cout << "shown " << shown.width() << " x " << shown.height() << std::endl
              << "wanted " << size.width() << " x " << size.height() << std::endl
              << "seen " << seen.width() << " x " << seen.height()
              << (canvas == picture ? " exact" : " blurred") << std::endl;
    return 0;
}

/// A host whose calls are printed: before, while and after the log records, too.
int hostWithCalls()
{
    const auto track = adopt(qkpar::RvARFilterTrack::create("a \"b\"", 1, 2));
    track->setTrackID(77);
    RvCallLog::start();
    track->setFloatParam(qkpar::KpARParamSharpen, 0.5F);
    RvCallLog::stop();
    track->getAlpha();
    track->setAlpha(0.25F);
    std::cout << "recorded " << RvCallLog::count() << std::endl;
    return 0;
}

} // namespace

/// A host of the framework in a process of its own, for what a test program with its
/// QApplication cannot show. The first argument tells which one.
int main(int argc, char** argv)
{
    const std::string kind = argc > 1 ? argv[1] : "";
    if (kind == "none" && argc > 2)
        return hostWithoutApplication(argv[2]);
    if (kind == "core")
        return hostWithCoreApplication(argc, argv);
    if (kind == "view")
        return hostWithView(argc, argv);
    if (kind == "calls")
        return hostWithCalls();
    return 2;
}
