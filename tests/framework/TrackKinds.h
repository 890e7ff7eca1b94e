// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Reference.h"

#include <rvkpcore/RvITrack.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// One class of tracks, for tests that hold for all of them.
struct TrackKind
{
    const char* name;                        ///< of the class
    int type;                                ///< a value of `RvTrackType`
    const char* creation;                    ///< the operation that makes a new track
    qrvkp::RvITrack* (*make)();              ///< a new track that starts at 100 and lasts 2000 ms
    qrvkp::RvITrack* (*wrap)(void* context); ///< the `create(void*)` of the class
    bool (*isOwn)(qrvkp::RvITrack* track);   ///< the object is of the class, not of another one
};

/// Every class that has a `create`.
const std::vector<TrackKind>& trackKinds();
/// The class with this name.
const TrackKind& trackKind(const std::string& name);

/// The name of a class as the suffix of a test.
std::string kindName(const testing::TestParamInfo<TrackKind>& info);
void PrintTo(const TrackKind& kind, std::ostream* stream);

/// A new generic track.
Reference<qrvkp::RvITrack> newTrack(long long startPos = 0, long long duration = 1000);
