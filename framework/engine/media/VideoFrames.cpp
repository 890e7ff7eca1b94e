// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "VideoFrames.h"

#include <utility>

namespace rvengine {

VideoFrames::VideoFrames(std::unique_ptr<StreamDecoder> decoder)
    : m_decoder(std::move(decoder))
{
}

FramePointer VideoFrames::next()
{
    while (m_ready.empty()) {
        FramePointer frame = m_decoder->next();
        if (frame) {
            ++m_decodedCount;
            takeIn(std::move(frame));
        } else if (m_filter && m_decoder->isAtEnd()) {
            endFilter();
        } else {
            return nullptr;
        }
    }
    FramePointer frame = std::move(m_ready.front());
    m_ready.pop_front();
    return frame;
}

bool VideoFrames::isAtEnd() const
{
    return m_ready.empty() && !m_filter && m_decoder->isAtEnd();
}

bool VideoFrames::seek(double time)
{
    m_ready.clear();
    m_filter.reset();
    return m_decoder->seek(time);
}

void VideoFrames::rest()
{
    m_ready.clear();
    m_filter.reset();
    m_decoder->rest();
}

/// Takes a decoded picture to where those are that can be shown, through a filter if it needs one.
void VideoFrames::takeIn(FramePointer frame)
{
    if (m_filter && !m_filter->fits(*frame))
        endFilter();
    if (!m_filter && !m_isFilterUseless) {
        const QByteArray chain = FrameFilter::neededFor(*frame);
        if (!chain.isEmpty()) {
            m_filter = FrameFilter::create(chain, *frame, m_decoder->stream().time_base);
            m_isFilterUseless = !m_filter;
        }
    }
    if (!m_filter) {
        m_ready.push_back(std::move(frame));
        return;
    }
    m_filter->push(frame.get());
    while (FramePointer filtered = m_filter->pull())
        m_ready.push_back(std::move(filtered));
}

/// Takes out what the filter still holds.
void VideoFrames::endFilter()
{
    m_filter->push(nullptr);
    while (FramePointer filtered = m_filter->pull())
        m_ready.push_back(std::move(filtered));
    m_filter.reset();
}

} // namespace rvengine
