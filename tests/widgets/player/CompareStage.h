// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PlayerStage.h"

#include <support/FrameworkRef.h>

#include <norvel/widgets/player/QLabComparePlayer.h>

#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QGraphicsView>
#include <QPointer>

class LabCompareMaskView;

/// A compare player of 960 x 540 in its window: a px of the view is two px of the canvas.
class CompareStage : public PlayerStage
{
protected:
    using Calls = std::vector<std::string>;

    /// Makes and shows the player, and waits until the mask view has the size of the view.
    void SetUp() override;
    void makePlayer(bool ownPlayer);

    QGraphicsView& view() { return *application.getGraphicsView(); }
    /// The mask view; null when there is none.
    LabCompareMaskView* mask();

    /// Calls `setupCompareVideoPath` and gives what it did to the framework, with the names `base`,
    /// `mix`, `group` and `matte` in place of the ids of what was made.
    Calls setUp(const QString& first, const QString& second, bool isVideo);
    /// Sets up, and waits until it is prepared.
    void showPair(const QString& first, const QString& second, bool isVideo);

    // What the player's timeline holds.
    FrameworkRef<qrvkp::RvKpTimeLine> timeline();
    FrameworkRef<qrvkp::RvKpGroup> group();
    FrameworkRef<qrvkp::RvITrack> baseTrack();
    FrameworkRef<qrvkp::RvITrack> mixTrack();
    FrameworkRef<qrvkp::RvTrkMatteEffectTrack> matte();

    QPointer<QLabComparePlayer> widget;
};
