// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Reference.h"

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

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
/// QGuiApplication cannot show. The first argument tells which one.
int main(int argc, char** argv)
{
    const std::string kind = argc > 1 ? argv[1] : "";
    if (kind == "none" && argc > 2)
        return hostWithoutApplication(argv[2]);
    if (kind == "core")
        return hostWithCoreApplication(argc, argv);
    if (kind == "calls")
        return hostWithCalls();
    return 2;
}
