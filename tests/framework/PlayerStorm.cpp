// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerStorm.h"

#include "SampleMedia.h"

#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QCoreApplication>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <utility>

using namespace qrvkp;
using namespace qkpar;

namespace {

constexpr std::size_t mostGroups = 5;
constexpr std::size_t mostMixTracks = 7;
constexpr std::size_t longestLog = 4000;
constexpr int canvasWidth = 320;
constexpr int canvasHeight = 180;

} // namespace

PlayerStorm::PlayerStorm(std::uint64_t seed, RvKpApplication& application, RvKpTimeLine& timeline)
    : m_random(seed)
    , m_application(application)
    , m_player(*application.getPlayer())
    , m_timeline(timeline)
    , m_table(SampleMedia::colourTable())
{
}

void PlayerStorm::makeStep()
{
    makeOne({&PlayerStorm::insertGroup,  &PlayerStorm::insertGroup,   &PlayerStorm::removeGroup,
             &PlayerStorm::moveGroup,    &PlayerStorm::resizeGroup,   &PlayerStorm::fillGroup,
             &PlayerStorm::addMix,       &PlayerStorm::addMix,        &PlayerStorm::addEffect,
             &PlayerStorm::removeMix,    &PlayerStorm::fade,          &PlayerStorm::place,
             &PlayerStorm::place,        &PlayerStorm::size,          &PlayerStorm::retime,
             &PlayerStorm::stack,        &PlayerStorm::turnVolume,    &PlayerStorm::bindEffect,
             &PlayerStorm::changeEffect, &PlayerStorm::changeEffect,  &PlayerStorm::seek,
             &PlayerStorm::seek,         &PlayerStorm::playOrPause,   &PlayerStorm::playOrPause,
             &PlayerStorm::stopAndStart, &PlayerStorm::editUnderLock, &PlayerStorm::zoom,
             &PlayerStorm::resizeCanvas});
}

void PlayerStorm::standStill()
{
    m_player.start();
    m_player.pause();
    m_player.seekTo(m_player.getDuration() / 3, true);
}

void PlayerStorm::makeOne(const std::vector<Step>& steps)
{
    const auto index = static_cast<std::size_t>(number(static_cast<int>(steps.size())));
    m_log += " " + std::to_string(index);
    if (m_log.size() > longestLog)
        m_log.erase(0, longestLog / 2);
    (this->*steps[index])();
}

int PlayerStorm::number(int below)
{
    // The distributions of the standard library differ from one to another.
    return static_cast<int>(m_random() % static_cast<std::uint64_t>(below));
}

Reference<RvITrack> PlayerStorm::newClip()
{
    switch (number(4)) {
    case 0:
        return adopt<RvITrack>(RvKpTrack::create(SampleMedia::numberedVideo(), 0, -1, number(500)));
    case 1:
        return adopt<RvITrack>(RvKpTrack::create(SampleMedia::video(), 0, -1, 0));
    case 2:
        return adopt<RvITrack>(RvSpriteTrack::create(SampleMedia::picture(), 0, 1500));
    default:
        return adopt<RvITrack>(
            RvSpriteTrack::create(SampleMedia::colour(0xff203040), number(300), 2000));
    }
}

Reference<RvKpGroup> PlayerStorm::someGroup()
{
    auto groups = adopt(m_timeline.getGroups());
    if (groups.empty())
        return nullptr;
    return std::move(groups[static_cast<std::size_t>(number(static_cast<int>(groups.size())))]);
}

Reference<RvITrack> PlayerStorm::someMix()
{
    auto tracks = adopt(m_timeline.getMixTracks());
    if (tracks.empty())
        return nullptr;
    return std::move(tracks[static_cast<std::size_t>(number(static_cast<int>(tracks.size())))]);
}

Reference<RvITrack> PlayerStorm::someTrack()
{
    if (number(2) == 0)
        return someMix();
    const auto group = someGroup();
    if (!group)
        return nullptr;
    auto tracks = adopt(group->getTracks());
    return tracks.empty() ? nullptr : std::move(tracks.front());
}

void PlayerStorm::insertGroup()
{
    if (adopt(m_timeline.getGroups()).size() >= mostGroups)
        return removeGroup();
    const auto track = newClip();
    const auto group = adopt(RvKpGroup::create(track->getDuration()));
    group->addTrack(track.get());
    m_timeline.insertGroup(group.get(), number(static_cast<int>(mostGroups)));
}

void PlayerStorm::removeGroup()
{
    m_timeline.removeGroup(someGroup().get());
}

void PlayerStorm::moveGroup()
{
    m_timeline.changeGroupPosition(someGroup().get(), number(static_cast<int>(mostGroups)));
}

void PlayerStorm::resizeGroup()
{
    if (const auto group = someGroup())
        group->setDuration(number(2500));
}

void PlayerStorm::fillGroup()
{
    const auto group = someGroup();
    if (!group)
        return;
    const auto tracks = adopt(group->getTracks());
    if (tracks.size() > 1)
        group->removeTrack(tracks.back().get());
    else
        group->addTrack(newClip().get());
}

void PlayerStorm::addMix()
{
    if (adopt(m_timeline.getMixTracks()).size() >= mostMixTracks)
        return removeMix();
    if (number(4) == 0) {
        const auto sound = adopt(RvAudioTrack::create(SampleMedia::sound(), number(900), -1, 0));
        m_timeline.addMixTrack(sound.get());
        return;
    }
    const auto clip = newClip();
    if (auto* media = dynamic_cast<RvIMediaTrack*>(clip.get()))
        media->setScale(0.3F);
    m_timeline.addMixTrack(clip.get());
}

