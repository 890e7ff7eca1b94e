// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "walk/WalkEdits.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <QImage>

namespace {

constexpr int mostGroups = 12;
constexpr int mostMixTracks = 16;
constexpr int mostLiquifies = 4; ///< each writes a file with every capture

bool isClip(const qrvkp::RvITrack& track)
{
    return track.getTrackType() == qrvkp::RvTrackTypeVideo ||
           track.getTrackType() == qrvkp::RvTrackTypeSprite;
}

QImage maskPicture(int level)
{
    QImage mask(16, 9, QImage::Format_Grayscale8);
    mask.fill(level);
    return mask;
}

} // namespace

WalkEdits::WalkEdits(qrvkp::RvKpApplication& application, const WalkMedia& media, Scope scope,
                     Random& random)
    : m_application(application)
    , m_media(media)
    , m_scope(scope)
    , m_random(random)
{
}

const std::vector<WalkEdits::NamedEdit>& WalkEdits::edits()
{
    constexpr Scope restorable = Scope::Restorable;
    constexpr Scope all = Scope::All;
    static const std::vector<NamedEdit> table{
        {"insert clip", &WalkEdits::insertClip, restorable},
        {"split clip", &WalkEdits::splitClip, restorable},
        {"trim clip", &WalkEdits::trimClip, restorable},
        {"move clip", &WalkEdits::moveClip, restorable},
        {"delete clip", &WalkEdits::deleteClip, restorable},
        {"replace clip", &WalkEdits::replaceClip, restorable},
        {"place clip", &WalkEdits::placeClip, restorable},
        {"restyle clip", &WalkEdits::restyleClip, restorable},
        {"insert effect group", &WalkEdits::insertEffectGroup, restorable},
        {"insert empty group", &WalkEdits::insertEmptyGroup, restorable},
        {"add overlay", &WalkEdits::addOverlay, restorable},
        {"place overlay", &WalkEdits::placeOverlay, restorable},
        {"add sound", &WalkEdits::addSound, restorable},
        {"trim sound", &WalkEdits::trimSound, restorable},
        {"add detection", &WalkEdits::addDetection, restorable},
        {"bind detection", &WalkEdits::bindDetection, restorable},
        {"add filter", &WalkEdits::addFilter, restorable},
        {"change filter", &WalkEdits::changeFilter, restorable},
        {"add beauty", &WalkEdits::addBeauty, restorable},
        {"change beauty", &WalkEdits::changeBeauty, restorable},
        {"add makeup", &WalkEdits::addMakeup, restorable},
        {"change makeup", &WalkEdits::changeMakeup, restorable},
        {"add liquify", &WalkEdits::addLiquify, restorable},
        {"push pixels", &WalkEdits::pushPixels, restorable},
        {"restyle mix track", &WalkEdits::restyleMix, restorable},
        {"bind effect", &WalkEdits::bindEffect, restorable},
        {"delete mix track", &WalkEdits::deleteMixTrack, restorable},
        {"add undescribed track", &WalkEdits::addUndescribed, restorable},
        {"resize canvas", &WalkEdits::resizeCanvas, restorable},
        {"add guest track", &WalkEdits::addGuestTrack, all},
        {"paint mask", &WalkEdits::paintMask, all},
        {"add layer", &WalkEdits::addLayer, all},
        {"change layer", &WalkEdits::changeLayer, all},
        {"add label", &WalkEdits::addLabel, all},
        {"add parameters", &WalkEdits::addParameters, all},
        {"fade filter", &WalkEdits::fadeFilter, all},
        {"bind effect to detection", &WalkEdits::bindEffectToDetection, all},
        {"bind effect to mix track", &WalkEdits::bindEffectToMixTrack, all},
        {"rename track", &WalkEdits::renameTrack, all},
    };
    return table;
}

std::string WalkEdits::makeEdit()
{
    for (;;) {
        const NamedEdit& edit =
            edits()[static_cast<std::size_t>(number(static_cast<int>(edits().size())))];
        if (edit.scope == Scope::All && m_scope != Scope::All)
            continue;
        if ((this->*edit.edit)())
            return edit.name;
    }
}

bool WalkEdits::insertClip()
{
    const int groups = static_cast<int>(adopt(timeline()->getGroups()).size());
    return groups < mostGroups && insertTrack(newClipTrack(), number(groups + 1), 3000);
}

