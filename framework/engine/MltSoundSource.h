// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ReaderPool.h"
#include "SoundSource.h"
#include "SpeedReader.h"

namespace rvengine {

/// Sound by MLT.
class MltSoundSource : public SoundSource
{
public:
    explicit MltSoundSource(const MonotonicClock& now);

    bool sound(const Layer& layer, std::uintptr_t lane, long long offset, std::size_t frames,
               float* out) override;
    void endBlock() override;

private:
    ReaderPool<SpeedReader> m_readers;
};

} // namespace rvengine
