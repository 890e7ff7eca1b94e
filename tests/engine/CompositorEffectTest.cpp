// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "PaintedSource.h"
#include "SceneSketch.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QTemporaryDir>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>

using rvengine::Compositor;
using rvengine::EffectTarget;
using rvengine::Layer;
using rvengine::LayerKind;
using rvengine::LiquifyStroke;
using rvengine::MatteShape;
using rvengine::Placement;

namespace {

constexpr QSize CanvasSize(320, 180);
/// Colours of which the negative differs in every channel.
constexpr const char* Dark = "#102030";
constexpr const char* Bright = "#efdfcf";

/// A colour table that makes the negative of each colour.
const char* const Negative = "LUT_3D_SIZE 2\n"
                             "1 1 1\n0 1 1\n1 0 1\n0 0 1\n"
                             "1 1 0\n0 1 0\n1 0 0\n0 0 0\n";

/// A scene with effects: a white main layer, and a red one of 200 x 100 in the middle over it.
class CompositorEffectTest : public testing::Test
{
protected:
    CompositorEffectTest()
    {
        m_sketch.addMain(m_sketch.picture("white"));
        m_red = m_sketch.picture("red");
        m_red.placement = Placement{200, 100, QPointF(160, 90)};
        m_sketch.addMix(m_red);
    }

    QColor colorAt(int x, int y, long long time = 0) { return composed(time).pixelColor(x, y); }

    QImage composed(long long time = 0, QSize size = CanvasSize)
    {
        return m_compositor.compose(m_sketch.scene(), time, size);
    }

    /// A matte of a box of 80 x 40 with its middle at `center` whose `part` is seen through.
    Layer matte(QPointF center, QRectF part = QRectF(0, 0, 80, 40), bool limited = true) const
    {
        MatteShape shape;
        shape.box = QSizeF(80, 40);
        shape.path.addRect(part);
        shape.limitedToBox = limited;
        Layer layer = m_sketch.layer(LayerKind::Matte, "");
        layer.matte = std::make_shared<const MatteShape>(shape);
        layer.matteCenter = center;
        return layer;
    }

    Layer filter(float strength = 1.0F) const
    {
        Layer layer = m_sketch.layer(LayerKind::Filter,
                                     TestMedia::file(m_folder.path(), "negative.cube", Negative));
        layer.strength = strength;
        return layer;
    }

    /// Pushes what is at the middle of a picture of that size to the right by 20 px.
    Layer push(QPointF middle) const
    {
        LiquifyStroke stroke;
        stroke.center = stroke.from = middle;
        stroke.to = middle + QPointF(20, 0);
        stroke.radius = 40;
        stroke.strength = 1;
        Layer layer = m_sketch.layer(LayerKind::Liquify, "");
        layer.strokes = {stroke};
        return layer;
    }

    /// Puts a layer over all others that shows quarters of four colours.
    Layer addQuarters(const Placement& placement)
    {
        Layer quarters = m_sketch.picture(PaintedSource::Quarters);
        quarters.placement = placement;
        m_sketch.addMix(quarters);
        return quarters;
    }

    /// The x of the first pixel from the left in a row that has the colour.
    static int firstOf(const QImage& picture, int row, const QColor& color)
    {
        int x = 0;
        while (x < picture.width() && picture.pixelColor(x, row) != color)
            ++x;
        return x;
    }

    WarningCapture m_warnings;
    QTemporaryDir m_folder;
    SceneSketch m_sketch;
    Layer m_red;
    Compositor m_compositor{std::make_unique<PaintedSource>()};
};

const QColor Red(Qt::red);
const QColor White(Qt::white);
const QColor Black(Qt::black);

} // namespace

TEST_F(CompositorEffectTest, AMatteOnALayerCutsThatLayerAlone)
{
    // 160 to 240 from the left, 110 to 150 from the bottom; the layer ends at 140.
    m_sketch.addBoundEffect(matte(QPointF(200, 130)), m_red.key);
    const QImage picture = composed();

    EXPECT_EQ(picture.pixelColor(200, 50), Red);
    EXPECT_EQ(picture.pixelColor(162, 42), Red);
    EXPECT_EQ(picture.pixelColor(237, 67), Red);
    EXPECT_EQ(picture.pixelColor(200, 37), White); // within the matte, above the layer
    EXPECT_EQ(picture.pixelColor(157, 50), White);
    EXPECT_EQ(picture.pixelColor(243, 50), White);
    EXPECT_EQ(picture.pixelColor(200, 73), White);
    EXPECT_EQ(picture.pixelColor(10, 10), White);
}

