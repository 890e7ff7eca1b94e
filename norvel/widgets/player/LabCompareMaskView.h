// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QWidget>

#include <functional>

class LabCompareHintRightWidget;

/// The transparent widget over the canvas of a compare player: draws the line between the two sides
/// and the icon on it, lets the user drag them, and carries a hint on each side. Coordinates are px
/// of the canvas view, y down.
class LabCompareMaskView : public QWidget
{
    Q_OBJECT

public:
    /// Gives ms that pass.
    using Clock = std::function<qint64()>;

    /// The view takes the size of its parent whenever it paints. The clock times what comes at most
    /// every 50 ms; without one, that of the system does.
    explicit LabCompareMaskView(QWidget* parent, Clock clock = {});
    ~LabCompareMaskView() override;

    void setLineColor(const QColor& color);
    void setLineWidth(int width);
    /// Takes the icon, in the size of the image.
    void setIconImage(const QImage& image);
    void setIconSize(const QSize& size);
    /// The width of the zone around the line in which it can be taken.
    void setControlWidth(int width);

    /// Keeps the line between the left and the right edge; a null rectangle lets it go anywhere.
    void setLimitRect(const QRect& rect);
    const QRect& limitRect() const { return m_limitRect; }
    /// Where the hints are laid out; a null rectangle leaves them where they are.
    void setHintRect(const QRect& rect);
    const QRect& hintRect() const { return m_hintRect; }
    /// Whether `maskCompareEvent` comes only after more than 50 ms during a drag; on at first.
    void setThrottle(bool throttle) { m_throttle = throttle; }
    bool throttle() const { return m_throttle; }

    double lineX() const { return m_lineX; }
    double iconY() const { return m_iconY; }

    /// The containers of the hints, made when they are first asked for.
    QWidget* leftHintWidget();
    QWidget* rightHintWidget();

    /// Takes the size of the parent at once, not only with the next paint, and while it is hidden.
    void takeParentSize();
    /// Tells where the line is, at once.
    void tellLine();
    /// Puts the line in the middle of the view, whatever its limit, and tells it, at once.
    void moveToCenter();

signals:
    /// Where the line and the middle of the icon are.
    void maskCompareEvent(QPointF point);
    void maskChangeSize(QSize size, QSize oldSize);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void computeArea();
    void moveLine(int step);
    void putLine(double x);
    void moveIcon(int step);
    void tellLineThrottled();
    void repaintStrip();
    void layOutHints();

    QWidget* m_leftHint = nullptr;
    LabCompareHintRightWidget* m_rightHint = nullptr;
    int m_hintHeight = 120;
    QImage m_icon;
    QSize m_iconSize;
    double m_lineX = 0.0;
    double m_iconY = 0.0;
    float m_lastDeltaX = 0.0F; ///< the last step of the line, whose strip is repainted too
    QPoint m_lastPos;          ///< of the pointer
    QColor m_lineColor{QStringLiteral("#ff8562")};
    int m_lineWidth = 1;
    int m_controlWidth = 40;
    bool m_draggingLine = false;
    bool m_draggingIcon = false;
    QRect m_limitRect;
    QRect m_hintRect;
    float m_areaAspect = 0.5F; ///< width to height of the reference area
    float m_relX = 0.5F;       ///< the line as a share of the reference area
    float m_relY = 0.5F;       ///< the icon as a share of the reference area
    float m_areaWidth = 0.0F;
    float m_areaHeight = 0.0F;
    bool m_emitOnFirstPaint = true;
    bool m_throttle = true;
    qint64 m_throttleMs = 50;
    qint64 m_lastEmitMs = 0; ///< by the clock
    const Clock m_clock;
};
