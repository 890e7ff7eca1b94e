// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/KindSamples.h"
#include "timeline/LiveTimeline.h"
#include "timeline/ScopedPathEncoding.h"

#include <kparextension/RvARLiquifyTrack.h>

#include <gtest/gtest.h>

#include <QDir>

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

    /// The radii of the strokes that were saved in a folder.
    static std::vector<float> savedRadii(const QString& folder)
    {
        const auto track = owned(qkpar::RvARLiquifyTrack::create(std::string(), 0, 0));
        EXPECT_TRUE(track->loadLiquifyConfig(folder.toLocal8Bit().toStdString()))
            << folder.toStdString();
        std::vector<float> radii;
        for (const qkpar::RvARLiquifyOperation& stroke : track->getConfirmedOperations())
            radii.push_back(stroke.radius);
        return radii;
    }

    void addStroke(float radius) const
    {
        qkpar::RvARLiquifyOperation stroke;
        stroke.radius = radius;
        m_track->appendToLiquifyOperation(stroke);
    }

    const ScopedPathEncoding m_encoding{"UTF-8"};
    const ScopedCache m_cache;
    const LiveTimeline m_timeline;
    const Owned<qkpar::RvARLiquifyTrack> m_track =
        owned(dynamic_cast<qkpar::RvARLiquifyTrack*>(newLiveTrack(13)));
};
