// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FilePictureSource.h"

#include <utility>

namespace rvengine {

namespace {

/// A reader that was not used for so long, a second of what is played, lets others have its
/// threads.
constexpr std::uint64_t roundsBeforeRest = 30;

} // namespace

FilePictureSource::FilePictureSource(const MonotonicClock& now, EnoughAsked isEnough,
                                     Interrupt interrupt)
    : m_isEnough(std::move(isEnough))
    , m_interrupt(std::move(interrupt))
    , m_readers(now, m_interrupt)
    , m_pictures(now)
    , m_ahead(m_interrupt)
{
}

QImage FilePictureSource::picture(const Layer& layer, std::uintptr_t lane, double fileTime,
                                  QSize wanted)
{
    ContentAhead::Content ahead = m_ahead.take(layer);
    if (layer.kind == LayerKind::Picture) {
        if (!ahead.picture.isNull())
            m_pictures.put(layer.source, std::move(ahead.picture));
        return m_pictures.picture(layer.source, wanted);
    }
    PictureReader* const reader =
        ahead.reader ? m_readers.put(layer.source, 0.0, lane, std::move(ahead.reader))
                     : m_readers.take(layer.source, 0.0, lane, [&] {
                           return PictureReader::open(layer.source, m_interrupt);
                       });
    return reader ? reader->picture(fileTime, wanted, m_isEnough) : QImage();
}

void FilePictureSource::prepare(const Layer& layer, double fileTime)
{
    if (layer.kind != LayerKind::Picture || !m_pictures.has(layer.source))
        m_ahead.prepare(layer, fileTime);
}

void FilePictureSource::endFrame()
{
    m_readers.endRound();
    m_readers.forIdle(roundsBeforeRest, [](PictureReader& reader) { reader.rest(); });
    m_pictures.endFrame();
    m_ahead.endRound();
}

std::unique_ptr<PictureSource> makePictureSource(MonotonicClock now, EnoughAsked isEnough,
                                                 Interrupt interrupt)
{
    return std::make_unique<FilePictureSource>(now, std::move(isEnough), std::move(interrupt));
}

} // namespace rvengine
