// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Compositor.h"
#include "Scene.h"
#include "SoundMixer.h"
#include "YuvConverter.h"

#include <mlt++/Mlt.h>

#include <memory>
#include <mutex>

namespace rvengine {

/// A scene as an MLT producer: its pictures and its sound are made by the same code as those that
/// are played. MLT may ask for pictures and sound from different threads.
class MltTimeline
{
public:
    /// The pictures have the size and the frame rate of the profile, which must outlive the object.
    MltTimeline(Mlt::Profile& profile, ScenePointer scene);
    ~MltTimeline();
    MltTimeline(const MltTimeline&) = delete;
    MltTimeline& operator=(const MltTimeline&) = delete;

    Mlt::Producer& producer() { return m_producer; }
    /// In pictures.
    int length() const { return m_length; }

private:
    static int getFrame(mlt_producer producer, mlt_frame_ptr frame, int index);
    static int getImage(mlt_frame frame, std::uint8_t** buffer, mlt_image_format* format,
                        int* width, int* height, int writable);
    static int getAudio(mlt_frame frame, void** buffer, mlt_audio_format* format, int* rate,
                        int* channels, int* samples);

    long long timeOf(int position) const;
    bool drawImage(mlt_frame frame, std::uint8_t** buffer, mlt_image_format* format, QSize size);
    void mixAudio(mlt_frame frame, void** buffer, int* samples);

    Mlt::Profile& m_profile;
    const ScenePointer m_scene;
    int m_length = 1;
    std::mutex m_pictureMutex;
    Compositor m_compositor;
    YuvConverter m_converter;
    std::mutex m_soundMutex;
    SoundMixer m_mixer;
    mlt_producer_s m_service{};
    Mlt::Producer m_producer;
    std::vector<std::unique_ptr<Mlt::Filter>> m_filters;
};

} // namespace rvengine
