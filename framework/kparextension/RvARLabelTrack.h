// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARITrack.h>

namespace qkpar {

/// An AR label (type 20003).
class KPAREXTENSION_EXPORT RvARLabelTrack : public RvARITrack
{
public:
    /// Another wrapper of a native track of this kind, with one reference; null for any other
    /// handle.
    static RvARLabelTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARLabelTrack* create(const std::string& source, long long startPos,
                                  long long duration);

protected:
    using RvARITrack::RvARITrack;
    ~RvARLabelTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
