// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/FieldKinds.h"

#include "timeline/KindSamples.h"
#include "timeline/ValueText.h"

#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace {

using namespace norvel;
using namespace qrvkp;
using namespace qkpar;

using Changes = std::vector<FieldChange>;

// Changes are made of a change to a record, to which the live half is added.

/// A change of one member of a record.
template <class Record, class Value, class Change>
FieldChange inRecord(std::string name, Value Record::*member, Change change)
{
    FieldChange field;
    field.name = std::move(name);
    field.change = [=](RvAttribute& record) { change(dynamic_cast<Record&>(record).*member); };
    field.value = [=](const RvAttribute& record) {
        return ValueText::of(dynamic_cast<const Record&>(record).*member);
    };
    return field;
}

/// Adds what a live track of the class has: the value by its getter, and a change by its setter.
template <class Track, class Get, class Change>
FieldChange onTrack(FieldChange field, Get get, Change change)
{
    field.hasLiveValue = [](RvITrack* track) { return dynamic_cast<Track*>(track) != nullptr; };
    field.liveValue = [=](RvITrack& track) {
        return ValueText::of(std::invoke(get, dynamic_cast<Track&>(track)));
    };
    field.changeLive = [=](FieldScene& scene) {
        const auto subject = scene.subject();
        if (!subject || !dynamic_cast<Track*>(subject.get()))
            return false;
        std::invoke(change, dynamic_cast<Track&>(*subject));
        return true;
    };
    return field;
}

/// A value of a live track that no record has.
template <class Track, class Get, class Change>
FieldChange onTrackAlone(std::string name, Get get, Change change)
{
    FieldChange field;
    field.name = std::move(name) + " (track)";
    return onTrack<Track>(field, get, change);
}

/// A field that is set to a value as a whole, in the record and on the track.
template <class Record, class Track, class Value, class Get, class Set>
FieldChange plain(std::string name, Value Record::*member, Value changed, Get get, Set set)
{
    return onTrack<Track>(inRecord(std::move(name), member, [=](Value& value) { value = changed; }),
                          get, [=](Track& track) { std::invoke(set, track, changed); });
}

/// A field that is changed in part: the track gets the changed whole.
template <class Record, class Track, class Value, class Get, class Set, class Change>
FieldChange partly(std::string name, Value Record::*member, Get get, Set set, Change change)
{
    return onTrack<Track>(inRecord(std::move(name), member, change), get, [=](Track& track) {
        Value value = std::invoke(get, track);
        change(value);
        std::invoke(set, track, value);
    });
}

/// A map to whose entries the framework can only add: another value, an entry more, one less.
template <class Record, class Track, class Map, class Get, class Set>
void growing(Changes& changes, const std::string& name, Map Record::*member, Get get, Set set,
             const typename Map::mapped_type& value)
{
    changes.push_back(partly<Record, Track>(name + " (value)", member, get, set,
                                            [=](Map& map) { map.begin()->second = value; }));
    changes.push_back(partly<Record, Track>(name + " (entry added)", member, get, set, [=](Map& m) {
        auto key = m.rbegin()->first;
        if constexpr (std::is_same_v<typename Map::key_type, std::string>)
            key += "+";
        else
            key = static_cast<typename Map::key_type>(key + 1);
        m[key] = value;
    }));
    FieldChange removed = partly<Record, Track>(name + " (entry removed)", member, get, set,
                                                [](Map& map) { map.erase(map.begin()); });
    removed.changeLive = nullptr;
    changes.push_back(removed);
}

