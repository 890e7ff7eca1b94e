// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ComparePlayerFixture.h"
#include "ContextTranslator.h"
#include "PlayerMedia.h"

#include "widgets/support/DebugLines.h"

#include <norvel/trace/RvEditorTrace.h>
#include <norvel/widgets/player/LabCompareLayout.h>
#include <norvel/widgets/player/LabCompareMaskView.h>
#include <norvel/widgets/player/QLabPlayer.h>

#include <support/TestEnvironment.h>

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvFault.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>

using namespace qrvkp;

TEST_F(ComparePlayerTest, HasItsFormsSizeNameAndTitle)
{
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const QLabComparePlayer translated(&application, nullptr, false);
    QCoreApplication::removeTranslator(&translator);
    EXPECT_EQ(translated.windowTitle(), "QLabComparePlayer:Form");
    const QLabComparePlayer fresh(&application, nullptr, false);
    EXPECT_EQ(fresh.objectName(), "QLabComparePlayer");
    EXPECT_EQ(fresh.size(), QSize(600, 500));
    EXPECT_EQ(fresh.minimumSize(), QSize(0, 0));
    EXPECT_EQ(fresh.windowTitle(), "Form");
    EXPECT_EQ(fresh.getShowType(), QLabComparePlayer::QLabShowSplit);
    EXPECT_EQ(fresh.getVideoTrackSize(), QSizeF());
}

TEST_F(ComparePlayerTest, HasNoSignalsAndSlotsOfItsOwn)
{
    EXPECT_STREQ(QLabComparePlayer::staticMetaObject.className(), "QLabComparePlayer");
    EXPECT_TRUE(ownMethods(QLabComparePlayer::staticMetaObject).empty());
}

TEST_F(ComparePlayerTest, ShowsTheFrameworksViewInItselfAndTheMaskViewOverIt)
{
    auto* const layout = qobject_cast<LabCompareLayout*>(widget->layout());
    ASSERT_TRUE(layout);
    ASSERT_EQ(layout->count(), 1);
    EXPECT_EQ(layout->itemAt(0)->widget(), &view());
    EXPECT_EQ(view().geometry(), QRect(0, 0, 960, 540));
    ASSERT_TRUE(mask());
    EXPECT_EQ(mask()->parentWidget(), &view());
    EXPECT_EQ(mask()->geometry(), QRect(0, 0, 960, 540));
    EXPECT_TRUE(mask()->isVisible());
}

TEST_F(ComparePlayerTest, SetsTwoPicturesUpAndPlaysThemWhenToldTo)
{
    const QString green = PlayerMedia::picture(Qt::green, 960, 540);
    const QString white = PlayerMedia::picture(Qt::white, 960, 540);
    widget->setupAutoPlay(true);
    const Calls calls = setUp(green, white, false);
    ASSERT_EQ(calls.size(), 24U);
    EXPECT_EQ(calls[3], "RvSpriteTrack::create(\"" + white.toStdString() + "\", 0, 3000) -> base");
    EXPECT_EQ(calls[9], "RvSpriteTrack::create(\"" + green.toStdString() + "\", 0, 3000) -> mix");
    EXPECT_EQ(calls[10], "RvIMediaTrack::setCenter(mix, 960, 540)") << "pictures need no muting";
    EXPECT_EQ(calls[21], "RvKpPlayer::prepareAsync()");
    EXPECT_EQ(calls[22], "RvKpPlayer::start()");
    EXPECT_TRUE(reaches(RvKpPlayerPlaying));
}

TEST_F(ComparePlayerTest, FitsThePicturesIntoTheCanvasWithOnePixelMore)
{
    showPair(PlayerMedia::picture(Qt::red, 1920, 1080), PlayerMedia::picture(Qt::blue, 640, 360),
             false);
    EXPECT_EQ(media(mixTrack()).getScale(), static_cast<float>(1921.0 / 1920.0));
    EXPECT_EQ(media(baseTrack()).getScale(), static_cast<float>(1921.0 / 640.0));
    for (const auto& track : {mixTrack(), baseTrack()}) {
        EXPECT_EQ(media(track).getPositionX(), 960.0F);
        EXPECT_EQ(media(track).getPositionY(), 540.0F);
    }
    EXPECT_EQ(widget->getVideoTrackSize(), QSizeF(640, 360)) << "that of the lower one";
    showPair(PlayerMedia::picture(Qt::red, 100, 400), PlayerMedia::picture(Qt::blue, 1000, 10),
             false);
    EXPECT_EQ(media(mixTrack()).getScale(), static_cast<float>(1081.0 / 400.0));
    EXPECT_EQ(media(baseTrack()).getScale(), static_cast<float>(1921.0 / 1000.0));
}

