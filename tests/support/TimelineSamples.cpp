// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TimelineSamples.h"

#include "TestMedia.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFilterTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>

#include <typeinfo>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

using norvel::adopt;

namespace {

constexpr long long trackDuration = 1000;

QString mediaFolder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

/// Without ffmpeg: pictures are in every test.
std::string makePicture()
{
    const QString path = mediaFolder() + QStringLiteral("/picture.png");
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    EXPECT_TRUE(image.save(path));
    return path.toStdString();
}

template <class... Kinds>
norvel::RvAttribute* copyAsOneOf(const norvel::RvAttribute& record)
{
    norvel::RvAttribute* copy = nullptr;
    const auto copyAs = [&](const auto* kind) {
        using Kind = std::remove_cv_t<std::remove_pointer_t<decltype(kind)>>;
        if (typeid(record) == typeid(Kind))
            copy = new Kind(static_cast<const Kind&>(record));
    };
    (copyAs(static_cast<const Kinds*>(nullptr)), ...);
    EXPECT_TRUE(copy) << "a record of an unknown class";
    return copy;
}

norvel::RvAttribute* newRecord(int recordType)
{
    switch (recordType) {
    case norvel::RecordTypeImage:
    case norvel::RecordTypeVideo:
        return new norvel::RvMediaAttribute;
    case norvel::RecordTypeAudio:
        return new norvel::RvAudioAttribute;
    case norvel::RecordTypeDetection:
        return new norvel::RvDetectAttribute;
    case norvel::RecordTypeMatte:
        return new norvel::RvMatteAttribute;
    case norvel::RecordTypeARFilter:
        return new norvel::RvARFilterAttribute;
    case norvel::RecordTypeARBeauty:
        return new norvel::RvARBeautyAttribute;
    case norvel::RecordTypeARMakeup:
        return new norvel::RvARMakeupAttribute;
    case norvel::RecordTypeARLayer:
        return new norvel::RvARLayerAttribute;
    case norvel::RecordTypeARFrame:
        return new norvel::RvARFrameAttribute;
    case norvel::RecordTypeARLabel:
        return new norvel::RvARLabelAttribute;
    case norvel::RecordTypeARLiquify:
        return new norvel::RvARLiquifyAttribute;
    default:
        return new norvel::RvAttribute;
    }
}

qrvkp::RvITrack* newTrack(int recordType, const std::string& source)
{
    switch (recordType) {
    case norvel::RecordTypeGeneric:
        return qrvkp::RvITrack::create(0, trackDuration);
    case norvel::RecordTypeImage:
        return qrvkp::RvSpriteTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeVideo:
        return qrvkp::RvKpTrack::create(source, 0, trackDuration, 0);
    case norvel::RecordTypeAudio:
        return qrvkp::RvAudioTrack::create(source, 0, trackDuration, 0);
    case norvel::RecordTypeDetection:
        return qrvkp::RvDetectionTrack::create(1, source);
    case norvel::RecordTypeMatte:
        return qrvkp::RvTrkMatteEffectTrack::createPathMatteTrack(0, trackDuration);
    case norvel::RecordTypeARFilter:
        return qkpar::RvARFilterTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARBeauty:
        return qkpar::RvARBeautyTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARMakeup:
        return qkpar::RvARMakeupTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARLayer:
        return qkpar::RvARAttribsTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARFrame:
        return qkpar::RvARFrameTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARLabel:
        return qkpar::RvARLabelTrack::create(source, 0, trackDuration);
    case norvel::RecordTypeARLiquify:
        return qkpar::RvARLiquifyTrack::create(source, 0, trackDuration);
    default:
        return qkpar::RvARBorderTrack::create(source, 0, trackDuration);
    }
}

} // namespace

const std::string& TimelineSamples::picture()
{
    static const std::string path = makePicture();
    return path;
}

const std::string& TimelineSamples::video()
{
    static const std::string path =
        TestMedia::video(mediaFolder(), QStringLiteral("video.mp4"), 16, 16, "5", 1.0, false);
    return path;
}

const std::string& TimelineSamples::sound()
{
    static const std::string path =
        TestMedia::sound(mediaFolder(), QStringLiteral("sound.wav"), 0.1);
    return path;
}

const std::string& TimelineSamples::sourceOf(int recordType)
{
    static const std::string none;
    static const std::string resource = "/resources/effect";
    switch (recordType) {
    case norvel::RecordTypeImage:
        return picture();
    case norvel::RecordTypeVideo:
        return video();
    case norvel::RecordTypeAudio:
        return sound();
    case norvel::RecordTypeGeneric:
    case norvel::RecordTypeDetection:
    case norvel::RecordTypeMatte:
        return none;
    default:
        return resource;
    }
}

