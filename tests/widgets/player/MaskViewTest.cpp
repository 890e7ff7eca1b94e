// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerStage.h"

#include "widgets/support/DebugLines.h"

#include <norvel/widgets/player/LabCompareHintRightWidget.h>
#include <norvel/widgets/player/LabCompareMaskView.h>

#include <QImage>
#include <QMetaMethod>
#include <QPaintEvent>
#include <QPalette>
#include <QSignalSpy>

#include <limits>
#include <utility>

namespace {

/// A mask view over a host of 600 x 400, in a window with space around it: its reference area is
/// 200 x 400, with the line at 300 and the icon's middle at 200.
class MaskViewTest : public PlayerStage
{
protected:
    void SetUp() override
    {
        QPalette white;
        white.setColor(QPalette::Window, Qt::white);
        host->setPalette(white);
        host->setAutoFillBackground(true);
        host->resize(600, 400);
        QObject::connect(mask, &LabCompareMaskView::maskCompareEvent,
                         [this](const QPointF& point) { told.push_back(point); });
        showWindow({800, 700});
        ASSERT_TRUE(becomes({600, 400}));
        ASSERT_EQ(mask->lineX(), 300.0);
        ASSERT_EQ(mask->iconY(), 200.0);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !told.empty(); }, PatienceMs));
    }

    bool becomes(const QSize& size)
    {
        return QTest::qWaitFor([&] { return mask->size() == size; }, PatienceMs);
    }

    /// Drags the line, or what is at this height of it, and tells where the line then is.
    double dragged(const QPoint& from, const QPoint& to)
    {
        drag(*mask, from, to);
        return mask->lineX();
    }
    /// Whether the line can be taken at this point.
    bool isTaken(const QPoint& point)
    {
        const double before = mask->lineX();
        const bool moved = dragged(point, point + QPoint(5, 0)) != before;
        if (moved) {
            const QPoint line(static_cast<int>(mask->lineX()), 5);
            EXPECT_EQ(dragged(line, line - QPoint(5, 0)), before);
        }
        return moved;
    }
    /// Whether the icon follows from this point, half of whose image is 20 x 10.
    bool isIconTaken(const QPoint& point)
    {
        const double before = mask->iconY();
        drag(*mask, point, point + QPoint(0, 7));
        const bool moved = mask->iconY() != before;
        if (moved)
            drag(*mask, {300, static_cast<int>(mask->iconY())}, {300, static_cast<int>(before)});
        EXPECT_EQ(mask->iconY(), before);
        return moved;
    }
    static QImage icon(int width, int height)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::green);
        return image;
    }
    void settle() { QTest::qWait(0); }
    QImage seen() { return host->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    qint64 m_now = 1000000; ///< ms, what the mask view's clock says
    QWidget* host = new QWidget(window.get());
    LabCompareMaskView* mask = new LabCompareMaskView(host, [this] { return m_now; });
    std::vector<QPointF> told;
};

/// Collects the regions that a widget paints.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    QRegion region;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

} // namespace

TEST_F(MaskViewTest, TellsTheLineOnceWhenItIsFirstPainted)
{
    EXPECT_EQ(told, std::vector<QPointF>{QPointF(300, 200)});
    mask->repaint();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(MaskViewTest, TakesTheSizeOfItsParent)
{
    QSignalSpy changed(mask, &LabCompareMaskView::maskChangeSize);
    host->resize(700, 500);
    ASSERT_TRUE(becomes({700, 500}));
    EXPECT_EQ(mask->pos(), QPoint(0, 0));
    EXPECT_EQ(mask->minimumSize(), QSize(700, 500));
    EXPECT_EQ(mask->maximumSize(), QSize(700, 500));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0], (QList<QVariant>{QSize(700, 500), QSize(600, 400)}));
    EXPECT_EQ(told.size(), 1U) << "a new size alone tells no line";
}

TEST_F(MaskViewTest, CanBeTakenStrictlyWithinItsControlWidth)
{
    EXPECT_TRUE(isTaken({300, 10}));
    EXPECT_TRUE(isTaken({281, 10}));
    EXPECT_TRUE(isTaken({319, 390}));
    EXPECT_FALSE(isTaken({280, 10}));
    EXPECT_FALSE(isTaken({320, 10}));
    mask->setControlWidth(100);
    EXPECT_TRUE(isTaken({349, 10}));
    EXPECT_TRUE(isTaken({251, 10}));
    EXPECT_FALSE(isTaken({350, 10}));
    EXPECT_FALSE(isTaken({250, 10}));
    mask->setControlWidth(0);
    EXPECT_FALSE(isTaken({300, 10}));
}