TEST_F(ComparePlayerTest, CutsByTheRightHalfOfAPathOfAtLeastEightHundredPixels)
{
    const auto pathOf = [this](int width, int height) {
        showPair(PlayerMedia::picture(Qt::red, width, height), m_blue, false);
        EXPECT_EQ(matte()->getMattePathType(), 1);
        EXPECT_EQ(matte()->getMatteBlendMode(), 25);
        EXPECT_EQ(matte()->getMediaBindType(), 2);
        EXPECT_EQ(matte()->getMatteEclosionPercent(), 0.0F);
        EXPECT_FALSE(matte()->getEnableDrawPathSizeLimit());
        EXPECT_EQ(adopt(matte()->getBindTrack())->getTrackID(), mixTrack()->getTrackID());
        return matte()->getMattePath().boundingRect();
    };
    EXPECT_EQ(pathOf(640, 360), QRectF(400, 0, 400, 450));
    EXPECT_EQ(pathOf(100, 400), QRectF(100, 0, 100, 800));
    EXPECT_EQ(pathOf(100, 799), QRectF(50 * 800.0 / 799.0, 0, 50 * 800.0 / 799.0, 800));
    EXPECT_EQ(pathOf(799, 100), QRectF(400, 0, 400, 100 * 800.0 / 799.0));
    EXPECT_EQ(pathOf(800, 100), QRectF(400, 0, 400, 100));
    EXPECT_EQ(pathOf(100, 800), QRectF(50, 0, 50, 800));
    EXPECT_EQ(pathOf(800, 800), QRectF(400, 0, 400, 800));
    EXPECT_EQ(pathOf(801, 100), QRectF(400.5, 0, 400.5, 100));
    EXPECT_EQ(pathOf(100, 801), QRectF(50, 0, 50, 801));
    EXPECT_EQ(pathOf(1000, 500), QRectF(500, 0, 500, 500));
    EXPECT_EQ(pathOf(100, 900), QRectF(50, 0, 50, 900));
}

TEST_F(ComparePlayerTest, OnlyWarnsAboutAMissingFile)
{
    showPair(m_red, m_blue, true);
    const auto before = timeline();
    const QString missing = PlayerMedia::missing();
    for (const auto& [first, second] :
         {std::pair(m_red, missing), std::pair(missing, m_blue), std::pair(missing, missing),
          std::pair(QString(), m_blue)}) {
        const ExpectedWarning warning(lost(first, second));
        EXPECT_EQ(setUp(first, second, true), Calls());
        EXPECT_EQ(timeline(), before);
    }
    EXPECT_EQ(player().getState(), RvKpPlayerPrepared);
}

TEST_F(ComparePlayerTest, KeepsWhatItShowedWhenTheFrameworkFails)
{
    showPair(m_red, m_blue, true);
    const auto before = timeline();
    const long long living = RvRef::liveCount();
    // Whatever fails first, and for a creation of tracks as either kind.
    for (const char* name :
         {"RvKpTimeLine::create", "RvKpGroup::create", "RvKpGroup::addTrack",
          "RvKpTimeLine::pushBackGroup", "RvKpTimeLine::addMixTrack",
          "RvTrkMatteEffectTrack::createPathMatteTrack", "RvIEffectTrack::bind"}) {
        RvFault::failNext(name);
        widget->setupCompareVideoPath(m_blue, m_red, true);
        EXPECT_FALSE(RvFault::isPending(name)) << name;
        EXPECT_EQ(timeline(), before) << name;
        EXPECT_EQ(RvRef::liveCount(), living) << name;
        EXPECT_TRUE(reaches(RvKpPlayerPrepared)) << name;
    }
    RvFault::failNext("RvKpTimeLine::addMixTrack", 2);
    widget->setupCompareVideoPath(m_blue, m_red, true);
    EXPECT_EQ(timeline(), before) << "without its matte";
    EXPECT_EQ(RvRef::liveCount(), living);
}

