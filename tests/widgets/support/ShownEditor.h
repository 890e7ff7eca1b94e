// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <support/FrameworkRef.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <QGraphicsView>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

/// An editor's window of 800 x 600 that the framework's view fills, with a canvas of 1920 x 1080:
/// at scale 1 the canvas is shown 800 x 450. Widgets of the library are put over the view as
/// children of the window. The mouse is that on the window, so that its events take the way of real
/// ones.
class ShownEditor : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    QGraphicsView& view() { return *application.getGraphicsView(); }

    void press(const QPoint& point, Qt::MouseButton button = Qt::LeftButton);
    void move(const QPoint& point);
    void release(const QPoint& point, Qt::MouseButton button = Qt::LeftButton);
    /// Pressed, moved at once to the other point and released there.
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton);
    /// Sends an event to a widget by itself, for what a window would not let through.
    static void send(QWidget& widget, QEvent::Type type, const QPointF& point,
                     Qt::MouseButton button, Qt::MouseButtons buttons);

    /// The calls of the framework since the last time, of one operation: "setCanvasPosition".
    static std::vector<std::string> calls(const std::string& operation);

    /// Gives the player a timeline with this picture as a sprite on the main line, which stands
    /// with its own size in the middle of the canvas, and gets it ready.
    FrameworkRef<qrvkp::RvSpriteTrack> showPicture(const QImage& picture);
    /// The view as it is seen.
    QImage grabbed();
    /// The window with everything that lies over the view.
    QImage grabbedWindow();

    qrvkp::RvKpApplication application;
    std::unique_ptr<QWidget> window;

private:
    QTemporaryDir m_folder;
};
