// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

/// A drag with any mouse button, during which the gestures of the framework's view are off.
///
/// A press begins it, a release ends it. It is interrupted when its release may never come: the
/// widget that got the press is hidden, disabled or blocked by a modal window, or the mouse events
/// go to another widget. A window that merely becomes inactive keeps the mouse and the drag.
class PointerDrag : public QObject
{
public:
    /// Calls `interrupted` when the drag has been interrupted by what happened to its widget. The
    /// application is not owned; without one there are no gestures to switch.
    PointerDrag(qrvkp::RvKpApplication* application, std::function<void()> interrupted);
    /// Switches the gestures on if the drag is in progress.
    ~PointerDrag() override;

    bool isInProgress() const { return m_inProgress; }

    /// Begins the drag, or goes on with it when another button is pressed, and switches the
    /// gestures off. `receiver` is the widget that got the press; null watches no widget.
    void press(QWidget* receiver);
    /// Ends the drag and switches the gestures on. The release of an interrupted drag does nothing:
    /// the host may have switched the gestures meanwhile.
    void release();
    /// Ends a drag in progress without its release and switches the gestures on.
    void interrupt();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void stop();
    bool isInterruption(const QObject& object, const QEvent& event) const;
    bool isElsewhere(const QObject& object) const;

    qrvkp::RvKpApplication* const m_application;
    const std::function<void()> m_interrupted;
    QPointer<QWidget> m_receiver;
    bool m_inProgress = false;
    bool m_wasInterrupted = false; ///< since the last press
};

} // namespace norvel
