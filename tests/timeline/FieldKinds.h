// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/FieldScene.h"

#include <norvel/attribute/RvAttribute.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// One change of one field of a record kind: how to make it in a record and, where the framework
/// has a way, on a live track. The two changes leave the same value.
///
/// Or a change of a value that a live track has and no record: without a change to a record.
struct FieldChange
{
    std::string name;
    /// Sets in a record what must be there for the change to mean something; may be empty.
    std::function<void(norvel::RvAttribute&)> prepare;
    std::function<void(norvel::RvAttribute&)> change;
    /// The value of the field as a text; empty when no record has the value.
    std::function<std::string(const norvel::RvAttribute&)> value;

    /// Does to the subject of a scene what `prepare` does to a record; may be empty.
    std::function<void(FieldScene&)> prepareLive;
    /// Changes the subject. Empty, or false: the framework has no way to.
    std::function<bool(FieldScene&)> changeLive;
    /// Whether a live track has the value at all.
    std::function<bool(qrvkp::RvITrack*)> hasLiveValue;
    /// The value of a live track by the framework's own getter; empty when there is none.
    std::function<std::string(qrvkp::RvITrack&)> liveValue;
};

/// A kind of record with the changes of all its fields.
struct FieldKind
{
    std::string name;
    /// A new record of the kind, bound to a main track and a detection of a scene.
    std::unique_ptr<norvel::RvAttribute> (*record)();
    std::unique_ptr<norvel::RvAttribute> (*copy)(const norvel::RvAttribute&);
    /// Puts a live track of the kind into a scene, with values like those of the record; does
    /// nothing for a kind without tracks.
    void (*place)(FieldScene&);
    std::vector<FieldChange> changes;
};

/// All kinds, in the order of their type codes, those without a code before the ones that derive
/// from them.
std::vector<FieldKind> fieldKinds();
