// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/media/ReaderPool.h>

#include "SoundSource.h"
#include "SpeedReader.h"

namespace rvengine {

/// Gives the sound of media files.
class FileSoundSource : public SoundSource
{
public:
    FileSoundSource(const MonotonicClock& now, Interrupt interrupt);

    bool sound(const Layer& layer, std::uintptr_t lane, long long offset, std::size_t frames,
               float* out) override;
    void endBlock() override;

private:
    const Interrupt m_interrupt;
    ReaderPool<SpeedReader> m_readers;
};

} // namespace rvengine