TEST_F(ComparePlayerTest, ASecondSetUpLeavesNothingOfTheFirst)
{
    showPair(m_red, m_blue, true);
    const long long living = RvRef::liveCount();
    showPair(m_blue, m_red, true);
    EXPECT_EQ(RvRef::liveCount(), living);
}

TEST_F(ComparePlayerTest, TheMatteFollowsTheLine)
{
    showPair(m_red, m_blue, true);
    for (const int x : {600, 1, 300, 959}) {
        dragLineTo(x);
        EXPECT_EQ(matte()->getMatteCenterX(), 2.0F * static_cast<float>(x));
        EXPECT_EQ(matte()->getMatteCenterY(), 540.0F);
    }
    application.setCanvasScale(2.0F);
    application.setCanvasPosition(100.0F, 30.0F);
    widget->updateEffect();
    dragLineTo(480);
    EXPECT_EQ(matte()->getMatteCenterX(), 960.0F - 100.0F);
    widget->maskMoveToCenter();
    EXPECT_EQ(mask()->lineX(), 480.0);
    EXPECT_EQ(matte()->getMatteCenterX(), 860.0F);
}

TEST_F(ComparePlayerTest, GoesToTheMiddle)
{
    showPair(m_red, m_blue, true);
    dragLineTo(700);
    RvCallLog::start();
    widget->maskMoveToCenter();
    EXPECT_EQ(RvCallLog::count(), 1U);
    EXPECT_EQ(mask()->lineX(), 480.0);
    EXPECT_EQ(matte()->getMatteCenterX(), 960.0F);
}

TEST_F(ComparePlayerTest, ShowsOneFileAlone)
{
    showPair(m_red, m_blue, true);
    dragLineTo(600);
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    EXPECT_EQ(widget->getShowType(), QLabComparePlayer::QLabShowEdgeLeft);
    EXPECT_EQ(matte()->getMatteCenterX(), 0.0F);
    EXPECT_EQ(matte()->getMatteCenterY(), 540.0F);
    EXPECT_FALSE(mask()->isVisible());
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeRight);
    EXPECT_EQ(matte()->getMatteCenterX(), 1925.0F);
    EXPECT_EQ(matte()->getMatteCenterY(), 540.0F);
    EXPECT_FALSE(mask()->isVisible());
    widget->updateEffect();
    widget->maskMoveToCenter();
    EXPECT_EQ(matte()->getMatteCenterX(), 1925.0F) << "the line tells nothing now";
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    EXPECT_TRUE(mask()->isVisible());
    EXPECT_EQ(matte()->getMatteCenterX(), 960.0F) << "back at the line at once";
    widget->setupShowType(static_cast<QLabComparePlayer::QLabShowType>(3));
    EXPECT_EQ(matte()->getMatteCenterX(), 0.0F);
}

TEST_F(ComparePlayerTest, KeepsItsShowTypeOverASetUp)
{
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeRight);
    EXPECT_TRUE(mask()->isVisible()) << "while there is nothing to show";
    showPair(m_red, m_blue, true);
    EXPECT_FALSE(mask()->isVisible());
    EXPECT_EQ(matte()->getMatteCenterX(), 1925.0F);
}

TEST_F(ComparePlayerTest, KeepsTheLineWithinTheUpperPicture)
{
    // 540 x 540 px of the view, from 210 to 750.
    showPair(PlayerMedia::picture(Qt::red, 1080, 1080), m_blue, false);
    // The picture is a pixel of the canvas larger than the canvas: half a px of the view.
    EXPECT_EQ(mask()->limitRect(), QRect(209, 0, 540, 540));
    EXPECT_EQ(mask()->hintRect(), QRect(210, 0, 540, 540));
    mask()->setLimitRect({});
    mask()->setHintRect({});
    widget->updateEffect();
    EXPECT_EQ(mask()->limitRect(), QRect(209, 0, 540, 540));
    EXPECT_EQ(mask()->hintRect(), QRect(210, 0, 540, 540));
    widget->setupLimitMoveInVideoRect(false);
    EXPECT_TRUE(mask()->limitRect().isNull());
    dragLineTo(100);
    widget->setupLimitMoveInVideoRect(true);
    EXPECT_EQ(mask()->limitRect(), QRect(209, 0, 540, 540));
    EXPECT_EQ(mask()->lineX(), 209.0);
    widget->setupLimitMoveInVideoRect(false);
    widget->updateEffect();
    EXPECT_EQ(mask()->limitRect(), QRect(209, 0, 540, 540)) << "for once, all the same";
}

