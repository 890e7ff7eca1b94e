// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "FrameFilter.h"
#include "StreamDecoder.h"

#include <deque>
#include <memory>

namespace rvengine {

/// The pictures of a video, decoded and filtered so that they can be shown. Used by one thread at a
/// time.
class VideoFrames
{
public:
    explicit VideoFrames(std::unique_ptr<StreamDecoder> decoder);

    /// The next picture; null at the end and when it is interrupted.
    FramePointer next();
    /// As those of the decoder.
    bool isAtEnd() const;
    bool seek(double time);
    void rest();

    const StreamDecoder& decoder() const { return *m_decoder; }
    long long decodedCount() const { return m_decodedCount; }

private:
    void takeIn(FramePointer frame);
    void endFilter();

    const std::unique_ptr<StreamDecoder> m_decoder;
    std::unique_ptr<FrameFilter> m_filter;
    bool m_isFilterUseless = false;
    std::deque<FramePointer> m_ready;
    long long m_decodedCount = 0;
};

} // namespace rvengine
