// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>

namespace qrvkp {

/// A track that shows a picture: a video or a sprite.
///
/// Its content is width x height, scaled, rotated and placed with its centre at the position, in
/// canvas px with the origin at the bottom left and y up. A new track is centred on the canvas with
/// the size of its file and scale 1.
class RVKPCORE_EXPORT RvIMediaTrack : public RvITrack
{
public:
    /// px of the content.
    void setWidthAndHeight(float width, float height);

    float getPositionX() const; ///< canvas px of the centre
    float getPositionY() const; ///< canvas px of the centre, y up
    void setPosition(float x, float y);
    /// The same point as `setPosition`.
    void setCenter(float x, float y);

    float getScale() const;
    void setScale(float scale);

    /// Degrees, clockwise as seen.
    float getRotation() const;
    void setRotation(float rotation);

protected:
    using RvITrack::RvITrack;
    ~RvIMediaTrack() override;
};

} // namespace qrvkp