bool WalkEdits::splitClip()
{
    int position = 0;
    const auto group = someClip(&position);
    if (!group || adopt(timeline()->getGroups()).size() >= mostGroups)
        return false;
    const auto left = firstTrack(*group);
    const long long half = left->getOriginDuration() / 2;
    FrameworkRef<qrvkp::RvITrack> right;
    if (const auto* video = dynamic_cast<qrvkp::RvKpTrack*>(left.get()))
        right.reset(qrvkp::RvKpTrack::create(left->getTrackSource(), 0, half,
                                             video->getFileStartTime() + half));
    else
        right.reset(qrvkp::RvSpriteTrack::create(left->getTrackSource(), 0, half));
    left->setDuration(half);
    group->setDuration(half);
    return insertTrack(std::move(right), position + 1, half);
}

bool WalkEdits::trimClip()
{
    const auto group = someClip();
    if (!group)
        return false;
    const auto track = firstTrack(*group);
    if (auto* video = dynamic_cast<qrvkp::RvKpTrack*>(track.get()))
        video->setFileStartTime(number(2000));
    track->setDuration(500 + number(3000));
    group->setDuration(track->getOriginDuration());
    return true;
}

bool WalkEdits::moveClip()
{
    const auto group = someClip();
    const int groups = static_cast<int>(adopt(timeline()->getGroups()).size());
    return group && timeline()->changeGroupPosition(group.get(), number(groups));
}

bool WalkEdits::deleteClip()
{
    const auto group = someClip();
    return group && timeline()->removeGroup(group.get());
}

bool WalkEdits::replaceClip()
{
    int position = 0;
    const auto group = someClip(&position);
    return group && timeline()->removeGroup(group.get()) &&
           insertTrack(newClipTrack(), position, 2000);
}

bool WalkEdits::placeClip()
{
    const auto group = someClip();
    if (group)
        placeMedia(*firstTrack(*group));
    return group != nullptr;
}

bool WalkEdits::restyleClip()
{
    const auto group = someClip();
    if (group)
        restyle(*firstTrack(*group));
    return group != nullptr;
}

bool WalkEdits::insertEffectGroup()
{
    const int groups = static_cast<int>(adopt(timeline()->getGroups()).size());
    return groups < mostGroups && number(4) == 0 &&
           insertTrack(FrameworkRef<qrvkp::RvITrack>(qkpar::RvARFilterTrack::create("", 0, 500)),
                       groups, 500);
}

bool WalkEdits::insertEmptyGroup()
{
    const auto line = timeline();
    if (adopt(line->getGroups()).size() >= mostGroups || number(4) != 0)
        return false;
    const auto group = adopt(qrvkp::RvKpGroup::create(100));
    return line->pushBackGroup(group.get());
}

bool WalkEdits::addGuestTrack()
{
    const auto group = someClip();
    if (!group || adopt(group->getTracks()).size() > 2)
        return false;
    const auto guest = adopt(qrvkp::RvSpriteTrack::create(oneOf(m_media.pictures), 0, 400));
    return group->addTrack(guest.get());
}

bool WalkEdits::addOverlay()
{
    return addMix(newClipTrack().get());
}

bool WalkEdits::placeOverlay()
{
    const auto overlay = someMix<qrvkp::RvIMediaTrack>();
    if (overlay)
        placeMedia(*overlay);
    return overlay != nullptr;
}

bool WalkEdits::addSound()
{
    return addMix(
        adopt(qrvkp::RvAudioTrack::create(oneOf(m_media.sounds), number(5000), -1, 0)).get());
}

bool WalkEdits::trimSound()
{
    const auto sound = someMix<qrvkp::RvAudioTrack>();
    if (!sound)
        return false;
    sound->setFileStartTime(number(1000));
    sound->setDuration(200 + number(1000));
    sound->setStartPos(number(9000));
    return true;
}

bool WalkEdits::addDetection()
{
    return addMix(adopt(qrvkp::RvDetectionTrack::create(number(3), text("models/"))).get());
}

bool WalkEdits::bindDetection()
{
    const auto detection = someMix<qrvkp::RvDetectionTrack>();
    const auto group = someClip();
    if (!detection || !group || !isRestorable(detection.get()))
        return false;
    if (number(4) == 0)
        detection->bindDynamic();
    else
        detection->bind(firstTrack(*group).release(), number(3));
    return true;
}

