// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "CompareStage.h"
#include "PlayerMedia.h"

#include <norvel/widgets/player/LabCompareMaskView.h>

#include <support/TestMedia.h>

#include <QElapsedTimer>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <set>

using namespace qrvkp;

namespace {

/// What a compare player shows of a red file, the first, and a blue one, the second.
class ComparePictureTest : public CompareStage
{
protected:
    ComparePictureTest()
    {
        QObject::connect(&player(), &RvKpPlayer::sigPictureRendered, [this](const QImage& picture) {
            ++m_seen.pictures;
            if (!picture.isNull())
                m_seen.numbers.insert(TestMedia::frameNumber(picture));
        });
    }

    QImage seen() { return view().grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// Drags the line to this x of the view.
    void dragLineTo(int x)
    {
        const int from = static_cast<int>(mask()->lineX());
        drag(*mask(), {from, 20}, {x, 20});
        ASSERT_EQ(mask()->lineX(), x);
    }

    static bool isRed(QRgb pixel)
    {
        return qRed(pixel) > 245 && qGreen(pixel) < 10 && qBlue(pixel) < 10;
    }
    static bool isBlue(QRgb pixel)
    {
        return qRed(pixel) < 10 && qGreen(pixel) < 10 && qBlue(pixel) > 245;
    }

    /// The columns of the view that the canvas covers altogether.
    std::pair<int, int> canvasColumns()
    {
        const double left = application.convertCanvasToView({0, 0}).x();
        const double right = application.convertCanvasToView({1920, 0}).x();
        return {std::max(0, static_cast<int>(std::ceil(left))),
                std::min(view().width(), static_cast<int>(std::floor(right)))};
    }

    /// The first column of the canvas that has another colour than it should have, blue up to
    /// `end`, and red from `begin` on; -1 when there is none.
    int wrongColumn(int end, int begin)
    {
        const QImage image = seen();
        const auto [left, right] = canvasColumns();
        const int top = static_cast<int>(std::ceil(application.convertCanvasToView({0, 1080}).y()));
        const int bottom = static_cast<int>(application.convertCanvasToView({0, 0}).y());
        for (int x = left; x < right; ++x) {
            if (x >= end && x < begin)
                continue;
            for (const int y : {std::max(top, 0) + 1, view().height() / 2,
                                std::min(bottom, view().height()) - 2}) {
                const QRgb pixel = image.pixel(x, y);
                if (!(x < end ? isBlue(pixel) : isRed(pixel)))
                    return x;
            }
        }
        return -1;
    }

    /// Everything left of the line becomes blue, everything right of it red, but for a px on either
    /// side of the line's own.
    testing::AssertionResult becomesSplitAt(int line)
    {
        int wrong = -1;
        const auto isSplit = [&] { return (wrong = wrongColumn(line - 1, line + 2)) < 0; };
        if (QTest::qWaitFor(isSplit, PatienceMs))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "with the line at " << line << " column " << wrong << " is wrong";
    }

    /// What came in some time of playing a numbered video.
    struct Seen
    {
        int pictures = 0;
        std::set<int> numbers; ///< of its pictures; -1 where both sides do not show the same one
    };

    bool hasBegun() const
    {
        const auto first = m_seen.numbers.upper_bound(0);
        return first != m_seen.numbers.end() && *first <= 12;
    }

    /// What comes in this time from the start on while `act` is called again and again.
    template <class Act>
    Seen seenWhile(int milliseconds, const Act& act)
    {
        player().seekTo(0, true);
        player().start(); // it may have come to its end
        m_seen = {};
        EXPECT_TRUE(QTest::qWaitFor([&] { return hasBegun(); }, PatienceMs));
        m_seen = {};
        QElapsedTimer time;
        time.start();
        static_cast<void>(QTest::qWaitFor(
            [&] {
                act();
                return time.elapsed() >= milliseconds;
            },
            PatienceMs));
        return m_seen;
    }

    Seen m_seen;
    const QString m_red = PlayerMedia::red(320, 180, 1.0);
    const QString m_blue = PlayerMedia::blue(320, 180, 1.0);
};

} // namespace

TEST_F(ComparePictureTest, ShowsTheSecondFileLeftOfTheLineAndTheFirstRightOfIt)
{
    showPair(m_red, m_blue, true);
    EXPECT_TRUE(becomesSplitAt(480));
    for (const int x : {100, 101, 333, 720, 959, 3, 480}) {
        dragLineTo(x);
        EXPECT_TRUE(becomesSplitAt(x));
    }
}

TEST_F(ComparePictureTest, ShowsWhatWasSetUpBeforeItWasShown)
{
    delete widget;
    widget = new QLabComparePlayer(&application, window.get(), false);
    QWidget* const left = widget->getLeftHintWidget();
    showPair(m_red, m_blue, true);
    widget->resize(960, 540);
    widget->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return mask()->size() == QSize(960, 540); }, PatienceMs));
    EXPECT_TRUE(becomesSplitAt(480));
    EXPECT_EQ(mask()->lineX(), 480.0);
    EXPECT_EQ(mask()->limitRect(), QRect(0, 0, 960, 540));
    EXPECT_EQ(left->geometry(), QRect(0, 0, 480, 120));
}

