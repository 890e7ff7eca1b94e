// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "PaintedSource.h"
#include "SceneSketch.h"
#include "WarningCapture.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

using rvengine::Compositor;
using rvengine::Layer;
using rvengine::LayerKind;
using rvengine::Placement;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr QSize CanvasSize(320, 180);
const QColor Background(64, 64, 64);

/// How far two colours are apart in the channel that differs most.
int difference(const QColor& a, const QColor& b)
{
    return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                     std::abs(a.blue() - b.blue())});
}

QColor blend(const QColor& below, const QColor& above, double alpha)
{
    const auto channel = [alpha](int from, int to) {
        return static_cast<int>(std::lround(from + (to - from) * alpha));
    };
    return {channel(below.red(), above.red()), channel(below.green(), above.green()),
            channel(below.blue(), above.blue())};
}

class CompositorTest : public testing::Test
{
protected:
    Layer layer(const char* source) const { return m_sketch.picture(source); }

    Layer layer(const char* source, const Placement& placement) const
    {
        Layer result = layer(source);
        result.placement = placement;
        return result;
    }

    QImage compose(long long time = 0, QSize size = CanvasSize)
    {
        return m_compositor.compose(m_sketch.scene(), time, size);
    }

    void expectOnlyColor(const QImage& picture, const QColor& color)
    {
        QImage expected(picture.size(), QImage::Format_RGB32);
        expected.fill(color);
        EXPECT_TRUE(picture == expected)
            << "at the middle: "
            << picture.pixelColor(picture.rect().center()).name().toStdString();
    }

    WarningCapture m_warnings;
    SceneSketch m_sketch;
    Compositor m_compositor{std::make_unique<PaintedSource>()};
};

/// Notes the layers that are to be prepared, and where they begin in their files.
class PreparedSource : public PaintedSource
{
public:
    using Prepared = std::vector<std::pair<std::string, double>>;

    explicit PreparedSource(Prepared& prepared)
        : m_prepared(prepared)
    {
    }

    void prepare(const Layer& layer, double fileTime) override
    {
        m_prepared.emplace_back(layer.source, fileTime);
    }

private:
    Prepared& m_prepared;
};

/// Notes the layers whose pictures are asked for.
class NotingSource : public PaintedSource
{
public:
    explicit NotingSource(std::vector<std::string>& asked)
        : m_asked(asked)
    {
    }

    QImage picture(const Layer& layer, std::uintptr_t lane, double fileTime, QSize wanted) override
    {
        m_asked.push_back(layer.source);
        return PaintedSource::picture(layer, lane, fileTime, wanted);
    }

private:
    std::vector<std::string>& m_asked;
};

struct PlacementCase
{
    const char* name;
    Placement placement;
    float alpha = 1.0F;
    QSize output = CanvasSize;
    bool storedSize = false; ///< the source gives its own size

    // Whole pixels on which the colours are not told apart: along each edge, and along the lines
    // between the quarters, where a picture of another size is interpolated.
    double edge = 1.5;
    double middle = 1.5;
};

void PrintTo(const PlacementCase& testCase, std::ostream* stream)
{
    *stream << testCase.name;
}

std::string nameOf(const testing::TestParamInfo<PlacementCase>& info)
{
    return info.param.name;
}

/// Layers whose quarters have four colours, against arithmetic on each point of the picture.
class PlacementTest : public testing::TestWithParam<PlacementCase>
{
protected:
    struct Point
    {
        QColor color;
        bool isCertain;
    };

    /// What is to be seen at a point of the canvas, y up.
    static Point expectedAt(double x, double y, double pxPerCanvasPx)
    {
        const PlacementCase& test = GetParam();
        const double angle = qDegreesToRadians(test.placement.rotation);
        const double dx = x - test.placement.center.x();
        const double dy = y - test.placement.center.y();
        // Turned back, against the clock as seen.
        const double right = dx * std::cos(angle) - dy * std::sin(angle);
        const double up = dx * std::sin(angle) + dy * std::cos(angle);
        const double halfWidth = test.placement.width * test.placement.scale / 2.0;
        const double halfHeight = test.placement.height * test.placement.scale / 2.0;
        const double outside = std::max(std::abs(right) - halfWidth, std::abs(up) - halfHeight);
        const QColor quarter =
            up > 0.0 ? (right < 0.0 ? PaintedSource::TopLeft : PaintedSource::TopRight)
                     : (right < 0.0 ? PaintedSource::BottomLeft : PaintedSource::BottomRight);
        const double alpha = static_cast<double>(test.alpha);
        const bool isCertain =
            std::abs(outside) * pxPerCanvasPx > test.edge &&
            (outside > 0.0 ||
             std::min(std::abs(right), std::abs(up)) * pxPerCanvasPx > test.middle);
        return {outside > 0.0 ? Background : blend(Background, quarter, alpha), isCertain};
    }
};

} // namespace