bool WalkEdits::addFilter()
{
    const auto filter = adopt(qkpar::RvARFilterTrack::create(text("filters/"), number(4000), 2000));
    filter->setScriptParam("grain", text(""));
    filter->setFloatParam(qkpar::KpARParamSharpen, fraction());
    filter->setFloatParamByFaceId(qkpar::KpARParamSlimFace, fraction(), 1);
    filter->addARFacePlist(text("faces/"), 1);
    return addMix(filter.get());
}

bool WalkEdits::changeFilter()
{
    const auto filter = someMix<qkpar::RvARFilterTrack>();
    if (!filter || filter->getFloatParams().empty())
        return false;
    filter->setFloatParam(qkpar::KpARParamSharpen, fraction());
    filter->setFloatParamByFaceId(qkpar::KpARParamSlimFace, fraction(), 1);
    filter->setGlobalParamConfiguration(text("{\"a\":1}"));
    return true;
}

bool WalkEdits::addBeauty()
{
    const auto beauty = adopt(qkpar::RvARBeautyTrack::create("", number(4000), 2000));
    if (number(2) == 0)
        beauty->addARFacePlist(text("faces/"), 2);
    beauty->loadBeautyMaskDatas(1 + number(3), nullptr, "round", maskPicture(number(256)));
    return addMix(beauty.get());
}

bool WalkEdits::changeBeauty()
{
    const auto beauty = someMix<qkpar::RvARBeautyTrack>();
    if (!beauty)
        return false;
    beauty->setEnableBeautyGenderDistinction(number(2) == 0);
    beauty->setApplyGenderToAR(number(2) == 0);
    beauty->loadCoeffientParameterConfig(text("config "));
    beauty->setAllFaceBeautyParam({{number(3), {{qkpar::KpARParamSmoothSkin, fraction()}}}});
    beauty->setAllBeautyAnattaForFaceControls({{qkpar::KpARParamLipShape, number(2) == 0}});
    beauty->setManualLongLegEnable(number(2) == 0);
    beauty->setManualLongLegRange({fraction(), fraction()});
    beauty->setManualSlimHeadParam({fraction(), fraction(), fraction()});
    beauty->setMapPointsData({QPointF(number(100), number(100))});
    beauty->setBeautyType(static_cast<qkpar::RvBeautyType>(number(4)));
    if (beauty->getBeautyMaskFaceId() >= 1)
        beauty->loadBeautyMaskDatas(1 + number(3), nullptr, text("b"), maskPicture(number(256)));
    return true;
}

bool WalkEdits::paintMask()
{
    const auto beauty = someMix<qkpar::RvARBeautyTrack>();
    if (beauty)
        beauty->loadBeautyMaskDatas(5, nullptr, "square", maskPicture(number(256)));
    return beauty != nullptr;
}

bool WalkEdits::addMakeup()
{
    const auto makeup = adopt(qkpar::RvARMakeupTrack::create(text("makeup/"), 0, 5000));
    makeup->setARGroupDatas({{1, "lips", 0.5F, {{"texture", "red.png"}}}});
    makeup->setAllARGroupOrder({"lips"});
    return addMix(makeup.get());
}

bool WalkEdits::changeMakeup()
{
    const auto makeup = someMix<qkpar::RvARMakeupTrack>();
    if (!makeup)
        return false;
    // The opacity always changes too: groups of faces alone can compare as the same.
    makeup->setSuitAlpha(makeup->getSuitAlpha() + 0.01F);
    makeup->setARGroupDatas({{number(3), text("brows"), fraction(), {{"texture", text("t")}}}});
    qkpar::RvARFaceGroupData face;
    face.faceId = number(3);
    face.suitAlpha = fraction();
    face.groupDatas = makeup->getARGroupDatas();
    face.groupOrders = {text("order")};
    makeup->setARFaceGroupDatas({face});
    makeup->setAllARGroupOrder({text("lips"), text("brows")});
    return true;
}

bool WalkEdits::addLiquify()
{
    int liquifies = 0;
    for (const auto& track : adopt(timeline()->getMixTracks()))
        liquifies += track->getTrackType() == qrvkp::RvTrackTypeARLiquify ? 1 : 0;
    return liquifies < mostLiquifies &&
           addMix(adopt(qkpar::RvARLiquifyTrack::create("", 0, 4000)).get());
}

