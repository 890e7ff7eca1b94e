// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Reference.h"

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <QGraphicsView>
#include <QImage>
#include <QPointF>
#include <QRgb>
#include <QSize>
#include <QTest>

#include <memory>
#include <string>

/// The number that a picture of `SampleMedia::numberedVideo` carries, wherever its size; -1 when a
/// bar is neither black nor white.
int numberOf(const QImage& picture);

/// Whether two colours differ by no more than what decoding and scaling may lose.
testing::AssertionResult isColour(QRgb colour, QRgb expected, int tolerance = 6);

/// A player as a host has it: an application whose view is shown, a canvas of 320 x 180 in it pixel
/// for pixel, and a timeline that the test fills.
class PlayedTimeline : public testing::Test
{
protected:
    static constexpr int CanvasWidth = 320;
    static constexpr int CanvasHeight = 180;
    /// What a loaded machine may need for anything.
    static constexpr int PatienceMs = 120000;
    /// In which several pictures would come, when a test says that there are none.
    static constexpr int QuietMs = 150;

    static constexpr QRgb Black = 0xff000000;
    static constexpr QRgb White = 0xffffffff;
    static constexpr QRgb Red = 0xffff0000;
    static constexpr QRgb Green = 0xff00ff00;
    static constexpr QRgb Blue = 0xff0000ff;

    void SetUp() override;

    qrvkp::RvKpPlayer& player() { return *application->getPlayer(); }
    QGraphicsView& view() { return *application->getGraphicsView(); }
    /// Shows the view, in its size of the canvas, and waits for that.
    void showView();

    /// A group of its length with the track alone in it, at the end of the main line.
    void append(qrvkp::RvITrack& track);
    /// The numbered video in a group at the end of the main line, over the whole canvas.
    Reference<qrvkp::RvKpTrack> appendNumbers();
    /// A clip of one colour in a group at the end of the main line, over the whole canvas.
    Reference<qrvkp::RvSpriteTrack> appendColour(QRgb rgb, long long duration = 10000);
    /// A mix track of one colour, centred and of the size `size`, for 10 s.
    Reference<qrvkp::RvSpriteTrack> addColour(QRgb rgb, const QSize& size);

    /// Gives the timeline to the player, and waits until it is prepared.
    void prepare();
    void prepareAndStart();
    bool reaches(int state);

    /// The view as it is seen.
    QImage grabbed();
    /// The colour that is seen at a canvas point, y up.
    QRgb seenAt(const QPointF& canvasPoint);
    /// The number that is seen on the canvas, wherever it is in the view; -1 when there is none.
    int seenNumber();

    bool becomesNumber(int number);
    /// The colour is seen there in the end, and when it is not, what is seen instead.
    testing::AssertionResult becomes(const QPointF& canvasPoint, QRgb colour);

    std::unique_ptr<qrvkp::RvKpApplication> application =
        std::make_unique<qrvkp::RvKpApplication>();
    const Reference<qrvkp::RvKpTimeLine> timeline = adopt(qrvkp::RvKpTimeLine::create());
};
