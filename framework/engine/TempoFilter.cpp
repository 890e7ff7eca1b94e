// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TempoFilter.h"

#include "SoundSource.h"

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/channel_layout.h>
#include <libavutil/frame.h>
}

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <utility>

namespace rvengine {

namespace {

struct FreeFrame
{
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
using Frame = std::unique_ptr<AVFrame, FreeFrame>;

/// One filter blends sound well between half and double speed: a chain of them makes the others.
QByteArray chainFor(double speed)
{
    QByteArray chain;
    // A fraction of whole numbers: FFmpeg reads decimals by the locale.
    const auto add = [&chain](double factor) {
        constexpr qlonglong denominator = 1000000000;
        chain += (chain.isEmpty() ? "atempo=" : ",atempo=") +
                 QByteArray::number(std::llround(factor * denominator)) + '/' +
                 QByteArray::number(denominator);
    };
    for (; speed > 2.0; speed /= 2.0)
        add(2.0);
    for (; speed < 0.5; speed /= 0.5)
        add(0.5);
    add(speed);
    return chain;
}

QByteArray inputArguments()
{
    const QByteArray rate = QByteArray::number(SoundRate);
    return "sample_fmt=flt:channel_layout=stereo:sample_rate=" + rate + ":time_base=1/" + rate;
}

} // namespace

struct TempoFilter::Graph
{
    AVFilterGraph* graph = avfilter_graph_alloc();
    AVFilterContext* input = nullptr;
    AVFilterContext* output = nullptr;
    long long pushed = 0; ///< frames
    Frame ready;          ///< came out of the filter and was not taken whole
    std::size_t taken = 0;

    ~Graph() { avfilter_graph_free(&graph); }

    bool build(const QByteArray& chain)
    {
        if (!graph ||
            avfilter_graph_create_filter(&input, avfilter_get_by_name("abuffer"), "in",
                                         inputArguments().constData(), nullptr, graph) < 0 ||
            avfilter_graph_create_filter(&output, avfilter_get_by_name("abuffersink"), "out",
                                         nullptr, nullptr, graph) < 0)
            return false;
        // Named from outside: the chain's input is our output, and the other way round.
        AVFilterInOut* ends = link("out", output);
        AVFilterInOut* starts = link("in", input);
        const QByteArray description = chain + ",aformat=sample_fmts=flt";
        const bool parsed =
            ends && starts &&
            avfilter_graph_parse_ptr(graph, description.constData(), &ends, &starts, nullptr) >= 0;
        avfilter_inout_free(&ends);
        avfilter_inout_free(&starts);
        return parsed && avfilter_graph_config(graph, nullptr) >= 0;
    }

    static AVFilterInOut* link(const char* name, AVFilterContext* filter)
    {
        AVFilterInOut* const end = avfilter_inout_alloc();
        if (end) {
            end->name = av_strdup(name);
            end->filter_ctx = filter;
        }
        return end;
    }
};

std::unique_ptr<TempoFilter> TempoFilter::create(double speed)
{
    if (!(speed >= Slowest && speed <= Fastest))
        return nullptr;
    auto graph = std::make_unique<Graph>();
    if (!graph->build(chainFor(speed)))
        return nullptr;
    return std::unique_ptr<TempoFilter>(new TempoFilter(std::move(graph)));
}

TempoFilter::TempoFilter(std::unique_ptr<Graph> graph)
    : m_graph(std::move(graph))
{
}

TempoFilter::~TempoFilter() = default;

bool TempoFilter::push(const float* frames, std::size_t count)
{
    const Frame frame(av_frame_alloc());
    if (!frame)
        return false;
    frame->format = AV_SAMPLE_FMT_FLT;
    frame->sample_rate = SoundRate;
    frame->nb_samples = static_cast<int>(count);
    frame->pts = m_graph->pushed;
    av_channel_layout_default(&frame->ch_layout, SoundChannels);
    if (av_frame_get_buffer(frame.get(), 0) < 0)
        return false;
    std::copy_n(frames, count * SoundChannels, reinterpret_cast<float*>(frame->data[0]));
    m_graph->pushed += static_cast<long long>(count);
    return av_buffersrc_add_frame(m_graph->input, frame.get()) >= 0;
}

std::size_t TempoFilter::pull(float* frames, std::size_t count)
{
    std::size_t given = 0;
    while (given < count) {
        if (!m_graph->ready) {
            Frame frame(av_frame_alloc());
            if (!frame || av_buffersink_get_frame(m_graph->output, frame.get()) < 0)
                break;
            m_graph->ready = std::move(frame);
            m_graph->taken = 0;
        }
        const auto held = static_cast<std::size_t>(m_graph->ready->nb_samples) - m_graph->taken;
        const std::size_t part = std::min(held, count - given);
        const auto* const from = reinterpret_cast<const float*>(m_graph->ready->data[0]) +
                                 m_graph->taken * SoundChannels;
        std::copy_n(from, part * SoundChannels, frames + given * SoundChannels);
        given += part;
        m_graph->taken += part;
        if (part == held)
            m_graph->ready.reset();
    }
    return given;
}

} // namespace rvengine