TEST_F(CompositorTest, IsBlackWhereNothingIs)
{
    const QImage picture = compose();

    EXPECT_EQ(picture.size(), CanvasSize);
    EXPECT_EQ(picture.format(), QImage::Format_RGB32);
    expectOnlyColor(picture, Qt::black);
}

TEST_F(CompositorTest, MakesNoPictureWithoutAnArea)
{
    m_sketch.addMain(layer("red"));

    EXPECT_TRUE(compose(0, QSize()).isNull());
    EXPECT_TRUE(compose(0, QSize(0, 180)).isNull());
    EXPECT_TRUE(compose(0, QSize(320, -1)).isNull());
}

TEST_F(CompositorTest, ShowsALayerFromItsStartUntilBeforeItsEnd)
{
    m_sketch.addMix(layer("red"), 100, 200);

    expectOnlyColor(compose(99), Qt::black);
    expectOnlyColor(compose(100), Qt::red);
    expectOnlyColor(compose(299), Qt::red);
    expectOnlyColor(compose(300), Qt::black);
}

TEST_F(CompositorTest, ShowsTheMainLineOneAfterTheOther)
{
    m_sketch.addMain(layer("red"), 100);
    m_sketch.addMain(layer("blue"), 100);

    expectOnlyColor(compose(99), Qt::red);
    expectOnlyColor(compose(100), Qt::blue);
    expectOnlyColor(compose(200), Qt::black);
    expectOnlyColor(compose(-1), Qt::black);
}

TEST_F(CompositorTest, DrawsMixLayersOverTheMainLineInTheirOrder)
{
    m_sketch.addMain(layer("red"));
    m_sketch.addMix(layer("green", {100, 100, QPointF(160, 90)}));
    m_sketch.addMix(layer("blue", {50, 50, QPointF(160, 90)}));
    const QImage picture = compose();

    EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(115, 45), QColor("green"));
    EXPECT_EQ(picture.pixelColor(160, 90), QColor(Qt::blue));
}

TEST_F(CompositorTest, DrawsAnUprightLayerWithSharpEdges)
{
    m_sketch.addMain(layer("white"));
    m_sketch.addMix(layer("red", {50, 25, QPointF(100, 120), 2.0}));

    QImage expected(CanvasSize, QImage::Format_RGB32);
    expected.fill(Qt::white);
    for (int y = 35; y < 85; ++y) {
        for (int x = 50; x < 150; ++x)
            expected.setPixelColor(x, y, Qt::red);
    }
    EXPECT_TRUE(compose() == expected);
}

TEST_F(CompositorTest, LeavesNoGapBetweenLayersThatTouch)
{
    m_sketch.addMain(layer("white"));
    m_sketch.addMix(layer("red", {106.5, 180, QPointF(53.25, 90)}));
    m_sketch.addMix(layer("red", {213.5, 180, QPointF(213.25, 90)}));

    expectOnlyColor(compose(), Qt::red);
    expectOnlyColor(compose(0, QSize(333, 187)), Qt::red);
}

TEST_F(CompositorTest, BlendsTransparentPictures)
{
    m_sketch.addMain(layer("blue"));
    m_sketch.addMix(layer("#80ff0000"));
    const QColor blended = compose().pixelColor(160, 90);
    EXPECT_LE(difference(blended, blend(Qt::blue, Qt::red, 128.0 / 255.0)), 1)
        << blended.name().toStdString();

    Layer faint = layer("#80ff0000");
    faint.alpha = 0.5F;
    m_sketch.scene().mix.clear();
    m_sketch.addMix(faint);
    const QColor fainter = compose().pixelColor(160, 90);
    EXPECT_LE(difference(fainter, blend(Qt::blue, Qt::red, 64.0 / 255.0)), 1)
        << fainter.name().toStdString();
}