TEST_F(CompositorEffectTest, AMatteOnTheCanvasBlackensWhatIsOutside)
{
    m_sketch.addEffect(matte(QPointF(200, 130)), EffectTarget::Canvas);
    const QImage picture = composed();

    EXPECT_EQ(picture.pixelColor(200, 50), Red);
    EXPECT_EQ(picture.pixelColor(200, 37), White);
    EXPECT_EQ(picture.pixelColor(157, 50), Black);
    EXPECT_EQ(picture.pixelColor(10, 10), Black);
}

TEST_F(CompositorEffectTest, AMatteOnWhatIsBelowLeavesWhatIsAbove)
{
    m_sketch.addEffect(matte(QPointF(160, 90)), EffectTarget::Below);
    Layer above = m_sketch.picture("blue");
    above.placement = Placement{40, 40, QPointF(30, 30)};
    m_sketch.addMix(above);
    const QImage picture = composed();

    EXPECT_EQ(picture.pixelColor(160, 90), Red);
    EXPECT_EQ(picture.pixelColor(100, 90), Black);
    EXPECT_EQ(picture.pixelColor(30, 150), QColor(Qt::blue));
}

TEST_F(CompositorEffectTest, ACanvasEffectActsOnWhatLiesAboveItToo)
{
    m_sketch.addEffect(matte(QPointF(160, 90)), EffectTarget::Canvas);
    Layer above = m_sketch.picture("blue");
    above.placement = Placement{40, 40, QPointF(30, 30)};
    m_sketch.addMix(above);

    EXPECT_EQ(colorAt(30, 150), Black);
}

TEST_F(CompositorEffectTest, AMatteThatIsNotLimitedGoesOnBeyondItsBox)
{
    // The right half of the box.
    m_sketch.addEffect(matte(QPointF(160, 90), QRectF(40, 0, 40, 40), false), EffectTarget::Canvas);
    const QImage picture = composed();

    EXPECT_EQ(picture.pixelColor(170, 90), Red);
    EXPECT_EQ(picture.pixelColor(315, 5), White);
    EXPECT_EQ(picture.pixelColor(315, 175), White);
    EXPECT_EQ(picture.pixelColor(150, 90), Black);
    EXPECT_EQ(picture.pixelColor(5, 5), Black);
}

TEST_F(CompositorEffectTest, AMatteOnALayerHasTheSameShapeAtEveryOutputSize)
{
    m_sketch.addBoundEffect(matte(QPointF(200, 130)), m_red.key);
    for (const int factor : {2, 3}) {
        const QImage picture = composed(0, CanvasSize * factor);
        EXPECT_EQ(picture.pixelColor(QPoint(162, 42) * factor), Red) << factor;
        EXPECT_EQ(picture.pixelColor(QPoint(237, 67) * factor), Red) << factor;
        EXPECT_EQ(picture.pixelColor(QPoint(157, 50) * factor), White) << factor;
        EXPECT_EQ(picture.pixelColor(QPoint(243, 50) * factor), White) << factor;
    }
}

TEST_F(CompositorEffectTest, ALayerIsSeenWhereAllItsMattesLetItThrough)
{
    m_sketch.addBoundEffect(matte(QPointF(160, 90)), m_red.key);
    m_sketch.addBoundEffect(matte(QPointF(200, 90)), m_red.key);

    EXPECT_EQ(colorAt(180, 90), Red);
    EXPECT_EQ(colorAt(140, 90), White);
    EXPECT_EQ(colorAt(220, 90), White);
}

TEST_F(CompositorEffectTest, ALayerThatIsCutKeepsItsAlpha)
{
    Layer faint = m_sketch.picture("black");
    faint.alpha = 0.5F;
    m_sketch.addMix(faint);
    m_sketch.addBoundEffect(matte(QPointF(40, 30)), faint.key);

    EXPECT_NEAR(colorAt(40, 150).red(), 128, 1);
    EXPECT_EQ(colorAt(300, 10), White);
}

TEST_F(CompositorEffectTest, AMatteOnATurnedLayerStaysUpright)
{
    m_sketch.scene().mix.clear();
    m_red.placement.rotation = 90.0;
    m_sketch.addMix(m_red);
    m_sketch.addBoundEffect(matte(QPointF(160, 90)), m_red.key);

    EXPECT_EQ(colorAt(125, 90), Red);
    EXPECT_EQ(colorAt(195, 90), Red);
    EXPECT_EQ(colorAt(160, 50), White);
}

