// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Ffmpeg.h"

#include <initializer_list>

namespace rvengine {

/// Encodes one stream of a film. Used by one thread at a time.
class Encoder
{
public:
    /// An encoder of the first of these names that is there and whose codec the format takes, else
    /// the usual one of its codec `fallback`; null when there is none.
    static const AVCodec* find(const AVOutputFormat& format,
                               std::initializer_list<const char*> names, AVCodecID fallback);

    explicit Encoder(const AVCodec* codec);

    /// To be set up before `start`.
    AVCodecContext& codec() { return *m_codec; }
    const AVCodecContext& codec() const { return *m_codec; }

    /// Leaves out what comes before the time stamp 0.
    void leaveOutLeadIn() { m_hasLeadIn = false; }

    /// Opens the encoder with what is set, and adds its stream to the muxer. 0, or FFmpeg's error.
    int start(AVFormatContext& muxer);
    /// Encodes a frame, null for the end, and gives the muxer what comes out. 0, or FFmpeg's error.
    int encode(AVFormatContext& muxer, const AVFrame* frame);

private:
    CodecPointer m_codec;
    PacketPointer m_packet;
    AVStream* m_stream = nullptr;
    bool m_hasLeadIn = true;
};

} // namespace rvengine