TEST_F(CompositorTest, DrawsNothingOfALayerWithoutAlpha)
{
    m_sketch.addMain(layer("blue"));
    for (const float alpha : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        Layer hidden = layer("red");
        hidden.alpha = alpha;
        m_sketch.addMix(hidden);
    }

    expectOnlyColor(compose(), Qt::blue);
}

TEST_F(CompositorTest, AsksOnlyForWhatIsSeen)
{
    Layer hidden = layer("red");
    hidden.alpha = 0.0F;
    m_sketch.addMain(layer("blue"));
    m_sketch.addMix(hidden);
    m_sketch.addMix(layer("yellow", {100, 50, QPointF(-60, 90)}));
    m_sketch.addMix(layer("green"), 500, 100);
    m_sketch.addMix(m_sketch.sound("white"));
    std::vector<std::string> asked;
    Compositor(std::make_unique<NotingSource>(asked)).compose(m_sketch.scene(), 0, CanvasSize);

    EXPECT_EQ(asked, std::vector<std::string>{"blue"});
}

TEST_F(CompositorTest, TakesAnAlphaAboveOneForOne)
{
    Layer bright = layer("#404040");
    bright.alpha = 7.0F;
    m_sketch.addMain(bright);

    expectOnlyColor(compose(), QColor("#404040"));
}

TEST_F(CompositorTest, IsBlackWhereAFileCannotBeRead)
{
    m_sketch.addMain(layer("white"));
    m_sketch.addMix(layer("no colour", {100, 50, QPointF(160, 90)}));
    const QImage picture = compose();

    EXPECT_EQ(picture.pixelColor(160, 90), QColor(Qt::black));
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::white));
}

TEST_F(CompositorTest, DrawsNoSound)
{
    m_sketch.addMain(layer("blue"));
    m_sketch.addMix(m_sketch.sound("red"));

    expectOnlyColor(compose(), Qt::blue);
}

TEST_F(CompositorTest, DrawsNothingOfSenselessPlacements)
{
    m_sketch.addMain(layer("blue"));
    const QPointF middle(160, 90);
    for (const Placement& placement : {
             Placement{NaN, 90, middle},
             Placement{160, NaN, middle},
             Placement{0, 90, middle},
             Placement{160, 0, middle},
             Placement{-160, 90, middle},
             Placement{160, -90, middle},
             Placement{-160, -90, middle},
             Placement{Infinity, 90, middle},
             Placement{160, 1e300, middle},
             Placement{160, 90, QPointF(NaN, 90)},
             Placement{160, 90, QPointF(160, Infinity)},
             Placement{160, 90, QPointF(-1e300, 1e300)},
             Placement{160, 90, QPointF(1e12, 90)},
             Placement{160, 90, middle, 0.0},
             Placement{160, 90, middle, -1.0},
             Placement{160, 90, middle, NaN},
             Placement{160, 90, middle, Infinity},
             Placement{160, 90, middle, -Infinity},
             Placement{160, 90, middle, 1e300},
             Placement{160, 90, middle, 1.0, NaN},
             Placement{160, 90, middle, 1.0, Infinity},
         })
        m_sketch.addMix(layer("red", placement));

    expectOnlyColor(compose(), Qt::blue);
}

TEST_F(CompositorTest, TakesARotationOfManyTurns)
{
    m_sketch.addMain(layer("white"));
    m_sketch.addMix(layer("red", {100, 50, QPointF(160, 90), 1.0, 360.0 * 1e6 + 90.0}));
    const QImage picture = compose();

    EXPECT_EQ(picture.pixelColor(160, 45), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(115, 90), QColor(Qt::white));
}

TEST_F(CompositorTest, DrawsALayerSmallerThanAPixelAsOne)
{
    m_sketch.addMain(layer("white"));
    m_sketch.addMix(layer("red", {160, 90, QPointF(160.25, 89.75), 1e-9}));
    m_sketch.addMix(layer("blue", {0.2, 90, QPointF(80.25, 90)}));
    m_sketch.addMix(layer("blue", {100, 0.2, QPointF(160, 150.25)}));

    QImage expected(CanvasSize, QImage::Format_RGB32);
    expected.fill(Qt::white);
    expected.setPixelColor(160, 90, Qt::red);
    for (int y = 45; y < 135; ++y)
        expected.setPixelColor(80, y, Qt::blue);
    for (int x = 110; x < 210; ++x)
        expected.setPixelColor(x, 30, Qt::blue);
    EXPECT_TRUE(compose() == expected);
}

