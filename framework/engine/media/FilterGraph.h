// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Ffmpeg.h"

#include <QByteArray>

namespace rvengine {

/// The ends of a chain of filters, as libavfilter names them.
struct FilterEnds
{
    QByteArray source;
    QByteArray sourceArguments;
    QByteArray sink;
};

/// Fills an empty graph with a source, the chain and a sink; false when FFmpeg refuses them. The
/// graph owns the filters.
bool connectFilters(AVFilterGraph& graph, const FilterEnds& ends, const QByteArray& chain,
                    AVFilterContext*& input, AVFilterContext*& output);

} // namespace rvengine
