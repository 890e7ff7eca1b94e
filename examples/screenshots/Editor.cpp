// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Editor.h"

#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <cmath>

using namespace qrvkp;

namespace {

constexpr int pictureLimitMs = 20000;
constexpr long long durationMs = 3000;

void send(QWidget& widget, QEvent::Type type, const QPoint& point, Qt::MouseButton button,
          Qt::MouseButtons buttons)
{
    QMouseEvent event(type, point, widget.mapToGlobal(point), button, buttons, {});
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

Editor::Editor()
{
    m_application.getRvKpConfig()->setKpSize(1920.0F, 1080.0F);
    m_window.resize(800, 500);
    QGraphicsView* view = m_application.getGraphicsView();
    view->setParent(&m_window);
    view->setGeometry(m_window.rect());
    m_window.show();
}

Editor::~Editor()
{
    m_application.getPlayer()->setTimeLine(nullptr);
}

QWidget& Editor::viewport()
{
    return *m_application.getGraphicsView()->viewport();
}

RvSpriteTrack* Editor::addPicture(const QImage& picture)
{
    const QString path = m_folder.filePath(QStringLiteral("picture.png"));
    if (!picture.save(path))
        return nullptr;
    m_sprite = adopt(RvSpriteTrack::create(path.toStdString(), 0, durationMs));
    if (!m_sprite)
        return nullptr;
    m_sprite->setPosition(960.0F, 540.0F);
    const auto group = adopt(RvKpGroup::create(durationMs));
    group->addTrack(m_sprite.get());
    const auto timeline = adopt(RvKpTimeLine::create());
    timeline->pushBackGroup(group.get());
    m_application.getPlayer()->setTimeLine(timeline.get());
    return m_sprite.get();
}

QImage Editor::grab()
{
    // A picture of another size is one of an earlier zoom.
    const double shown = m_application.getCanvasShowDimension().width() *
                         static_cast<double>(m_application.getCanvasScale());
    const double wanted = std::min(std::round(shown), 1920.0);
    bool arrived = false;
    QEventLoop loop;
    QObject::connect(m_application.getPlayer(), &RvKpPlayer::sigPictureRendered, &loop,
                     [&](const QImage& picture) {
                         arrived |= std::abs(picture.width() - wanted) <= 1.0;
                         if (arrived)
                             loop.quit();
                     });
    QTimer::singleShot(pictureLimitMs, &loop, &QEventLoop::quit);
    m_application.getPlayer()->prepareAsync();
    loop.exec();
    return arrived ? m_window.grab().toImage() : QImage();
}

void stroke(QWidget& widget, const std::vector<QPoint>& points)
{
    send(widget, QEvent::MouseButtonPress, points.front(), Qt::LeftButton, Qt::LeftButton);
    for (const QPoint& point : points)
        send(widget, QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton);
    send(widget, QEvent::MouseButtonRelease, points.back(), Qt::LeftButton, Qt::NoButton);
}
