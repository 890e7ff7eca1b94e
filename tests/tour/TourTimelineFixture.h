// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TestMedia.h"
#include "tour/TourTimeline.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

/// The timeline that the tour starts with, of small files.
class TourTimelineFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        m_media.videos = {TestMedia::video(m_folder.path(), "a.mp4", 64, 48, "25", 1),
                          TestMedia::video(m_folder.path(), "b.mp4", 48, 64, "25", 0.5)};
        m_media.pictures = {TestMedia::picture(m_folder.path(), "c.png", 20, 10)};
        m_media.sounds = {TestMedia::sound(m_folder.path(), "d.wav", 1)};
        norvel::RvAttributeUtility::_sCacheDir = m_folder.path().toStdString();
        ASSERT_TRUE(m_tour.build());
    }

    void TearDown() override { norvel::RvAttributeUtility::_sCacheDir.clear(); }

    const QTemporaryDir m_folder;
    TourMedia m_media;
    qrvkp::RvKpApplication m_application;
    TourTimeline m_tour{m_application, m_media};
};
