// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Encoder.h"

#include <memory>
#include <vector>

struct AVAudioFifo;

namespace rvengine {

/// Encodes the sound of a film. Used by one thread at a time.
class SoundEncoder
{
public:
    /// `bitRate` in bits a second, 0 for the encoder's own choice.
    SoundEncoder(const AVCodec* codec, int bitRate);
    ~SoundEncoder();

    /// Leaves out the silence that the codec begins with, before `start`.
    void leaveOutLeadIn() { m_encoder.leaveOutLeadIn(); }
    /// As those of an encoder: 0, or FFmpeg's error.
    int start(AVFormatContext& muxer);
    /// Appends interleaved stereo at `SoundRate`.
    int add(AVFormatContext& muxer, const std::vector<float>& samples);
    /// Encodes the rest.
    int finish(AVFormatContext& muxer);

private:
    struct FreeFifo
    {
        void operator()(AVAudioFifo* fifo) const;
    };

    int convert(const float* samples, int count);
    int encodeBlocks(AVFormatContext& muxer, bool isEnd);
    int encodeBlock(AVFormatContext& muxer, int count);
    FramePointer newFrame(int count) const;

    Encoder m_encoder;
    ResamplerPointer m_resampler;
    std::unique_ptr<AVAudioFifo, FreeFifo> m_fifo; ///< in the form of the encoder
    long long m_encoded = 0;                       ///< samples of a channel
};

} // namespace rvengine