Changes operator+(Changes first, const Changes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

using Flags = std::map<KpARKernelParamFlag, float>;
using FaceFlags = std::map<std::int64_t, Flags>;
using Texts = std::map<std::string, std::string>;
using FaceTexts = std::map<std::int64_t, std::string>;

// Values that records and live tracks have before a change.

const Flags sampleFlags{{KpARParamSmoothSkin, 0.25F}, {KpARParamWhitenSkin, 0.5F}};
const FaceFlags sampleFaceFlags{{5, sampleFlags}, {6, sampleFlags}};
const Texts sampleTexts{{"a", "1"}, {"b", "2"}};
const FaceTexts sampleFaceTexts{{5, "/faces/5"}, {6, "/faces/6"}};
const char* const sampleSource = "/live/source";

QImage mask(int width)
{
    QImage image(width, 2, QImage::Format_ARGB32);
    image.fill(0xff102030U);
    return image;
}

RvARMakeupARGroupData sampleGroup()
{
    RvARMakeupARGroupData group;
    group.groupDataId = 7;
    group.groupName = "lips";
    group.groupAlpha = 0.5F;
    group.entries = {{"texture", "red.png"}};
    return group;
}

RvARFaceGroupData sampleFace()
{
    RvARFaceGroupData face;
    face.faceId = 5;
    face.suitAlpha = 0.5F;
    face.groupDatas = {sampleGroup()};
    face.groupOrders = {"lips"};
    return face;
}

RvARLiquifyOperation sampleStroke()
{
    return {1.0, 2.0, 3.0F, 0.5F, {QPointF(1.0, 1.0), QPointF(2.0, 2.0)}, 1};
}

void fill(RvAttribute& record)
{
    record.uuid = FieldScene::subjectId;
    record.source = sampleSource;
    record.duration = 1000;
}

void fill(RvMediaAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
}

void fill(RvAudioAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.source = mediaFiles().sound;
}

void fill(RvDetectAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.source.clear();
    record.range = 1;
    record.bindType = 3;
    record.target = {FieldScene::mainId};
}

void fill(RvEffectAttribute& record)
{
    fill(static_cast<RvAttribute&>(record));
    record.range = 1;
    record.bindType = 3;
    record.target = {FieldScene::mainId};
    record.detect = FieldScene::detectionId;
}

void fill(RvARAttribute& record)
{
    fill(static_cast<RvEffectAttribute&>(record));
    record.scriptParams = sampleTexts;
}

void fill(RvARFilterAttribute& record)
{
    fill(static_cast<RvARAttribute&>(record));
    record.floatParams = sampleFlags;
    record.faceFloatParams = sampleFaceFlags;
}

void fill(RvARBeautyAttribute& record)
{
    fill(static_cast<RvARFilterAttribute&>(record));
    record.genderParamCoeffientsA = sampleFlags;
    record.genderParamCoeffientsB = sampleFlags;
}

void fill(RvARMakeupAttribute& record)
{
    fill(static_cast<RvARBeautyAttribute&>(record));
    record.groupDatas = {sampleGroup()};
    record.groupFaceDatas = {sampleFace()};
    record.groupOrders = {"lips", "brows"};
}

void fill(RvARLiquifyAttribute& record)
{
    fill(static_cast<RvARBeautyAttribute&>(record));
    const RvARLiquifyOperation stroke = sampleStroke();
    record.centerX = stroke.centerX;
    record.centerY = stroke.centerY;
    record.radius = stroke.radius;
    record.strength = stroke.strength;
    record.movePoints = stroke.movePoints;
    record.liquifyStyle = stroke.liquifyStyle;
}

template <class Record, int type>
std::unique_ptr<RvAttribute> newRecord()
{
    auto record = std::make_unique<Record>();
    fill(*record);
    record->type = type;
    if (type == 2)
        record->source = mediaFiles().picture;
    if (type == 3)
        record->source = mediaFiles().video;
    return record;
}

template <class Record>
std::unique_ptr<RvAttribute> copyOf(const RvAttribute& record)
{
    return std::make_unique<Record>(dynamic_cast<const Record&>(record));
}

// Setters for whole maps, by those that the framework has for single entries.

void setScriptParams(RvARITrack& track, const Texts& params)
{
    for (const auto& [key, value] : params)
        track.setScriptParam(key, value);
}

void setFloatParams(RvARFilterTrack& track, const Flags& params)
{
    for (const auto& [flag, value] : params)
        track.setFloatParam(flag, value);
}

void setFaceFloatParams(RvARFilterTrack& track, const FaceFlags& faces)
{
    for (const auto& [face, params] : faces) {
        for (const auto& [flag, value] : params)
            track.setFloatParamByFaceId(flag, value, face);
    }
}

void setFacePlists(RvARFilterTrack& track, const FaceTexts& plists)
{
    for (const auto& [face, path] : plists)
        track.addARFacePlist(path, face);
}

template <KpARGender gender>
Flags genderCoefficients(const RvARBeautyTrack& track)
{
    return track.getKpARGenderParamCoeffients(gender);
}

template <KpARGender gender>
void setGenderCoefficients(RvARBeautyTrack& track, const Flags& coefficients)
{
    track.setKpARGenderParamCoeffients(gender, coefficients);
}

// The subject of a scene, with the values of the sample records.

void prepareValues(RvITrack& track, const FieldScene& scene)
{
    if (auto* detection = dynamic_cast<RvDetectionTrack*>(&track))
        detection->bind(scene.mainTrack(FieldScene::mainId), 3);
    if (auto* effect = dynamic_cast<RvIEffectTrack*>(&track)) {
        effect->bind(scene.mainTrack(FieldScene::mainId), 3);
        effect->bindDetect(scene.detection(FieldScene::detectionId).get());
    }
    if (auto* ar = dynamic_cast<RvARITrack*>(&track))
        setScriptParams(*ar, sampleTexts);
    if (auto* filter = dynamic_cast<RvARFilterTrack*>(&track)) {
        setFloatParams(*filter, sampleFlags);
        setFaceFloatParams(*filter, sampleFaceFlags);
        setFacePlists(*filter, sampleFaceTexts);
    }
    if (auto* beauty = dynamic_cast<RvARBeautyTrack*>(&track)) {
        setGenderCoefficients<KpARGenderFemale>(*beauty, sampleFlags);
        setGenderCoefficients<KpARGenderMale>(*beauty, sampleFlags);
    }
    if (auto* makeup = dynamic_cast<RvARMakeupTrack*>(&track)) {
        makeup->setARGroupDatas({sampleGroup()});
        makeup->setARFaceGroupDatas({sampleFace()});
        makeup->setAllARGroupOrder({"lips", "brows"});
    }
    if (auto* liquify = dynamic_cast<RvARLiquifyTrack*>(&track))
        liquify->appendToLiquifyOperation(sampleStroke());
}

/// Puts a track into the scene, prepared, in place of the subject and under its id.
void placeSubject(FieldScene& scene, RvITrack* track)
{
    const auto subject = withId(track, FieldScene::subjectId);
    prepareValues(*subject, scene);
    scene.place(subject.get());
}

template <int type>
void placeTrack(FieldScene& scene)
{
    placeSubject(scene, newLiveTrack(type));
}

void placeNothing(FieldScene& /*scene*/) {}

/// A track of the same type as `track` that was made of another source; null when the type has no
/// source.
RvITrack* trackOfOtherSource(int trackType)
{
    const std::string source = "/other/source";
    switch (trackType) {
    case RvTrackTypeVideo:
        return RvKpTrack::create(mediaFiles().otherVideo, 0, 1000, 0);
    case RvTrackTypeSprite:
        return RvSpriteTrack::create(mediaFiles().otherPicture, 0, 1000);
    case RvTrackTypeAudio:
        return RvAudioTrack::create(mediaFiles().otherSound, 0, 1000, 0);
    case RvTrackTypeARFilter:
        return RvARFilterTrack::create(source, 0, 1000);
    case RvTrackTypeARBeauty:
        return RvARBeautyTrack::create(source, 0, 1000);
    case RvTrackTypeARMakeup:
        return RvARMakeupTrack::create(source, 0, 1000);
    case RvTrackTypeARLayer:
        return RvARAttribsTrack::create(source, 0, 1000);
    case RvTrackTypeARFrame:
        return RvARFrameTrack::create(source, 0, 1000);
    case RvTrackTypeARLabel:
        return RvARLabelTrack::create(source, 0, 1000);
    case RvTrackTypeARLiquify:
        return RvARLiquifyTrack::create(source, 0, 1000);
    default:
        return nullptr;
    }
}

/// A track of another type: a picture for a video, the other way round, and a layer or filter for
/// anything else.
RvITrack* trackOfOtherType(int trackType)
{
    switch (trackType) {
    case RvTrackTypeVideo:
        return newLiveTrack(2);
    case RvTrackTypeSprite:
        return newLiveTrack(3);
    case RvTrackTypeARFilter:
        return newLiveTrack(10);
    default:
        return newLiveTrack(7);
    }
}

bool replaceSubject(FieldScene& scene, RvITrack* (*replacement)(int trackType))
{
    const auto subject = scene.subject();
    RvITrack* track = replacement(subject->getTrackType());
    if (track)
        placeSubject(scene, track);
    return track != nullptr;
}

// The fields, in the order in which the records declare them.

FieldChange sourceChange()
{
    FieldChange field = inRecord("source", &RvAttribute::source, [](std::string& source) {
        const MediaFiles& files = mediaFiles();
        source = source == files.video     ? files.otherVideo
                 : source == files.picture ? files.otherPicture
                 : source == files.sound   ? files.otherSound
                                           : "/other/source";
    });
    field.liveValue = [](RvITrack& track) { return ValueText::of(track.getTrackSource()); };
    field.changeLive = [](FieldScene& scene) { return replaceSubject(scene, trackOfOtherSource); };
    return field;
}

FieldChange typeChange()
{
    FieldChange field =
        inRecord("type", &RvAttribute::type, [](std::int32_t& type) { type = type == 1 ? 2 : 1; });
    field.changeLive = [](FieldScene& scene) { return replaceSubject(scene, trackOfOtherType); };
    return field;
}

Changes baseChanges()
{
    using R = RvAttribute;
    using T = RvITrack;
    return {
        plain<R, T>("uuid", &R::uuid, std::uint64_t{78}, &T::getTrackID, &T::setTrackID),
        sourceChange(),
        plain<R, T>("startTime", &R::startTime, std::int64_t{250}, &T::getStartPos,
                    &T::setStartPos),
        plain<R, T>("duration", &R::duration, std::int64_t{4000}, &T::getOriginDuration,
                    &T::setDuration),
        typeChange(),
        plain<R, T>("zOrder", &R::zOrder, 6, &T::getOriginZOrder, &T::setZOrder),
        plain<R, T>("alpha", &R::alpha, 0.5F, &T::getAlpha, &T::setAlpha),
        plain<R, T>("speed", &R::speed, 2.0F, &T::getSpeed, &T::setSpeed),
        plain<R, T>("auxText", &R::auxText, std::string("tag"), &T::getTag, &T::setTag),
    };
}

/// The file start of a record; only what has it on the track can show it there.
template <class Record, class Track>
FieldChange fileStartChange()
{
    return plain<Record, Track>(
        "fileStartTime", &Record::fileStartTime, 300.0F,
        [](Track& track) { return static_cast<float>(track.getFileStartTime()); },
        [](Track& track, float start) { track.setFileStartTime(static_cast<long long>(start)); });
}

Changes mediaChanges()
{
    using R = RvMediaAttribute;
    using T = RvIMediaTrack;
    return baseChanges() +
           Changes{
               fileStartChange<R, RvKpTrack>(),
               plain<R, T>("width", &R::width, 640.0F, &T::getWidth,
                           [](T& t, float width) { t.setWidthAndHeight(width, t.getHeight()); }),
               plain<R, T>("height", &R::height, 360.0F, &T::getHeight,
                           [](T& t, float height) { t.setWidthAndHeight(t.getWidth(), height); }),
               plain<R, T>("positionX", &R::positionX, 12.5F, &T::getPositionX,
                           [](T& t, float x) { t.setPosition(x, t.getPositionY()); }),
               plain<R, T>("positionY", &R::positionY, -3.0F, &T::getPositionY,
                           [](T& t, float y) { t.setPosition(t.getPositionX(), y); }),
               plain<R, T>("scale", &R::scale, 1.5F, &T::getScale, &T::setScale),
               plain<R, T>("rotation", &R::rotation, 90.0F, &T::getRotation, &T::setRotation),
           };
}

Changes audioChanges()
{
    return baseChanges() + Changes{fileStartChange<RvAudioAttribute, RvAudioTrack>()};
}

template <class Track>
std::vector<std::uint64_t> boundIds(const Track& track)
{
    const auto bound = owned(track.getBindTrack());
    return bound ? std::vector<std::uint64_t>{bound->getTrackID()} : std::vector<std::uint64_t>{};
}

/// What detections and effects are bound to. Live, they are bound anew.
template <class Record, class Track>
Changes bindingChanges()
{
    const auto bindLive = [](FieldChange field, std::uint64_t id, int bindType) {
        field.changeLive = [=](FieldScene& scene) {
            const auto subject = scene.subject();
            return dynamic_cast<Track&>(*subject).bind(scene.mainTrack(id), bindType);
        };
        return field;
    };
    const auto nothing = [](Track&) {};
    FieldChange further =
        onTrack<Track>(inRecord("target (further entry)", &Record::target,
                                [](auto& target) { target.push_back(FieldScene::otherMainId); }),
                       boundIds<Track>, nothing);
    further.changeLive = nullptr;
    return {
        plain<Record, Track>("range", &Record::range, 2, &Track::getActionRange,
                             [](Track& track, int) { track.bindDynamic(); }),
        bindLive(onTrack<Track>(inRecord("bindType", &Record::bindType,
                                         [](std::int32_t& bindType) { bindType = 4; }),
                                &Track::getMediaBindType, nothing),
                 FieldScene::mainId, 4),
        bindLive(onTrack<Track>(inRecord("target", &Record::target,
                                         [](auto& target) { target = {FieldScene::otherMainId}; }),
                                boundIds<Track>, nothing),
                 FieldScene::otherMainId, 3),
        further,
    };
}

Changes detectChanges()
{
    using R = RvDetectAttribute;
    using T = RvDetectionTrack;
    return baseChanges() +
           Changes{
               plain<R, T>("mode", &R::mode, 4, &T::getDetectionMode, &T::setDetectionMode),
               plain<R, T>("modePath", &R::modePath, std::string("/models/face"), &T::getModelPath,
                           &T::setModelPath),
           } +
           bindingChanges<R, T>();
}

FieldChange detectionChange()
{
    FieldChange field = onTrack<RvIEffectTrack>(
        inRecord("detect", &RvEffectAttribute::detect,
                 [](std::uint64_t& detect) { detect = FieldScene::otherDetectionId; }),
        [](RvIEffectTrack& track) {
            const auto detection = owned(track.getBindDetect());
            return detection ? detection->getTrackID() : std::uint64_t{0};
        },
        [](RvIEffectTrack&) {});
    field.changeLive = [](FieldScene& scene) {
        const auto subject = scene.subject();
        return dynamic_cast<RvIEffectTrack&>(*subject).bindDetect(
            scene.detection(FieldScene::otherDetectionId).get());
    };
    return field;
}

Changes effectChanges()
{
    return baseChanges() + bindingChanges<RvEffectAttribute, RvIEffectTrack>() +
           Changes{detectionChange()};
}

Changes arChanges()
{
    using R = RvARAttribute;
    using T = RvARITrack;
    Changes changes = effectChanges();
    changes.push_back(plain<R, T>("globalParamConfiguration", &R::globalParamConfiguration,
                                  std::string("global"), &T::getGlobalParamConfiguration,
                                  &T::setGlobalParamConfiguration));
    growing<R, T>(changes, "scriptParams", &R::scriptParams, &T::getScriptParams, setScriptParams,
                  "changed");
    return changes;
}

/// The files of faces: records have some only here, because a beauty that has some is made without
/// its source.
Changes facePlistChanges()
{
    using R = RvARFilterAttribute;
    using T = RvARFilterTrack;
    Changes changes;
    growing<R, T>(changes, "arFacePlists", &R::arFacePlists, &T::getAllArFacePlists, setFacePlists,
                  "/changed");
    for (FieldChange& field : changes) {
        field.prepare = [](RvAttribute& record) {
            dynamic_cast<R&>(record).arFacePlists = sampleFaceTexts;
        };
    }
    return changes;
}

Changes filterChanges()
{
    using R = RvARFilterAttribute;
    using T = RvARFilterTrack;
    Changes changes = arChanges();
    changes.push_back(
        plain<R, T>("filterAlpha", &R::filterAlpha, 0.75F, &T::getFilterAlpha, &T::setFilterAlpha));
    growing<R, T>(changes, "floatParams", &R::floatParams, &T::getFloatParams, setFloatParams,
                  0.75F);
    growing<R, T>(changes, "faceFloatParams", &R::faceFloatParams, &T::getFloatParamsWithFaceID,
                  setFaceFloatParams,
                  Flags{{KpARParamSmoothSkin, 0.75F}, {KpARParamWhitenSkin, 0.75F}});
    return changes + facePlistChanges();
}

/// Gives record and track of a change a mask to begin with.
FieldChange withMask(FieldChange field)
{
    field.prepare = [](RvAttribute& record) {
        auto& beauty = dynamic_cast<RvARBeautyAttribute&>(record);
        beauty.beautyActiveMaskImage = mask(3);
        beauty.beautyActiveMaskImageRef = &beauty.beautyActiveMaskImage;
        beauty.beautyMaskFaceId = 5;
        beauty.beautyMaskBrushType = "round";
    };
    field.prepareLive = [](FieldScene& scene) {
        const auto subject = scene.subject();
        if (auto* beauty = dynamic_cast<RvARBeautyTrack*>(subject.get()))
            beauty->loadBeautyMaskDatas(5, nullptr, "round", mask(3));
    };
    return field;
}

/// The pointer to the mask in use: whether there is one. Live, one is painted.
FieldChange maskPointerChange()
{
    using R = RvARBeautyAttribute;
    using T = RvARBeautyTrack;
    const char* const some = "a mask";
    const char* const none = "no mask";
    FieldChange field;
    field.name = "beautyActiveMaskImageRef";
    field.value = [=](const RvAttribute& record) {
        return dynamic_cast<const R&>(record).beautyActiveMaskImageRef ? some : none;
    };
    field = onTrack<T>(
        field, [](T&) { return std::string(); },
        [](T& track) { track.loadBeautyMaskDatas(5, nullptr, "round", mask(3)); });
    field.liveValue = [=](RvITrack& track) {
        return dynamic_cast<T&>(track).getBeautyMaskFaceId() >= 1 ? some : none;
    };
    const auto prepareMask = withMask({}).prepare;
    field.prepare = [=](RvAttribute& record) {
        prepareMask(record);
        dynamic_cast<R&>(record).beautyActiveMaskImageRef = nullptr;
    };
    field.change = [](RvAttribute& record) {
        auto& beauty = dynamic_cast<R&>(record);
        beauty.beautyActiveMaskImageRef = &beauty.beautyActiveMaskImage;
    };
    return field;
}

Changes maskChanges()
{
    using R = RvARBeautyAttribute;
    using T = RvARBeautyTrack;
    return {
        maskPointerChange(),
        withMask(plain<R, T>("beautyMaskFaceId", &R::beautyMaskFaceId, std::int64_t{6},
                             &T::getBeautyMaskFaceId, &T::setBeautyMaskFaceId)),
        withMask(plain<R, T>("beautyMaskBrushType", &R::beautyMaskBrushType, std::string("soft"),
                             &T::getBeautyMaskBrushType, &T::setBeautyMaskBrushType)),
        withMask(plain<R, T>("beautyActiveMaskImage", &R::beautyActiveMaskImage, mask(4),
                             &T::getBeautyActiveMaskImage, &T::setBeautyActiveMaskImage)),
    };
}

Changes genderChanges()
{
    using R = RvARBeautyAttribute;
    using T = RvARBeautyTrack;
    Changes changes;
    growing<R, T>(changes, "genderParamCoeffientsA", &R::genderParamCoeffientsA,
                  genderCoefficients<KpARGenderFemale>, setGenderCoefficients<KpARGenderFemale>,
                  0.75F);
    growing<R, T>(changes, "genderParamCoeffientsB", &R::genderParamCoeffientsB,
                  genderCoefficients<KpARGenderMale>, setGenderCoefficients<KpARGenderMale>, 0.75F);
    return changes;
}

Changes beautyChanges()
{
    using R = RvARBeautyAttribute;
    using T = RvARBeautyTrack;
    return filterChanges() +
           Changes{
               plain<R, T>("beautyType", &R::beautyType, RvBeautyTypeBody, &T::getBeautyType,
                           &T::setBeautyType),
               plain<R, T>("enableBeautyGenderDistinction", &R::enableBeautyGenderDistinction, true,
                           &T::getEnableBeautyGenderDistinction,
                           &T::setEnableBeautyGenderDistinction),
               plain<R, T>("coeffientParameterConfig", &R::coeffientParameterConfig,
                           std::string("coefficients"), &T::getCoeffientParameterConfig,
                           &T::loadCoeffientParameterConfig),
           } +
           genderChanges() +
           Changes{
               plain<R, T>("applyGenderToAR", &R::applyGenderToAR, true, &T::getApplyGenderToAR,
                           &T::setApplyGenderToAR),
               plain<R, T>("allFaceBeautyParam", &R::allFaceBeautyParam, sampleFaceFlags,
                           &T::getAllFaceBeautyParam, &T::setAllFaceBeautyParam),
               plain<R, T>("allBeautyAnattaForFaceControls", &R::allBeautyAnattaForFaceControls,
                           std::map<KpARKernelParamFlag, bool>{{KpARParamSlimFace, true}},
                           &T::getAllBeautyAnattaForFaceControls,
                           &T::setAllBeautyAnattaForFaceControls),
               plain<R, T>("manualLongLegRange", &R::manualLongLegRange,
                           std::make_pair(0.25F, 0.75F), &T::getManualLongLegRange,
                           &T::setManualLongLegRange),
               plain<R, T>("manualSlimHeadParam", &R::manualSlimHeadParam,
                           std::make_tuple(0.25F, 0.5F, 0.75F), &T::getManualSlimHeadParam,
                           &T::setManualSlimHeadParam),
               plain<R, T>("manualLongLegEnable", &R::manualLongLegEnable, true,
                           &T::getManualLongLegEnable, &T::setManualLongLegEnable),
               plain<R, T>("mapPointsData", &R::mapPointsData,
                           std::vector<QPointF>{QPointF(1.0, 2.0)}, &T::getMapPointsData,
                           &T::setMapPointsData),
           } +
           maskChanges();
}

/// A change of the makeup's groups, or of something in the first one.
template <class Change>
FieldChange groupsChange(const char* name, Change change)
{
    return partly<RvARMakeupAttribute, RvARMakeupTrack>(name, &RvARMakeupAttribute::groupDatas,
                                                        &RvARMakeupTrack::getARGroupDatas,
                                                        &RvARMakeupTrack::setARGroupDatas, change);
}

/// A change of the makeup's faces, or of something in the first one.
template <class Change>
FieldChange facesChange(const char* name, Change change)
{
    return partly<RvARMakeupAttribute, RvARMakeupTrack>(
        name, &RvARMakeupAttribute::groupFaceDatas, &RvARMakeupTrack::getARFaceGroupDatas,
        &RvARMakeupTrack::setARFaceGroupDatas, change);
}

Changes makeupChanges()
{
    using R = RvARMakeupAttribute;
    using T = RvARMakeupTrack;
    return beautyChanges() +
           Changes{
               plain<R, T>("suitAlpha", &R::suitAlpha, 0.25F, &T::getSuitAlpha, &T::setSuitAlpha),
               groupsChange("groupDatas (number)",
                            [](auto& groups) { groups.push_back(sampleGroup()); }),
               groupsChange("groupDatas: groupDataId",
                            [](auto& groups) { groups.front().groupDataId = 8; }),
               groupsChange("groupDatas: groupName",
                            [](auto& groups) { groups.front().groupName = "brows"; }),
               groupsChange("groupDatas: groupAlpha",
                            [](auto& groups) { groups.front().groupAlpha = 0.25F; }),
               groupsChange("groupDatas: entries",
                            [](auto& groups) { groups.front().entries.clear(); }),
               facesChange("groupFaceDatas (number)",
                           [](auto& faces) { faces.push_back(sampleFace()); }),
               facesChange("groupFaceDatas: faceId", [](auto& faces) { faces.front().faceId = 6; }),
               facesChange("groupFaceDatas: suitAlpha",
                           [](auto& faces) { faces.front().suitAlpha = 0.25F; }),
               facesChange("groupFaceDatas: groupDatas (number)",
                           [](auto& faces) { faces.front().groupDatas.clear(); }),
               facesChange("groupFaceDatas: groupDatas (value)",
                           [](auto& faces) { faces.front().groupDatas.front().groupAlpha = 0; }),
               facesChange("groupFaceDatas: groupOrders",
                           [](auto& faces) { faces.front().groupOrders.clear(); }),
               plain<R, T>("groupOrders", &R::groupOrders,
                           std::vector<std::string>{"brows", "lips"}, &T::getAllARGroupOrder,
                           &T::setAllARGroupOrder),
           };
}

// Liquify. The stroke of a track is the one that was appended last.

template <class Value>
FieldChange strokeChange(const char* name, Value RvARLiquifyAttribute::*member,
                         Value RvARLiquifyOperation::*liveMember, Value changed)
{
    return plain<RvARLiquifyAttribute, RvARLiquifyTrack>(
        name, member, changed,
        [=](RvARLiquifyTrack& track) { return track.getAppendOperation().*liveMember; },
        [=](RvARLiquifyTrack& track, const Value& value) {
            RvARLiquifyOperation stroke = track.getAppendOperation();
            stroke.*liveMember = value;
            track.appendToLiquifyOperation(stroke);
        });
}

/// What was saved in a folder: its files one after the other.
std::string savedContent(const QString& folder)
{
    QByteArray content;
    for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        content += file.readAll();
    }
    return content.toBase64().toStdString();
}

