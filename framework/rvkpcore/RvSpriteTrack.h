// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvIMediaTrack.h>

namespace qrvkp {

/// A still picture (type 3).
class RVKPCORE_EXPORT RvSpriteTrack : public RvIMediaTrack
{
public:
    /// Another wrapper of a native sprite track, with one reference; null for any other handle.
    static RvSpriteTrack* create(void* context);
    /// A new track of the picture file `path` (UTF-8) that lasts `duration` ms, with one reference.
    /// Null when the file is no readable picture.
    static RvSpriteTrack* create(const std::string& path, long long startPos, long long duration);

protected:
    using RvIMediaTrack::RvIMediaTrack;
    ~RvSpriteTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
