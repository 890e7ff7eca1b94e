// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARLiquifyOperation.h>

namespace qkpar {

/// A liquify (type 20017): strokes that push the pixels of the picture about.
///
/// A stroke is appended, then confirmed; appending another one confirms the stroke before it. What
/// is confirmed can be saved to a folder and loaded from it.
class KPAREXTENSION_EXPORT RvARLiquifyTrack : public RvARBeautyTrack
{
public:
    /// Another wrapper of a native liquify track, with one reference; null for any other handle.
    static RvARLiquifyTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARLiquifyTrack* create(const std::string& source, long long startPos,
                                    long long duration);

    /// The stroke appended last, confirmed or not; all zero when there was none.
    RvARLiquifyOperation getAppendOperation() const;
    /// Appends a stroke, pending until it is confirmed. Right after a load that failed a stroke
    /// that is the last one already changes nothing.
    void appendToLiquifyOperation(const RvARLiquifyOperation& operation);
    /// Confirms the pending stroke, if there is one.
    void confirmCurrentLiquify();
    /// The confirmed strokes, in the order in which they were made.
    std::vector<RvARLiquifyOperation> getConfirmedOperations() const;

    /// Writes the confirmed strokes to an existing `folder`, a path in the local 8-bit encoding,
    /// under the id of the track: tracks that share a folder have a file each. False when the
    /// folder cannot be written to.
    bool saveLiquifyConfig(const std::string& folder) const;
    /// Replaces all strokes, the pending one too, by those saved in `folder`, a path in the local
    /// 8-bit encoding, under the id of the track. False when nothing valid was saved there.
    ///
    /// A load that fails leaves the strokes as they are. It takes back the stroke that was appended
    /// right before it, when the track already had that one among its confirmed strokes: to append
    /// the last stroke of a state and then to load its strokes is how a track is brought to that
    /// state, and adds nothing when the state is lost.
    bool loadLiquifyConfig(const std::string& folder);

protected:
    using RvARBeautyTrack::RvARBeautyTrack;
    ~RvARLiquifyTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
