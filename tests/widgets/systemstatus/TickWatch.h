// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

/// Counts the ticks of timers of one second in the thread of the user interface.
class TickWatch : public QObject
{
public:
    TickWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* const timer = qobject_cast<QTimer*>(object);
        if (timer && event->type() == QEvent::Timer && timer->interval() == 1000) {
            ++ticks;
            last = timer;
        }
        return false;
    }

    int ticks = 0;
    QPointer<QTimer> last; ///< the timer that ticked last
};
