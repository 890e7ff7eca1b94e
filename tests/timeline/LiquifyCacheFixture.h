// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"
#include "timeline/ScopedPathEncoding.h"

#include <norvel/timeline/private/LiquifyCapture.h>

#include <kparextension/RvARLiquifyTrack.h>

#include <gtest/gtest.h>

#include <QDir>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A live timeline with one liquify, and a cache folder of the test's own.
class LiquifyCacheTest : public testing::Test
{
protected:
    void SetUp() override { m_timeline.addMix(m_track.get()); }

    /// Captures the timeline; the record of the liquify.
    std::unique_ptr<norvel::RvARLiquifyAttribute> capture() const
    {
        auto record = m_timeline.captureOnlyMix();
        return std::unique_ptr<norvel::RvARLiquifyAttribute>(
            dynamic_cast<norvel::RvARLiquifyAttribute*>(record.release()));
    }

    static void setRoot(const QString& root)
    {
        norvel::RvAttributeUtility::_sCacheDir = root.toStdString();
    }

    static std::string root() { return norvel::RvAttributeUtility::_sCacheDir; }
    static std::string current() { return norvel::RvAttributeUtility::_sCurrentCacheLiquefyDir; }

    /// Captures a liquify track as if it were this time, in ms since the epoch.
    static std::unique_ptr<norvel::RvARLiquifyAttribute> captureAt(qint64 milliseconds,
                                                                   qkpar::RvARLiquifyTrack& track)
    {
        auto record = std::make_unique<norvel::RvARLiquifyAttribute>();
        record->uuid = track.getTrackID();
        norvel::captureStrokes(*record, track, milliseconds);
        return record;
    }

    /// The folder of captures at this time.
    QString folderAt(qint64 milliseconds) const
    {
        return m_cache.root() + "/Norvel/Undo/" + QString::number(milliseconds);
    }

    /// The radii of the strokes of the track that were saved in a folder.
    std::vector<float> savedRadii(const QString& folder) const
    {
        return savedRadii(folder, m_track->getTrackID());
    }
    static std::vector<float> savedRadii(const QString& folder, std::uint64_t id)
    {
        const auto track = withId(qkpar::RvARLiquifyTrack::create(std::string(), 0, 0), id);
        EXPECT_TRUE(track->loadLiquifyConfig(folder.toLocal8Bit().toStdString()))
            << folder.toStdString();
        return radii(*track);
    }
    /// The radii of the confirmed strokes.
    static std::vector<float> radii(const qkpar::RvARLiquifyTrack& track)
    {
        std::vector<float> radii;
        for (const qkpar::RvARLiquifyOperation& stroke : track.getConfirmedOperations())
            radii.push_back(stroke.radius);
        return radii;
    }

    void addStroke(float radius) const { addStroke(*m_track, radius); }
    static void addStroke(qkpar::RvARLiquifyTrack& track, float radius)
    {
        qkpar::RvARLiquifyOperation stroke;
        stroke.radius = radius;
        track.appendToLiquifyOperation(stroke);
    }

    static constexpr qint64 m_time = 1700000000000; ///< ms since the epoch

    const ScopedPathEncoding m_encoding{"UTF-8"};
    const ScopedCache m_cache;
    const LiveTimeline m_timeline;
    const Owned<qkpar::RvARLiquifyTrack> m_track =
        owned(dynamic_cast<qkpar::RvARLiquifyTrack*>(newLiveTrack(13)));
};
