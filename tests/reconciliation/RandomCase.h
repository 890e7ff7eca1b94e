// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TimelineSamples.h"

#include <cstdint>
#include <vector>

/// Two random descriptions and a live timeline that may or may not be in the state of the first
/// one: all kinds, several of them under one id, equal ids, effects on the main line, groups
/// without tracks and with several, null entries, records whose type is not that of their class,
/// files that are not there. The same seed makes the same case on every machine.
class RandomCase
{
public:
    explicit RandomCase(std::uint64_t seed);

    const norvel::RvTimeLineAttribute& first() const { return *m_first; }
    const norvel::RvTimeLineAttribute& second() const { return *m_second; }
    /// A new live timeline; those of one case differ in nothing but the ids of their groups.
    TimelineSamples::Timeline live() const;

    /// The largest id in the records.
    std::uint64_t largestId() const { return m_largestId; }
    /// Whether an effect may name a detection that is none: such a track is never released.
    bool mayLeak() const;

private:
    /// A further track of a group.
    struct Guest
    {
        std::size_t group;
        int recordType;
        std::uint64_t id;
    };

    std::uint64_t m_largestId;
    TimelineSamples::Description m_first;
    TimelineSamples::Description m_second;
    TimelineSamples::Description m_live;
    std::vector<Guest> m_guests;
};
