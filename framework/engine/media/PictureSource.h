// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/base/MonotonicClock.h>
#include <engine/scene/Scene.h>

#include <QImage>
#include <QSize>

#include <cstdint>
#include <functional>
#include <memory>

namespace rvengine {

/// Gives the pictures of video and picture layers. Used by one thread at a time.
class PictureSource
{
public:
    virtual ~PictureSource() = default;

    /// The content of `layer` at `fileTime`, ms of its file: before the first picture of the file
    /// that one, after the last one the last. Null when the file cannot be read.
    ///
    /// `wanted` is the size in px that the content will cover, empty when it is not known. The
    /// picture has that size, or the size of the file, whichever is cheaper for what follows.
    /// `lane` is `MainLane`, or the key of a layer that is seen beside others.
    /// Format_RGB32 when it is opaque, Format_ARGB32_Premultiplied otherwise.
    virtual QImage picture(const Layer& layer, std::uintptr_t lane, double fileTime,
                           QSize wanted) = 0;

    /// The layer is seen soon, from `fileTime` ms of its file on: what takes long may be done
    /// ahead, beside the caller. Said after each frame, the earliest layer first, until the layer
    /// is seen.
    virtual void prepare(const Layer& layer, double fileTime) = 0;

    /// A frame is finished: files that were not used lately may be closed, and those used in the
    /// frame may be used for another layer.
    virtual void endFrame() = 0;
};

/// Asked while a picture is looked for: whether one on the way there is good enough, for nobody
/// waits for the right one any more. An empty one waits.
using EnoughAsked = std::function<bool()>;

/// The source of this build's engine. `now` decides when a file that could not be read is tried
/// again; `isEnough` is asked in the thread that uses the source; once `interrupt` is raised, the
/// source ends what it does and gives what it has.
std::unique_ptr<PictureSource>
makePictureSource(MonotonicClock now = std::chrono::steady_clock::now, EnoughAsked isEnough = {},
                  Interrupt interrupt = {});

} // namespace rvengine
