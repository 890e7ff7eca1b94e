// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/media/PictureSource.h>

#include <QColor>

/// Paints pictures without files: the source of a layer is the name of a colour as QColor takes it,
/// with "#AARRGGBB" for transparent ones, or `Quarters`.
class PaintedSource : public rvengine::PictureSource
{
public:
    /// The source of a layer whose quarters are red, green, blue and white: at the top left, the
    /// top right, the bottom left and the bottom right.
    static constexpr const char* Quarters = "quarters";
    static constexpr Qt::GlobalColor TopLeft = Qt::red;
    static constexpr Qt::GlobalColor TopRight = Qt::green;
    static constexpr Qt::GlobalColor BottomLeft = Qt::blue;
    static constexpr Qt::GlobalColor BottomRight = Qt::white;

    /// Pictures of the size that is wanted, or of `stored` where none is wanted. With
    /// `alwaysStored` they are never of the size that is wanted.
    explicit PaintedSource(QSize stored = QSize(64, 64), bool alwaysStored = false)
        : m_stored(stored)
        , m_alwaysStored(alwaysStored)
    {
    }

    QImage picture(const rvengine::Layer& layer, std::uintptr_t lane, double fileTime,
                   QSize wanted) override;
    void prepare(const rvengine::Layer& /*layer*/, double /*fileTime*/) override {}
    void endFrame() override {}

private:
    const QSize m_stored;
    const bool m_alwaysStored;
};
