// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ContentAhead.h"
#include "PictureFiles.h"
#include "PictureReader.h"
#include "PictureSource.h"
#include "ReaderPool.h"

namespace rvengine {

/// Gives pictures of media files.
class FilePictureSource : public PictureSource
{
public:
    FilePictureSource(const MonotonicClock& now, EnoughAsked isEnough, Interrupt interrupt);

    QImage picture(const Layer& layer, std::uintptr_t lane, double fileTime, QSize wanted) override;
    void prepare(const Layer& layer, double fileTime) override;
    void endFrame() override;

private:
    const EnoughAsked m_isEnough;
    const Interrupt m_interrupt;
    ReaderPool<PictureReader> m_readers;
    PictureFiles m_pictures;
    ContentAhead m_ahead;
};

} // namespace rvengine