norvel::RvAttribute* TimelineSamples::record(int recordType, std::uint64_t id)
{
    norvel::RvAttribute* record = newRecord(recordType);
    record->type = recordType;
    record->uuid = id;
    record->duration = trackDuration;
    record->source = sourceOf(recordType);
    return record;
}

norvel::RvAttribute* TimelineSamples::copyOf(const norvel::RvAttribute& record)
{
    return copyAsOneOf<norvel::RvAttribute, norvel::RvMediaAttribute, norvel::RvAudioAttribute,
                       norvel::RvDetectAttribute, norvel::RvEffectAttribute,
                       norvel::RvMatteAttribute, norvel::RvARAttribute, norvel::RvARLayerAttribute,
                       norvel::RvARFilterAttribute, norvel::RvARBeautyAttribute,
                       norvel::RvARFrameAttribute, norvel::RvARLabelAttribute,
                       norvel::RvARLiquifyAttribute, norvel::RvARMakeupAttribute>(record);
}

TimelineSamples::Description TimelineSamples::copyOf(const norvel::RvTimeLineAttribute& description)
{
    auto copy = std::make_unique<norvel::RvTimeLineAttribute>();
    copy->width = description.width;
    copy->height = description.height;
    for (const norvel::RvAttribute* record : description.mainAttribs)
        copy->mainAttribs.push_back(record ? copyOf(*record) : nullptr);
    for (const norvel::RvAttribute* record : description.mixAttribs)
        copy->mixAttribs.push_back(record ? copyOf(*record) : nullptr);
    return copy;
}

TimelineSamples::Description TimelineSamples::pictures(const std::vector<std::uint64_t>& ids)
{
    auto description = std::make_unique<norvel::RvTimeLineAttribute>();
    for (const std::uint64_t id : ids)
        description->mainAttribs.push_back(record(norvel::RecordTypeImage, id));
    return description;
}

TimelineSamples::Track TimelineSamples::track(int recordType, std::uint64_t id)
{
    auto track = adopt(newTrack(recordType, sourceOf(recordType)));
    EXPECT_TRUE(track) << "no track of record type " << recordType;
    if (track)
        track->setTrackID(id);
    return track;
}

TimelineSamples::Timeline TimelineSamples::timeline()
{
    return adopt(qrvkp::RvKpTimeLine::create());
}

TimelineSamples::Timeline TimelineSamples::live(const norvel::RvTimeLineAttribute& description)
{
    auto result = timeline();
    const auto trackOf = [&](norvel::RvAttribute* record) {
        auto made = track(record->type, record->uuid);
        norvel::RvAttributeUtility::updateTrack(result.get(), made.get(), record);
        return made;
    };
    for (norvel::RvAttribute* record : description.mainAttribs) {
        std::vector<Track> tracks;
        if (record)
            tracks.push_back(trackOf(record));
        appendGroup(*result, tracks);
    }
    for (norvel::RvAttribute* record : description.mixAttribs) {
        if (record) {
            EXPECT_TRUE(result->addMixTrack(trackOf(record).get()));
        }
    }
    return result;
}

TimelineSamples::Group TimelineSamples::appendGroup(qrvkp::RvKpTimeLine& timeline,
                                                    const std::vector<Track>& tracks)
{
    auto group = adopt(qrvkp::RvKpGroup::create(
        tracks.empty() ? trackDuration : tracks.front()->getOriginDuration()));
    for (const Track& track : tracks)
        EXPECT_TRUE(group->addTrack(track.get()));
    EXPECT_TRUE(timeline.pushBackGroup(group.get()));
    return group;
}

TimelineSamples::Description TimelineSamples::capture(qrvkp::RvKpTimeLine& timeline)
{
    return Description(
        norvel::RvAttributeUtility::createTimeLineAttribute(&timeline, 1920.0F, 1080.0F));
}

std::vector<std::uint64_t> TimelineSamples::mainIds(const qrvkp::RvKpTimeLine& timeline)
{
    std::vector<std::uint64_t> ids;
    for (const auto& group : adopt(timeline.getGroups())) {
        const auto tracks = adopt(group->getTracks());
        ids.push_back(tracks.empty() ? 0 : tracks.front()->getTrackID());
    }
    return ids;
}

std::vector<std::uint64_t> TimelineSamples::mixIds(const qrvkp::RvKpTimeLine& timeline)
{
    std::vector<std::uint64_t> ids;
    for (const auto& track : adopt(timeline.getMixTracks()))
        ids.push_back(track->getTrackID());
    return ids;
}

#ifdef __SANITIZE_ADDRESS__
UnreportedLeaks::UnreportedLeaks()
{
    __lsan_disable();
}

UnreportedLeaks::~UnreportedLeaks()
{
    __lsan_enable();
}
#else
UnreportedLeaks::UnreportedLeaks() = default;
UnreportedLeaks::~UnreportedLeaks() = default;
#endif
