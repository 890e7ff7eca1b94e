// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/LiquifyWarp.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

using rvengine::LiquifyStroke;
using rvengine::LiquifyWarp;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr int Side = 256; // of the picture that the strokes are made for

using Strokes = std::vector<LiquifyStroke>;

LiquifyStroke push(QPointF from, QPointF to, double radius, double strength = 1.0)
{
    return {from, from, to, radius, strength, 0};
}

LiquifyStroke bloat(QPointF center, double radius, double strength = 1.0)
{
    return {center, QPointF(), QPointF(), radius, strength, 1};
}

LiquifyStroke pinch(QPointF center, double radius, double strength = 1.0)
{
    return {center, QPointF(), QPointF(), radius, strength, 2};
}

QRgb pixelAt(const QImage& picture, int x, int y)
{
    return reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x];
}

/// A picture whose red tells x and whose green tells y, 0 to 255 from one border to the other.
QImage places(int width = Side, int height = Side)
{
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgb(x * 255 / (width - 1), y * 255 / (height - 1), 77));
    }
    return picture;
}

QImage noise(QImage::Format format)
{
    QImage picture(Side, Side, format);
    std::mt19937 random(1);
    for (int y = 0; y < Side; ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < Side; ++x)
            row[x] = format == QImage::Format_RGB32 ? static_cast<QRgb>(random()) | 0xFF000000U
                                                    : qPremultiply(static_cast<QRgb>(random()));
    }
    return picture;
}

QImage warped(const Strokes& strokes, QImage picture)
{
    LiquifyWarp(strokes, QSize(Side, Side)).apply(picture);
    return picture;
}

/// Where the content of a point comes from, stroke by stroke from the last to the first.
QPointF sourceOf(const Strokes& strokes, QPointF point)
{
    for (auto stroke = strokes.rbegin(); stroke != strokes.rend(); ++stroke) {
        const QPointF offset = point - stroke->center;
        const double square = QPointF::dotProduct(offset, offset);
        const double radius = stroke->radius * stroke->radius;
        if (square >= radius)
            continue;
        const double weight = stroke->strength * std::pow(1.0 - square / radius, 2);
        if (stroke->style == 0)
            point -= weight * (stroke->to - stroke->from);
        else
            point = stroke->center + offset * (1.0 + (stroke->style == 1 ? -0.5 : 0.5) * weight);
    }
    return point;
}

/// How far the places in a warped picture are from where they should come from, at most, in px of
/// a picture of 256 px. Rounding alone makes half a px.
double greatestError(const Strokes& strokes, const QImage& picture)
{
    double error = 0.0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QPointF point((x + 0.5) * Side / picture.width(),
                                (y + 0.5) * Side / picture.height());
            const QPointF source = sourceOf(strokes, point) - QPointF(0.5, 0.5);
            const QRgb pixel = pixelAt(picture, x, y);
            error = std::max({error, std::abs(qRed(pixel) - std::clamp(source.x(), 0.0, 255.0)),
                              std::abs(qGreen(pixel) - std::clamp(source.y(), 0.0, 255.0))});
        }
    }
    return error;
}

Strokes randomStrokes(int count)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-20.0, Side + 20.0);
    std::uniform_real_distribution<double> way(-12.0, 12.0);
    std::uniform_real_distribution<double> radius(40.0, 90.0);
    std::uniform_real_distribution<double> strength(0.05, 0.3);
    Strokes strokes;
    for (int index = 0; index < count; ++index) {
        LiquifyStroke stroke;
        stroke.center = QPointF(place(random), place(random));
        stroke.from = stroke.center;
        stroke.to = stroke.from + QPointF(way(random), way(random));
        stroke.radius = radius(random);
        stroke.strength = strength(random);
        stroke.style = index % 3;
        strokes.push_back(stroke);
    }
    return strokes;
}

} // namespace

TEST(LiquifyWarpTest, ChangesNothingWithoutStrokes)
{
    const LiquifyWarp warp({}, QSize(Side, Side));
    EXPECT_TRUE(warp.isIdentity());
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        QImage picture = noise(format);
        warp.apply(picture);
        EXPECT_EQ(picture, noise(format));
    }
}