TEST_F(CompositorEffectTest, AFilterOnALayerColoursThatLayerAlone)
{
    m_sketch.addBoundEffect(filter(), m_red.key);

    EXPECT_EQ(colorAt(160, 90), QColor(Qt::cyan));
    EXPECT_EQ(colorAt(10, 10), White);
}

TEST_F(CompositorEffectTest, AFilterOnTheCanvasColoursEverything)
{
    m_sketch.addEffect(filter(), EffectTarget::Canvas);

    EXPECT_EQ(colorAt(160, 90), QColor(Qt::cyan));
    EXPECT_EQ(colorAt(10, 10), Black);
}

TEST_F(CompositorEffectTest, AFilterOnWhatIsBelowLeavesWhatIsAbove)
{
    m_sketch.addEffect(filter(), EffectTarget::Below);
    Layer above = m_sketch.picture(Dark);
    above.placement = Placement{40, 40, QPointF(30, 30)};
    m_sketch.addMix(above);

    EXPECT_EQ(colorAt(160, 90), QColor(Qt::cyan));
    EXPECT_EQ(colorAt(30, 150), QColor(Dark));
}

TEST_F(CompositorEffectTest, AFilterActsByItsStrength)
{
    m_sketch.scene().mix.clear();
    m_sketch.addMix(m_sketch.picture(Dark));
    const QColor dark(Dark);
    const QColor bright(Bright);
    for (const float strength : {0.0F, 0.25F, 0.5F, 1.0F, -1.0F}) {
        SceneSketch sketch = m_sketch;
        sketch.addEffect(filter(strength), EffectTarget::Canvas);
        const QColor color =
            m_compositor.compose(sketch.scene(), 0, CanvasSize).pixelColor(160, 90);
        const float share = std::max(strength, 0.0F);
        const auto expected = [share](int from, int to) {
            return static_cast<float>(from) + static_cast<float>(to - from) * share;
        };
        EXPECT_NEAR(color.red(), expected(dark.red(), bright.red()), 1.5) << strength;
        EXPECT_NEAR(color.green(), expected(dark.green(), bright.green()), 1.5) << strength;
        EXPECT_NEAR(color.blue(), expected(dark.blue(), bright.blue()), 1.5) << strength;
    }
}

TEST_F(CompositorEffectTest, AFilterThatIsMissingWarnsOnceAndDoesNothing)
{
    Layer missing = m_sketch.layer(LayerKind::Filter, "/nowhere/missing.cube");
    m_sketch.addEffect(missing, EffectTarget::Canvas);
    m_sketch.addBoundEffect(missing, m_red.key);
    for (int frame = 0; frame < 10; ++frame)
        EXPECT_EQ(colorAt(160, 90, frame * 40), Red);

    EXPECT_EQ(m_warnings.take(), QStringList{"cannot read the media file /nowhere/missing.cube"});
}

TEST_F(CompositorEffectTest, AFilterWithoutStrengthReadsNoTable)
{
    Layer missing = m_sketch.layer(LayerKind::Filter, "/nowhere/missing.cube");
    for (const float strength : {0.0F, -1.0F}) {
        missing.strength = strength;
        m_sketch.addEffect(missing, EffectTarget::Canvas);
    }

    EXPECT_EQ(colorAt(160, 90), Red);
    EXPECT_EQ(m_warnings.take(), QStringList());
}

TEST_F(CompositorEffectTest, AFilterOfAnotherKindOfSourceDoesNothing)
{
    const std::string text = TestMedia::file(m_folder.path(), "filter.json", "{}");
    for (const std::string& source : {std::string(), text, m_folder.path().toStdString()})
        m_sketch.addEffect(m_sketch.layer(LayerKind::Filter, source), EffectTarget::Canvas);

    EXPECT_EQ(colorAt(160, 90), Red);
    EXPECT_EQ(colorAt(10, 10), White);
}

TEST_F(CompositorEffectTest, AFilterThatIsNoTableWarnsOnceAndDoesNothing)
{
    const std::string broken = TestMedia::file(m_folder.path(), "broken.cube", "LUT_3D_SIZE 2\n");
    m_sketch.addEffect(m_sketch.layer(LayerKind::Filter, broken), EffectTarget::Canvas);
    EXPECT_EQ(colorAt(160, 90), Red);
    EXPECT_EQ(colorAt(160, 90), Red);

    EXPECT_EQ(m_warnings.take(),
              QStringList{"cannot read the media file " + QString::fromStdString(broken)});
}

