// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FrameFilter.h"

#include "FilterGraph.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/pixdesc.h>
}

#include <QLoggingCategory>

#include <atomic>

namespace rvengine {

namespace {

bool hasFilter(const char* name)
{
    return avfilter_get_by_name(name) != nullptr;
}

QByteArray deinterlacer()
{
    for (const char* name : {"bwdif", "yadif"}) {
        if (hasFilter(name))
            return QByteArray(name) + "=mode=send_frame:deint=interlaced";
    }
    return {};
}

/// To the colours and the brightness of an ordinary display.
QByteArray toneMapper()
{
    if (hasFilter("zscale") && hasFilter("tonemap"))
        return "zscale=transfer=linear:npl=100,format=gbrpf32le,zscale=primaries=bt709,"
               "tonemap=tonemap=hable:desat=0,"
               "zscale=transfer=bt709:matrix=bt709:range=tv,format=yuv420p";
    static std::atomic<bool> told{false};
    if (!told.exchange(true))
        qWarning("videos of a high dynamic range look flat: this FFmpeg has no filter for them");
    return {};
}

bool isHighDynamicRange(const AVFrame& frame)
{
    return frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
}

/// What the tone mapper has to know, where the file leaves it out.
void completeColors(AVFrame& frame)
{
    if (frame.colorspace == AVCOL_SPC_UNSPECIFIED)
        frame.colorspace = AVCOL_SPC_BT2020_NCL;
    if (frame.color_primaries == AVCOL_PRI_UNSPECIFIED)
        frame.color_primaries = AVCOL_PRI_BT2020;
    if (frame.color_range == AVCOL_RANGE_UNSPECIFIED)
        frame.color_range = AVCOL_RANGE_MPEG;
}

QByteArray inputArguments(const AVFrame& frame, AVRational base)
{
    const auto number = [](int value) { return QByteArray::number(value); };
    return "video_size=" + number(frame.width) + 'x' + number(frame.height) +
           ":pix_fmt=" + number(frame.format) + ":time_base=" + number(base.num) + '/' +
           number(base.den) + ":pixel_aspect=1/1";
}

} // namespace

QByteArray FrameFilter::neededFor(const AVFrame& frame)
{
    QByteArray chain;
    if (frame.interlaced_frame)
        chain = deinterlacer();
    if (isHighDynamicRange(frame)) {
        const QByteArray mapper = toneMapper();
        chain += chain.isEmpty() || mapper.isEmpty() ? mapper : ',' + mapper;
    }
    return chain;
}

std::unique_ptr<FrameFilter> FrameFilter::create(const QByteArray& chain, const AVFrame& frame,
                                                 AVRational base)
{
    std::unique_ptr<FrameFilter> filter(new FrameFilter);
    return filter->build(chain, frame, base) ? std::move(filter) : nullptr;
}

bool FrameFilter::build(const QByteArray& chain, const AVFrame& frame, AVRational base)
{
    m_base = base;
    m_width = frame.width;
    m_height = frame.height;
    m_format = frame.format;
    m_graph.reset(avfilter_graph_alloc());
    if (!m_graph)
        return false;
    // The calling thread does the work.
    m_graph->nb_threads = 1;
    return connectFilters(*m_graph, {"buffer", inputArguments(frame, base), "buffersink"}, chain,
                          m_input, m_output);
}

bool FrameFilter::fits(const AVFrame& frame) const
{
    return frame.width == m_width && frame.height == m_height && frame.format == m_format;
}

bool FrameFilter::push(const AVFrame* frame)
{
    if (!frame)
        return av_buffersrc_add_frame(m_input, nullptr) >= 0;
    const FramePointer reference(av_frame_clone(frame));
    if (!reference)
        return false;
    if (isHighDynamicRange(*reference))
        completeColors(*reference);
    return av_buffersrc_add_frame(m_input, reference.get()) >= 0;
}

FramePointer FrameFilter::pull()
{
    FramePointer frame(av_frame_alloc());
    if (!frame || av_buffersink_get_frame(m_output, frame.get()) < 0)
        return nullptr;
    frame->pts = av_rescale_q(frame->pts, av_buffersink_get_time_base(m_output), m_base);
    frame->interlaced_frame = 0;
    return frame;
}

} // namespace rvengine
