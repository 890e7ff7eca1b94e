// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvIMediaTrack.h>

namespace qrvkp {

/// A video clip (type 2).
class RVKPCORE_EXPORT RvKpTrack : public RvIMediaTrack
{
public:
    /// Another wrapper of a native video track, with one reference; null for any other handle.
    static RvKpTrack* create(void* context);
    /// A new track of the video file `path` (UTF-8), with one reference. It plays `duration` ms of
    /// the file from `fileStartTime` on; -1 is all that is left of the file. Null when the file is
    /// no readable video: missing, unreadable, corrupt, a still picture, sound alone.
    static RvKpTrack* create(const std::string& path, long long startPos, long long duration,
                             long long fileStartTime);

    /// Where in the file the clip begins, ms.
    long long getFileStartTime() const;
    void setFileStartTime(long long fileStartTime);

protected:
    using RvIMediaTrack::RvIMediaTrack;
    ~RvKpTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
