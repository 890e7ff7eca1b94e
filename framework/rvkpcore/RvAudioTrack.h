// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>

namespace qrvkp {

/// A sound clip (type 4), also the sound of a video file.
class RVKPCORE_EXPORT RvAudioTrack : public RvITrack
{
public:
    /// Another wrapper of a native audio track, with one reference; null for any other handle.
    static RvAudioTrack* create(void* context);
    /// A new track of the sound in file `path` (UTF-8), with one reference. It plays `duration` ms
    /// from `fileStartTime` on; -1 is all that is left of the file. Null when the file has no
    /// readable sound.
    static RvAudioTrack* create(const std::string& path, long long startPos, long long duration,
                                long long fileStartTime);

    /// Where in the file the clip begins, ms.
    long long getFileStartTime() const;
    void setFileStartTime(long long fileStartTime);

protected:
    using RvITrack::RvITrack;
    ~RvAudioTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
