// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/base/MonotonicClock.h>
#include <engine/base/SoundFormat.h>
#include <engine/scene/Scene.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace rvengine {

/// Gives the sound of video and sound layers. Used by one thread at a time.
class SoundSource
{
public:
    virtual ~SoundSource() = default;

    /// Writes `frames` frames (samples of all channels) of the layer's sound to `out`, beginning
    /// `offset` frames after the start of the layer, at the layer's speed with the pitch of the
    /// file. `lane` is `MainLane`, or the key of a layer that is heard beside others. False when
    /// there is nothing to hear: the file is silent, over or cannot be read. `out` is then
    /// untouched.
    virtual bool sound(const Layer& layer, std::uintptr_t lane, long long offset,
                       std::size_t frames, float* out) = 0;

    /// A block is finished: files that were not used lately may be closed, and those used in the
    /// block may be used for another layer.
    virtual void endBlock() = 0;
};

/// The source of this build's engine. `now` decides when a file that could not be read is tried
/// again; once `interrupt` is raised, the source ends what it does.
std::unique_ptr<SoundSource> makeSoundSource(MonotonicClock now = std::chrono::steady_clock::now,
                                             Interrupt interrupt = {});

} // namespace rvengine
