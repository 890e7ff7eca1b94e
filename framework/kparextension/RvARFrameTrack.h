// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARITrack.h>

namespace qkpar {

/// An AR picture frame (type 20002).
class KPAREXTENSION_EXPORT RvARFrameTrack : public RvARITrack
{
public:
    /// Another wrapper of a native track of this kind, with one reference; null for any other
    /// handle.
    static RvARFrameTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARFrameTrack* create(const std::string& source, long long startPos,
                                  long long duration);

protected:
    using RvARITrack::RvARITrack;
    ~RvARFrameTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
