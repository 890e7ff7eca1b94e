// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/Scene.h>
#include <engine/SoundSource.h>

#include <mlt++/Mlt.h>

#include <QImage>
#include <QSize>

#include <memory>
#include <string>
#include <vector>

/// The files that are rendered: test cards of ten seconds with a tone, made once.
class BenchMedia
{
public:
    /// The path of a video of that size.
    static std::string video(QSize size);
    /// The path of a picture of a white disc on black, 640 x 360.
    static std::string circle();
};

/// What is rendered, by this project's engine and by MLT alone.
enum class BenchScene {
    Main,         ///< one video that fills the canvas
    Overlay,      ///< and a smaller one over it, translucent
    MattedOverlay ///< and another one, cut round
};

rvengine::Scene benchScene(BenchScene kind, QSize canvas);
/// A scene with that many clips of one file one after the other, 40 ms each.
rvengine::Scene manyClips(int count, QSize canvas);
/// Adds mix layers that are not there in the first ten seconds.
void addAbsentLayers(rvengine::Scene& scene, int count);

/// The same scene made of MLT's own tracks and qtblend transitions.
class MltScene
{
public:
    MltScene(BenchScene kind, QSize canvas);

    /// What this installation of MLT lacks for the scene; empty when all is there.
    const std::string& problem() const { return m_problem; }

    /// A picture of the canvas; false when MLT gives none.
    bool render(int position);

private:
    Mlt::Producer& open(QSize size);
    void addOverlay(int track, const std::string& rectangle, bool round);
    /// Notes a part that MLT does not have; false then.
    bool require(Mlt::Properties& part, const std::string& name);

    std::string m_problem;
    Mlt::Profile m_profile;
    QSize m_canvas;
    Mlt::Tractor m_tractor;
    std::vector<std::unique_ptr<Mlt::Producer>> m_producers;
};

/// Builds MLT's playlist of that many clips of one file, as an editor does that has no other way to
/// reorder it while it plays.
void rebuildMltPlaylist(Mlt::Profile& profile, Mlt::Producer& file, int clips);
