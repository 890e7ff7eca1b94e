// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <QString>

#include <memory>

namespace rvengine {

/// Frees what a function of FFmpeg frees through a pointer to its pointer.
template <auto Free>
struct FreeBy
{
    template <class Object>
    void operator()(Object* object) const
    {
        Free(&object);
    }
};

struct FreeScaler
{
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

struct FreeFormat
{
    void operator()(AVFormatContext* format) const { avformat_free_context(format); }
};

using FramePointer = std::unique_ptr<AVFrame, FreeBy<av_frame_free>>;
using PacketPointer = std::unique_ptr<AVPacket, FreeBy<av_packet_free>>;
using CodecPointer = std::unique_ptr<AVCodecContext, FreeBy<avcodec_free_context>>;
using InputPointer = std::unique_ptr<AVFormatContext, FreeBy<avformat_close_input>>;
using OutputPointer = std::unique_ptr<AVFormatContext, FreeFormat>;
using GraphPointer = std::unique_ptr<AVFilterGraph, FreeBy<avfilter_graph_free>>;
using ResamplerPointer = std::unique_ptr<SwrContext, FreeBy<swr_free>>;
using ScalerPointer = std::unique_ptr<SwsContext, FreeScaler>;

/// What FFmpeg says of one of its error numbers.
inline QString errorText(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return QString::fromUtf8(text);
}

} // namespace rvengine
