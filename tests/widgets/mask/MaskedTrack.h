// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/support/ShownEditor.h"

#include <norvel/widgets/mask/RvTrackMaskWidget.h>

#include <rvkpcore/RvSpriteTrack.h>

#include <QCursor>
#include <QPainter>

#include <memory>

/// The mask widget with its protected parts open.
class OpenMaskWidget : public RvTrackMaskWidget
{
public:
    using RvTrackMaskWidget::createCircleCursor;
    using RvTrackMaskWidget::RvTrackMaskWidget;
    using RvTrackMaskWidget::viewPos2PixmapPos;
};

/// A mask widget in the editor's window over a track of 400 x 200 in the middle of a canvas of
/// 1600 x 900. At a canvas scale of 2 a track px is a view px: the track is then seen at (200, 200)
/// to (600, 400).
class MaskedTrack : public ShownEditor
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// The widget laid over the track at that zoom.
    void placeAt(float canvasScale);
    /// Has what is due painted, as the window would do it.
    void paint() { mask->grab(); }
    /// A stroke of the left button on the window, between points of the widget, painted as often as
    /// the window likes.
    void stroke(const QPoint& from, const QPoint& to);
    /// The same by events of the widget alone, painted once: the borders of a stroke grow denser
    /// with every paint.
    void strokePaintedOnce(const QPoint& from, const QPoint& to);

    /// The mask as the host gets it, with the pixels freed; null when there is none.
    QImage maskImage() const;
    /// The number of mask pixels that are set.
    int maskedPixels() const;

    FrameworkRef<qrvkp::RvSpriteTrack> track;
    std::unique_ptr<OpenMaskWidget> mask;
};