TEST_F(ComparePlayerTest, LineMatteAndLimitAgreeAfterEverySetUp)
{
    const QString square = PlayerMedia::picture(Qt::red, 1080, 1080);
    showPair(m_red, m_blue, true);
    dragLineTo(100);
    showPair(m_red, m_blue, true);
    EXPECT_EQ(mask()->lineX(), 100.0) << "which is in the new picture, too";
    EXPECT_EQ(matte()->getMatteCenterX(), 200.0F);
    showPair(square, m_blue, false);
    EXPECT_EQ(mask()->limitRect(), QRect(209, 0, 540, 540));
    EXPECT_EQ(mask()->hintRect(), QRect(210, 0, 540, 540));
    EXPECT_EQ(mask()->lineX(), 209.0);
    EXPECT_EQ(matte()->getMatteCenterX(), 418.0F);
    showPair(m_red, m_blue, true);
    EXPECT_EQ(mask()->limitRect(), QRect(0, 0, 960, 540));
    EXPECT_EQ(matte()->getMatteCenterX(), 418.0F);
}

TEST_F(ComparePlayerTest, ASetUpLimitsNoLineThatMayGoAnywhere)
{
    const QString square = PlayerMedia::picture(Qt::red, 1080, 1080);
    widget->setupLimitMoveInVideoRect(false);
    showPair(m_red, m_blue, true);
    dragLineTo(100);
    showPair(square, m_blue, false);
    EXPECT_TRUE(mask()->limitRect().isNull());
    EXPECT_EQ(mask()->lineX(), 100.0);
    EXPECT_EQ(matte()->getMatteCenterX(), 200.0F);
    widget->updateEffect();
    ASSERT_EQ(mask()->lineX(), 209.0);
    showPair(m_red, m_blue, true);
    EXPECT_TRUE(mask()->limitRect().isNull()) << "nothing is left of the limit of the pair before";
    EXPECT_EQ(matte()->getMatteCenterX(), 418.0F);
}

TEST_F(ComparePlayerTest, TheLineIsInThePictureWhenItComesBack)
{
    const QString square = PlayerMedia::picture(Qt::red, 1080, 1080);
    showPair(m_red, m_blue, true);
    dragLineTo(100);
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    showPair(square, m_blue, false);
    EXPECT_EQ(matte()->getMatteCenterX(), 0.0F) << "not at the line";
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    EXPECT_EQ(mask()->lineX(), 209.0);
    EXPECT_EQ(matte()->getMatteCenterX(), 418.0F);
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    application.setCanvasPosition(200.0F, 0.0F);
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    EXPECT_EQ(mask()->limitRect(), QRect(409, 0, 540, 540));
    EXPECT_EQ(mask()->lineX(), 409.0);
    application.setCanvasPosition(300.0F, 0.0F);
    widget->updateEffect();
    widget->maskMoveToCenter();
    EXPECT_EQ(mask()->lineX(), 480.0) << "the middle of the view, though the picture begins at 509";
}

TEST_F(ComparePlayerTest, UpdatesNothingWhileOneFileIsShownAlone)
{
    showPair(PlayerMedia::picture(Qt::red, 1080, 1080), m_blue, false);
    for (const auto type :
         {QLabComparePlayer::QLabShowEdgeLeft, QLabComparePlayer::QLabShowEdgeRight}) {
        widget->setupShowType(type);
        const QRect limit = mask()->limitRect();
        const QRect hints = mask()->hintRect();
        application.setCanvasScale(application.getCanvasScale() * 0.5F);
        QSignalSpy told(mask(), &LabCompareMaskView::maskCompareEvent);
        RvCallLog::start();
        widget->updateEffect();
        EXPECT_EQ(RvCallLog::count(), 0U);
        EXPECT_EQ(told.count(), 0);
        EXPECT_EQ(mask()->limitRect(), limit);
        EXPECT_EQ(mask()->hintRect(), hints);
    }
}