/// A folder with this number of strokes saved for the subject; it lasts as long as the program.
QString folderOfStrokes(int count)
{
    static const QTemporaryDir root;
    const QString folder = root.filePath(QString::number(count));
    EXPECT_TRUE(QDir().mkpath(folder));
    const auto track = withId(RvARLiquifyTrack::create(std::string(), 0, 0), FieldScene::subjectId);
    for (int i = 0; i < count; ++i)
        track->appendToLiquifyOperation(sampleStroke());
    track->confirmCurrentLiquify();
    EXPECT_TRUE(track->saveLiquifyConfig(folder.toLocal8Bit().toStdString()));
    return folder;
}

/// The folder of the saved strokes. Every capture saves to a folder of its own, so what counts is
/// what is in there.
FieldChange savedStrokesChange()
{
    using R = RvARLiquifyAttribute;
    using T = RvARLiquifyTrack;
    FieldChange field;
    field.name = "effectPath (the strokes saved there)";
    field.value = [](const RvAttribute& record) {
        return savedContent(dynamic_cast<const R&>(record).effectPath);
    };
    field = onTrack<T>(
        field, [](T&) { return std::string(); },
        [](T& track) {
            track.appendToLiquifyOperation(sampleStroke());
            track.confirmCurrentLiquify();
        });
    field.liveValue = [](RvITrack& track) {
        const QTemporaryDir folder;
        auto& liquify = dynamic_cast<T&>(track);
        liquify.confirmCurrentLiquify();
        EXPECT_TRUE(liquify.saveLiquifyConfig(folder.path().toLocal8Bit().toStdString()));
        return savedContent(folder.path());
    };
    field.prepare = [](RvAttribute& record) {
        dynamic_cast<R&>(record).effectPath = folderOfStrokes(1);
    };
    field.change = [](RvAttribute& record) {
        dynamic_cast<R&>(record).effectPath = folderOfStrokes(2);
    };
    return field;
}

