// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvIEffectTrack.h>

namespace qrvkp {

/// A matte (type 105): cuts the track that it is bound to.
class RVKPCORE_EXPORT RvTrkMatteEffectTrack : public RvIEffectTrack
{
public:
    /// Another wrapper of a native matte track, with one reference; null for any other handle.
    static RvTrkMatteEffectTrack* create(void* context);
    /// A new matte whose shape is a path, with one reference.
    static RvTrkMatteEffectTrack* createPathMatteTrack(long long startPos, long long duration);

protected:
    using RvIEffectTrack::RvIEffectTrack;
    ~RvTrkMatteEffectTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
