// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/support/OwnMethods.h"

#include <rvkpcore/RvKpApplication.h>

#include <gtest/gtest.h>

#include <QPoint>
#include <QTest>
#include <QWidget>

#include <memory>

/// A host with an application and a window, in which the widget under test is shown as a child that
/// no layout resizes. The mouse moves on the window: its events take the way of real ones.
class PlayerStage : public testing::Test
{
protected:
    /// What a loaded machine may need for anything.
    static constexpr int PatienceMs = 20000;

    /// Shows the window in this size, with all that is in it.
    void showWindow(const QSize& size);

    qrvkp::RvKpPlayer& player() { return *application.getPlayer(); }
    bool reaches(int state);

    // The mouse, at a point of a widget.
    void press(QWidget& widget, const QPoint& point, Qt::MouseButton button = Qt::LeftButton);
    void move(QWidget& widget, const QPoint& point);
    void release(QWidget& widget, const QPoint& point, Qt::MouseButton button = Qt::LeftButton);
    /// Presses, moves in one step and releases.
    void drag(QWidget& widget, const QPoint& from, const QPoint& to);

    qrvkp::RvKpApplication application;
    std::unique_ptr<QWidget> window = std::make_unique<QWidget>();
};