TEST_F(MaskViewTest, FollowsThePointerByItsSteps)
{
    press(*mask, {310, 10});
    move(*mask, {325, 12});
    EXPECT_EQ(mask->lineX(), 315.0);
    move(*mask, {200, 300});
    EXPECT_EQ(mask->lineX(), 190.0);
    EXPECT_EQ(mask->iconY(), 200.0) << "there is no icon to drag";
    release(*mask, {200, 300});
    EXPECT_EQ(mask->lineX(), 190.0);
}

TEST_F(MaskViewTest, AnotherButtonOrAPressOutsideEndsTheDrag)
{
    press(*mask, {300, 10});
    press(*mask, {300, 10}, Qt::RightButton);
    release(*mask, {300, 10}, Qt::RightButton);
    move(*mask, {350, 10});
    EXPECT_EQ(mask->lineX(), 300.0);
    release(*mask, {350, 10});
    EXPECT_EQ(dragged({300, 10}, {310, 10}), 310.0);
    EXPECT_EQ(dragged({500, 10}, {520, 10}), 310.0);
}

TEST_F(MaskViewTest, MovesWithTheLeftButtonAlone)
{
    press(*mask, {300, 10});
    QMouseEvent both(QEvent::MouseMove, {350, 10}, Qt::NoButton, Qt::LeftButton | Qt::RightButton,
                     {});
    QCoreApplication::sendEvent(mask, &both);
    EXPECT_EQ(mask->lineX(), 300.0);
    QMouseEvent none(QEvent::MouseMove, {350, 10}, Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(mask, &none);
    EXPECT_EQ(mask->lineX(), 300.0);
    release(*mask, {350, 10});
}

TEST_F(MaskViewTest, AReleaseTellsTheLineAtOnce)
{
    press(*mask, {300, 10});
    move(*mask, {310, 10});
    move(*mask, {320, 10});
    const std::size_t before = told.size();
    release(*mask, {320, 10});
    ASSERT_EQ(told.size(), before + 1);
    EXPECT_EQ(told.back(), QPointF(320, 200));
    press(*mask, {320, 10});
    release(*mask, {320, 10});
    EXPECT_EQ(told.size(), before + 2);
}

TEST_F(MaskViewTest, StaysInsideOfItself)
{
    EXPECT_EQ(dragged({300, 10}, {1, 10}), 1.0);
    EXPECT_EQ(dragged({1, 10}, {0, 10}), 1.0);
    EXPECT_EQ(dragged({1, 10}, {599, 10}), 599.0);
    EXPECT_EQ(dragged({599, 10}, {600, 10}), 599.0);
    EXPECT_EQ(dragged({599, 10}, {700, 10}), 599.0);
}

TEST_F(MaskViewTest, StaysInItsLimit)
{
    mask->setLimitRect({100, 0, 401, 400});
    EXPECT_EQ(mask->limitRect().right(), 500);
    EXPECT_EQ(dragged({300, 10}, {100, 10}), 100.0);
    EXPECT_EQ(dragged({100, 10}, {99, 10}), 100.0);
    EXPECT_EQ(dragged({100, 10}, {501, 10}), 501.0) << "one px beyond the right edge";
    EXPECT_EQ(dragged({501, 10}, {502, 10}), 501.0);
    mask->setLimitRect({});
    EXPECT_EQ(dragged({501, 10}, {502, 10}), 502.0);
}

TEST_F(MaskViewTest, ALimitMovesTheLine)
{
    mask->setLimitRect({350, 0, 101, 400});
    EXPECT_EQ(mask->lineX(), 350.0);
    mask->setLimitRect({100, 0, 101, 400});
    EXPECT_EQ(mask->lineX(), 200.0);
    mask->setLimitRect({});
    EXPECT_EQ(mask->lineX(), 200.0);
    EXPECT_EQ(told.size(), 1U) << "which is not told";
}

TEST_F(MaskViewTest, DragsTheIconByItsImage)
{
    EXPECT_FALSE(isIconTaken({300, 200})) << "without an icon";
    mask->setIconImage(icon(20, 10));
    mask->setIconSize({80, 80}); // it is drawn larger, and taken as before
    EXPECT_TRUE(isIconTaken({300, 200}));
    EXPECT_TRUE(isIconTaken({309, 204}));
    EXPECT_TRUE(isIconTaken({291, 196}));
    EXPECT_FALSE(isIconTaken({310, 200}));
    EXPECT_FALSE(isIconTaken({290, 200}));
    EXPECT_FALSE(isIconTaken({300, 205}));
    EXPECT_FALSE(isIconTaken({300, 195}));
}

TEST_F(MaskViewTest, TheIconStaysInsideAndMovesWithTheLine)
{
    mask->setIconImage(icon(20, 20));
    drag(*mask, {300, 200}, {310, 1});
    EXPECT_EQ(mask->iconY(), 1.0);
    EXPECT_EQ(mask->lineX(), 310.0);
    EXPECT_EQ(told.back(), QPointF(310, 1));
    drag(*mask, {310, 1}, {310, 0});
    EXPECT_EQ(mask->iconY(), 1.0);
    drag(*mask, {310, 1}, {310, 399});
    EXPECT_EQ(mask->iconY(), 399.0);
    drag(*mask, {310, 399}, {310, 400});
    EXPECT_EQ(mask->iconY(), 399.0);
}

TEST_F(MaskViewTest, KeepsItsSharesOfTheAreaOverANewSize)
{
    mask->setIconImage(icon(20, 20));
    drag(*mask, {300, 200}, {350, 100});
    host->resize(700, 600); // an area of 300 x 600
    ASSERT_TRUE(becomes({700, 600}));
    EXPECT_EQ(mask->lineX(), 200.0 + 0.75 * 300.0);
    EXPECT_EQ(mask->iconY(), 0.25 * 600.0);
    host->resize(100, 400); // an area of 100 x 200
    ASSERT_TRUE(becomes({100, 400}));
    EXPECT_EQ(mask->lineX(), 75.0);
    EXPECT_EQ(mask->iconY(), 150.0);
    host->resize(600, 400);
    ASSERT_TRUE(becomes({600, 400}));
    EXPECT_EQ(mask->lineX(), 350.0);
    EXPECT_EQ(mask->iconY(), 100.0);
}

TEST_F(MaskViewTest, TellsTheLineOnlyAfterMoreThanFiftyMillisecondsDuringADrag)
{
    press(*mask, {300, 10});
    told.clear();
    auto isTold = [this, x = 300](qint64 laterBy) mutable {
        m_now += laterBy;
        move(*mask, {++x, 10});
        return !std::exchange(told, {}).empty();
    };
    EXPECT_TRUE(isTold(0)) << "the first move";
    EXPECT_FALSE(isTold(0));
    EXPECT_FALSE(isTold(50)) << "50 ms later";
    EXPECT_TRUE(isTold(1)) << "51 ms later";
    EXPECT_FALSE(isTold(49));
    EXPECT_FALSE(isTold(1));
    EXPECT_TRUE(isTold(1)) << "51 ms after the last one that was told";
    EXPECT_TRUE(isTold(51));
    EXPECT_EQ(mask->lineX(), 308.0) << "every move moves the line";
    release(*mask, {308, 10});
    EXPECT_EQ(told, std::vector<QPointF>{QPointF(308, 200)}) << "a release is told at once";
}

TEST_F(MaskViewTest, GoesByTheClockOfTheSystemIfThereIsNoOther)
{
    LabCompareMaskView plain(host);
    int moves = 0;
    QObject::connect(&plain, &LabCompareMaskView::maskCompareEvent, [&] { ++moves; });
    QMouseEvent event(QEvent::MouseMove, {5, 5}, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&plain, &event);
    EXPECT_EQ(moves, 1);
    const auto isToldAgain = [&] {
        QCoreApplication::sendEvent(&plain, &event);
        return moves > 1;
    };
    EXPECT_TRUE(QTest::qWaitFor(isToldAgain, PatienceMs));
}

TEST_F(MaskViewTest, AReleaseLeavesTheDragToTheNextPress)
{
    press(*mask, {300, 10});
    release(*mask, {300, 10});
    QMouseEvent held(QEvent::MouseMove, {340, 10}, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(mask, &held);
    EXPECT_EQ(mask->lineX(), 340.0);
    mask->setIconImage(icon(20, 20));
    press(*mask, {340, 200});
    release(*mask, {340, 200});
    QMouseEvent lower(QEvent::MouseMove, {340, 230}, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(mask, &lower);
    EXPECT_EQ(mask->iconY(), 230.0);
    press(*mask, {100, 10});
    QMouseEvent outside(QEvent::MouseMove, {140, 20}, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(mask, &outside);
    EXPECT_EQ(mask->lineX(), 340.0) << "the next press did not take the line";
    EXPECT_EQ(mask->iconY(), 230.0);
}

TEST_F(MaskViewTest, CountsTheStepsOfThePointerAlsoWhereTheLineCannotFollow)
{
    mask->setIconImage(icon(20, 20));
    press(*mask, {300, 200});
    const auto moveTo = [this](int x, int y) {
        QMouseEvent event(QEvent::MouseMove, QPointF(x, y), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(mask, &event);
    };
    moveTo(700, 500);
    EXPECT_EQ(mask->lineX(), 300.0) << "right of the view";
    EXPECT_EQ(mask->iconY(), 200.0) << "below the view";
    moveTo(690, 480);
    EXPECT_EQ(mask->lineX(), 290.0) << "10 px to the left";
    EXPECT_EQ(mask->iconY(), 180.0) << "20 px up";
    moveTo(-50, -30);
    EXPECT_EQ(mask->lineX(), 290.0);
    moveTo(-20, 10);
    EXPECT_EQ(mask->lineX(), 320.0);
    EXPECT_EQ(mask->iconY(), 220.0);
}

TEST_F(MaskViewTest, AMoveThatDragsNothingTellsTheLineToo)
{
    mask->setHintRect({0, 0, 600, 400});
    QWidget* const left = mask->leftHintWidget();
    left->setGeometry(1, 2, 3, 4);
    press(*mask, {500, 10});
    settle();
    told.clear();
    PaintWatch watch(*mask);
    move(*mask, {520, 30});
    EXPECT_EQ(told, std::vector<QPointF>{QPointF(300, 200)});
    EXPECT_EQ(left->geometry(), QRect(0, 0, 300, 120)) << "the hints are laid out";
    settle();
    EXPECT_EQ(watch.region & QRect(0, 130, 600, 270), QRegion(260, 130, 80, 270))
        << "the strip is repainted";
    move(*mask, {540, 30});
    EXPECT_EQ(told.size(), 1U) << "no more often than in a drag";
    release(*mask, {540, 30});
    EXPECT_EQ(mask->lineX(), 300.0);
}

TEST_F(MaskViewTest, TellsEveryMoveWhenItIsNotThrottled)
{
    mask->setThrottle(false);
    press(*mask, {300, 10});
    told.clear();
    for (int x = 301; x <= 340; ++x)
        move(*mask, {x, 10});
    ASSERT_EQ(told.size(), 40U);
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(told[static_cast<std::size_t>(i)], QPointF(301 + i, 200));
    release(*mask, {340, 10});
}

TEST_F(MaskViewTest, RepaintsTheStripOfTheOldLineAndTheNewOne)
{
    press(*mask, {300, 10});
    settle();
    PaintWatch watch(*mask);
    move(*mask, {330, 10});
    settle();
    EXPECT_EQ(watch.region, QRegion(260, 0, 110, 400)) << "30 px to the right";
    watch.region = {};
    move(*mask, {310, 10});
    settle();
    EXPECT_EQ(watch.region, QRegion(270, 0, 100, 400)) << "20 px to the left";
    release(*mask, {310, 10});
    settle();
    watch.region = {};
    mask->setControlWidth(10);
    mask->moveToCenter();
    settle();
    EXPECT_EQ(watch.region, QRegion(290, 0, 30, 400)) << "10 px to the left";
}

TEST_F(MaskViewTest, GoesToTheMiddleAtOnce)
{
    EXPECT_EQ(dragged({300, 10}, {350, 10}), 350.0);
    told.clear();
    mask->moveToCenter();
    mask->moveToCenter();
    EXPECT_EQ(mask->lineX(), 300.0);
    EXPECT_EQ(told, (std::vector<QPointF>{{300, 200}, {300, 200}}));
    host->resize(601, 400);
    ASSERT_TRUE(becomes({601, 400}));
    mask->moveToCenter();
    EXPECT_EQ(told.back(), QPointF(300.5, 200));
}

TEST_F(MaskViewTest, StaysInTheMiddleOverANewSize)
{
    EXPECT_EQ(dragged({300, 10}, {350, 10}), 350.0);
    mask->moveToCenter();
    host->resize(700, 600);
    ASSERT_TRUE(becomes({700, 600}));
    EXPECT_EQ(mask->lineX(), 350.0);
}

TEST_F(MaskViewTest, GoesToTheMiddleWhateverItsLimit)
{
    mask->setLimitRect({400, 0, 101, 400});
    EXPECT_EQ(dragged({400, 10}, {450, 10}), 450.0);
    mask->moveToCenter();
    EXPECT_EQ(mask->lineX(), 300.0);
    EXPECT_EQ(told.back(), QPointF(300, 200));
}

TEST_F(MaskViewTest, TakesANewSizeOfItsParentWhileItIsHidden)
{
    EXPECT_EQ(dragged({300, 10}, {350, 10}), 350.0);
    mask->hide();
    host->resize(700, 600);
    mask->takeParentSize();
    EXPECT_EQ(mask->size(), QSize(700, 600));
    EXPECT_EQ(mask->lineX(), 200.0 + 0.75 * 300.0);
}

TEST_F(MaskViewTest, DrawsTheLineAndTheIconOverWhatIsBelow)
{
    const auto isLine = [](QRgb pixel) { return pixel == qRgb(0xff, 0x85, 0x62); };
    QImage image = seen();
    for (const int y : {0, 200, 399}) {
        for (int x = 0; x < 600; ++x)
            ASSERT_EQ(isLine(image.pixel(x, y)), x == 300) << x << ", " << y;
        EXPECT_EQ(image.pixel(299, y), qRgb(255, 255, 255));
    }
    mask->setLineColor(Qt::blue);
    mask->setLineWidth(5);
    mask->setIconImage(icon(20, 10));
    image = seen();
    const QRgb blue = qRgb(0, 0, 255);
    const QRgb green = qRgb(0, 255, 0);
    EXPECT_EQ(image.pixel(302, 100), blue);
    EXPECT_EQ(image.pixel(298, 100), blue);
    EXPECT_NE(image.pixel(304, 100), blue);
    EXPECT_NE(image.pixel(296, 100), blue);
    for (const QPoint& corner : {QPoint(290, 195), QPoint(309, 204), QPoint(300, 200)})
        EXPECT_EQ(image.pixel(corner), green);
    EXPECT_NE(image.pixel(289, 200), green);
    EXPECT_NE(image.pixel(310, 200), green);
    EXPECT_NE(image.pixel(300, 194), green);
    EXPECT_NE(image.pixel(300, 205), green);
    mask->setIconSize({60, 40});
    image = seen();
    EXPECT_EQ(image.pixel(270, 180), green);
    EXPECT_EQ(image.pixel(329, 219), green);
    EXPECT_NE(image.pixel(330, 219), green);
    mask->setIconImage(icon(20, 10));
    EXPECT_NE(seen().pixel(270, 180), green) << "a new image comes in its own size";
}

TEST_F(MaskViewTest, LaysOutTheHintsOnBothSidesOfTheLine)
{
    QWidget* const left = mask->leftHintWidget();
    QWidget* const right = mask->rightHintWidget();
    EXPECT_EQ(left->parentWidget(), mask);
    EXPECT_EQ(right->parentWidget(), mask);
    EXPECT_EQ(mask->leftHintWidget(), left);
    EXPECT_EQ(mask->rightHintWidget(), right);
    EXPECT_TRUE(qobject_cast<LabCompareHintRightWidget*>(right));
    const QRect before = left->geometry();
    dragged({300, 10}, {310, 10});
    EXPECT_EQ(left->geometry(), before) << "without an area nothing is laid out";
    dragged({310, 10}, {300, 10});

    mask->setHintRect({50, 30, 500, 370});
    EXPECT_EQ(left->geometry(), QRect(50, 30, 250, 120));
    EXPECT_EQ(right->geometry(), QRect(299, 30, 250, 120));
    EXPECT_EQ(right->mask(), QRegion(2, 0, 249, 120));
    dragged({300, 10}, {450, 10});
    EXPECT_EQ(left->geometry(), QRect(50, 30, 400, 120));
    EXPECT_EQ(right->geometry(), QRect(299, 30, 250, 120));
    EXPECT_EQ(right->mask(), QRegion(152, 0, 99, 120));
    dragged({450, 10}, {590, 10});
    EXPECT_EQ(right->mask(), QRegion(250, 0, 1, 120)) << "no further than the container";
    dragged({590, 10}, {100, 10});
    EXPECT_EQ(left->geometry(), QRect(50, 30, 50, 120));
    EXPECT_EQ(right->mask(), QRegion(-198, 0, 449, 120));
    mask->setHintRect({});
    EXPECT_EQ(left->geometry(), QRect(50, 30, 50, 120));
}

TEST_F(MaskViewTest, MakesTheHintsInTheAreaThatIsThere)
{
    mask->setHintRect({0, 0, 600, 400});
    EXPECT_TRUE(mask->findChildren<QWidget*>().isEmpty()) << "none before they are asked for";
    EXPECT_EQ(mask->rightHintWidget()->geometry(), QRect(299, 0, 300, 120));
    EXPECT_EQ(mask->leftHintWidget()->geometry(), QRect(0, 0, 300, 120));
    EXPECT_EQ(mask->findChildren<QWidget*>().size(), 2);
}

TEST_F(MaskViewTest, ALimitThatMovesTheLineLaysOutTheHints)
{
    mask->setHintRect({0, 0, 600, 400});
    QWidget* const left = mask->leftHintWidget();
    mask->setLimitRect({100, 0, 101, 400});
    EXPECT_EQ(left->width(), 200);
}

TEST_F(MaskViewTest, TakesMeasuresThatMakeNoSense)
{
    constexpr int huge = std::numeric_limits<int>::max();
    for (const int width : {0, -5, huge, -huge}) {
        mask->setControlWidth(width);
        mask->setLineWidth(std::min(width, 100000));
        mask->setIconImage(icon(3, 3));
        mask->setIconSize({width % 100000, -5});
        seen();
        mask->moveToCenter();
    }
    mask->setIconImage({});
    mask->setIconSize({});
    mask->setLineColor({});
    mask->setLimitRect({200, 0, 0, 400});
    mask->setHintRect({0, 0, 0, 400});
    mask->leftHintWidget();
    mask->rightHintWidget();
    seen();
    host->resize(0, 0);
    host->resize(600, 400);
    ASSERT_TRUE(becomes({600, 400}));
    EXPECT_EQ(mask->iconY(), 200.0);
}

TEST_F(MaskViewTest, TakesTheMouseBeforeItIsShown)
{
    LabCompareMaskView fresh(nullptr);
    fresh.setIconImage(icon(200, 200));
    for (const auto type :
         {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
        const QPointF point = type == QEvent::MouseButtonPress ? QPointF(5, 5) : QPointF(9, 9);
        QMouseEvent event(type, point, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&fresh, &event);
    }
    EXPECT_EQ(fresh.lineX(), 4.0);
    EXPECT_EQ(fresh.iconY(), 4.0);
    fresh.resize(600, 400);
    fresh.grab();
    EXPECT_EQ(fresh.lineX(), 300.0);
    EXPECT_EQ(fresh.iconY(), 200.0);
}

TEST_F(MaskViewTest, HasTwoSignals)
{
    const QMetaObject& metaObject = LabCompareMaskView::staticMetaObject;
    EXPECT_EQ(ownMethods(metaObject), (std::vector<std::string>{"maskCompareEvent(QPointF)",
                                                                "maskChangeSize(QSize,QSize)"}));
    const QMetaMethod compare = metaObject.method(metaObject.methodOffset());
    const QMetaMethod change = metaObject.method(metaObject.methodOffset() + 1);
    EXPECT_EQ(compare.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(compare.parameterNames(), QList<QByteArray>{"point"});
    EXPECT_EQ(change.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(change.parameterNames(), (QList<QByteArray>{"size", "oldSize"}));
}

TEST_F(MaskViewTest, TellsItsEnd)
{
    DebugLines lines;
    delete mask;
    EXPECT_EQ(lines.take(), QStringList{"mask View delete"});
}
