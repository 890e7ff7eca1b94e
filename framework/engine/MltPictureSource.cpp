// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltPictureSource.h"

namespace rvengine {

MltPictureSource::MltPictureSource(const MonotonicClock& now)
    : m_readers(now)
    , m_pictures(now)
{
}

QImage MltPictureSource::picture(const Layer& layer, std::uintptr_t lane, double fileTime,
                                 QSize wanted)
{
    if (layer.kind == LayerKind::Picture)
        return m_pictures.picture(layer.source, wanted);
    MltPictureReader* const reader = m_readers.take(
        layer.source, 0.0, lane, [&] { return MltPictureReader::open(layer.source); });
    return reader ? reader->picture(fileTime, wanted) : QImage();
}

void MltPictureSource::endFrame()
{
    m_readers.endRound();
    m_pictures.endFrame();
}

std::unique_ptr<PictureSource> makePictureSource(MonotonicClock now)
{
    return std::make_unique<MltPictureSource>(now);
}

} // namespace rvengine
