// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

#include <rvkpcore/RvITrack.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// One kind of record with every value set, a live track of that kind, and what the framework is to
/// be told when a track is made of the record or brought up to it.
struct KindSample
{
    std::string name;
    std::unique_ptr<norvel::RvAttribute> (*record)();
    /// A new track of the kind, with values that are not those of the record.
    qrvkp::RvITrack* (*liveTrack)();
    /// The calls that make a track of the record, which is called `it`. Empty: none is ever made.
    std::vector<std::string> creation;
    /// The calls that bring a live track, called `it`, up to the record. Empty: it stays as it is.
    std::vector<std::string> update;
    /// Whether a live track of the kind is described by a record.
    bool captured;
};

constexpr std::uint64_t sampleId = 77;           ///< the uuid of the sample records
constexpr std::uint64_t sampleMainId = 900;      ///< the main track that the samples are bound to
constexpr std::uint64_t sampleDetectionId = 901; ///< the detection that the samples use

/// The names of all kinds that stand for a track, in the order of their type codes.
const std::vector<std::string>& kindNames();
/// The sample of this name.
const KindSample& kindSample(const std::string& name);

/// A new live track of the kind that has this record type, with values of its own; null for a code
/// without a kind.
qrvkp::RvITrack* newLiveTrack(int recordType);
