// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PlayerStage.h"

#include <norvel/widgets/player/QLabPlayer.h>

#include <support/FrameworkRef.h>

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

#include <stdexcept>
#include <string>
#include <vector>

/// A simple player in a window.
class SimplePlayerTest : public PlayerStage
{
protected:
    using Calls = std::vector<std::string>;

    SimplePlayerTest()
        : widget(new QLabPlayer(&application, window.get()))
    {
    }

    template <class Kind>
    Kind& named(const char* name)
    {
        Kind* const found = widget->findChild<Kind*>(name);
        if (!found)
            throw std::runtime_error(std::string("there is no ") + name);
        return *found;
    }
    QPushButton& button() { return named<QPushButton>("playButton"); }
    std::string time() { return named<QLabel>("timeLabel").text().toStdString(); }

    void show()
    {
        showWindow(widget->size());
        ASSERT_TRUE(QTest::qWaitFor([&] { return button().isVisible(); }, PatienceMs));
    }

    /// Gives the player a timeline of one group of this length.
    void give(long long duration)
    {
        const auto timeline = adopt(qrvkp::RvKpTimeLine::create());
        const auto group = adopt(qrvkp::RvKpGroup::create(duration));
        ASSERT_TRUE(timeline->pushBackGroup(group.get()));
        player().setTimeLine(timeline.get());
    }
    void prepare(long long duration)
    {
        give(duration);
        player().prepareAsync();
        ASSERT_TRUE(reaches(qrvkp::RvKpPlayerPrepared));
    }
    void play(long long duration)
    {
        prepare(duration);
        player().start();
        ASSERT_TRUE(reaches(qrvkp::RvKpPlayerPlaying));
    }

    /// What a click on the button does to the player.
    Calls clicked()
    {
        qrvkp::RvCallLog::start();
        QTest::mouseClick(&button(), Qt::LeftButton);
        qrvkp::RvCallLog::stop();
        return qrvkp::RvCallLog::entries();
    }

    /// The label at a position of a timeline of this length.
    std::string timeAt(long long position, long long duration)
    {
        give(duration);
        player().seekTo(position, true);
        return time();
    }

    QRgb iconColour() { return button().icon().pixmap(16, 16).toImage().pixel(8, 8) & RGB_MASK; }
    void setIcons(QRgb first, QRgb second)
    {
        QImage firstImage(16, 16, QImage::Format_RGB32);
        firstImage.fill(first);
        QImage secondImage(16, 16, QImage::Format_RGB32);
        secondImage.fill(second);
        widget->setupPlayIconImage(&firstImage, &secondImage);
    }

    static constexpr QRgb Red = 0x00ff0000;
    static constexpr QRgb Green = 0x0000ff00;
    static constexpr QRgb Blue = 0x000000ff;
    static constexpr QRgb White = 0x00ffffff;

    QPointer<QLabPlayer> widget;
    const Calls m_rewound{"RvKpPlayer::seekTo(0, true)"};
};