TEST(LiquifyWarpTest, PushesContentToWhereTheStrokeEnds)
{
    QImage picture(Side, Side, QImage::Format_RGB32);
    picture.fill(Qt::black);
    for (int y = 98; y <= 102; ++y) {
        for (int x = 98; x <= 102; ++x)
            picture.setPixel(x, y, qRgb(255, 255, 255));
    }
    const QImage after = warped({push({100, 100}, {112, 100}, 80)}, picture);

    EXPECT_GT(qRed(after.pixel(112, 100)), 250);
    EXPECT_EQ(qRed(after.pixel(100, 100)), 0);
}

TEST(LiquifyWarpTest, PushesByTheWeight)
{
    // At the centre the weight is the strength, at half the radius 9/16 of it.
    const QImage full = warped({push({128.5, 128.5}, {148.5, 118.5}, 80)}, places());
    EXPECT_NEAR(qRed(full.pixel(128, 128)), 108, 1);
    EXPECT_NEAR(qGreen(full.pixel(128, 128)), 138, 1);
    EXPECT_NEAR(qRed(full.pixel(168, 128)), 168 - 20 * 9.0 / 16, 1);
    EXPECT_NEAR(qRed(full.pixel(88, 128)), 88 - 20 * 9.0 / 16, 1);
    EXPECT_NEAR(qGreen(full.pixel(128, 168)), 168 + 10 * 9.0 / 16, 1);

    const QImage half = warped({push({128.5, 128.5}, {148.5, 118.5}, 80, 0.5)}, places());
    EXPECT_NEAR(qRed(half.pixel(128, 128)), 118, 1);
    EXPECT_NEAR(qGreen(half.pixel(128, 128)), 133, 1);
}

TEST(LiquifyWarpTest, BloatsAwayFromTheCentre)
{
    const QImage after = warped({bloat({128.5, 128.5}, 80)}, places());

    EXPECT_EQ(qRed(after.pixel(128, 128)), 128);
    EXPECT_NEAR(qRed(after.pixel(168, 128)), 128 + 40 * (1 - 9.0 / 32), 1);
    EXPECT_NEAR(qRed(after.pixel(88, 128)), 128 - 40 * (1 - 9.0 / 32), 1);
    EXPECT_NEAR(qGreen(after.pixel(128, 88)), 128 - 40 * (1 - 9.0 / 32), 1);
}

TEST(LiquifyWarpTest, PinchesTowardsTheCentre)
{
    const QImage after = warped({pinch({128.5, 128.5}, 80, 0.5)}, places());

    EXPECT_EQ(qRed(after.pixel(128, 128)), 128);
    EXPECT_NEAR(qRed(after.pixel(168, 128)), 128 + 40 * (1 + 9.0 / 64), 1);
    EXPECT_NEAR(qGreen(after.pixel(128, 88)), 128 - 40 * (1 + 9.0 / 64), 1);
}

TEST(LiquifyWarpTest, FollowsTheFormulaEverywhere)
{
    const std::vector<Strokes> lists = {
        {push({100, 90}, {120, 70}, 60)}, {bloat({100, 90}, 60)}, {pinch({100, 90}, 60)},
        {push({10, 250}, {30, 200}, 90)}, {bloat({0, 0}, 400)},   {pinch({300, 128}, 100)},
    };
    for (const Strokes& strokes : lists) {
        const QImage after = warped(strokes, places());
        EXPECT_NE(after, places());
        EXPECT_LT(greatestError(strokes, after), 0.7) << strokes[0].style;
    }
}

TEST(LiquifyWarpTest, ActsOnTheResultOfTheStrokeBefore)
{
    const Strokes strokes = {push({100, 128}, {140, 128}, 70), bloat({140, 128}, 60),
                             push({140, 128}, {140, 90}, 90)};
    const Strokes reversed(strokes.rbegin(), strokes.rend());
    const QImage after = warped(strokes, places());

    EXPECT_LT(greatestError(strokes, after), 0.8);
    EXPECT_GT(greatestError(reversed, after), 5.0);
}