bool WalkEdits::pushPixels()
{
    const auto liquify = someMix<qkpar::RvARLiquifyTrack>();
    if (!liquify)
        return false;
    for (int strokes = 1 + number(3); strokes > 0; --strokes) {
        qkpar::RvARLiquifyOperation stroke;
        stroke.centerX = number(1920);
        stroke.centerY = number(1080);
        stroke.radius = fraction() * 200.0F;
        stroke.strength = fraction();
        stroke.movePoints = {QPointF(number(100), 1), QPointF(2, number(100))};
        stroke.liquifyStyle = number(4);
        liquify->appendToLiquifyOperation(stroke);
    }
    return true;
}

bool WalkEdits::restyleMix()
{
    const auto track = someMix<qrvkp::RvITrack>();
    if (!track || track->getTrackType() == qrvkp::RvTrackTypeARLabel ||
        track->getTrackType() == qrvkp::RvTrackTypeARLayer)
        return false;
    restyle(*track);
    track->setStartPos(number(9000));
    return true;
}

bool WalkEdits::bindEffect()
{
    const auto effect = someMix<qkpar::RvARFilterTrack>();
    const auto group = someClip();
    if (!effect || !group || !isRestorable(effect.get()))
        return false;
    switch (number(4)) {
    case 0:
        effect->unbind();
        break;
    case 1:
        effect->bindDynamic();
        break;
    default:
        effect->bind(firstTrack(*group).release(), number(3));
        break;
    }
    return true;
}

bool WalkEdits::deleteMixTrack()
{
    const auto track = someMix<qrvkp::RvITrack>();
    const bool keep = track && m_scope == Scope::Restorable &&
                      track->getTrackType() == qrvkp::RvTrackTypeDetection;
    return track && !keep && isRestorable(track.get()) && timeline()->removeMixTrack(track.get());
}

bool WalkEdits::isRestorable(qrvkp::RvITrack* track) const
{
    const auto* effect = dynamic_cast<qrvkp::RvIEffectTrack*>(track);
    const auto* detection = dynamic_cast<qrvkp::RvDetectionTrack*>(track);
    const bool isAway = (effect && effect->getActionRange() == qrvkp::RvActionRangeAway) ||
                        (detection && detection->getActionRange() == qrvkp::RvActionRangeAway);
    return m_scope == Scope::All || !isAway;
}

bool WalkEdits::addUndescribed()
{
    if (number(4) != 0)
        return false;
    switch (number(3)) {
    case 0:
        return addMatte();
    case 1:
        return addMix(adopt(qkpar::RvARFrameTrack::create("frame", 0, 100)).get());
    default:
        return addMix(adopt(qrvkp::RvITrack::create(0, 100)).get());
    }
}

bool WalkEdits::addMatte()
{
    const auto matte = adopt(qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(0, 100));
    if (const auto group = someClip())
        matte->bind(firstTrack(*group).release(), number(3));
    return addMix(matte.get());
}

bool WalkEdits::addLayer()
{
    return addMix(adopt(qkpar::RvARAttribsTrack::create(text("layers/"), number(1000), 700)).get());
}

bool WalkEdits::changeLayer()
{
    const auto layer = someMix<qkpar::RvARAttribsTrack>();
    if (!layer)
        return false;
    layer->setScriptParam(text("key"), text("value"));
    restyle(*layer);
    return true;
}

bool WalkEdits::addLabel()
{
    const auto label = adopt(qkpar::RvARLabelTrack::create("label", 0, 100));
    label->setAlpha(fraction());
    if (const auto group = someClip())
        label->bind(firstTrack(*group).release(), number(3));
    return addMix(label.get());
}

bool WalkEdits::addParameters()
{
    const auto filter = someMix<qkpar::RvARFilterTrack>();
    if (!filter)
        return false;
    filter->setScriptParam(text("key"), text("value"));
    filter->setFloatParam(static_cast<qkpar::KpARKernelParamFlag>(number(20)), fraction());
    filter->setFloatParamByFaceId(qkpar::KpARParamSlimNose, fraction(), number(4));
    filter->addARFacePlist(text("faces/"), number(4));
    return true;
}

bool WalkEdits::fadeFilter()
{
    const auto filter = someMix<qkpar::RvARFilterTrack>();
    if (filter)
        filter->setFilterAlpha(fraction());
    return filter != nullptr;
}

bool WalkEdits::bindEffectToDetection()
{
    const auto effect = someMix<qkpar::RvARFilterTrack>();
    const auto detection = someMix<qrvkp::RvDetectionTrack>();
    return effect && detection && effect->bindDetect(detection.get());
}