TEST_F(ComparePlayerTest, ANewSizeLimitsTheLineAnewIfThatIsWanted)
{
    showPair(PlayerMedia::picture(Qt::red, 1080, 1080), m_blue, false);
    widget->resize(480, 270);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mask()->size() == QSize(480, 270); }, PatienceMs));
    EXPECT_EQ(mask()->limitRect(), QRect(104, 0, 270, 270));
    EXPECT_EQ(mask()->hintRect(), QRect(105, 0, 270, 270));
    widget->setupLimitMoveInVideoRect(false);
    widget->resize(960, 540);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mask()->size() == QSize(960, 540); }, PatienceMs));
    EXPECT_TRUE(mask()->limitRect().isNull());
    EXPECT_EQ(mask()->hintRect(), QRect(210, 0, 540, 540));
}

TEST_F(ComparePlayerTest, TakesCanvasesThatMakeNoSense)
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    for (const float side : {0.0F, -100.0F, 1e30F, infinite, none}) {
        application.getRvKpConfig()->setKpSize(side, 1080.0F);
        widget->setupCompareVideoPath(m_red, m_blue, true);
        EXPECT_TRUE(timeline()) << side;
        widget->updateEffect();
        widget->setupShowType(QLabComparePlayer::QLabShowEdgeRight);
        widget->setupShowType(QLabComparePlayer::QLabShowSplit);
        drag(*mask(), {static_cast<int>(mask()->lineX()), 20}, {300, 20});
        EXPECT_LE(std::abs(mask()->lineX()), 1e6) << side;
    }
    application.getRvKpConfig()->setKpSize(1920.0F, 1080.0F);
    showPair(m_red, m_blue, true);
    widget->updateEffect();
    EXPECT_EQ(mask()->limitRect(), QRect(0, 0, 960, 540));
}

TEST_F(ComparePlayerTest, BringsTheMatteBackToTheLine)
{
    showPair(m_red, m_blue, true);
    application.setCanvasPosition(100.0F, 0.0F);
    EXPECT_EQ(matte()->getMatteCenterX(), 960.0F);
    RvCallLog::start();
    widget->updateEffect();
    widget->updateEffect();
    EXPECT_EQ(RvCallLog::count(), 2U) << "without a limit of their rate";
    EXPECT_EQ(matte()->getMatteCenterX(), 760.0F);
}

TEST_F(ComparePlayerTest, AnItemOfItsLayoutComesBelowTheMaskView)
{
    showPair(m_red, m_blue, true);
    QWidget above(&view());
    above.setGeometry(0, 0, 100, 100);
    above.show();
    ASSERT_EQ(view().childAt(50, 50), &above);
    application.setCanvasPosition(100.0F, 0.0F);
    widget->layout()->addItem(new QSpacerItem(0, 0));
    EXPECT_EQ(view().childAt(50, 50), mask());
    EXPECT_EQ(matte()->getMatteCenterX(), 760.0F);
}

TEST_F(ComparePlayerTest, HandsTheLooksOnToTheMaskView)
{
    QImage icon(20, 20, QImage::Format_RGB32);
    icon.fill(Qt::green);
    widget->setLineColor(Qt::cyan);
    widget->setLineWidth(3);
    widget->setIconImage(icon);
    widget->setIconSize({40, 20});
    widget->setControlWidth(100);
    const QImage seen = view().grab().toImage();
    EXPECT_EQ(seen.pixelColor(481, 20), QColor(Qt::cyan));
    EXPECT_EQ(seen.pixelColor(461, 270), QColor(Qt::green));
    EXPECT_EQ(seen.pixelColor(498, 279), QColor(Qt::green));
    EXPECT_NE(seen.pixelColor(481, 281), QColor(Qt::green));
    drag(*mask(), {525, 20}, {535, 20});
    EXPECT_EQ(mask()->lineX(), 490.0);
}

TEST_F(ComparePlayerTest, TakesHintsForBothSides)
{
    showPair(m_red, m_blue, true);
    QPointer<QLabel> left = new QLabel("before");
    QPointer<QLabel> right = new QLabel("after");
    widget->setLeftHintWidget(left);
    widget->setRightHintWidget(right);
    EXPECT_EQ(left->parentWidget(), widget->getLeftHintWidget());
    EXPECT_EQ(right->parentWidget(), widget->getRightHintWidget());
    EXPECT_EQ(widget->getLeftHintWidget()->parentWidget(), mask());
    EXPECT_TRUE(left->isVisible());
    EXPECT_TRUE(right->isVisible());
    EXPECT_EQ(widget->getLeftHintWidget()->geometry(), QRect(0, 0, 480, 120));
    EXPECT_EQ(widget->getRightHintWidget()->geometry(), QRect(479, 0, 480, 120));
    widget->setLeftHintWidget(nullptr);
    delete widget;
    EXPECT_TRUE(left.isNull());
    EXPECT_TRUE(right.isNull());
}

