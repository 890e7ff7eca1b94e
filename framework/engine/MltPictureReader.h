// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>

#include <memory>
#include <string>

namespace rvengine {

/// Reads the pictures of one video file with MLT. Used by one thread at a time.
class MltPictureReader
{
public:
    /// Null when the file cannot be read as a video.
    static std::unique_ptr<MltPictureReader> open(const std::string& path);
    ~MltPictureReader();

    /// The picture shown at `fileTime` ms, the first or last one outside of the file; when it
    /// cannot be decoded the one read before, or null. `wanted` as in `PictureSource`.
    QImage picture(double fileTime, QSize wanted);

private:
    struct Media;
    explicit MltPictureReader(std::unique_ptr<Media> media);

    int indexAt(double fileTime) const;
    QImage read(int index, QSize size);

    const std::unique_ptr<Media> m_media;
    QImage m_last;
    int m_lastIndex = -1;
};

} // namespace rvengine
