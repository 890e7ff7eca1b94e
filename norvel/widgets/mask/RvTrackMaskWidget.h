// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QColor>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

#include <memory>
#include <vector>

namespace qrvkp {
class RvITrack;
class RvKpApplication;
} // namespace qrvkp

namespace norvel {
class PointerDrag;
}

/// What a stroke on a `RvTrackMaskWidget` does. Any other value paints a thin line over what is
/// there.
enum RvTrackMaskWidgetDrawTool : int {
    DrawToolPen = 0,
    DrawToolEraser = 1,
};

/// A transparent widget that is laid over a track as the canvas view shows it, to paint a mask on
/// it. The mask has the track's own pixels, so that it fits the content of the track at any zoom.
///
/// A stroke is drawn into the mask when the widget is next painted, with the tool, the widths, the
/// colour and the opacity of that moment. It is drawn earlier, likewise with those of the moment,
/// before the mask is read, undone, redone or hidden and before the next stroke begins.
///
/// The gestures of the application's view are off while any mouse button is held on the widget.
/// They are switched on when a button is released, and also when the stroke ends without that: the
/// widget is hidden, disabled or destroyed, a modal window opens, or another widget gets the mouse.
/// The mask keeps the stroke as far as it came. The gestures are switched on even if the host had
/// switched them off before the press, because the framework does not report whether they are on.
/// Without a press the widget leaves them alone.
///
/// The widget stands in the same parent as the canvas view, at the same origin. Application and
/// track must outlive it, or the track be taken away with `setTrack(nullptr)`.
class NORVEL_EXPORT RvTrackMaskWidget : public QWidget
{
    Q_OBJECT

public:
    /// The application is not owned.
    RvTrackMaskWidget(qrvkp::RvKpApplication* application, QWidget* parent);
    ~RvTrackMaskWidget() override;

    /// Sets the track to be masked, which is not owned; `updateGeometry` then places the widget and
    /// `clear` makes an empty mask.
    void setTrack(qrvkp::RvITrack* track);
    void setDrawTool(RvTrackMaskWidgetDrawTool tool);
    /// In px of the screen; also the diameter of the cursor, for both tools. What is not positive,
    /// or beyond 4096, leaves the usual cursor.
    void setPenWidth(int width);
    /// In px of the screen.
    void setEraserWidth(int width);
    /// The opacity is that of the pen: the eraser leaves nothing at any opacity. The cursor keeps
    /// the colour it has until a width is set.
    void setPenColorAndOpacity(const QColor& color, const double& opacity);

    /// Takes the last stroke back, if there is one; one that is still being made ends with that.
    void undo();
    /// Brings back the stroke that was taken back last, if no stroke was made since.
    void redo();
    /// Begins an empty mask of the track's size, and forgets all strokes; one that is still being
    /// made ends with that. Does nothing without a track. A track without an area, or with one
    /// beyond 2^27 px, has a mask without pixels.
    void clear();

    /// The mask as Format_Grayscale8: 255 where something is painted that is not black, 0
    /// elsewhere. Null without a mask. The caller owns the image and the pixels behind it, which
    /// the image does not release: `delete[] image->constBits(); delete image;` with the pixels as
    /// `uchar[]`.
    QImage* getMaskImage() const;

    /// Lays the widget over its track; to be called when the track or the canvas was moved or
    /// zoomed. When the size of the track changed, an empty mask is begun, and a stroke that was
    /// not drawn yet goes with the old one; strokes can still be undone, to masks of the old size.
    /// Does nothing without a track.
    void updateGeometry();

protected:
    /// A disc of the pen's width with a small cross in the pen's colour.
    QCursor createCircleCursor() const;
    /// A point of the widget as a point of the mask, y down; the point itself without a track.
    QPointF viewPos2PixmapPos(const QPointF& position) const;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Masks = std::vector<QPixmap>;

    void continueStroke(const QPointF& position);
    void makeMask();
    void drawPendingStroke() const;
    void drawStroke() const;
    int strokeWidth(int toolWidth) const;
    float strokeScale() const;
    void step(Masks& from, Masks& to);

    qrvkp::RvKpApplication* const m_application;
    qrvkp::RvITrack* m_track = nullptr;
    std::unique_ptr<norvel::PointerDrag> m_drag; ///< with any button
    bool m_isStroking = false;                   ///< moves of the left button add to the stroke
    QPainterPath m_path;                         ///< the last stroke, px of the mask
    mutable bool m_dirty = false; ///< the stroke has grown since it was drawn into the mask
    std::unique_ptr<QPixmap> m_mask;
    float m_maskWidth = 0.0F;
    float m_maskHeight = 0.0F;
    QColor m_penColor{0, 0, 255, 255};
    double m_opacity = static_cast<double>(0.38F);
    int m_penWidth = 20;
    int m_eraserWidth = 20;
    RvTrackMaskWidgetDrawTool m_drawTool = DrawToolPen;
    Masks m_undoStack;
    Masks m_redoStack;
};