TEST_F(ComparePlayerTest, AClosedPlayerStopsAndHoldsNothing)
{
    const long long before = RvRef::liveCount();
    showPair(m_red, m_blue, true);
    player().start();
    RvCallLog::start();
    widget->close();
    EXPECT_EQ(RvCallLog::entries(), Calls{"RvKpPlayer::stop()"});
    EXPECT_EQ(player().getState(), RvKpPlayerStopped);
    player().setTimeLine(nullptr);
    EXPECT_EQ(RvRef::liveCount(), before);
    // What is left of it can do nothing, and does.
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    widget->updateEffect();
    widget->maskMoveToCenter();
    EXPECT_FALSE(widget->setVideoFileStartTimeTo(0, 100));
    widget->close();
    showPair(m_red, m_blue, true);
    EXPECT_TRUE(timeline());
}

TEST_F(ComparePlayerTest, StopsWhatItShowsWhenItIsDestroyed)
{
    showPair(m_red, m_blue, true);
    player().start();
    delete widget;
    EXPECT_EQ(player().getState(), RvKpPlayerStopped);
}

TEST_F(ComparePlayerTest, LeavesAnotherTimelineAloneWhenItIsDestroyedOrItsWindowIsClosed)
{
    showPair(m_red, m_blue, true);
    player().setTimeLine(PlayerMedia::timelineOf(PlayerMedia::red(64, 36, 8.0)).get());
    player().prepareAsync();
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    window->close();
    EXPECT_TRUE(player().isPlaying());
    delete widget;
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(ComparePlayerTest, StopsWhenTheWindowAroundItIsClosed)
{
    showPair(m_red, m_blue, true);
    player().start();
    window->close();
    EXPECT_EQ(player().getState(), RvKpPlayerStopped);
    // The pair is still there.
    window->show();
    player().prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    dragLineTo(600);
    EXPECT_EQ(matte()->getMatteCenterX(), 1200.0F);
}

namespace {

/// A window that refuses to be closed.
class RefusingWindow : public QWidget
{
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

} // namespace

TEST_F(ComparePlayerTest, PlaysOnInAWindowThatRefusesToCloseOrIsOnlyHidden)
{
    const QString longer = PlayerMedia::blue(64, 36, 8.0);
    showPair(longer, longer, true);
    player().start();
    RefusingWindow refusing;
    widget->setParent(&refusing);
    widget->show();
    refusing.show();
    EXPECT_FALSE(refusing.close());
    EXPECT_TRUE(player().isPlaying());
    QTest::qWait(0);
    refusing.hide();
    EXPECT_TRUE(player().isPlaying());
    refusing.show();
    widget->hide();
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(ComparePlayerTest, StopsWhenTheDialogOrThePartOfAWindowAroundItIsClosed)
{
    showPair(m_red, m_blue, true);
    QDialog dialog;
    auto* const part = new QWidget(&dialog);
    auto* const within = new QWidget(part);
    widget->setParent(within);
    widget->show();
    dialog.show();
    player().start();
    dialog.reject();
    EXPECT_EQ(player().getState(), RvKpPlayerStopped);
    dialog.show();
    player().prepareAsync();
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    part->close();
    EXPECT_EQ(player().getState(), RvKpPlayerStopped);
    // What is not around it any more means nothing to it.
    player().prepareAsync();
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    widget->setParent(window.get());
    widget->show();
    part->show();
    dialog.close();
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(ComparePlayerTest, GivesAHostItsTimelineAndItsViewBack)
{
    delete widget;
    auto* const layout = new QVBoxLayout(window.get());
    layout->addWidget(application.getGraphicsView());
    const auto own = PlayerMedia::timelineOf(PlayerMedia::red(64, 36, 8.0));
    player().setTimeLine(own.get());
    player().prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    player().seekTo(3000, true);
    const QPointer<QGraphicsView> editorsView = &view();

    // What the header and the page on the widgets tell a host to do.
    RvKpPlayer* const framework = application.getPlayer();
    RvKpTimeLine* const kept = framework->getTimeLine();
    const long long position = framework->getCurrentPosition();
    auto* const compare = new QLabComparePlayer(&application, nullptr, true);
    compare->show();
    compare->setupCompareVideoPath(m_red, m_blue, true);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_TRUE(compare->isAncestorOf(editorsView));
    EXPECT_NE(timeline(), own);
    delete compare;
    framework->setTimeLine(kept);
    kept->release();
    framework->seekTo(position, true);
    framework->prepareAsync();
    layout->addWidget(application.getGraphicsView());

    EXPECT_EQ(timeline(), own);
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
    EXPECT_EQ(player().getCurrentPosition(), 3000);
    EXPECT_EQ(&view(), editorsView);
    EXPECT_TRUE(QTest::qWaitFor([&] { return editorsView->isVisible(); }, PatienceMs));
    EXPECT_TRUE(window->isAncestorOf(editorsView));
    player().start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player().getCurrentPosition() > 3100; }, PatienceMs));
    player().stop();
}

TEST_F(ComparePlayerTest, LeavesTheEditorsApplicationAloneIfItHasItsOwn)
{
    delete widget;
    auto* const layout = new QVBoxLayout(window.get());
    layout->addWidget(&view());
    const auto own = PlayerMedia::timelineOf(PlayerMedia::red(64, 36, 60.0));
    player().setTimeLine(own.get());
    player().prepareAsync();
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    application.setCanvasScale(1.5F);
    application.setCanvasPosition(10.0F, 20.0F);
    const std::unique_ptr<norvel::RvEditorTrace> trace(norvel::RvEditorTrace::create(&application));
    ASSERT_TRUE(trace->initTrace());
    const auto track = std::move(adopt(group()->getTracks()).front());
    track->setAlpha(0.5F);
    ASSERT_TRUE(trace->recordStatus());
    {
        RvKpApplication another;
        another.getRvKpConfig()->setKpSize(640.0F, 640.0F);
        QLabComparePlayer compare(&another, nullptr, true);
        compare.show();
        compare.setupAutoPlay(true);
        compare.setupCompareVideoPath(m_red, m_blue, true);
        EXPECT_TRUE(QTest::qWaitFor([&] { return another.getPlayer()->isPlaying(); }, PatienceMs));
        EXPECT_TRUE(player().isPlaying());
        EXPECT_EQ(timeline(), own);
        EXPECT_TRUE(window->isAncestorOf(&view()));
        EXPECT_FALSE(compare.isAncestorOf(&view()));
        trace->undo();
        EXPECT_EQ(track->getAlpha(), 1.0F);
        EXPECT_EQ(another.getRvKpConfig()->getKpSizeWidth(), 640.0F);
        EXPECT_EQ(adopt(adopt(another.getPlayer()->getTimeLine())->getMixTracks()).size(), 2U);
    }
    EXPECT_TRUE(player().isPlaying());
    EXPECT_EQ(application.getCanvasScale(), 1.5F);
    EXPECT_EQ(application.getCanvasPosition(), QPointF(10, 20));
    EXPECT_EQ(application.getRvKpConfig()->getKpSizeWidth(), 1920.0F);
    trace->redo();
    EXPECT_EQ(track->getAlpha(), 0.5F);
    player().setTimeLine(nullptr);
    EXPECT_FALSE(trace->initTrace()); // frees its descriptions
}

TEST_F(ComparePlayerTest, TheViewOutlivesIt)
{
    for (const bool ownPlayer : {false, true}) {
        makePlayer(ownPlayer);
        showPair(m_red, m_blue, true);
        const QPointer<QGraphicsView> before = &view();
        DebugLines lines;
        delete widget;
        EXPECT_EQ(lines.take(), (QStringList{"mask View delete", "Complare Player delete"}));
        ASSERT_TRUE(before) << ownPlayer;
        EXPECT_EQ(before->parentWidget(), nullptr);
        EXPECT_EQ(application.getGraphicsView(), before);
        EXPECT_FALSE(mask());
    }
}

TEST_F(ComparePlayerTest, MayGoWhileItPlaysOrAfterTheView)
{
    showPair(m_red, m_blue, true);
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    delete widget;
    makePlayer(false);
    delete &view();
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    widget->updateEffect();
    widget->maskMoveToCenter();
    widget->setLineWidth(2);
    EXPECT_EQ(widget->getLeftHintWidget(), nullptr);
    showPair(m_red, m_blue, true);
    delete widget;
}
