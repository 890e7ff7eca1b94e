// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QImage>
#include <QWidget>

/// A transparent widget over its parent that shows a picture under the pointer, as a preview of a
/// brush, and reports the pointer's strokes. Coordinates are those of the widget, px, y down.
class NORVEL_EXPORT LabTouchMaskView : public QWidget
{
    Q_OBJECT

public:
    enum LabPathChangeType {
        LabPathBegin = 0, ///< the left button was pressed
        LabPathMove = 1,  ///< the pointer was moved with the left button alone
        LabPathEnd = 2,   ///< the left button was released
    };
    Q_ENUM(LabPathChangeType)

    /// The widget takes the size of its parent whenever it paints.
    explicit LabTouchMaskView(QWidget* parent);
    ~LabTouchMaskView() override;

    /// What is shown with its middle under the pointer; null shows nothing.
    QImage touchImage;

signals:
    /// The pointer, in px of the widget. No `LabPathEnd` comes when the release goes elsewhere: the
    /// view was hidden or disabled in the stroke, or a modal window opened. The next stroke begins
    /// with `LabPathBegin` all the same.
    void maskMouseEvent(LabTouchMaskView::LabPathChangeType type, QPoint point);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void reloadSizeIfNeed();

    QPoint m_lastPoint; ///< of the pointer
};