TEST_F(CompositorEffectTest, ALiquifyOnTheCanvasMovesTheCanvas)
{
    addQuarters({320, 180, QPointF(160, 90)});
    const int border = firstOf(composed(), 40, Qt::green);
    ASSERT_EQ(border, 160);
    // The middle of the stroke is in the upper half of the canvas, seen from the top.
    m_sketch.addEffect(push(QPointF(160, 40)), EffectTarget::Canvas);
    const QImage moved = composed();

    // At the middle the picture moves by 20 px, away from it by less.
    EXPECT_EQ(moved.pixelColor(165, 40), QColor(Qt::red));
    EXPECT_EQ(moved.pixelColor(185, 40), QColor(Qt::green));
    EXPECT_EQ(firstOf(moved, 84, Qt::green), border);
    EXPECT_EQ(moved.pixelColor(155, 140), QColor(Qt::blue));
    EXPECT_EQ(moved.pixelColor(165, 140), White);
}

TEST_F(CompositorEffectTest, ALiquifyOnALayerGoesByThePixelsOfThatLayer)
{
    // 640 x 360 px that are shown at half the size in the upper right corner.
    const Layer quarters = addQuarters({640, 360, QPointF(240, 135), 0.25});
    const int border = firstOf(composed(), 20, Qt::green);
    ASSERT_EQ(border, 240);
    Layer wide = push(QPointF(320, 80));
    wide.strokes.front().to = QPointF(360, 80);
    wide.strokes.front().radius = 80;
    m_sketch.addBoundEffect(wide, quarters.key);
    const QImage moved = composed();

    // 40 px of the layer are 10 of the canvas, and row 80 of it is row 20.
    EXPECT_EQ(moved.pixelColor(242, 20), QColor(Qt::red));
    EXPECT_EQ(moved.pixelColor(252, 20), QColor(Qt::green));
    EXPECT_EQ(firstOf(moved, 42, Qt::green), border);
    EXPECT_EQ(moved.pixelColor(300, 150), White);
}

TEST_F(CompositorEffectTest, AnEffectActsOnlyInItsTime)
{
    m_sketch.addEffect(filter(), EffectTarget::Canvas, 200, 100);
    m_sketch.addBoundEffect(matte(QPointF(20, 20)), m_red.key, 500, 100);

    EXPECT_EQ(colorAt(160, 90, 199), Red);
    EXPECT_EQ(colorAt(160, 90, 200), QColor(Qt::cyan));
    EXPECT_EQ(colorAt(160, 90, 299), QColor(Qt::cyan));
    EXPECT_EQ(colorAt(160, 90, 300), Red);
    EXPECT_EQ(colorAt(160, 90, 500), White);
    EXPECT_EQ(colorAt(160, 90, 600), Red);
}

TEST_F(CompositorEffectTest, AnEffectOnALayerThatIsNotThereDoesNothing)
{
    const std::uintptr_t nobody = m_sketch.picture("red").key;
    m_sketch.addBoundEffect(matte(QPointF(20, 20)), nobody);
    m_sketch.addBoundEffect(filter(), nobody);
    m_sketch.addBoundEffect(push(QPointF(160, 90)), nobody);

    EXPECT_EQ(colorAt(160, 90), Red);
    EXPECT_EQ(colorAt(10, 10), White);
}

TEST_F(CompositorEffectTest, EffectsOfALayerOfTheMainLineActOnIt)
{
    SceneSketch sketch;
    const Layer first = sketch.picture("red");
    const Layer second = sketch.picture("red");
    sketch.addMain(first, 500);
    sketch.addMain(second, 500);
    sketch.addBoundEffect(filter(), second.key);

    EXPECT_EQ(m_compositor.compose(sketch.scene(), 499, CanvasSize).pixelColor(160, 90), Red);
    EXPECT_EQ(m_compositor.compose(sketch.scene(), 500, CanvasSize).pixelColor(160, 90),
              QColor(Qt::cyan));
}

TEST_F(CompositorEffectTest, AMatteOnlyOutsideOfThePictureHidesTheLayer)
{
    m_sketch.addBoundEffect(matte(QPointF(-5000, 7000)), m_red.key);

    EXPECT_EQ(colorAt(160, 90), White);
}

TEST_F(CompositorEffectTest, AMatteGoneBackToASensibleCanvasActsAgain)
{
    constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
    m_sketch.addEffect(matte(QPointF(160, 90)), EffectTarget::Canvas);
    const QSizeF sensible = m_sketch.scene().canvas;
    for (const QSizeF canvas : {QSizeF(0, 0), QSizeF(NaN, NaN), sensible}) {
        m_sketch.scene().canvas = canvas;
        composed();
    }

    EXPECT_EQ(colorAt(160, 90), Red);
    EXPECT_EQ(colorAt(10, 10), Black);
}
