// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <support/FrameworkRef.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QImage>
#include <QTemporaryDir>
#include <QWidget>

#include <vector>

/// A small editor: a window of 800 x 500 with the framework's view, whose canvas of 1920 x 1080
/// shows one picture.
class Editor
{
public:
    Editor();
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    qrvkp::RvKpApplication& application() { return m_application; }
    QWidget& window() { return m_window; }
    /// What the mouse meets where no widget lies over the view.
    QWidget& viewport();

    /// Puts the picture on the canvas, in its middle. Null when it could not be written or read.
    qrvkp::RvSpriteTrack* addPicture(const QImage& picture);
    /// Waits for the player's picture of the canvas as it is now, and gives the window as it is
    /// seen; null when no picture came.
    QImage grab();

private:
    qrvkp::RvKpApplication m_application;
    QTemporaryDir m_folder;
    FrameworkRef<qrvkp::RvSpriteTrack> m_sprite;
    QWidget m_window;
};

/// Draws with the left button through these points of the widget.
void stroke(QWidget& widget, const std::vector<QPoint>& points);
