// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltSoundSource.h"

#include <algorithm>
#include <cmath>

namespace rvengine {

MltSoundSource::MltSoundSource(const MonotonicClock& now)
    : m_readers(now)
{
}

bool MltSoundSource::sound(const Layer& layer, std::uintptr_t lane, long long offset,
                           std::size_t frames, float* out)
{
    if (!(layer.speed >= TempoFilter::Slowest && layer.speed <= TempoFilter::Fastest))
        return false;
    SpeedReader* const reader = m_readers.take(layer.source, layer.speed, lane, [&] {
        return SpeedReader::open(layer.source, layer.speed);
    });
    if (!reader)
        return false;
    constexpr double framesPerMs = SoundRate / 1000.0;
    const double fileStart = static_cast<double>(layer.fileStart) * framesPerMs / layer.speed;
    return reader->read(std::llround(std::clamp(fileStart, -1e15, 1e15)) + offset, frames, out);
}

void MltSoundSource::endBlock()
{
    m_readers.endRound();
}

std::unique_ptr<SoundSource> makeSoundSource(MonotonicClock now)
{
    return std::make_unique<MltSoundSource>(now);
}

} // namespace rvengine
