// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>

namespace qrvkp {

/// A detection (type 400): finds faces, bodies or the like with a model, for effects to use.
class RVKPCORE_EXPORT RvDetectionTrack : public RvITrack
{
public:
    /// Another wrapper of a native detection track, with one reference; null for any other handle.
    static RvDetectionTrack* create(void* context);
    /// A new detection of a framework-defined `mode` with the model at `modelPath` (UTF-8, may be
    /// empty), with one reference.
    static RvDetectionTrack* create(int mode, const std::string& modelPath);

    int getDetectionMode() const;
    void setDetectionMode(int mode);
    std::string getModelPath() const;
    void setModelPath(const std::string& modelPath);

    /// Acts on `track` alone from now on, which is remembered by its id: while no track of that id
    /// stands on the timeline of this one, it acts on nothing. Takes over one reference of `track`:
    /// a caller that goes on using it retains it first. `bindType` is a framework-defined number.
    /// False and no change for a null track.
    bool bind(RvITrack* track, int bindType);
    /// Follows whatever lies below it.
    void bindDynamic();
    /// Acts on the whole canvas.
    void unbind();

    /// A value of `RvActionRange`.
    int getActionRange() const;
    /// The type given to `bind`; 0 when no track is bound.
    int getMediaBindType() const;
    /// The bound track with one reference; null when there is none, and while it is away.
    RvITrack* getBindTrack() const;

protected:
    using RvITrack::RvITrack;
    ~RvDetectionTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
