// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Ffmpeg.h"

#include <QByteArray>

#include <memory>

namespace rvengine {

/// Sends decoded pictures through filters of libavfilter. Used by one thread at a time.
class FrameFilter
{
public:
    /// What the picture needs before it is shown: interlaced ones become whole pictures, those of a
    /// high dynamic range are mapped to the range of a display. Empty when it needs nothing, or
    /// when libavfilter has nothing for it here, of which a first one is warned of.
    static QByteArray neededFor(const AVFrame& frame);

    /// Filters for pictures like `frame`, with time stamps in `base`; null when they cannot be
    /// made.
    static std::unique_ptr<FrameFilter> create(const QByteArray& chain, const AVFrame& frame,
                                               AVRational base);

    /// Whether the filters were made for such a picture.
    bool fits(const AVFrame& frame) const;
    /// Gives the filters the next picture; null is the end. False when they cannot take it.
    bool push(const AVFrame* frame);
    /// The next picture that is ready, with its time stamp in `base`; null when there is none yet.
    FramePointer pull();

private:
    FrameFilter() = default;
    bool build(const QByteArray& chain, const AVFrame& frame, AVRational base);

    GraphPointer m_graph;
    AVFilterContext* m_input = nullptr;
    AVFilterContext* m_output = nullptr;
    AVRational m_base{1, 1};
    int m_width = 0;
    int m_height = 0;
    int m_format = -1;
};

} // namespace rvengine
