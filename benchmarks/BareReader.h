// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/media/Ffmpeg.h>

#include <QImage>
#include <QSize>

#include <cstdint>
#include <memory>
#include <string>

/// Reads the pictures of one video file with as few calls of FFmpeg's libraries as do it: no limits
/// on what is opened, no colours but those of the test cards, nothing kept. The measure for the
/// engine's readers. One thread only.
class BareReader
{
public:
    /// Decodes in `threads` threads. Null if the file cannot be opened.
    static std::unique_ptr<BareReader> open(const std::string& path, int threads);

    /// Decodes the next picture; false at the end.
    bool next();
    /// Decodes the picture shown at `time`, seconds, from the key frame before it on; false if
    /// there is none.
    bool seek(double time);
    /// Lets `next` begin with the first picture again; false if the file cannot be sought in.
    bool rewind();
    /// What was decoded last in that size. The next call writes to the same memory.
    const QImage& image(QSize size);

private:
    BareReader() = default;
    bool openCodec(int threads);
    bool goToKeyFrame(std::int64_t stamp);

    rvengine::InputPointer m_file;
    rvengine::CodecPointer m_codec;
    rvengine::PacketPointer m_packet{av_packet_alloc()};
    rvengine::FramePointer m_frame{av_frame_alloc()};
    rvengine::ScalerPointer m_scaler;
    int m_stream = -1;
    QImage m_image;
};
