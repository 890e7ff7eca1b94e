// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FilterGraph.h"

namespace rvengine {

namespace {

AVFilterInOut* endOf(const char* name, AVFilterContext* filter)
{
    AVFilterInOut* const end = avfilter_inout_alloc();
    if (end) {
        end->name = av_strdup(name);
        end->filter_ctx = filter;
    }
    return end;
}

} // namespace

bool connectFilters(AVFilterGraph& graph, const FilterEnds& ends, const QByteArray& chain,
                    AVFilterContext*& input, AVFilterContext*& output)
{
    const AVFilter* const source = avfilter_get_by_name(ends.source.constData());
    const AVFilter* const sink = avfilter_get_by_name(ends.sink.constData());
    if (!source || !sink ||
        avfilter_graph_create_filter(&input, source, "in", ends.sourceArguments.constData(),
                                     nullptr, &graph) < 0 ||
        avfilter_graph_create_filter(&output, sink, "out", nullptr, nullptr, &graph) < 0)
        return false;
    // Named from outside: the chain's input is our output, and the other way round.
    AVFilterInOut* last = endOf("out", output);
    AVFilterInOut* first = endOf("in", input);
    const bool parsed =
        last && first &&
        avfilter_graph_parse_ptr(&graph, chain.constData(), &last, &first, nullptr) >= 0;
    avfilter_inout_free(&last);
    avfilter_inout_free(&first);
    return parsed && avfilter_graph_config(&graph, nullptr) >= 0;
}

} // namespace rvengine
