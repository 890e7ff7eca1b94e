// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/norvel.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QGuiApplication>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QGuiApplication qtApplication(argc, argv); // your editor's QApplication
    qrvkp::RvKpApplication application;
    qrvkp::RvKpPlayer* player = application.getPlayer();

    // A picture of three seconds in a group on the main line of the player's timeline.
    auto* picture = argc > 1 ? qrvkp::RvSpriteTrack::create(argv[1], 0, 3000) : nullptr;
    if (!picture) {
        std::fprintf(stderr, "usage: %s PICTURE\n", argv[0]);
        return 1;
    }
    auto* group = qrvkp::RvKpGroup::create(3000);
    group->addTrack(picture);
    auto* timeline = qrvkp::RvKpTimeLine::create();
    timeline->pushBackGroup(group);
    player->setTimeLine(timeline);

    // The history begins with the timeline as it is, and records it after every edit.
    const std::unique_ptr<norvel::RvEditorTrace> trace(norvel::RvEditorTrace::create(&application));
    trace->initTrace();
    picture->setAlpha(0.25F);
    trace->recordStatus();

    trace->undo(); // the live timeline is brought back, and the picture with it
    std::printf("after undo: alpha %.2f\n", static_cast<double>(picture->getAlpha()));
    trace->redo();
    std::printf("after redo: alpha %.2f\n", static_cast<double>(picture->getAlpha()));

    // What a create gave carries a reference of yours. Without a timeline, initTrace just forgets.
    player->setTimeLine(nullptr);
    trace->initTrace();
    timeline->release();
    group->release();
    picture->release();
    return 0;
}
