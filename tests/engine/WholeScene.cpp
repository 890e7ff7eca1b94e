// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "WholeScene.h"

#include <engine/sound/SoundMixer.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <vector>

using rvengine::ExportNews;
using rvengine::Scene;
using rvengine::SoundChannels;

float loudestOf(const Scene& scene, long long ms)
{
    rvengine::SoundMixer mixer(rvengine::makeSoundSource());
    std::vector<float> samples(static_cast<std::size_t>(rvengine::framesOf(ms) * SoundChannels));
    mixer.mix(scene, 0, samples.size() / SoundChannels, samples.data());
    float most = 0.0F;
    for (const float sample : samples)
        most = std::max(most, std::abs(sample));
    return most;
}

ExportNews finishedExport(const Scene& scene, const std::string& path)
{
    rvengine::ExportSettings settings;
    settings.frameRate = 25.0;
    const auto exporter =
        rvengine::startExport(std::make_shared<const Scene>(scene), path, settings, [] {});
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(5);
    ExportNews news = exporter->news();
    while (news.state == rvengine::ExportState::Running && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        news = exporter->news();
    }
    return news;
}
