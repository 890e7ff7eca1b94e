// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TempoFilter.h"

#include <engine/base/SoundFormat.h>

#include "FilterGraph.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
}

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

/// One filter blends sound well between half and double speed: these, one after the other, make the
/// others.
std::vector<double> factorsOf(double speed)
{
    std::vector<double> factors;
    for (; speed > 2.0; speed /= 2.0)
        factors.push_back(2.0);
    for (; speed < 0.5; speed /= 0.5)
        factors.push_back(0.5);
    factors.push_back(speed);
    return factors;
}

QByteArray chainFor(double speed)
{
    QByteArray chain;
    for (const double factor : factorsOf(speed)) {
        // A fraction of whole numbers: FFmpeg reads decimals by the locale.
        constexpr qlonglong denominator = 1000000000;
        chain += (chain.isEmpty() ? "atempo=" : ",atempo=") +
                 QByteArray::number(std::llround(factor * denominator)) + '/' +
                 QByteArray::number(denominator);
    }
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
    GraphPointer graph{avfilter_graph_alloc()};
    AVFilterContext* input = nullptr;
    AVFilterContext* output = nullptr;
    long long pushed = 0; ///< frames
    FramePointer ready;   ///< came out of the filter and was not taken whole
    std::size_t taken = 0;

    bool build(const QByteArray& chain)
    {
        return graph && connectFilters(*graph, {"abuffer", inputArguments(), "abuffersink"},
                                       chain + ",aformat=sample_fmts=flt", input, output);
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

long long TempoFilter::leadAt(double speed)
{
    // Measured with short bursts at speeds from 0.25 to 4: a filter that slows down what came early
    // out of the one before makes that a little less than it should.
    constexpr double leadMs = 16.5;
    constexpr double passedOnBySlower = 0.83;
    double lead = 0.0;
    for (const double factor : factorsOf(speed)) {
        const double share = factor < 1.0 ? passedOnBySlower : 1.0;
        lead = lead / factor * share + leadMs / std::pow(factor, 0.8);
    }
    return std::llround(lead * SoundRate / 1000.0);
}

TempoFilter::TempoFilter(std::unique_ptr<Graph> graph)
    : m_graph(std::move(graph))
{
}

TempoFilter::~TempoFilter() = default;

bool TempoFilter::push(const float* frames, std::size_t count)
{
    const FramePointer frame(av_frame_alloc());
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
            FramePointer frame(av_frame_alloc());
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
