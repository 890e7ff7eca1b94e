// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/playback/Exporter.h>
#include <engine/scene/Scene.h>

#include <string>

/// The greatest sample of the first `ms` of a scene.
float loudestOf(const rvengine::Scene& scene, long long ms);

/// Writes a scene to a file, 25 pictures a second, and gives how that ended.
rvengine::ExportNews finishedExport(const rvengine::Scene& scene, const std::string& path);
