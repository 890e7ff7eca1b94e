// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerStage.h"

void PlayerStage::showWindow(const QSize& size)
{
    window->resize(size);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
}

bool PlayerStage::reaches(int state)
{
    return QTest::qWaitFor([&] { return player().getState() == state; }, PatienceMs);
}

void PlayerStage::press(QWidget& widget, const QPoint& point, Qt::MouseButton button)
{
    QTest::mousePress(window->windowHandle(), button, {}, widget.mapTo(window.get(), point));
}

void PlayerStage::move(QWidget& widget, const QPoint& point)
{
    QTest::mouseMove(window->windowHandle(), widget.mapTo(window.get(), point));
}

void PlayerStage::release(QWidget& widget, const QPoint& point, Qt::MouseButton button)
{
    QTest::mouseRelease(window->windowHandle(), button, {}, widget.mapTo(window.get(), point));
}

void PlayerStage::drag(QWidget& widget, const QPoint& from, const QPoint& to)
{
    press(widget, from);
    move(widget, to);
    release(widget, to);
}
