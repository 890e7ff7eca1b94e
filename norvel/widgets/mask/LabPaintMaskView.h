// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QColor>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

/// A transparent widget over its parent in which the user paints a soft mask with a round brush.
/// The painting is confined to one rectangle and shown within another; coordinates are those of the
/// widget, px, y down.
class NORVEL_EXPORT LabPaintMaskView : public QWidget
{
    Q_OBJECT

public:
    /// Both kinds paint alike; they have widths of their own. Any other value has that of the
    /// eraser.
    enum LabPaintType : int {
        LabPaintTypePaint = 0,
        LabPaintTypeEraser = 1,
    };
    enum LabPathChangeType {
        LabPathBegin = 0, ///< the left button was pressed
        LabPathMove = 1,  ///< the pointer was moved with the left button alone
        LabPathEnd = 2,   ///< the left button was released
    };
    Q_ENUM(LabPathChangeType)

    /// The widget takes the size of its parent whenever it paints.
    explicit LabPaintMaskView(QWidget* parent);
    ~LabPaintMaskView() override;

    /// Whether the painting is shown as it is made; otherwise the mask that was set is shown.
    bool paintMode = false;

    void setupPaintType(LabPaintType type);
    /// The width of the brush for `LabPaintTypePaint`, px; 10 at first.
    void setupPaintLineWidth(int width);
    /// The width of the brush for any other type, px; 5 at first.
    void setupEraserWidth(int width);
    void setupPaintStrokeColor(QColor color);
    /// 0 to 1, to which it is limited; 1 at first.
    void setupPaintAlpha(float alpha);
    /// Nothing is shown outside of `faceRect`, and nothing painted outside of `externalFaceRect`.
    void setupPaintShowRect(QRect faceRect, QRect externalFaceRect);
    /// The mask to be shown, and to be painted on.
    void setupPaintMaskImagePixmap(QPixmap pixmap);
    /// The same with a mask whose alpha alone counts: it is shown in the stroke's colour.
    void setupPaintAlphaMaskImage(QPixmap pixmap);

    QRect showFaceRect() const;
    QRect showExternalFaceRect() const;

    /// The painting, blurred by a radius of 5 x `blur` px, of the size of the external face
    /// rectangle. The strokes are then flattened: the unblurred painting is kept to be painted on,
    /// unless `clearLast`.
    QPixmap lastPaintBlurMaskImage(float blur, bool clearLast);
    /// Forgets painting and mask.
    void clearAllData();

signals:
    /// The pointer, in px of the widget. No `LabPathEnd` comes when the release goes elsewhere: the
    /// view was hidden or disabled in the stroke, or a modal window opened. The next stroke begins
    /// with `LabPathBegin` all the same.
    void maskMouseEvent(LabPaintMaskView::LabPathChangeType type, QPoint point);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int currentPaintLineWidth() const;
    void paintDrawForPath(QPaintDevice* device, const QPainterPath& path, const QPixmap& pixmap,
                          const QRect& targetRect, const QPainterPath& clipPath) const;
    QPixmap recoverColorImage(const QPixmap& source) const;
    QPixmap toImage() const;
    void reloadSizeIfNeed();
    void continuePath();

    LabPaintType m_paintType = LabPaintTypePaint;
    QPainterPath m_path; ///< strokes that are not flattened
    QPainterPath m_externalFacePath;
    QPainterPath m_facePath;
    QPoint m_lastPoint; ///< of the pointer
    QRect m_faceRect;
    QRect m_externalFaceRect;
    QColor m_strokeColor = Qt::red;
    float m_paintAlpha = 1.0F;
    int m_paintLineWidth = 10;
    int m_eraserWidth = 5;
    QPixmap m_lastImage; ///< the flattened painting, in the external face rectangle
    QPixmap m_maskImage; ///< what is shown while `paintMode` is off
};
