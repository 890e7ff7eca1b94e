// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"
#include "widgets/mask/PaintedStroke.h"

namespace {

/// Strokes that the window has not painted yet: nothing here lets it.
class PendingStrokeTest : public MaskedTrack
{
protected:
    void pressAt(const QPoint& point)
    {
        send(*mask, QEvent::MouseButtonPress, point, Qt::LeftButton, Qt::LeftButton);
    }
    void moveTo(const QPoint& point)
    {
        send(*mask, QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton);
    }
    void releaseAt(const QPoint& point)
    {
        send(*mask, QEvent::MouseButtonRelease, point, Qt::LeftButton, Qt::NoButton);
    }
    void pendingStroke(const QPoint& from, const QPoint& to)
    {
        pressAt(from);
        releaseAt(to);
    }

    const QPoint a{50, 50}, b{150, 50};   ///< of one stroke
    const QPoint c{50, 120}, d{150, 120}; ///< of another
    const QImage one = blackAndWhite(painted(line(a, b), 20));
    const QImage both =
        blackAndWhite(painted(line(c, d), 20, QColor(0, 0, 255), usualOpacity,
                              QPainter::CompositionMode_Source, painted(line(a, b), 20)));
};

} // namespace

TEST_F(PendingStrokeTest, IsInTheMaskThatIsRead)
{
    pendingStroke(a, b);
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, IsReadInTheMiddleAndGoesOn)
{
    pressAt(a);
    moveTo({100, 50});
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line(a, {100, 50}), 20)));
    moveTo(b);
    releaseAt(b);
    EXPECT_EQ(maskImage().pixelColor(130, 50), QColor(Qt::white));
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(PendingStrokeTest, ThatWasReadIsNotPaintedASecondTime)
{
    mask->setPenColorAndOpacity(Qt::white, 1.0);
    mask->setPenWidth(21); // rows 39 and 60 are half covered
    pendingStroke(a, b);
    maskImage();
    maskImage();
    EXPECT_NEAR(shown(*mask).pixelColor(100, 39).alpha(), 128, 2);
}

TEST_F(PendingStrokeTest, IsTakenBackAndBroughtBack)
{
    pendingStroke(a, b);
    mask->undo();
    EXPECT_EQ(maskedPixels(), 0);
    paint();
    EXPECT_EQ(maskedPixels(), 0);
    mask->redo();
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, IsAStepOfItsOwn)
{
    pendingStroke(a, b);
    pendingStroke(c, d);
    EXPECT_EQ(maskImage(), both);
    for (int round = 0; round < 2; ++round) {
        mask->undo();
        EXPECT_EQ(maskImage(), one);
        mask->undo();
        EXPECT_EQ(maskedPixels(), 0);
        mask->redo();
        EXPECT_EQ(maskImage(), one);
        mask->redo();
        EXPECT_EQ(maskImage(), both);
    }
}

TEST_F(PendingStrokeTest, OfAPressAfterAnotherLeavesBothInTheMask)
{
    pendingStroke(a, b);
    pendingStroke(c, d);
    paint();
    EXPECT_EQ(maskImage(), both);
    mask->undo();
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, LeavesNothingToRedo)
{
    pendingStroke(a, b);
    mask->undo();
    pendingStroke(c, d);
    const QImage second = blackAndWhite(painted(line(c, d), 20));
    mask->redo();
    EXPECT_EQ(maskImage(), second);
}

TEST_F(PendingStrokeTest, IsKeptWhenTheWidgetIsHidden)
{
    pendingStroke(a, b);
    mask->hide();
    // What is chosen while it is hidden is for later strokes.
    mask->setPenWidth(3);
    mask->setDrawTool(DrawToolEraser);
    EXPECT_EQ(maskImage(), one);
    mask->show();
    paint();
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, IsKeptWhenTheWindowIsHidden)
{
    pendingStroke(a, b);
    window->hide();
    mask->setPenWidth(3);
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, IsPaintedWithTheToolOfThatMoment)
{
    pendingStroke(a, b);
    mask->setPenWidth(32);
    mask->setPenColorAndOpacity(Qt::white, 1.0);
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line(a, b), 32, Qt::white, 1.0)));
    mask->setDrawTool(DrawToolEraser);
    paint(); // nothing is due
    EXPECT_EQ(shown(*mask).pixelColor(100, 50), QColor(Qt::white));
}

