// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/common/PointerDrag.h>

#include <rvkpcore/RvKpApplication.h>

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace norvel {

PointerDrag::PointerDrag(qrvkp::RvKpApplication* application, std::function<void()> interrupted)
    : m_application(application)
    , m_interrupted(std::move(interrupted))
{
}

PointerDrag::~PointerDrag()
{
    interrupt();
}

void PointerDrag::press(QWidget* receiver)
{
    m_inProgress = true;
    m_wasInterrupted = false;
    m_receiver = receiver;
    // Where a lost mouse goes is seen in the events of other widgets only.
    if (m_receiver)
        QCoreApplication::instance()->installEventFilter(this);
    if (m_application)
        m_application->enableGesture(false);
}

void PointerDrag::release()
{
    if (!m_wasInterrupted)
        stop();
}

void PointerDrag::interrupt()
{
    if (!m_inProgress)
        return;
    m_wasInterrupted = true;
    stop();
}

void PointerDrag::stop()
{
    m_inProgress = false;
    if (QCoreApplication* const application = QCoreApplication::instance())
        application->removeEventFilter(this);
    if (m_application)
        m_application->enableGesture(true);
}

bool PointerDrag::eventFilter(QObject* object, QEvent* event)
{
    if (m_inProgress && isInterruption(*object, *event)) {
        interrupt();
        m_interrupted();
    }
    return false;
}

bool PointerDrag::isInterruption(const QObject& object, const QEvent& event) const
{
    switch (event.type()) {
    case QEvent::EnabledChange: // disabled, for it was enabled when it got the press
    case QEvent::Hide:
    case QEvent::HideToParent:
    case QEvent::UngrabMouse:
    case QEvent::WindowBlocked:
        return &object == m_receiver;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        // Hosts may pass events on by hand: only those of the window system tell who has the mouse.
        return event.spontaneous() && isElsewhere(object);
    default:
        return false;
    }
}

bool PointerDrag::isElsewhere(const QObject& object) const
{
    if (!object.isWidgetType() || &object == m_receiver)
        return false;
    // A widget that is embedded in a graphics scene gets its events by way of the view.
    return !m_receiver || !m_receiver->window()->graphicsProxyWidget();
}

} // namespace norvel
