// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/CoveredPicture.h"
#include "widgets/support/PaintCount.h"

#include <norvel/widgets/mask/LabTouchMaskView.h>

#include <QMetaMethod>
#include <QSignalSpy>

namespace {

using Type = LabTouchMaskView::LabPathChangeType;

/// A view over a picture of 400 x 300 in the editor's window, with a preview of 20 x 11.
class TouchMaskViewTest : public CoveredPicture<LabTouchMaskView>
{
protected:
    void SetUp() override
    {
        CoveredPicture::SetUp();
        if (HasFatalFailure())
            return;
        touch = covering;
        touch->touchImage = QImage(20, 11, QImage::Format_ARGB32);
        touch->touchImage.fill(QColor(255, 0, 0, 255));
    }

    /// The preview covers just this rectangle.
    void expectPreview(const QRect& rect) const
    {
        QImage expected(400, 300, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        for (int y = 0; y < 300; ++y) {
            for (int x = 0; x < 400; ++x) {
                if (rect.contains(x, y))
                    expected.setPixelColor(x, y, Qt::red);
            }
        }
        EXPECT_EQ(shown(), expected) << rect.x() << ", " << rect.y();
    }

    LabTouchMaskView* touch = nullptr; ///< belongs to the picture
};

} // namespace

TEST_F(TouchMaskViewTest, HasOneSignalAndNoSlots)
{
    const QMetaObject& meta = LabTouchMaskView::staticMetaObject;
    EXPECT_STREQ(meta.className(), "LabTouchMaskView");
    ASSERT_EQ(meta.methodCount(), QWidget::staticMetaObject.methodCount() + 1);
    const QMetaMethod signal = meta.method(meta.methodOffset());
    EXPECT_EQ(signal.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(signal.methodSignature(),
              "maskMouseEvent(LabTouchMaskView::LabPathChangeType,QPoint)");
    EXPECT_EQ(LabTouchMaskView::LabPathBegin, 0);
    EXPECT_EQ(LabTouchMaskView::LabPathMove, 1);
    EXPECT_EQ(LabTouchMaskView::LabPathEnd, 2);
}

TEST_F(TouchMaskViewTest, TakesTheSizeOfItsParentWhenItPaints)
{
    EXPECT_EQ(touch->size(), QSize(400, 300));
    picture().resize(123, 77);
    EXPECT_EQ(touch->size(), QSize(400, 300));
    touch->grab();
    EXPECT_EQ(touch->size(), QSize(123, 77));
    EXPECT_EQ(touch->minimumSize(), touch->maximumSize());
}

TEST_F(TouchMaskViewTest, ReportsPressMoveAndReleaseOfTheLeftButton)
{
    QSignalSpy events(touch, &LabTouchMaskView::maskMouseEvent);
    press({100, 100});
    move({120, 110});
    release({120, 110});
    ASSERT_EQ(events.count(), 3);
    const std::vector<std::pair<Type, QPoint>> expected{
        {LabTouchMaskView::LabPathBegin, {100, 100}},
        {LabTouchMaskView::LabPathMove, {120, 110}},
        {LabTouchMaskView::LabPathEnd, {120, 110}}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(events[i][0].value<Type>(), expected[static_cast<std::size_t>(i)].first);
        EXPECT_EQ(events[i][1].toPoint(), expected[static_cast<std::size_t>(i)].second);
    }
}

TEST_F(TouchMaskViewTest, OtherButtonsMoveThePreviewButReportNothing)
{
    QSignalSpy events(touch, &LabTouchMaskView::maskMouseEvent);
    send(*touch, QEvent::MouseButtonPress, {100, 100}, Qt::RightButton, Qt::RightButton);
    expectPreview({90, 95, 20, 11});
    send(*touch, QEvent::MouseMove, {110, 100}, Qt::NoButton, Qt::RightButton);
    expectPreview({100, 95, 20, 11});
    send(*touch, QEvent::MouseMove, {120, 100}, Qt::NoButton, Qt::LeftButton | Qt::RightButton);
    expectPreview({110, 95, 20, 11});
    send(*touch, QEvent::MouseButtonRelease, {130, 100}, Qt::RightButton, Qt::NoButton);
    expectPreview({120, 95, 20, 11});
    EXPECT_EQ(events.count(), 0);
}

TEST_F(TouchMaskViewTest, ThePreviewHasItsMiddleUnderThePointer)
{
    // Whole halves: 20 / 2 = 10 and 11 / 2 = 5.
    expectPreview({-10, -5, 20, 11}); // the pointer was nowhere yet
    press({100, 100});
    expectPreview({90, 95, 20, 11});
    move({300, 200});
    expectPreview({290, 195, 20, 11});
    release({5, 3});
    expectPreview({-5, -2, 20, 11});
}

TEST_F(TouchMaskViewTest, WithoutAPreviewNothingIsShown)
{
    touch->touchImage = QImage();
    press({100, 100});
    expectPreview({});
    release({100, 100});
}

TEST_F(TouchMaskViewTest, ThePreviewIsBlended)
{
    touch->touchImage.fill(QColor(0, 0, 255, 128));
    press({100, 100});
    EXPECT_EQ(shown().pixelColor(100, 100), QColor(0, 0, 255, 128));
    release({100, 100});
}

TEST_F(TouchMaskViewTest, MoveAndReleaseRepaintAndAPressDoesNot)
{
    PaintCount paints(*touch);
    send(*touch, QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton, Qt::LeftButton);
    send(*touch, QEvent::MouseMove, {110, 100}, Qt::NoButton, Qt::RightButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.count(), 0);
    send(*touch, QEvent::MouseMove, {110, 100}, Qt::NoButton, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() == 1; }));
    send(*touch, QEvent::MouseButtonRelease, {110, 100}, Qt::LeftButton, Qt::NoButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count() == 2; }));
}