TEST_F(CompositorTest, SurvivesACanvasWithoutASensibleSize)
{
    const Layer red = layer("red");
    for (const QSizeF canvas : {QSizeF(0, 0), QSizeF(-320, 180), QSizeF(NaN, 180),
                                QSizeF(320, Infinity), QSizeF(1e300, 1e300), QSizeF(1e-300, 1)}) {
        SceneSketch sketch(canvas);
        sketch.addMain(red);
        EXPECT_EQ(m_compositor.compose(sketch.scene(), 0, CanvasSize).size(), CanvasSize);
    }
}

TEST_F(CompositorTest, PreparesWhatComesIntoViewSoonTheEarliestFirst)
{
    Layer trimmed = layer("green");
    trimmed.fileStart = 700;
    Layer unseen = layer("cyan");
    unseen.alpha = 0.0F;
    m_sketch.addMain(layer("red"), 3000);
    m_sketch.addMain(trimmed, 1000);
    m_sketch.addMain(layer("blue"), 1000);
    m_sketch.addMix(layer("white"), 2999, 1000);
    m_sketch.addMix(unseen, 3000, 1000);
    m_sketch.addMix(m_sketch.sound("a tone"), 3000, 1000);
    PreparedSource::Prepared prepared;
    Compositor compositor(std::make_unique<PreparedSource>(prepared));
    const auto preparedAt = [&](long long time) {
        compositor.prepare(m_sketch.scene(), time);
        return std::exchange(prepared, {});
    };
    const PreparedSource::Prepared none;
    const PreparedSource::Prepared next{{"white", 0.0}, {"green", 700.0}};
    EXPECT_EQ(preparedAt(0), none);
    EXPECT_EQ(preparedAt(998), none);
    EXPECT_EQ(preparedAt(1000), next);
    EXPECT_EQ(preparedAt(2998),
              (PreparedSource::Prepared{{"white", 0.0}, {"green", 700.0}, {"blue", 0.0}}));
    EXPECT_EQ(preparedAt(3000), (PreparedSource::Prepared{{"blue", 0.0}}));
    EXPECT_EQ(preparedAt(4000), none);
    EXPECT_EQ(preparedAt(std::numeric_limits<long long>::max()), none);
    EXPECT_EQ(preparedAt(std::numeric_limits<long long>::min()), none);
}

TEST_F(CompositorTest, PreparesNoPartOfAClipThatGoesOnInTheNextOne)
{
    Layer second = layer("red");
    second.fileStart = 1000;
    Layer fast = second;
    fast.fileStart = 2000;
    fast.speed = 2.0;
    Layer away = second;
    away.fileStart = 4500;
    for (const Layer& part : {layer("red"), second, fast, away})
        m_sketch.addMain(part, 1000);
    PreparedSource::Prepared prepared;
    Compositor compositor(std::make_unique<PreparedSource>(prepared));
    for (const long long time : {0, 1500})
        compositor.prepare(m_sketch.scene(), time);
    EXPECT_EQ(prepared, (PreparedSource::Prepared{{"red", 4500.0}}));
}

TEST_F(CompositorTest, SurvivesTimesAtTheEndsOfTime)
{
    constexpr long long first = std::numeric_limits<long long>::min();
    constexpr long long last = std::numeric_limits<long long>::max();
    m_sketch.addMix(layer("red"), 0, last);
    m_sketch.addMix(layer("blue"), first, last);
    m_sketch.scene().mix.back().end = last;
    m_sketch.scene().duration = last;

    expectOnlyColor(compose(0), Qt::blue);
    expectOnlyColor(compose(last - 1), Qt::blue);
    expectOnlyColor(compose(first), Qt::blue);
}

