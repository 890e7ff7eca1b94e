// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>
#include <norvel/global.h>

#include <string>
#include <vector>

namespace norvel {

/// The description of a whole timeline at one moment: the canvas size, a record for every main
/// group (that of its first track) in group order, and a record for every mix track in track order.
///
/// The description owns its records and deletes them. A copy SHARES them: it copies the pointers,
/// not the records, and both destructors delete them. Whoever copies a description empties one of
/// the two before the second is destroyed.
struct NORVEL_EXPORT RvTimeLineAttribute
{
    float width = 0.0F;                    ///< canvas px
    float height = 0.0F;                   ///< canvas px
    std::vector<RvAttribute*> mainAttribs; ///< owned; no null entries when serialised
    std::vector<RvAttribute*> mixAttribs;  ///< owned; no null entries when serialised

    /// An empty description of size 0 x 0.
    RvTimeLineAttribute() = default;
    /// Shares the records of `other`, see above.
    RvTimeLineAttribute(const RvTimeLineAttribute& other) = default;
    /// Assigning would lose the records that are replaced.
    RvTimeLineAttribute& operator=(const RvTimeLineAttribute&) = delete;
    /// Deletes the records of both lists.
    ~RvTimeLineAttribute();

    /// The description as an indented JSON document in UTF-8: "width", "height" and the records of
    /// "mainAttribs" and "mixAttribs". A record whose own text is no JSON object is left out.
    ///
    /// The bytes of a record's text are read as Latin-1, so characters beyond ASCII come out
    /// encoded twice; readers of these documents rely on it.
    std::string serialization() const;
};

} // namespace norvel