Changes liquifyChanges()
{
    using R = RvARLiquifyAttribute;
    using Stroke = RvARLiquifyOperation;
    return beautyChanges() +
           Changes{
               strokeChange("centerX", &R::centerX, &Stroke::centerX, 9.0),
               strokeChange("centerY", &R::centerY, &Stroke::centerY, 9.0),
               strokeChange("radius", &R::radius, &Stroke::radius, 9.0F),
               strokeChange("strength", &R::strength, &Stroke::strength, 0.25F),
               strokeChange("movePoints", &R::movePoints, &Stroke::movePoints,
                            std::array<QPointF, 2>{QPointF(9.0, 9.0), QPointF(8.0, 8.0)}),
               strokeChange("liquifyStyle", &R::liquifyStyle, &Stroke::liquifyStyle, 3),
               savedStrokesChange(),
           };
}

// Values that no record has.

/// How loud the track is.
Changes volumeChanges()
{
    return {onTrackAlone<RvITrack>(
        "volume", [](RvITrack& track) { return track.getVolumeAtTime(0); },
        [](RvITrack& track) { track.setVolumeAtTime(0.25F, 0); })};
}

/// What a matte looks like, all of it.
Changes matteChanges()
{
    using T = RvTrkMatteEffectTrack;
    return {
        onTrackAlone<T>(
            "path",
            [](T& track) {
                return static_cast<float>(track.getMattePath().boundingRect().width());
            },
            [](T& track) {
                auto* const path = new QPainterPath;
                path->addRect(0, 0, 40, 30);
                track.setMattePath(path, 80, 60, 1.0F, RvMattePathType());
            }),
        onTrackAlone<T>(
            "path type", [](T& track) { return static_cast<int>(track.getMattePathType()); },
            [](T& track) {
                track.setMattePath(nullptr, 80, 60, 1.0F, static_cast<RvMattePathType>(2));
            }),
        onTrackAlone<T>(
            "centre",
            [](T& track) {
                return std::make_pair(track.getMatteCenterX(), track.getMatteCenterY());
            },
            [](T& track) { track.setMatteCenter(7.0F, 8.0F); }),
        onTrackAlone<T>("eclosion", &T::getMatteEclosionPercent,
                        [](T& track) { track.setMatteEclosionPercent(50.0F); }),
        onTrackAlone<T>("size limit", &T::getEnableDrawPathSizeLimit,
                        [](T& track) { track.setEnableDrawPathSizeLimit(false); }),
        onTrackAlone<T>(
            "blend mode", [](T& track) { return static_cast<int>(track.getMatteBlendMode()); },
            [](T& track) { track.setMatteBlendMode(static_cast<RvMatteBlendMode>(3)); }),
    };
}

