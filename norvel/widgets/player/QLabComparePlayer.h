// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QColor>
#include <QImage>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QWidget>

#include <memory>

class LabCompareMaskView;
class QLabComparePlayerForm;

namespace qrvkp {
class RvIMediaTrack;
class RvKpApplication;
class RvKpGroup;
class RvKpTimeLine;
class RvTrkMatteEffectTrack;
} // namespace qrvkp

/// Shows two videos, or two pictures, on top of each other in the framework's canvas, split by a
/// vertical line that the user drags: one file left of the line, the other one right of it.
///
/// Plays with the framework's own player, to which it gives a timeline of its own. The framework's
/// application must outlive the widget; its view stands in the widget, and is taken out when the
/// widget is destroyed.
class NORVEL_EXPORT QLabComparePlayer : public QWidget
{
    Q_OBJECT

public:
    enum QLabShowType {
        QLabShowSplit = 0,     ///< both files, and the line
        QLabShowEdgeLeft = 1,  ///< as if the line were at the left edge
        QLabShowEdgeRight = 2, ///< as if the line were beyond the right edge
    };

    /// `ownPlayer` gives the view the bar of a `QLabPlayer`. The application is not owned.
    QLabComparePlayer(qrvkp::RvKpApplication* app, QWidget* parent, bool ownPlayer);
    ~QLabComparePlayer() override;

    /// Shows `second` left of the line and `first` right of it: two videos, or two pictures. A file
    /// that is no such thing is tried as the other one. A file that is missing is warned about,
    /// and nothing changes. When a file is neither, what was shown is shown again, at the position
    /// where it was: played on if it was playing, prepared otherwise.
    void setupCompareVideoPath(QString first, QString second, bool isVideo);
    /// Whether `setupCompareVideoPath` starts to play; off at first.
    void setupAutoPlay(bool autoPlay);
    void setupShowType(QLabShowType type);
    QLabShowType getShowType() const;
    /// Whether the line stays within the upper file's picture; on at first.
    void setupLimitMoveInVideoRect(bool limit);
    /// Shows both videos from `start` of their files on, and the lower one and its group for
    /// `duration`, ms; the upper one keeps its duration. False unless both are videos.
    bool setVideoFileStartTimeTo(int start, int duration);
    /// To be called when the canvas was zoomed or moved, and when the widget has a new size: the
    /// matte is brought to the line.
    void updateEffect();
    /// Width and height of the lower file, that left of the line, px.
    QSizeF getVideoTrackSize() const;
    void maskMoveToCenter();

    void setLineColor(QColor color);
    void setLineWidth(int width);
    /// The icon on the line, in its own size until another one is set.
    void setIconImage(QImage image);
    void setIconSize(QSize size);
    /// The width of the zone around the line in which it can be taken, px.
    void setControlWidth(int width);

    /// The containers of the hints on both sides.
    QWidget* getLeftHintWidget();
    QWidget* getRightHintWidget();
    /// Puts a hint into the container of its side, which then owns it.
    void setLeftHintWidget(QWidget* hint);
    void setRightHintWidget(QWidget* hint);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    /// What is shown: the tracks, one reference each, and their measures.
    struct Shown
    {
        qrvkp::RvTrkMatteEffectTrack* matteTrack = nullptr; ///< cuts the mix track
        qrvkp::RvIMediaTrack* baseTrack = nullptr;
        qrvkp::RvIMediaTrack* mixTrack = nullptr; ///< lies over the base track
        qrvkp::RvKpGroup* group = nullptr;        ///< holds the base track
        QSizeF baseTrackSize;
        QSizeF mixTrackSize;
        float videoScale = 1.0F; ///< by which the mix track fits the canvas

        void release();
    };

    void connectMaskView();
    bool showPair(qrvkp::RvKpTimeLine& timeline, const QString& first, const QString& second,
                  bool isVideo);
    bool showBase(qrvkp::RvKpTimeLine& timeline, const QString& path, bool& isVideo);
    bool showMix(qrvkp::RvKpTimeLine& timeline, const QString& path, bool& isVideo);
    bool showMatte(qrvkp::RvKpTimeLine& timeline);
    void makeDurationsEqual();
    qrvkp::RvIMediaTrack* createMediaTrack(const QString& path, bool isVideo) const;
    qrvkp::RvIMediaTrack* createEitherTrack(const QString& path, bool& isVideo) const;
    float fitToCanvas(qrvkp::RvIMediaTrack& track) const;
    float videoScaleValue(QSizeF video, QSizeF canvas) const;
    QSizeF canvasSize() const;
    QRect fetchVideoRect() const;
    QRect fetchVideoRect(QSize area) const;
    QRect fetchHintDrawRect() const;
    void updateDrawPathWithSizeLimit(bool enable);
    void updateMaskEffectCanvesX(float x);
    void updateMaskEffectPoint(QPointF point);

    std::unique_ptr<QLabComparePlayerForm> ui;
    QPointer<LabCompareMaskView> m_maskView; ///< a child of the view
    qrvkp::RvKpApplication* const m_application;
    Shown m_shown;
    QLabShowType m_showType = QLabShowSplit;
    bool m_autoPlay = false;
    bool m_limitMoveInVideoRect = true;
};
