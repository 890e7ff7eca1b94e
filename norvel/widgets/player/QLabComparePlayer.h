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
class QLabPlayer;

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
/// Plays with the player of the application that it is given, to which it gives a timeline of its
/// own, and shows the view of it. The application must outlive the widget. The best is one of its
/// own, beside that of the editor, which then keeps its timeline, its view and its undo history.
///
/// In the editor's application the widget takes timeline, view and position away, and an undo
/// meanwhile works on the timeline of the widget. While the player has that timeline, it is stopped
/// when the widget is destroyed or a window around it is closed. When the widget is closed itself,
/// it is stopped in any case. When the widget is destroyed, it takes the view out of itself. A host
/// gets back what it had like this:
///
///     qrvkp::RvKpTimeLine* timeline = player->getTimeLine(); // before the first pair
///     const long long position = player->getCurrentPosition();
///     ...
///     delete compare;
///     player->setTimeLine(timeline);
///     timeline->release();
///     player->seekTo(position, true);
///     player->prepareAsync();
///     layout->addWidget(application->getGraphicsView());
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
    /// that is no such thing is tried as the other one. Of two lengths the longer one is played,
    /// and the shorter side stays on its last picture. The line stays where it is; if it is limited
    /// to the picture, it comes into the new one. A file that is missing is warned about, and
    /// nothing changes. When a file is neither, what was shown is shown again, at the position
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
    /// Brings the line to the middle of the view, whatever its limit.
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
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What is shown: the timeline and the tracks, one reference each, and their measures.
    struct Shown
    {
        qrvkp::RvKpTimeLine* timeline = nullptr;
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
    bool showPair(const QString& first, const QString& second, bool isVideo);
    bool showBase(const QString& path, bool& isVideo);
    bool showMix(const QString& path, bool& isVideo);
    bool showMatte();
    void makeDurationsEqual();
    void limitLine();
    void stopOwnTimeline();
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
    QPointer<QLabPlayer> m_ownPlayer;        ///< a child; null without a bar
    QPointer<LabCompareMaskView> m_maskView; ///< a child of the view
    qrvkp::RvKpApplication* const m_application;
    Shown m_shown;
    QLabShowType m_showType = QLabShowSplit;
    bool m_autoPlay = false;
    bool m_limitMoveInVideoRect = true;
    QPointer<QWidget> m_closing; ///< the widget around this one that was just asked to close
};
