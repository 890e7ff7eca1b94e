// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include "RenderGate.h"

#include <QImage>
#include <QSize>

#include <functional>
#include <memory>

namespace rvengine {

/// Plays a scene: a clock, pictures made by a thread of its own as fast as they are shown, and
/// sound where there is a device for it, whose clock then leads.
///
/// A picture that is not taken before the next one is ready is dropped. Any thread may call any
/// function.
class Playback
{
public:
    /// `news` is called in the playback's thread, never again before the last news were taken:
    /// while playing, and when a picture was made. It must not call the playback.
    explicit Playback(std::function<void()> news);
    /// Ends the thread; no news come any more.
    ~Playback();
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    /// Shows and plays this scene from now on; null is nothing, and takes back a picture that was
    /// not taken yet.
    void setScene(ScenePointer scene);
    /// Renders nothing more before the next `setScene`.
    void awaitScene();
    /// The size of the pictures, px; empty makes none, which is how it begins.
    void setPictureSize(QSize size);

    /// Goes to `position`, ms, and goes on playing if it plays.
    void seek(long long position);
    void play();
    void pause();
    bool isPlaying() const;
    /// ms; while playing it grows beyond the end of the scene.
    long long position() const;

    /// Keeps frames from being rendered while it is closed.
    RenderGate& gate();

    /// The newest picture, null when none was made since the last time; ends the wait of the next
    /// news.
    QImage takeNews();

private:
    class Engine;
    const std::unique_ptr<Engine> m_engine;
};

} // namespace rvengine
