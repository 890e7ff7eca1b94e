// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundSource.h"

namespace rvengine {

namespace {

class Silence : public SoundSource
{
public:
    bool sound(const Layer&, std::uintptr_t, long long, std::size_t, float*) override
    {
        return false;
    }
    void endBlock() override {}
};

} // namespace

std::unique_ptr<SoundSource> makeSoundSource(MonotonicClock /*now*/, Interrupt /*interrupt*/)
{
    return std::make_unique<Silence>();
}

} // namespace rvengine
