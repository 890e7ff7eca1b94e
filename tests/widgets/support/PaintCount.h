// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QTest>
#include <QWidget>

#include <functional>

/// Counts how often a widget is painted.
class PaintCount : public QObject
{
public:
    /// What is due for the widget is painted first, and not counted. The widget is not owned.
    explicit PaintCount(QWidget& widget)
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        widget.installEventFilter(this);
    }

    int count() const { return m_count; }

    /// Whether the widget is painted in consequence of this.
    bool isRaisedBy(const std::function<void()>& change)
    {
        const int before = m_count;
        change();
        return QTest::qWaitFor([&] { return m_count > before; });
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(object, event);
    }

private:
    int m_count = 0;
};
