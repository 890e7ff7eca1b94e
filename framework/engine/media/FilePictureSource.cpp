// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FilePictureSource.h"

#include <utility>

namespace rvengine {

FilePictureSource::FilePictureSource(const MonotonicClock& now, EnoughAsked isEnough,
                                     Interrupt interrupt)
    : m_isEnough(std::move(isEnough))
    , m_interrupt(std::move(interrupt))
    , m_readers(now, m_interrupt)
    , m_pictures(now)
{
}

QImage FilePictureSource::picture(const Layer& layer, std::uintptr_t lane, double fileTime,
                                  QSize wanted)
{
    if (layer.kind == LayerKind::Picture)
        return m_pictures.picture(layer.source, wanted);
    PictureReader* const reader = m_readers.take(
        layer.source, 0.0, lane, [&] { return PictureReader::open(layer.source, m_interrupt); });
    return reader ? reader->picture(fileTime, wanted, m_isEnough) : QImage();
}

void FilePictureSource::endFrame()
{
    m_readers.endRound();
    m_pictures.endFrame();
}

std::unique_ptr<PictureSource> makePictureSource(MonotonicClock now, EnoughAsked isEnough,
                                                 Interrupt interrupt)
{
    return std::make_unique<FilePictureSource>(now, std::move(isEnough), std::move(interrupt));
}

} // namespace rvengine
