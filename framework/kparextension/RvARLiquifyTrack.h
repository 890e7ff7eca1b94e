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
    /// Appends a stroke, pending until it is confirmed.
    void appendToLiquifyOperation(const RvARLiquifyOperation& operation);
    /// Confirms the pending stroke, if there is one.
    void confirmCurrentLiquify();
    /// The confirmed strokes, in the order in which they were made.
    std::vector<RvARLiquifyOperation> getConfirmedOperations() const;

    /// Writes the confirmed strokes to an existing `folder`, a path in the local 8-bit encoding.
    /// False when the folder cannot be written to.
    bool saveLiquifyConfig(const std::string& folder) const;
    /// Replaces all strokes, the pending one too, by those saved in `folder`, a path in the local
    /// 8-bit encoding. False and no change when nothing valid was saved there.
    bool loadLiquifyConfig(const std::string& folder);

protected:
    using RvARBeautyTrack::RvARBeautyTrack;
    ~RvARLiquifyTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
