// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/FieldScene.h"

#include <gtest/gtest.h>

namespace {

bool isSubject(std::uint64_t id)
{
    return id != FieldScene::detectionId && id != FieldScene::otherDetectionId;
}

} // namespace

FieldScene::FieldScene()
{
    m_timeline.addPicture(mainId);
    m_timeline.addPicture(otherMainId);
    m_timeline.addDetection(detectionId);
    m_timeline.addDetection(otherDetectionId);
}

void FieldScene::changeCache()
{
    norvel::RvAttributeUtility::_sCacheDir = m_cache.root().toStdString() + "/next";
}

void FieldScene::place(qrvkp::RvITrack* track)
{
    if (const auto former = subject())
        timeline()->removeMixTrack(former.get());
    m_timeline.addMix(track);
}

Owned<qrvkp::RvITrack> FieldScene::subject() const
{
    Owned<qrvkp::RvITrack> found;
    for (auto& track : owned(timeline()->getMixTracks())) {
        if (!isSubject(track->getTrackID()))
            continue;
        EXPECT_FALSE(found) << "the subject stands on the timeline twice";
        found = std::move(track);
    }
    return found;
}

std::unique_ptr<norvel::RvAttribute> FieldScene::capturedSubject() const
{
    const auto description = m_timeline.capture();
    for (norvel::RvAttribute*& record : description->mixAttribs) {
        if (isSubject(record->uuid))
            return std::unique_ptr<norvel::RvAttribute>(std::exchange(record, nullptr));
    }
    return nullptr;
}

qrvkp::RvITrack* FieldScene::mainTrack(std::uint64_t id) const
{
    return norvel::RvAttributeUtility::getMainTrack(timeline(), id);
}

Owned<qrvkp::RvDetectionTrack> FieldScene::detection(std::uint64_t id) const
{
    return owned(dynamic_cast<qrvkp::RvDetectionTrack*>(
        norvel::RvAttributeUtility::getMixTrack(timeline(), id)));
}