bool WalkEdits::bindEffectToMixTrack()
{
    const auto effect = someMix<qkpar::RvARFilterTrack>();
    auto target = someMix<qrvkp::RvITrack>();
    return effect && target && effect->bind(target.release(), 1);
}

bool WalkEdits::renameTrack()
{
    const auto track = someMix<qrvkp::RvITrack>();
    if (track)
        track->setTag(text("tag "));
    return track != nullptr;
}

bool WalkEdits::resizeCanvas()
{
    if (number(4) != 0)
        return false;
    m_application.getRvKpConfig()->setKpSize(static_cast<float>(640 + number(4) * 320),
                                             static_cast<float>(360 + number(4) * 180));
    return true;
}

int WalkEdits::number(int below)
{
    // Not std::uniform_int_distribution: it differs from one standard library to the next.
    return static_cast<int>(m_random() % static_cast<std::uint64_t>(below));
}

const std::string& WalkEdits::oneOf(const std::vector<std::string>& values)
{
    return values[static_cast<std::size_t>(number(static_cast<int>(values.size())))];
}

FrameworkRef<qrvkp::RvKpTimeLine> WalkEdits::timeline() const
{
    return adopt(m_application.getPlayer()->getTimeLine());
}

FrameworkRef<qrvkp::RvKpGroup> WalkEdits::someClip(int* position)
{
    auto groups = adopt(timeline()->getGroups());
    std::vector<std::size_t> clips;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto track = firstTrack(*groups[i]);
        if (track && isClip(*track))
            clips.push_back(i);
    }
    if (clips.empty())
        return nullptr;
    const std::size_t chosen =
        clips[static_cast<std::size_t>(number(static_cast<int>(clips.size())))];
    if (position)
        *position = static_cast<int>(chosen);
    return std::move(groups[chosen]);
}

FrameworkRef<qrvkp::RvITrack> WalkEdits::firstTrack(const qrvkp::RvKpGroup& group) const
{
    auto tracks = adopt(group.getTracks());
    return tracks.empty() ? nullptr : std::move(tracks.front());
}

FrameworkRef<qrvkp::RvITrack> WalkEdits::newClipTrack()
{
    qrvkp::RvITrack* track = nullptr;
    if (number(3) == 0)
        track = qrvkp::RvKpTrack::create(oneOf(m_media.videos), 0, -1, number(200));
    else
        track = qrvkp::RvSpriteTrack::create(oneOf(m_media.pictures), 0, 3000);
    return adopt(track);
}

bool WalkEdits::insertTrack(FrameworkRef<qrvkp::RvITrack> track, int position, long long duration)
{
    const auto group = adopt(qrvkp::RvKpGroup::create(duration));
    return group->addTrack(track.get()) && timeline()->insertGroup(group.get(), position);
}

bool WalkEdits::addMix(qrvkp::RvITrack* track)
{
    const auto line = timeline();
    return adopt(line->getMixTracks()).size() < mostMixTracks && line->addMixTrack(track);
}

template <class Track>
FrameworkRef<Track> WalkEdits::someMix()
{
    std::vector<FrameworkRef<Track>> candidates;
    for (auto& track : adopt(timeline()->getMixTracks())) {
        if (auto candidate = referenceAs<Track>(std::move(track)))
            candidates.push_back(std::move(candidate));
    }
    if (candidates.empty())
        return nullptr;
    return std::move(
        candidates[static_cast<std::size_t>(number(static_cast<int>(candidates.size())))]);
}

void WalkEdits::placeMedia(qrvkp::RvITrack& track)
{
    auto& media = dynamic_cast<qrvkp::RvIMediaTrack&>(track);
    media.setWidthAndHeight(static_cast<float>(100 + number(900)),
                            static_cast<float>(100 + number(900)));
    media.setPosition(static_cast<float>(number(1920)), static_cast<float>(number(1080)));
    media.setScale(0.1F + fraction());
    media.setRotation(static_cast<float>(number(360)));
}

void WalkEdits::restyle(qrvkp::RvITrack& track)
{
    track.setAlpha(fraction());
    track.setSpeed(0.25F + fraction());
    // A tag alone would compare as the same: the z-order changes with it.
    track.setZOrder(track.getOriginZOrder() + 1);
    track.setTag(text("tag "));
}

std::string WalkEdits::text(const char* prefix)
{
    return prefix + std::to_string(number(50));
}