void PlayerStorm::addEffect()
{
    if (adopt(m_timeline.getMixTracks()).size() >= mostMixTracks)
        return removeMix();
    Reference<RvITrack> effect;
    switch (number(3)) {
    case 0:
        effect = adopt<RvITrack>(RvARFilterTrack::create(m_table, 0, 5000));
        break;
    case 1:
        effect = adopt<RvITrack>(RvARLiquifyTrack::create("", 0, 5000));
        break;
    default:
        effect = adopt<RvITrack>(RvTrkMatteEffectTrack::createPathMatteTrack(0, 5000));
        break;
    }
    m_timeline.addMixTrack(effect.get());
}

void PlayerStorm::removeMix()
{
    m_timeline.removeMixTrack(someMix().get());
}

void PlayerStorm::fade()
{
    if (const auto track = someTrack())
        track->setAlpha(fraction());
}

void PlayerStorm::place()
{
    const auto track = someTrack();
    if (auto* media = dynamic_cast<RvIMediaTrack*>(track.get())) {
        media->setPosition(static_cast<float>(number(canvasWidth)),
                           static_cast<float>(number(canvasHeight)));
        media->setRotation(static_cast<float>(number(360)));
    }
}

void PlayerStorm::size()
{
    const auto track = someTrack();
    if (auto* media = dynamic_cast<RvIMediaTrack*>(track.get())) {
        media->setScale(0.1F + 2.0F * fraction());
        media->setWidthAndHeight(static_cast<float>(number(400)), static_cast<float>(number(300)));
    }
}

void PlayerStorm::retime()
{
    const auto track = someTrack();
    if (!track)
        return;
    track->setSpeed(0.25F + 3.0F * fraction());
    track->setStartPos(number(400));
    track->setDuration(500 + number(2500));
}

void PlayerStorm::stack()
{
    if (const auto track = someMix())
        track->setZOrder(number(5) - 2);
}

void PlayerStorm::turnVolume()
{
    const auto track = someTrack();
    if (!track)
        return;
    track->setVolumeAtTime(fraction(), number(1000));
    if (number(4) == 0)
        track->clearVolumes();
}

void PlayerStorm::bindEffect()
{
    const auto track = someMix();
    auto* const effect = dynamic_cast<RvIEffectTrack*>(track.get());
    if (!effect)
        return;
    if (number(3) == 0)
        effect->unbind();
    else if (number(2) == 0)
        effect->bindDynamic();
    else
        effect->bind(someTrack().release(), 1);
}

void PlayerStorm::changeEffect()
{
    const auto track = someMix();
    if (auto* filter = dynamic_cast<RvARFilterTrack*>(track.get())) {
        filter->setFilterAlpha(fraction());
    } else if (auto* liquify = dynamic_cast<RvARLiquifyTrack*>(track.get())) {
        const QPointF from(number(canvasWidth), number(canvasHeight));
        RvARLiquifyOperation stroke;
        stroke.centerX = from.x();
        stroke.centerY = from.y();
        stroke.radius = static_cast<float>(number(80));
        stroke.strength = fraction();
        stroke.movePoints = {from, from + QPointF(number(30), number(30))};
        stroke.liquifyStyle = number(3);
        liquify->appendToLiquifyOperation(stroke);
        if (number(2) == 0)
            liquify->confirmCurrentLiquify();
    } else if (auto* matte = dynamic_cast<RvTrkMatteEffectTrack*>(track.get())) {
        if (number(2) == 0) {
            auto* const path = new QPainterPath;
            path->addEllipse(number(100), number(50), 100, 100);
            matte->setMattePath(path, 200, 150, 1.0F, RvMattePathType());
        }
        matte->setMatteCenter(static_cast<float>(number(canvasWidth)),
                              static_cast<float>(number(canvasHeight)));
        matte->setMatteEclosionPercent(static_cast<float>(number(100)));
        matte->setEnableDrawPathSizeLimit(number(2) == 0);
    }
}

void PlayerStorm::seek()
{
    m_player.seekTo(number(static_cast<int>(m_player.getDuration()) + 1), number(2) == 0);
}

void PlayerStorm::playOrPause()
{
    if (m_player.isPlaying())
        m_player.pause();
    else
        m_player.start();
}

void PlayerStorm::stopAndStart()
{
    if (number(2) == 0)
        m_player.stop();
    m_player.prepareAsync();
    m_player.start();
}

void PlayerStorm::editUnderLock()
{
    m_player.lockPlayer();
    for (int edits = number(6); edits >= 0; --edits) {
        makeOne({&PlayerStorm::insertGroup, &PlayerStorm::removeGroup, &PlayerStorm::addMix,
                 &PlayerStorm::removeMix, &PlayerStorm::place, &PlayerStorm::fade,
                 &PlayerStorm::seek, &PlayerStorm::editUnderLock});
        if (number(3) == 0)
            QCoreApplication::processEvents();
    }
    m_player.unlockPlayer();
}

void PlayerStorm::zoom()
{
    m_application.setCanvasScale(0.3F + fraction());
    m_application.setCanvasPosition(static_cast<float>(number(100) - 50),
                                    static_cast<float>(number(80) - 40));
}

void PlayerStorm::resizeCanvas()
{
    constexpr std::array<std::pair<float, float>, 3> sizes{
        {{320.0F, 180.0F}, {180.0F, 320.0F}, {200.0F, 200.0F}}};
    const auto& [width, height] = sizes[static_cast<std::size_t>(number(3))];
    m_application.getRvKpConfig()->setKpSize(width, height);
}
