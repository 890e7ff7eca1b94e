// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ContextTranslator.h"
#include "SimplePlayerFixture.h"

#include "widgets/support/DebugLines.h"

#include <norvel/widgets/player/QLabPlayer.h>

#include <rvkpcore/RvCallLog.h>

#include <QGraphicsView>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QProxyStyle>
#include <QPushButton>

using namespace qrvkp;

TEST_F(SimplePlayerTest, HasItsFormsSizeNameAndTitle)
{
    EXPECT_EQ(widget->objectName(), "QLabPlayer");
    EXPECT_EQ(widget->size(), QSize(429, 537));
    EXPECT_EQ(widget->windowTitle(), "Form");
    EXPECT_EQ(time(), "00/00");
    EXPECT_EQ(button().text(), "");
}

TEST_F(SimplePlayerTest, HasTheViewOverItsBar)
{
    auto& column = named<QVBoxLayout>("verticalLayout_2");
    EXPECT_EQ(widget->layout(), &column);
    EXPECT_EQ(column.spacing(), 0);
    EXPECT_EQ(column.contentsMargins(), QMargins(0, 0, 0, 0));
    auto& playBack = named<QWidget>("playBackWidget");
    auto& bar = named<QWidget>("widget");
    ASSERT_EQ(column.count(), 2);
    EXPECT_EQ(column.itemAt(0)->widget(), &playBack);
    EXPECT_EQ(column.itemAt(1)->widget(), &bar);
    EXPECT_EQ(playBack.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(playBack.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(playBack.sizePolicy().horizontalStretch(), 0);
    EXPECT_EQ(playBack.sizePolicy().verticalStretch(), 0);
    EXPECT_EQ(playBack.styleSheet(), "");
    EXPECT_EQ(bar.maximumSize(), QSize(16777215, 40));
}

TEST_F(SimplePlayerTest, HasTheTimeTheButtonAndAFillerInItsBar)
{
    auto& row = named<QHBoxLayout>("horizontalLayout_2");
    EXPECT_EQ(named<QWidget>("widget").layout(), &row);
    QWidget plain(window.get());
    const int defaultBottom = QHBoxLayout(&plain).contentsMargins().bottom();
    EXPECT_EQ(row.contentsMargins(), QMargins(12, 12, 0, defaultBottom));
    auto& label = named<QLabel>("timeLabel");
    ASSERT_EQ(row.count(), 3);
    EXPECT_EQ(row.itemAt(0)->widget(), &label);
    EXPECT_EQ(row.itemAt(1)->widget(), &button());
    EXPECT_EQ(row.itemAt(2)->widget(), &named<QWidget>("widget_2"));
    EXPECT_EQ(label.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    EXPECT_EQ(label.sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    EXPECT_EQ(label.styleSheet(), "color:rgb(187,187,187)");
    EXPECT_EQ(button().sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    EXPECT_EQ(button().sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    EXPECT_EQ(button().minimumSize(), QSize(60, 0));
    EXPECT_EQ(button().maximumSize(), QSize(60, 60));
    EXPECT_EQ(button().styleSheet(), "border:0;color:gray;");
    EXPECT_FALSE(button().isCheckable()) << "until there are icons of the host's";
}

TEST_F(SimplePlayerTest, TranslatesItsTextsInItsOwnContext)
{
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const QLabPlayer translated(&application, nullptr);
    QCoreApplication::removeTranslator(&translator);
    EXPECT_EQ(translated.windowTitle(), "QLabPlayer:Form");
    EXPECT_EQ(translated.findChild<QLabel*>("timeLabel")->text(), "QLabPlayer:00/00");
}

TEST_F(SimplePlayerTest, HasNoSignalsAndSlotsOfItsOwn)
{
    EXPECT_STREQ(QLabPlayer::staticMetaObject.className(), "QLabPlayer");
    EXPECT_TRUE(ownMethods(QLabPlayer::staticMetaObject).empty());
}

TEST_F(SimplePlayerTest, ShowsTheFrameworksViewInItself)
{
    QGraphicsView* const view = application.getGraphicsView();
    EXPECT_EQ(widget->getPlayer(), &player());
    EXPECT_EQ(widget->getCanvasWidget(), view);
    auto& playBack = named<QWidget>("playBackWidget");
    EXPECT_EQ(view->parentWidget(), &playBack);
    ASSERT_TRUE(playBack.layout());
    EXPECT_TRUE(qobject_cast<QHBoxLayout*>(playBack.layout()));
    EXPECT_EQ(playBack.layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    show();
    EXPECT_EQ(view->size(), playBack.size());
    EXPECT_EQ(playBack.height() + named<QWidget>("widget").height(), widget->height());
}

TEST_F(SimplePlayerTest, AsksForTheViewAnew)
{
    const QPointer<QWidget> before = widget->getCanvasWidget();
    delete before;
    QWidget* const after = widget->getCanvasWidget();
    ASSERT_TRUE(after);
    EXPECT_EQ(after, application.getGraphicsView());
}

TEST_F(SimplePlayerTest, AClickPausesWhatPlays)
{
    show();
    play(60000);
    EXPECT_EQ(clicked(), Calls{"RvKpPlayer::pause()"});
    EXPECT_TRUE(player().isPaused());
}

TEST_F(SimplePlayerTest, AClickPlaysWhatIsPaused)
{
    show();
    play(60000);
    player().pause();
    EXPECT_EQ(clicked(), Calls{"RvKpPlayer::start()"});
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(SimplePlayerTest, TheSecondClickPlaysWhatIsPreparedStoppedOrAtItsEnd)
{
    show();
    setIcons(Red, Green);
    const auto expectSecondClickPlays = [this](const char* state) {
        SCOPED_TRACE(state);
        EXPECT_EQ(clicked(), m_rewound);
        ASSERT_TRUE(reaches(RvKpPlayerPaused));
        EXPECT_EQ(player().getCurrentPosition(), 0);
        EXPECT_EQ(iconColour(), Red);
        EXPECT_EQ(clicked(), Calls{"RvKpPlayer::start()"});
        EXPECT_TRUE(player().isPlaying());
        EXPECT_EQ(iconColour(), Green);
    };
    prepare(60000);
    expectSecondClickPlays("prepared");
    player().stop();
    expectSecondClickPlays("stopped");
    player().seekTo(60000, true);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    expectSecondClickPlays("completed");
}

TEST_F(SimplePlayerTest, AClickOnlyRewindsAPlayerThatNeitherPlaysNorPauses)
{
    show();
    EXPECT_EQ(clicked(), m_rewound) << "idle, without a timeline";
    give(60000);
    player().prepareAsync();
    ASSERT_EQ(player().getState(), RvKpPlayerPreparing);
    // The click itself runs the event loop, that is: sent without one.
    RvCallLog::start();
    button().click();
    EXPECT_EQ(RvCallLog::entries(), m_rewound) << "preparing";
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_EQ(clicked(), m_rewound) << "prepared";
    EXPECT_EQ(player().getCurrentPosition(), 0);
    EXPECT_FALSE(player().isPlaying());
    player().stop();
    EXPECT_EQ(clicked(), m_rewound) << "stopped";
    EXPECT_FALSE(player().isPlaying());
    play(60000);
    player().seekTo(60000, true);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(clicked(), m_rewound) << "completed";
    EXPECT_EQ(player().getCurrentPosition(), 0);
    EXPECT_FALSE(player().isPlaying());
}

TEST_F(SimplePlayerTest, ShowsThePositionAndTheLength)
{
    EXPECT_EQ(timeAt(5000, 90000), "00:00:05/00:01:30");
    EXPECT_EQ(timeAt(5999, 90999), "00:00:05/00:01:30") << "cut off, not rounded";
    EXPECT_EQ(timeAt(3599999, 3600000), "00:59:59/01:00:00");
    EXPECT_EQ(timeAt(0, 0), "00:00:00/00:00:00");
}

TEST_F(SimplePlayerTest, ADayAndMoreIsNoTimeOfDay)
{
    EXPECT_EQ(timeAt(86399999, 86400000), "23:59:59/");
    EXPECT_EQ(timeAt(86400000, 86400000), "/");
    EXPECT_EQ(timeAt(1000, 59LL * 3600000), "00:00:01/");
}

TEST_F(SimplePlayerTest, BeginsAnewAfterSixtyHours)
{
    EXPECT_EQ(timeAt(1000, 60LL * 3600000 - 1), "00:00:01/");
    EXPECT_EQ(timeAt(60LL * 3600000, 61LL * 3600000 + 62000), "00:00:00/01:01:02");
}

TEST_F(SimplePlayerTest, TimesBeyondAllBoundsAreNoText)
{
    EXPECT_EQ(timeAt(0, 1LL << 40), "00:00:00/");
    EXPECT_EQ(timeAt(1LL << 62, 1LL << 62), "/");
    EXPECT_EQ(timeAt(-1500, 90000), "00:00:00/00:01:30") << "the player keeps to its timeline";
    EXPECT_EQ(timeAt(0, -1500), "00:00:00/00:00:00");
}

TEST_F(SimplePlayerTest, FollowsWhatPlays)
{
    play(60000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return time() == "00:00:01/00:01:00"; }, PatienceMs))
        << time();
    // Whatever the signal says, the label asks the player.
    player().pause();
    player().seekTo(7000, true);
    emit player().sigRenderTimeChanged(55000);
    EXPECT_EQ(time(), "00:00:07/00:01:00");
}

TEST_F(SimplePlayerTest, ShowsTheTimeOnceItIsPreparedAndAfterEveryEdit)
{
    prepare(14000);
    const auto shows = [this](const std::string& text) {
        return QTest::qWaitFor([&] { return time() == text; }, PatienceMs);
    };
    EXPECT_TRUE(shows("00:00:00/00:00:14")) << time();
    const auto timeline = adopt(player().getTimeLine());
    const auto group = std::move(adopt(timeline->getGroups()).front());
    group->setDuration(20000);
    EXPECT_TRUE(shows("00:00:00/00:00:20")) << time();
    player().seekTo(17000, true);
    EXPECT_TRUE(shows("00:00:17/00:00:20")) << time();
    group->setDuration(9000);
    EXPECT_TRUE(shows("00:00:09/00:00:09")) << time();
    player().stop();
    EXPECT_TRUE(shows("00:00:00/00:00:09")) << time();
    player().setTimeLine(nullptr);
    EXPECT_EQ(time(), "00:00:00/00:00:00");
}

TEST_F(SimplePlayerTest, ShowsTheStylesIconsUntilThereAreOthers)
{
    const auto standard = [this](QStyle::StandardPixmap icon) {
        return widget->style()->standardIcon(icon).pixmap(16, 16).toImage();
    };
    const auto shown = [this] { return button().icon().pixmap(16, 16).toImage(); };
    const QImage playIcon = standard(QStyle::SP_MediaPlay);
    const QImage pauseIcon = standard(QStyle::SP_MediaPause);
    ASSERT_FALSE(playIcon.isNull());
    ASSERT_NE(playIcon, pauseIcon);
    EXPECT_EQ(shown(), playIcon) << "idle";
    play(60000);
    EXPECT_EQ(shown(), pauseIcon);
    player().pause();
    EXPECT_EQ(shown(), playIcon) << "paused";
    player().start();
    EXPECT_EQ(shown(), pauseIcon);
    player().stop();
    EXPECT_EQ(shown(), playIcon) << "stopped";
    play(100);
    ASSERT_TRUE(reaches(RvKpPlayerCompleted));
    EXPECT_EQ(shown(), playIcon) << "completed";
    setIcons(Red, Green);
    play(60000);
    EXPECT_EQ(iconColour(), Green) << "no more of the style's";
}

TEST_F(SimplePlayerTest, ShowsThePauseIconOfAPlayerThatPlaysAlready)
{
    play(60000);
    const QLabPlayer late(&application, nullptr);
    const QIcon pause = late.style()->standardIcon(QStyle::SP_MediaPause);
    EXPECT_EQ(late.findChild<QPushButton*>("playButton")->icon().pixmap(16, 16).toImage(),
              pause.pixmap(16, 16).toImage());
}

namespace {

/// A style whose media icons are of one colour.
class ColouredStyle : public QProxyStyle
{
public:
    QIcon standardIcon(StandardPixmap, const QStyleOption*, const QWidget*) const override
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::blue);
        return QIcon(pixmap);
    }
};

} // namespace

TEST_F(SimplePlayerTest, ShowsTheIconsOfANewStyle)
{
    ColouredStyle style;
    widget->setStyle(&style);
    EXPECT_EQ(iconColour(), Blue);
    setIcons(Red, Green);
    ColouredStyle another;
    widget->setStyle(&another);
    EXPECT_EQ(iconColour(), Red) << "the host's stay";
    delete widget;
}

TEST_F(SimplePlayerTest, ShowsTheSecondIconWhileItPlaysAndTheFirstOneElse)
{
    setIcons(Red, Green);
    EXPECT_TRUE(button().isCheckable());
    EXPECT_FALSE(button().isChecked());
    EXPECT_EQ(iconColour(), Red);
    play(60000);
    EXPECT_TRUE(button().isChecked());
    EXPECT_EQ(iconColour(), Green);
    player().pause();
    EXPECT_FALSE(button().isChecked());
    EXPECT_EQ(iconColour(), Red);
    player().start();
    EXPECT_EQ(iconColour(), Green);
    player().stop();
    EXPECT_EQ(iconColour(), Red);
}

TEST_F(SimplePlayerTest, OnlyFourStatesChangeTheButton)
{
    setIcons(Red, Green);
    for (int state = -1; state <= 10; ++state) {
        for (const bool before : {false, true}) {
            button().setChecked(before);
            emit player().sigStateChanged(state, "any");
            const bool expected = state == 4 || (before && (state < 5 || state > 7));
            EXPECT_EQ(button().isChecked(), expected) << state << " " << before;
            EXPECT_EQ(iconColour(), expected ? Green : Red) << state << " " << before;
        }
    }
}

TEST_F(SimplePlayerTest, AClickTogglesTheButtonUntilTheStateCorrectsIt)
{
    show();
    setIcons(Red, Green);
    clicked();
    EXPECT_EQ(iconColour(), Green) << "idle: there is no state to correct it";
    play(60000);
    clicked();
    EXPECT_EQ(iconColour(), Red);
    clicked();
    EXPECT_EQ(iconColour(), Green);
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(SimplePlayerTest, TakesNewIcons)
{
    setIcons(Red, Green);
    setIcons(Blue, White);
    EXPECT_EQ(iconColour(), Blue);
    button().setChecked(true);
    EXPECT_EQ(iconColour(), White);
    button().setChecked(false);
    EXPECT_EQ(iconColour(), Blue);
}

TEST_F(SimplePlayerTest, TakesMissingIconsAsNone)
{
    widget->setupPlayIconImage(nullptr, nullptr);
    EXPECT_TRUE(button().icon().isNull());
    button().setChecked(true);
    EXPECT_TRUE(button().icon().isNull());
    QImage null;
    widget->setupPlayIconImage(&null, nullptr);
    button().setChecked(false);
    EXPECT_TRUE(button().icon().isNull());
}

TEST_F(SimplePlayerTest, TellsEveryState)
{
    DebugLines lines;
    emit player().sigStateChanged(4, "playing");
    emit player().sigStateChanged(42, "what");
    EXPECT_EQ(lines.take(),
              (QStringList{"current status is: \"playing\" 4", "current status is: \"what\" 42"}));
}

TEST_F(SimplePlayerTest, MayGoWhileItPlays)
{
    show();
    play(60000);
    const QPointer<QWidget> view = widget->getCanvasWidget();
    delete widget;
    EXPECT_TRUE(player().isPlaying());
    const long long position = player().getCurrentPosition();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player().getCurrentPosition() > position + 100; },
                                PatienceMs));
    player().pause();
    EXPECT_TRUE(view.isNull()) << "it stood in the widget";
    EXPECT_TRUE(application.getGraphicsView());
}