TEST_F(ComparePictureTest, SplitsACanvasOfANewSizeAtTheLine)
{
    showPair(m_red, m_blue, true);
    dragLineTo(600);
    for (const QSize& size : {QSize(480, 540), QSize(960, 300), QSize(960, 540)}) {
        widget->resize(size);
        widget->updateEffect();
        EXPECT_EQ(mask()->size(), size);
        EXPECT_TRUE(becomesSplitAt(static_cast<int>(mask()->lineX()))) << size.width();
    }
    EXPECT_NEAR(mask()->lineX(), 600.0, 1.0);
}

TEST_F(ComparePictureTest, SplitsAtTheLineAfterANewSizeWhileItWasHidden)
{
    showPair(m_red, m_blue, true);
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    widget->resize(480, 270);
    QTest::qWait(0);
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    EXPECT_EQ(mask()->lineX(), 240.0);
    EXPECT_TRUE(becomesSplitAt(240));
}

TEST_F(ComparePictureTest, SplitsFilesOfDifferentLengthToTheEnd)
{
    const QString longerRed = PlayerMedia::red(320, 180, 3.0);
    const QString longerBlue = PlayerMedia::blue(320, 180, 3.0);
    for (const auto& [first, second] :
         {std::pair(m_red, longerBlue), std::pair(longerRed, m_blue)}) {
        showPair(first, second, true);
        EXPECT_EQ(player().getDuration(), 3000);
        for (const int position : {500, 1500, 3000}) {
            player().seekTo(position, true);
            dragLineTo(200 + position / 10);
            EXPECT_TRUE(becomesSplitAt(200 + position / 10)) << position;
        }
    }
}

TEST_F(ComparePictureTest, TheShorterFileStaysOnItsLastPicture)
{
    const QString shorter = PlayerMedia::numbers(10);
    const QString longer = PlayerMedia::numbers(50);
    const auto becomesNumber = [this](int number) {
        return QTest::qWaitFor([&] { return TestMedia::frameNumber(seen()) == number; },
                               PatienceMs);
    };
    const auto expectNumbers = [&](QLabComparePlayer::QLabShowType shorterSide,
                                   QLabComparePlayer::QLabShowType longerSide) {
        for (const int position : {1000, 1900}) {
            player().seekTo(position, true);
            widget->setupShowType(shorterSide);
            EXPECT_TRUE(becomesNumber(9)) << position;
            widget->setupShowType(longerSide);
            EXPECT_TRUE(becomesNumber(position / 40)) << position;
        }
    };
    showPair(shorter, longer, true);
    expectNumbers(QLabComparePlayer::QLabShowEdgeLeft, QLabComparePlayer::QLabShowEdgeRight);
    showPair(longer, shorter, true);
    expectNumbers(QLabComparePlayer::QLabShowEdgeRight, QLabComparePlayer::QLabShowEdgeLeft);
}

TEST_F(ComparePictureTest, SplitsASecondPairAtTheLineThatWasDragged)
{
    showPair(m_red, m_blue, true);
    dragLineTo(300);
    EXPECT_TRUE(becomesSplitAt(300));
    showPair(m_red, m_blue, true);
    EXPECT_EQ(mask()->lineX(), 300.0);
    EXPECT_TRUE(becomesSplitAt(300));
}

TEST_F(ComparePictureTest, SplitsASmallerSecondPictureAtItsEdge)
{
    showPair(m_red, m_blue, true);
    dragLineTo(100);
    // The upper picture is in the columns 209 to 750: all of it is right of the line.
    showPair(PlayerMedia::red(192, 192, 1.0), m_blue, true);
    EXPECT_EQ(mask()->lineX(), 209.0);
    const auto isRight = [this] {
        const QImage image = seen();
        return isBlue(image.pixel(100, 270)) && isBlue(image.pixel(207, 270)) &&
               isRed(image.pixel(212, 270)) && isRed(image.pixel(747, 270)) &&
               isBlue(image.pixel(752, 270));
    };
    EXPECT_TRUE(QTest::qWaitFor(isRight, PatienceMs));
}

