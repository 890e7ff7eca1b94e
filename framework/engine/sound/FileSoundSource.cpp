// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FileSoundSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace rvengine {

FileSoundSource::FileSoundSource(const MonotonicClock& now, Interrupt interrupt)
    : m_interrupt(std::move(interrupt))
    , m_readers(now, m_interrupt)
{
}

bool FileSoundSource::sound(const Layer& layer, std::uintptr_t lane, long long offset,
                            std::size_t frames, float* out)
{
    if (!(layer.speed >= TempoFilter::Slowest && layer.speed <= TempoFilter::Fastest))
        return false;
    SpeedReader* const reader = m_readers.take(layer.source, layer.speed, lane, [&] {
        return SpeedReader::open(layer.source, layer.speed, m_interrupt);
    });
    if (!reader)
        return false;
    constexpr double framesPerMs = SoundRate / 1000.0;
    const double fileStart = static_cast<double>(layer.fileStart) * framesPerMs / layer.speed;
    return reader->read(std::llround(std::clamp(fileStart, -1e15, 1e15)) + offset, frames, out);
}

void FileSoundSource::endBlock()
{
    m_readers.endRound();
}

std::unique_ptr<SoundSource> makeSoundSource(MonotonicClock now, Interrupt interrupt)
{
    return std::make_unique<FileSoundSource>(now, std::move(interrupt));
}

} // namespace rvengine
