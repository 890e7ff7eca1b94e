// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/private/CanvasView.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QPointF>
#include <QTest>

#include <cmath>

/// An application with a canvas of 1600 x 900 whose view is shown in a window of its own, at first
/// 800 x 600: a view px is two canvas px, with 75 view px left above and below the canvas.
class ShownCanvas : public testing::Test
{
protected:
    static constexpr float CanvasWidth = 1600.0F;
    static constexpr float CanvasHeight = 900.0F;

    void SetUp() override
    {
        application.getRvKpConfig()->setKpSize(CanvasWidth, CanvasHeight);
        view().resize(800, 600);
        view().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view()));
        ASSERT_EQ(view().viewport()->size(), QSize(800, 600));
    }

    qrvkp::CanvasView& view()
    {
        return dynamic_cast<qrvkp::CanvasView&>(*application.getGraphicsView());
    }

    /// The view as it is seen.
    QImage grabbed() { return view().grab().toImage().convertToFormat(QImage::Format_RGB32); }

    qrvkp::RvKpApplication application;
};

/// Equal but for what double precision loses on the way.
inline testing::AssertionResult isNear(const QPointF& point, const QPointF& expected,
                                       double tolerance = 1e-9)
{
    const QPointF error = point - expected;
    if (std::abs(error.x()) <= tolerance && std::abs(error.y()) <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "(" << point.x() << ", " << point.y() << ") is not ("
                                       << expected.x() << ", " << expected.y() << ")";
}
