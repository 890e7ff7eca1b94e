// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ShownEditor.h"

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <QMouseEvent>
#include <QWindow>

using namespace qrvkp;

void ShownEditor::SetUp()
{
    application.getRvKpConfig()->setKpSize(1920.0F, 1080.0F);
    window = std::make_unique<QWidget>();
    window->resize(800, 600);
    view().setParent(window.get());
    view().setGeometry(0, 0, 800, 600);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    RvCallLog::start();
}

void ShownEditor::TearDown()
{
    application.getPlayer()->setTimeLine(nullptr);
}

void ShownEditor::press(const QPoint& point, Qt::MouseButton button)
{
    QTest::mousePress(window->windowHandle(), button, {}, point);
}

void ShownEditor::move(const QPoint& point)
{
    QTest::mouseMove(window->windowHandle(), point);
}

void ShownEditor::release(const QPoint& point, Qt::MouseButton button)
{
    QTest::mouseRelease(window->windowHandle(), button, {}, point);
}

void ShownEditor::drag(const QPoint& from, const QPoint& to, Qt::MouseButton button)
{
    press(from, button);
    move(to);
    release(to, button);
}

void ShownEditor::send(QWidget& widget, QEvent::Type type, const QPointF& point,
                       Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, point, widget.mapToGlobal(point.toPoint()), button, buttons, {});
    QCoreApplication::sendEvent(&widget, &event);
}

std::vector<std::string> ShownEditor::calls(const std::string& operation)
{
    const std::string beginning = "RvKpApplication::" + operation + "(";
    std::vector<std::string> found;
    for (const std::string& entry : RvCallLog::entries()) {
        if (entry.compare(0, beginning.size(), beginning) == 0)
            found.push_back(entry.substr(beginning.size(), entry.size() - beginning.size() - 1));
    }
    RvCallLog::start();
    return found;
}

FrameworkRef<RvSpriteTrack> ShownEditor::showPicture(const QImage& picture)
{
    const QString path = m_folder.filePath("picture.png");
    EXPECT_TRUE(picture.save(path));
    auto sprite = adopt(RvSpriteTrack::create(path.toStdString(), 0, 3000));
    EXPECT_TRUE(sprite);
    sprite->setPosition(application.getRvKpConfig()->getKpSizeWidth() / 2,
                        application.getRvKpConfig()->getKpSizeHeight() / 2);
    const auto group = adopt(RvKpGroup::create(3000));
    group->addTrack(sprite.get());
    const auto timeline = adopt(RvKpTimeLine::create());
    timeline->pushBackGroup(group.get());
    RvKpPlayer* player = application.getPlayer();
    player->setTimeLine(timeline.get());
    bool rendered = false;
    const auto connection =
        QObject::connect(player, &RvKpPlayer::sigPictureRendered, player,
                         [&rendered](const QImage& made) { rendered |= !made.isNull(); });
    player->prepareAsync();
    EXPECT_TRUE(QTest::qWaitFor([&] { return rendered; }, 20000));
    QObject::disconnect(connection);
    return sprite;
}

QImage ShownEditor::grabbed()
{
    return view().grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage ShownEditor::grabbedWindow()
{
    return window->grab().toImage().convertToFormat(QImage::Format_RGB32);
}
