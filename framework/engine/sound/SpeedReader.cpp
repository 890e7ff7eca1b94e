// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SpeedReader.h"

#include "SoundSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace rvengine {

namespace {

constexpr std::size_t blockFrames = 1024;

} // namespace

std::unique_ptr<SpeedReader> SpeedReader::open(const std::string& path, double speed,
                                               Interrupt interrupt)
{
    if (!(speed >= TempoFilter::Slowest && speed <= TempoFilter::Fastest))
        return nullptr;
    auto reader = SoundReader::open(path, std::move(interrupt));
    if (!reader)
        return nullptr;
    return std::unique_ptr<SpeedReader>(new SpeedReader(std::move(reader), speed));
}

SpeedReader::SpeedReader(std::unique_ptr<SoundReader> reader, double speed)
    : m_reader(std::move(reader))
    , m_speed(speed)
    , m_block(blockFrames * SoundChannels)
{
}

bool SpeedReader::read(long long start, std::size_t frames, float* out)
{
    if (m_speed == 1.0)
        return m_reader->read(start, frames, out);
    if (start != m_next && !moveTo(start))
        return false;
    std::size_t given = m_filter->pull(out, frames);
    while (given < frames && refill())
        given += m_filter->pull(out + given * SoundChannels, frames - given);
    m_next = start + static_cast<long long>(frames);
    std::fill_n(out + given * SoundChannels, (frames - given) * SoundChannels, 0.0F);
    return given > 0;
}

bool SpeedReader::moveTo(long long start)
{
    m_next = -1;
    m_filter = TempoFilter::create(m_speed);
    m_fileNext = std::llround(static_cast<double>(start - TempoFilter::leadAt(m_speed)) * m_speed);
    return m_filter != nullptr;
}

bool SpeedReader::refill()
{
    if (!m_reader->read(m_fileNext, blockFrames, m_block.data()))
        return false;
    m_fileNext += blockFrames;
    return m_filter->push(m_block.data(), blockFrames);
}

} // namespace rvengine
