// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MltPictureReader.h"
#include "PictureFiles.h"
#include "PictureSource.h"
#include "ReaderPool.h"

namespace rvengine {

/// Videos by MLT, pictures by Qt.
class MltPictureSource : public PictureSource
{
public:
    explicit MltPictureSource(const MonotonicClock& now);

    QImage picture(const Layer& layer, std::uintptr_t lane, double fileTime, QSize wanted) override;
    void endFrame() override;

private:
    ReaderPool<MltPictureReader> m_readers;
    PictureFiles m_pictures;
};

} // namespace rvengine
