// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <rvkpcore/RvKpApplication.h>

#include <QTemporaryDir>

#include <memory>
#include <string>

/// Where the tracks of a benchmark's timeline stand.
enum class Line { Main, Mix };

/// A live timeline of many tracks, made of one small picture: the main line of groups with one
/// picture each, or mix tracks of which every third is a filter, every third a detection.
class BenchTimeline
{
public:
    BenchTimeline(Line line, int tracks);
    ~BenchTimeline();
    BenchTimeline(const BenchTimeline&) = delete;
    BenchTimeline& operator=(const BenchTimeline&) = delete;

    qrvkp::RvKpApplication& application() { return m_application; }
    qrvkp::RvKpTimeLine* timeline() { return m_timeline; }

    /// A new description of the timeline as it is.
    std::unique_ptr<norvel::RvTimeLineAttribute> capture();
    /// Changes a value of the track in the middle.
    void changeOneTrack();

private:
    void fillMain(int tracks);
    void fillMix(int tracks);

    qrvkp::RvKpApplication m_application;
    QTemporaryDir m_folder;
    std::string m_picture;
    Line m_line;
    qrvkp::RvKpTimeLine* m_timeline; ///< held by the player too
    float m_alpha = 0.5F;
};
