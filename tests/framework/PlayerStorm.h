// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Reference.h"

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// Edits the timeline of a player at random and handles the player meanwhile: everything that a
/// host can do to make it stumble.
class PlayerStorm
{
public:
    PlayerStorm(std::uint64_t seed, qrvkp::RvKpApplication& application,
                qrvkp::RvKpTimeLine& timeline);

    void makeStep();
    /// Leaves the player paused or prepared, unlocked, in the middle of the timeline.
    void standStill();
    /// The latest steps, for the report of a failure.
    const std::string& log() const { return m_log; }

private:
    using Step = void (PlayerStorm::*)();

    // The timeline.
    void insertGroup();
    void removeGroup();
    void moveGroup();
    void resizeGroup();
    void fillGroup();
    void addMix();
    void addEffect();
    void removeMix();

    // One track.
    void fade();
    void place();
    void size();
    void retime();
    void stack();
    void turnVolume();
    void bindEffect();
    void changeEffect();

    // The player and the view.
    void seek();
    void playOrPause();
    void stopAndStart();
    void editUnderLock();
    void zoom();
    void resizeCanvas();

    void makeOne(const std::vector<Step>& steps);
    int number(int below);
    float fraction() { return static_cast<float>(number(101)) / 100.0F; }
    Reference<qrvkp::RvITrack> newClip();
    Reference<qrvkp::RvKpGroup> someGroup();
    Reference<qrvkp::RvITrack> someMix();
    /// A track of the main line or a mix track; null when there is none.
    Reference<qrvkp::RvITrack> someTrack();

    std::mt19937_64 m_random;
    qrvkp::RvKpApplication& m_application;
    qrvkp::RvKpPlayer& m_player;
    qrvkp::RvKpTimeLine& m_timeline;
    const std::string m_table; ///< of a filter
    std::string m_log;
};
