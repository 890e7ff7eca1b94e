// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"

#include <QDialog>
#include <QMouseEvent>
#include <QWindow>

#include <functional>

namespace {

using Calls = std::vector<std::string>;

/// A stroke from (50, 50) to (100, 50) whose button is still held, with the mouse of the window.
class InterruptedStrokeTest : public MaskedTrack
{
protected:
    void beginStroke()
    {
        calls("");
        press({250, 250});
        move({300, 250});
        ASSERT_EQ(calls("enableGesture"), Calls{"false"});
    }

    void expectInterruptedBy(const std::function<void()>& interrupt)
    {
        beginStroke();
        interrupt();
        expectEnded();
    }

    /// The stroke is in the mask as far as it came, and its rest is not.
    void expectEnded()
    {
        EXPECT_EQ(calls("enableGesture"), Calls{"true"});
        const QImage before = maskImage();
        EXPECT_EQ(before.pixelColor(75, 50), QColor(Qt::white));
        EXPECT_EQ(before.pixelColor(75, 80), QColor(Qt::black));
        move({300, 350});
        send(*mask, QEvent::MouseMove, {100, 150}, Qt::NoButton, Qt::LeftButton);
        release({300, 350});
        send(*mask, QEvent::MouseButtonRelease, {100, 150}, Qt::LeftButton, Qt::NoButton);
        paint();
        EXPECT_EQ(maskImage(), before);
        EXPECT_EQ(calls("enableGesture"), Calls{});
    }

    /// The next stroke is one of its own, and both can be undone.
    void expectUsable()
    {
        const QImage before = maskImage();
        stroke({200, 150}, {300, 150});
        EXPECT_EQ(maskImage().pixelColor(250, 150), QColor(Qt::white));
        EXPECT_EQ(maskImage().pixelColor(150, 100), QColor(Qt::black));
        EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
        mask->undo();
        EXPECT_EQ(maskImage(), before);
        mask->undo();
        EXPECT_EQ(maskedPixels(), 0);
    }
};

} // namespace

TEST_F(InterruptedStrokeTest, HidingTheWidgetEndsTheStroke)
{
    expectInterruptedBy([this] { mask->hide(); });
    mask->show();
    expectUsable();
}

TEST_F(InterruptedStrokeTest, HidingTheWindowEndsTheStroke)
{
    expectInterruptedBy([this] { window->hide(); });
    window->show();
    expectUsable();
}

TEST_F(InterruptedStrokeTest, DisablingTheWidgetEndsTheStroke)
{
    expectInterruptedBy([this] { mask->setEnabled(false); });
    mask->setEnabled(true);
    expectUsable();
}

TEST_F(InterruptedStrokeTest, DisablingTheWindowForAMomentEndsTheStroke)
{
    expectInterruptedBy([this] {
        window->setEnabled(false);
        window->setEnabled(true);
    });
    expectUsable();
}

TEST_F(InterruptedStrokeTest, AModalWindowEndsTheStroke)
{
    beginStroke();
    QDialog dialog(window.get());
    dialog.open();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    QTest::mouseRelease(dialog.windowHandle(), Qt::LeftButton, {}, {5, 5});
    dialog.close();
    EXPECT_EQ(maskImage().pixelColor(75, 50), QColor(Qt::white));
    expectUsable();
}

TEST_F(InterruptedStrokeTest, AMouseThatAnotherWidgetGetsEndsTheStroke)
{
    QWidget other;
    expectInterruptedBy([&] {
        QMouseEvent event(QEvent::MouseButtonRelease, {1, 1}, Qt::LeftButton, Qt::NoButton, {});
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::instance()->notify(&other, &event);
    });
    expectUsable();
}

TEST_F(InterruptedStrokeTest, AWidgetThatGoesInAStrokeGivesTheGesturesBack)
{
    beginStroke();
    mask.reset();
    EXPECT_EQ(calls("enableGesture"), Calls{"true"});
    release({300, 250});
    const QPointF before = application.getCanvasPosition();
    drag({300, 250}, {307, 253});
    EXPECT_EQ(application.getCanvasPosition(), before + QPointF(7, -3));
}

TEST_F(InterruptedStrokeTest, ADragOfAnotherButtonEndsToo)
{
    press({250, 250}, Qt::RightButton);
    mask->hide();
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
    release({250, 250}, Qt::RightButton);
    EXPECT_EQ(maskedPixels(), 0);
}

TEST_F(InterruptedStrokeTest, AStrokeGoesOnAfterTheReleaseOfAnotherButton)
{
    send(*mask, QEvent::MouseButtonPress, {50, 50}, Qt::LeftButton, Qt::LeftButton);
    send(*mask, QEvent::MouseButtonPress, {50, 50}, Qt::RightButton,
         Qt::LeftButton | Qt::RightButton);
    send(*mask, QEvent::MouseButtonRelease, {50, 50}, Qt::RightButton, Qt::LeftButton);
    send(*mask, QEvent::MouseMove, {100, 50}, Qt::NoButton, Qt::LeftButton);
    send(*mask, QEvent::MouseButtonRelease, {150, 50}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "false", "true", "true"}));
    EXPECT_EQ(maskImage().pixelColor(75, 50), QColor(Qt::white));
    EXPECT_EQ(maskImage().pixelColor(125, 50), QColor(Qt::white));
}

TEST_F(InterruptedStrokeTest, WithoutAStrokeTheHostsGesturesStayOff)
{
    stroke({50, 50}, {100, 50});
    application.enableGesture(false);
    calls("");
    mask->hide();
    mask->show();
    window->setEnabled(false);
    window->setEnabled(true);
    mask.reset();
    EXPECT_EQ(calls("enableGesture"), Calls{});
}

TEST_F(InterruptedStrokeTest, AStrokeSwitchesGesturesOnThatTheHostHasOff)
{
    application.enableGesture(false);
    calls("");
    stroke({50, 50}, {100, 50});
    EXPECT_EQ(calls("enableGesture"), (Calls{"false", "true"}));
}
