// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>

#include "PictureSource.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <string>

namespace rvengine {

/// Reads the pictures of one video file. Used by one thread at a time.
///
/// It decodes from the key frame before a picture on, decodes on where a picture is ahead, and
/// keeps those that it decoded last.
class PictureReader
{
public:
    /// Null when the file cannot be read as a video.
    static std::unique_ptr<PictureReader> open(const std::string& path, Interrupt interrupt = {});
    ~PictureReader();

    /// The size in px in which the pictures are to be seen.
    QSize size() const;

    /// The picture shown at `fileTime` ms, the first or last one outside of the file; when it
    /// cannot be decoded the one before, or null. `wanted` as in `PictureSource`.
    ///
    /// Where `isEnough`, which is asked after each picture on the way there, is content with that
    /// one, it is given in place of the right one.
    QImage picture(double fileTime, QSize wanted, const EnoughAsked& isEnough = {});

    /// Decodes up to the picture shown at `fileTime` ms, so that it is there when it is asked for.
    void reach(double fileTime);

    /// Ends the threads of its decoder until it is used again, when it has to go on from a key
    /// frame.
    void rest();

    /// How many pictures were decoded, for those who measure.
    long long decodedCount() const;

private:
    struct Media;
    explicit PictureReader(std::unique_ptr<Media> media);

    const std::unique_ptr<Media> m_media;
};

} // namespace rvengine