TEST_F(ComparePictureTest, SplitsPicturesTheSameWay)
{
    showPair(PlayerMedia::picture(Qt::red, 640, 360), PlayerMedia::picture(Qt::blue, 1920, 1080),
             false);
    EXPECT_TRUE(becomesSplitAt(480));
    for (const int x : {200, 777}) {
        dragLineTo(x);
        EXPECT_TRUE(becomesSplitAt(x));
    }
}

TEST_F(ComparePictureTest, SplitsAZoomedAndMovedCanvasAtTheLine)
{
    showPair(m_red, m_blue, true);
    EXPECT_TRUE(becomesSplitAt(480));
    struct Place
    {
        float scale;
        QPointF position;
    };
    for (const Place& place :
         {Place{0.5F, {0, 0}}, Place{0.7F, {33, -21}}, Place{1.0F, {-90, 40}},
          Place{1.5F, {120, -50}}, Place{2.0F, {-211, 90}}, Place{3.0F, {400, 0}}}) {
        application.setCanvasScale(place.scale);
        application.setCanvasPosition(static_cast<float>(place.position.x()),
                                      static_cast<float>(place.position.y()));
        widget->updateEffect();
        EXPECT_TRUE(becomesSplitAt(static_cast<int>(mask()->lineX()))) << place.scale;
        const auto [left, right] = canvasColumns();
        for (const int share : {25, 60, 95}) {
            const int x = left + (right - left) * share / 100;
            dragLineTo(x);
            EXPECT_TRUE(becomesSplitAt(x)) << place.scale;
        }
    }
}

TEST_F(ComparePictureTest, ShowsOneFileAloneOverTheWholeCanvas)
{
    showPair(m_red, m_blue, true);
    dragLineTo(300);
    EXPECT_TRUE(becomesSplitAt(300));
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeLeft);
    EXPECT_TRUE(QTest::qWaitFor([&] { return wrongColumn(0, 0) < 0; }, PatienceMs))
        << wrongColumn(0, 0) << " is not red";
    widget->setupShowType(QLabComparePlayer::QLabShowEdgeRight);
    EXPECT_TRUE(QTest::qWaitFor([&] { return wrongColumn(960, 960) < 0; }, PatienceMs))
        << wrongColumn(960, 960) << " is not blue";
    widget->setupShowType(QLabComparePlayer::QLabShowSplit);
    EXPECT_TRUE(becomesSplitAt(300));
}

TEST_F(ComparePictureTest, FollowsTheLineWhileItPlays)
{
    showPair(PlayerMedia::red(320, 180, 8.0), PlayerMedia::blue(320, 180, 8.0), true);
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    for (const int x : {200, 700, 450}) {
        dragLineTo(x);
        EXPECT_TRUE(becomesSplitAt(x));
    }
    EXPECT_TRUE(player().isPlaying());
}

TEST_F(ComparePictureTest, PlaysAsFastDuringADrag)
{
    // Of different lengths, so that the matte moves with every step of the line.
    showPair(PlayerMedia::numbers(75), PlayerMedia::numbers(80), true);
    ASSERT_FALSE(mask()->throttle());
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
    constexpr int periodMs = 1500;
    constexpr double share = 0.9;
    const auto keepsUp = [](std::size_t dragged, std::size_t still) {
        return still >= 5 && static_cast<double>(dragged) >= share * static_cast<double>(still);
    };
    // Other programs on the processors delay pictures, now here and now there.
    QElapsedTimer timer;
    timer.start();
    bool isAsFast = false;
    while (!isAsFast && !timer.hasExpired(PatienceMs)) {
        const Seen still = seenWhile(periodMs, [] {});
        press(*mask(), {static_cast<int>(mask()->lineX()), 20});
        int steps = 0;
        const Seen dragged = seenWhile(periodMs, [&] {
            ++steps;
            move(*mask(), {480 + 300 * (steps % 40 - 20) / 20, 20});
        });
        release(*mask(), {static_cast<int>(mask()->lineX()), 20});
        std::cout << still.pictures << " pictures of " << still.numbers.size()
                  << " without a drag, " << dragged.pictures << " of " << dragged.numbers.size()
                  << " during one of " << steps << " steps\n";
        EXPECT_EQ(still.numbers.count(-1), 0U) << "both sides show the same picture";
        EXPECT_EQ(dragged.numbers.count(-1), 0U);
        isAsFast = steps >= 20 && player().isPlaying() &&
                   keepsUp(static_cast<std::size_t>(dragged.pictures),
                           static_cast<std::size_t>(still.pictures)) &&
                   keepsUp(dragged.numbers.size(), still.numbers.size());
    }
    EXPECT_TRUE(isAsFast);
}
