// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QRect>
#include <QSize>

#include <vector>

/// What is rendered, by this project's engine and by its peers.
enum class BenchScene {
    Main,         ///< one video that fills the canvas
    Overlay,      ///< and a smaller one over it, translucent
    MattedOverlay ///< and another one, cut round
};

constexpr QSize overlayVideo(640, 360);
constexpr double overlayAlpha = 0.8;
/// Where the overlays of a scene are: place 0 to the left, 2 to the right.
std::vector<int> overlayPlaces(BenchScene kind);
/// Half of the canvas in each direction, px.
QRect overlayRectangle(QSize canvas, int place);

/// Ten seconds.
rvengine::Scene benchScene(BenchScene kind, QSize canvas);
/// The ten seconds of one file, cut into that many clips of the same length.
rvengine::Scene clipsOfOneFile(int count, QSize canvas);
/// Clips of as many files one after the other on the main line, each `length` ms long and cut off
/// its file at `fileStart` ms.
rvengine::Scene clipsOfFiles(int count, long long length, long long fileStart, QSize canvas);
/// The whole long video.
rvengine::Scene longScene();
/// Adds mix layers that are not there in the first ten seconds.
void addAbsentLayers(rvengine::Scene& scene, int count);
