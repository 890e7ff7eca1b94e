// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QString>
#include <QWidget>

#include <memory>

class QImage;
class QLabPlayerForm;

namespace qrvkp {
class RvKpApplication;
class RvKpPlayer;
} // namespace qrvkp

/// The framework's own view with a bar under it: the time and a button that plays and pauses. A
/// click while nothing plays or is paused goes to the beginning, where the next one plays.
///
/// The framework's application must outlive the widget. The view stands in the widget; a host that
/// wants it to live on takes it out before it destroys the widget.
class NORVEL_EXPORT QLabPlayer : public QWidget
{
    Q_OBJECT

public:
    /// Neither the application nor its player is owned.
    QLabPlayer(qrvkp::RvKpApplication* app, QWidget* parent);
    ~QLabPlayer() override;

    /// The framework's player; not owned.
    qrvkp::RvKpPlayer* getPlayer() const;
    /// The widget in which the canvas is shown, the framework's view.
    QWidget* getCanvasWidget() const;

    /// The icons of the button: `first` while nothing plays, `second` while it plays. Both are
    /// copied. To be called once: every call adds its icons to those before. Until then the button
    /// shows the style's own icons for playing and pausing.
    void setupPlayIconImage(QImage* first, QImage* second);

protected:
    void changeEvent(QEvent* event) override;

private:
    void playOrPause();
    void showTime();
    void showState(int state, const QString& text);
    void showStandardIcon();
    QString converTimeString(int milliseconds) const;

    const std::unique_ptr<QLabPlayerForm> ui;
    qrvkp::RvKpApplication* const m_application;
    qrvkp::RvKpPlayer* const m_player;
    bool m_hasStandardIcons = true; ///< until there are icons of the host's
};