TEST_F(PendingStrokeTest, IsDroppedForGoodByClear)
{
    pendingStroke(a, b);
    mask->clear();
    EXPECT_EQ(maskedPixels(), 0);
    paint();
    EXPECT_EQ(maskedPixels(), 0);
    mask->undo();
    mask->redo();
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(PendingStrokeTest, ThatIsClearedInTheMiddleHasNoRest)
{
    pressAt(a);
    moveTo({100, 50});
    mask->clear();
    moveTo({120, 50});
    releaseAt(b);
    paint();
    EXPECT_EQ(maskedPixels(), 0);
    EXPECT_EQ(calls("enableGesture"), (std::vector<std::string>{"false", "true"}));
    pendingStroke(c, d);
    EXPECT_EQ(maskImage(), blackAndWhite(painted(line(c, d), 20)));
}

TEST_F(PendingStrokeTest, ThatIsUndoneInTheMiddleHasNoRest)
{
    pressAt(a);
    moveTo({100, 50});
    const QImage begun = maskImage();
    mask->undo();
    moveTo({120, 50});
    releaseAt(b);
    paint();
    EXPECT_EQ(maskedPixels(), 0);
    mask->redo();
    EXPECT_EQ(maskImage(), begun);
}

TEST_F(PendingStrokeTest, GoesOnWhenThereIsNothingToUndoOrRedo)
{
    pressAt(a);
    mask->redo();
    moveTo(b);
    releaseAt(b);
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, OfAnotherTrackSizeGoesWithItsMask)
{
    pendingStroke(a, b);
    track->setWidthAndHeight(401.0F, 200.0F);
    mask->updateGeometry();
    paint();
    EXPECT_EQ(maskImage().size(), QSize(401, 200));
    EXPECT_EQ(maskedPixels(), 0);
    mask->undo(); // the mask before the stroke
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(PendingStrokeTest, StaysWhenTheWidgetIsOnlyPlacedAnew)
{
    pendingStroke(a, b);
    mask->updateGeometry();
    EXPECT_EQ(maskImage(), one);
}

TEST_F(PendingStrokeTest, WithoutAMaskIsPaintedIntoTheFirstOne)
{
    OpenMaskWidget fresh(&application, window.get());
    fresh.setTrack(track.get());
    fresh.setGeometry(mask->geometry());
    send(fresh, QEvent::MouseButtonPress, a, Qt::LeftButton, Qt::LeftButton);
    send(fresh, QEvent::MouseButtonRelease, b, Qt::LeftButton, Qt::NoButton);
    fresh.updateGeometry();
    const std::unique_ptr<QImage> image(fresh.getMaskImage());
    ASSERT_TRUE(image);
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    EXPECT_EQ(*image, one);
}

TEST_F(PendingStrokeTest, OnAMaskWithoutPixelsIsOnNoOtherMask)
{
    track->setWidthAndHeight(0.0F, 0.0F);
    mask->updateGeometry();
    pendingStroke(a, b);
    paint();
    EXPECT_TRUE(maskImage().isNull());
    track->setWidthAndHeight(400.0F, 200.0F);
    mask->updateGeometry();
    paint();
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(PendingStrokeTest, OnAMaskWithoutPixelsIsOnNoMaskThatComesBack)
{
    pendingStroke(a, b);
    track->setWidthAndHeight(0.0F, 0.0F);
    mask->updateGeometry();
    track->setWidthAndHeight(400.0F, 200.0F);
    pendingStroke({10, 20}, {60, 20}); // of the widget, which is now in the middle of the track
    mask->undo();
    EXPECT_TRUE(maskImage().isNull());
    mask->undo(); // the mask before the first stroke
    EXPECT_EQ(maskImage().size(), QSize(400, 200));
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(PendingStrokeTest, GoesWithTheWidget)
{
    pendingStroke(a, b);
    mask.reset();
    EXPECT_EQ(calls("enableGesture"), (std::vector<std::string>{"false", "true"}));
}