TEST(LiquifyWarpTest, FollowsManyStrokes)
{
    const Strokes strokes = randomStrokes(400);

    EXPECT_LT(greatestError(strokes, warped(strokes, places())), 0.9);
    EXPECT_GT(greatestError(strokes, places()), 15.0);
}

TEST(LiquifyWarpTest, LeavesWhatNoStrokeReaches)
{
    const Strokes strokes = {push({60, 60}, {70, 75}, 30), bloat({200, 180}, 20)};
    const QRect reached[] = {QRect(30, 30, 61, 61), QRect(180, 160, 41, 41)};
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        const QImage before = noise(format);
        const QImage after = warped(strokes, before);
        int changes = 0;
        for (int y = 0; y < Side; ++y) {
            for (int x = 0; x < Side; ++x) {
                if (pixelAt(before, x, y) == pixelAt(after, x, y))
                    continue;
                ++changes;
                ASSERT_TRUE(reached[0].contains(x, y) || reached[1].contains(x, y))
                    << x << " " << y;
            }
        }
        EXPECT_GT(changes, 1000);
    }
}

TEST(LiquifyWarpTest, TakesAPictureOfAnotherSize)
{
    const Strokes strokes = {push({100, 90}, {120, 70}, 60), pinch({150, 150}, 80)};
    for (const QSize size : {QSize(128, 128), QSize(512, 512), QSize(512, 128), QSize(100, 300)}) {
        const QImage after = warped(strokes, places(size.width(), size.height()));
        EXPECT_EQ(after.size(), size);
        // A px of a small picture is two and more of the large one, and so is its rounding.
        EXPECT_LT(greatestError(strokes, after), 2.5) << size.width() << " " << size.height();
    }
    QImage one(1, 1, QImage::Format_RGB32);
    one.fill(qRgb(1, 2, 3));
    EXPECT_EQ(warped(strokes, one).pixel(0, 0), qRgb(1, 2, 3));
}

TEST(LiquifyWarpTest, ContinuesTheBorderOfThePicture)
{
    QImage picture(Side, Side, QImage::Format_RGB32);
    picture.fill(qRgb(0, 0, 200));
    for (int y = 0; y < Side; ++y)
        picture.setPixel(0, y, qRgb(200, 0, 0));
    const QImage after = warped({push({0, 128}, {30, 128}, 80)}, picture);

    for (int x = 0; x < 20; ++x)
        EXPECT_EQ(after.pixel(x, 128), qRgb(200, 0, 0)) << x;
    EXPECT_EQ(after.pixel(60, 128), qRgb(0, 0, 200));
}

TEST(LiquifyWarpTest, KeepsAnEvenColour)
{
    const QRgb color = qRgba(13, 99, 100, 101);
    QImage picture(Side, Side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < Side; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(y)), Side, color);

    EXPECT_EQ(warped(randomStrokes(20), picture), picture);
}

TEST(LiquifyWarpTest, KeepsColoursPremultiplied)
{
    const QImage after = warped(randomStrokes(20), noise(QImage::Format_ARGB32_Premultiplied));
    for (int y = 0; y < Side; ++y) {
        for (int x = 0; x < Side; ++x) {
            const QRgb pixel = pixelAt(after, x, y);
            ASSERT_LE(std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}), qAlpha(pixel));
        }
    }
}

