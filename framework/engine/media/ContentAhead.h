// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/scene/Scene.h>

#include "PictureReader.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <future>
#include <list>
#include <memory>
#include <string>

namespace rvengine {

/// Opens the content of layers before they are seen: one after the other, in a thread beside the
/// one that uses it. Used by one thread at a time.
class ContentAhead
{
public:
    struct Content
    {
        std::unique_ptr<PictureReader> reader; ///< of a video, at the picture that it begins with
        QImage picture;                        ///< of a still picture
    };

    /// What is kept at most.
    static constexpr std::size_t MostPrepared = 4;

    /// `interrupt` is that of the readers. The end of this object waits for what is being opened,
    /// which a raised interrupt cuts short.
    explicit ContentAhead(Interrupt interrupt);

    /// Has the content of `layer` opened, whose first picture is that at `fileTime` ms. To be said
    /// in each round in which the layer is still to come, the earliest layer first: as soon as
    /// nothing else is being opened it has its turn.
    void prepare(const Layer& layer, double fileTime);
    /// The content of `layer` if it was prepared, or is just being opened; empty otherwise, and
    /// where the file cannot be read.
    Content take(const Layer& layer);
    /// A round is over: what was prepared before and was not asked for in it is dropped.
    void endRound();

    /// Whether something is being opened just now.
    bool isOpening() const;
    /// How many layers have their content prepared, or being opened.
    std::size_t size() const { return m_entries.size(); }

private:
    struct Entry
    {
        std::uintptr_t key; ///< of the layer
        std::string source;
        double fileTime;
        bool isWanted; ///< in this round
        std::future<Content> content;

        bool isReady() const;
    };

    static Content open(LayerKind kind, const std::string& source, double fileTime,
                        const Interrupt& interrupt);

    const Interrupt m_interrupt;
    std::list<Entry> m_entries;
};

} // namespace rvengine