template <class Record, int type>
FieldKind kindOf(const char* name, Changes changes)
{
    return {name, newRecord<Record, type>, copyOf<Record>, placeTrack<type>, std::move(changes)};
}

/// A kind that only others derive from: no track is of it.
template <class Record>
FieldKind abstractKind(const char* name, Changes changes)
{
    return {name, newRecord<Record, 1>, copyOf<Record>, placeNothing, std::move(changes)};
}

} // namespace

std::vector<FieldKind> fieldKinds()
{
    return {
        kindOf<RvAttribute, 1>("base", baseChanges()),
        kindOf<RvMediaAttribute, 2>("image", mediaChanges()),
        kindOf<RvMediaAttribute, 3>("video", mediaChanges() + volumeChanges()),
        kindOf<RvAudioAttribute, 4>("audio", audioChanges() + volumeChanges()),
        kindOf<RvDetectAttribute, 5>("detection", detectChanges()),
        abstractKind<RvEffectAttribute>("effect", effectChanges()),
        kindOf<RvMatteAttribute, 6>("matte", effectChanges() + matteChanges()),
        abstractKind<RvARAttribute>("AR effect", arChanges()),
        kindOf<RvARFilterAttribute, 7>("AR filter", filterChanges()),
        kindOf<RvARBeautyAttribute, 8>("AR beauty", beautyChanges()),
        kindOf<RvARMakeupAttribute, 9>("AR makeup", makeupChanges()),
        kindOf<RvARLayerAttribute, 10>("AR layer", arChanges()),
        kindOf<RvARFrameAttribute, 11>("AR frame", beautyChanges()),
        kindOf<RvARLabelAttribute, 12>("AR label", beautyChanges()),
        kindOf<RvARLiquifyAttribute, 13>("AR liquify", liquifyChanges()),
    };
}