TEST(LiquifyWarpTest, IgnoresBadStrokes)
{
    const LiquifyStroke good = push({100, 90}, {120, 70}, 60);
    Strokes bad;
    for (const double number : {NaN, Infinity, -Infinity}) {
        for (double LiquifyStroke::*member : {&LiquifyStroke::radius, &LiquifyStroke::strength}) {
            bad.push_back(good);
            bad.back().*member = number;
        }
        for (QPointF LiquifyStroke::*member :
             {&LiquifyStroke::center, &LiquifyStroke::from, &LiquifyStroke::to}) {
            bad.push_back(good);
            (bad.back().*member).setX(number);
            bad.push_back(good);
            (bad.back().*member).setY(number);
        }
    }
    for (const double radius : {0.0, -60.0})
        bad.push_back(push({100, 90}, {120, 70}, radius));
    for (const double strength : {0.0, -0.5})
        bad.push_back(push({100, 90}, {120, 70}, 60, strength));
    for (const int style : {-1, 3, 1000}) {
        bad.push_back(good);
        bad.back().style = style;
    }
    bad.push_back(push({100, 90}, {100, 90}, 60));
    for (std::size_t index = 0; index < bad.size(); ++index)
        EXPECT_TRUE(LiquifyWarp({bad[index]}, QSize(Side, Side)).isIdentity()) << index;

    bad.push_back(good);
    EXPECT_EQ(warped(bad, places()), warped({good}, places()));
}

TEST(LiquifyWarpTest, LimitsTheStrength)
{
    EXPECT_EQ(warped({bloat({100, 90}, 60, 50.0)}, places()),
              warped({bloat({100, 90}, 60, 1.0)}, places()));
}

TEST(LiquifyWarpTest, ChangesNothingByStrokesBesideThePicture)
{
    EXPECT_TRUE(
        LiquifyWarp({bloat({-61, 90}, 60), bloat({90, 500}, 60)}, QSize(Side, Side)).isIdentity());
    EXPECT_FALSE(LiquifyWarp({bloat({-59, 90}, 60)}, QSize(Side, Side)).isIdentity());
}

TEST(LiquifyWarpTest, FollowsContentFromBesideThePicture)
{
    // The first stroke brings content to beside the picture, the second fetches it back.
    const Strokes strokes = {push({-60, 128}, {-160, 128}, 50), push({0, 128}, {60, 128}, 80)};
    const QImage after = warped(strokes, places());

    EXPECT_LT(greatestError(strokes, after), 1.5);
    EXPECT_GT(greatestError({strokes[1]}, after), 30.0);
}

TEST(LiquifyWarpTest, SurvivesAbsurdStrokes)
{
    const Strokes absurd = {
        push({100, 90}, {1e300, -1e300}, 60),
        bloat({100, 90}, 1e308),
        pinch({1e300, 90}, 1e305),
        bloat({100, 90}, 1e-300),
        pinch({100, 90}, 0.5),
        bloat({-1e308, 1e308}, 1e308),
    };
    for (const LiquifyStroke& stroke : absurd)
        EXPECT_EQ(qBlue(warped({stroke}, places()).pixel(100, 90)), 77);
    EXPECT_EQ(qBlue(warped(absurd, places()).pixel(100, 90)), 77);

    // Pushed by far more than the picture is wide: its border is all that is seen.
    EXPECT_EQ(qRed(warped({push({100, 90}, {1e300, 90}, 60)}, places()).pixel(100, 90)), 0);

    QImage picture = places();
    LiquifyWarp({bloat({1e6, 1e6}, 2e6)}, QSize(2000000, 2000000)).apply(picture);
    EXPECT_EQ(qBlue(picture.pixel(100, 90)), 77);
}

TEST(LiquifyWarpTest, TakesEmptyPictures)
{
    const Strokes strokes = {bloat({100, 90}, 60)};
    for (const QSize size : {QSize(), QSize(0, 100), QSize(100, -1)})
        EXPECT_TRUE(LiquifyWarp(strokes, size).isIdentity());

    EXPECT_TRUE(warped(strokes, QImage()).isNull());
}

TEST(LiquifyWarpTest, LeavesCopiesOfThePictureAlone)
{
    QImage picture = places();
    const QImage copy = picture;
    LiquifyWarp({bloat({100, 90}, 60)}, QSize(Side, Side)).apply(picture);

    EXPECT_EQ(copy, places());
    EXPECT_NE(picture, copy);
}

TEST(LiquifyWarpTest, ConvertsOtherFormats)
{
    const Strokes strokes = {bloat({100, 90}, 60)};
    const QImage after = warped(strokes, places().convertToFormat(QImage::Format_RGB888));

    EXPECT_EQ(after.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(after.convertToFormat(QImage::Format_RGB32), warped(strokes, places()));
}