TEST_P(PlacementTest, IsWhereItBelongs)
{
    const PlacementCase& test = GetParam();
    SceneSketch sketch;
    sketch.addMain(sketch.picture(Background.name().toStdString()));
    Layer layer = sketch.picture(PaintedSource::Quarters);
    layer.placement = test.placement;
    layer.alpha = test.alpha;
    sketch.addMix(layer);
    Compositor compositor(std::make_unique<PaintedSource>(QSize(64, 64), test.storedSize));
    const QImage picture = compositor.compose(sketch.scene(), 0, test.output);
    ASSERT_EQ(picture.size(), test.output);

    const double scale = static_cast<double>(test.output.width()) / CanvasSize.width();
    int wrong = 0;
    int certain = 0;
    for (int row = 0; row < picture.height(); ++row) {
        for (int column = 0; column < picture.width(); ++column) {
            const Point expected = expectedAt((column + 0.5) / scale,
                                              CanvasSize.height() - (row + 0.5) / scale, scale);
            certain += expected.isCertain ? 1 : 0;
            const QColor actual = picture.pixelColor(column, row);
            if (expected.isCertain && difference(actual, expected.color) > 2 && ++wrong == 1) {
                ADD_FAILURE() << "at " << column << ", " << row << ": "
                              << actual.name().toStdString() << " instead of "
                              << expected.color.name().toStdString();
            }
        }
    }
    EXPECT_EQ(wrong, 0) << "pixels of another colour";
    EXPECT_GT(certain, picture.width() * picture.height() / 20);
}

INSTANTIATE_TEST_SUITE_P(
    All, PlacementTest,
    testing::Values(
        PlacementCase{"Centred", {160, 90, {160, 90}}},
        PlacementCase{"HighAndLeft", {100, 60, {60, 140}}},
        PlacementCase{"ScaledUp", {40, 30, {160, 90}, 3.5}},
        PlacementCase{"ScaledDown", {640, 480, {200, 60}, 0.2}},
        PlacementCase{"StretchedWide", {300, 20, {160, 90}}},
        PlacementCase{"StretchedHigh", {20, 170, {100, 90}}},
        PlacementCase{"AQuarterTurn", {120, 60, {160, 90}, 1.0, 90.0}},
        PlacementCase{"AHalfTurn", {120, 60, {160, 90}, 1.0, 180.0}},
        PlacementCase{"ThreeQuarterTurns", {120, 60, {160, 90}, 1.0, 270.0}},
        PlacementCase{"AQuarterTurnBack", {120, 60, {160, 90}, 1.0, -90.0}},
        PlacementCase{"AWholeTurn", {120, 60, {160, 90}, 1.0, 360.0}},
        PlacementCase{"ATurn", {120, 60, {140, 100}, 1.2, 33.0}},
        PlacementCase{"ATurnBack", {120, 60, {140, 100}, 0.8, -117.5}},
        PlacementCase{"PartlyOutside", {200, 120, {10, 170}}},
        PlacementCase{"TurnedAndPartlyOutside", {200, 120, {310, 20}, 1.0, 45.0}},
        PlacementCase{"Outside", {100, 50, {-60, 90}}},
        PlacementCase{"TurnedOutside", {100, 50, {160, 300}, 1.0, 20.0}},
        PlacementCase{"HalfTransparent", {160, 90, {160, 90}}, 0.5F},
        PlacementCase{"HalfTransparentAndTurned", {160, 90, {160, 90}, 1.0, 30.0}, 0.5F},
        PlacementCase{"Hidden", {160, 90, {160, 90}}, 0.0F},
        PlacementCase{"OnALargerOutput", {120, 60, {100, 60}, 1.2, 20.0}, 1.0F, {640, 360}},
        PlacementCase{"OnASmallerOutput", {120, 60, {100, 60}, 1.2}, 1.0F, {160, 90}},
        PlacementCase{"OnATinyOutput", {160, 90, {80, 135}}, 1.0F, {16, 9}},
        PlacementCase{"OfItsOwnSize", {160, 90, {160, 90}}, 1.0F, CanvasSize, true, 1.5, 3.0},
        PlacementCase{"OfItsOwnSizeTurned",
                      {160, 90, {160, 90}, 1.0, 50.0},
                      1.0F,
                      CanvasSize,
                      true,
                      1.5,
                      3.0},
        PlacementCase{
            "OfItsOwnSizePartlyOutside", {300, 150, {20, 20}}, 1.0F, CanvasSize, true, 1.5, 5.0},
        PlacementCase{
            "MuchLarger", {320, 180, {-300, 400}, 40.0}, 1.0F, CanvasSize, true, 1.5, 110.0},
        PlacementCase{
            "VeryMuchLarger", {320, 180, {8000, 90}, 50.0}, 1.0F, CanvasSize, true, 1.5, 80.0},
        PlacementCase{"VeryMuchLargerTurned",
                      {320, 180, {0, 6000}, 100.0, 10.0},
                      1.0F,
                      CanvasSize,
                      true,
                      1.5,
                      260.0}),
    nameOf);
