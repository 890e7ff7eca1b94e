// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARITrack.h>

namespace qkpar {

/// An AR layer (type 20008).
class KPAREXTENSION_EXPORT RvARAttribsTrack : public RvARITrack
{
public:
    /// Another wrapper of a native track of this kind, with one reference; null for any other
    /// handle.
    static RvARAttribsTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARAttribsTrack* create(const std::string& source, long long startPos,
                                    long long duration);

protected:
    using RvARITrack::RvARITrack;
    ~RvARAttribsTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
