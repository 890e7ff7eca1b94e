// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/ColorTable.h>

#include <gtest/gtest.h>

#include "support/ScopedCommaLocale.h"
#include "support/TestMedia.h"

#include <QLocale>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <vector>

using rvengine::ColorTable;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

using Color = std::array<double, 3>; ///< red, green and blue, 0 to 1

QByteArray line(const Color& color)
{
    QByteArray text;
    for (const double channel : color)
        text += QByteArray::number(channel, 'f', 7) + ' ';
    return text + '\n';
}

/// The lines of a cube whose colours a function gives for places from 0 to 1.
QByteArray cubeLines(int size, const std::function<Color(const Color&)>& color)
{
    QByteArray text;
    const double last = size - 1;
    for (int blue = 0; blue < size; ++blue) {
        for (int green = 0; green < size; ++green) {
            for (int red = 0; red < size; ++red)
                text += line(color({red / last, green / last, blue / last}));
        }
    }
    return text;
}

QByteArray cube(int size, const std::function<Color(const Color&)>& color)
{
    return "LUT_3D_SIZE " + QByteArray::number(size) + '\n' + cubeLines(size, color);
}

Color same(const Color& color)
{
    return color;
}

Color inverse(const Color& color)
{
    return {1.0 - color[0], 1.0 - color[1], 1.0 - color[2]};
}

/// A picture of one row.
QImage row(const std::vector<QRgb>& pixels, QImage::Format format = QImage::Format_RGB32)
{
    QImage picture(static_cast<int>(pixels.size()), 1, format);
    std::copy(pixels.begin(), pixels.end(), reinterpret_cast<QRgb*>(picture.scanLine(0)));
    return picture;
}

/// The table's colours for some pixels.
std::vector<QRgb> applied(const QByteArray& text, const std::vector<QRgb>& pixels,
                          double strength = 1.0, QImage::Format format = QImage::Format_RGB32)
{
    const auto table = ColorTable::parse(text);
    EXPECT_TRUE(table);
    if (!table)
        return {};
    QImage picture = row(pixels, format);
    table->apply(picture, strength);
    EXPECT_EQ(picture.format(), format);
    const auto* first = reinterpret_cast<const QRgb*>(picture.constScanLine(0));
    return {first, first + picture.width()};
}

std::vector<QRgb> greys()
{
    std::vector<QRgb> pixels(256);
    for (std::size_t level = 0; level < pixels.size(); ++level)
        pixels[level] = 0xFF000000U | static_cast<QRgb>(level) * 0x010101U;
    return pixels;
}

std::vector<QRgb> randomColors(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<QRgb> pixels(count);
    for (QRgb& pixel : pixels)
        pixel = 0xFF000000U | static_cast<QRgb>(random());
    return pixels;
}

Color colorOf(QRgb pixel)
{
    return {qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0};
}

void expectNear(QRgb pixel, const Color& expected, double levels)
{
    EXPECT_NEAR(qRed(pixel), expected[0] * 255.0, levels);
    EXPECT_NEAR(qGreen(pixel), expected[1] * 255.0, levels);
    EXPECT_NEAR(qBlue(pixel), expected[2] * 255.0, levels);
}

/// A plain tetrahedral look-up: the six orders of the fractions one by one.
class PlainCube
{
public:
    PlainCube(int size, std::vector<Color> colors)
        : m_size(size)
        , m_colors(std::move(colors))
    {
    }

    Color at(const Color& place) const
    {
        std::array<int, 3> below{};
        std::array<double, 3> part{};
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double position = std::clamp(place[channel], 0.0, 1.0) * (m_size - 1);
            below[channel] = std::min(static_cast<int>(position), m_size - 2);
            part[channel] = position - below[channel];
        }
        std::array<std::size_t, 3> order{0, 1, 2};
        std::sort(order.begin(), order.end(),
                  [&part](std::size_t one, std::size_t other) { return part[one] > part[other]; });
        Color color = corner(below);
        std::array<int, 3> at = below;
        for (const std::size_t channel : order) {
            const Color before = corner(at);
            ++at[channel];
            const Color after = corner(at);
            for (std::size_t index = 0; index < 3; ++index)
                color[index] += (after[index] - before[index]) * part[channel];
        }
        return color;
    }

private:
    Color corner(const std::array<int, 3>& at) const
    {
        const int index = (at[2] * m_size + at[1]) * m_size + at[0];
        return m_colors[static_cast<std::size_t>(index)];
    }

    int m_size;
    std::vector<Color> m_colors; ///< red fastest
};

std::vector<Color> randomTable(int count)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> channel(0.0, 1.0);
    std::vector<Color> colors(static_cast<std::size_t>(count));
    for (Color& color : colors)
        color = {channel(random), channel(random), channel(random)};
    return colors;
}

QByteArray lines(const std::vector<Color>& colors)
{
    QByteArray text;
    for (const Color& color : colors)
        text += line(color);
    return text;
}

} // namespace

TEST(ColorTableTest, ChangesNothingByAnIdentity)
{
    std::vector<QRgb> colors = greys();
    const std::vector<QRgb> others = randomColors(5000);
    colors.insert(colors.end(), others.begin(), others.end());
    for (const int size : {2, 3, 5, 17, 32, 33, 65}) {
        const QByteArray text = cube(size, same);
        EXPECT_EQ(applied(text, colors), colors) << size;
        EXPECT_EQ(applied(text, colors, 0.37), colors) << size;
    }
}

TEST(ColorTableTest, KeepsEveryPremultipliedColourByAnIdentity)
{
    std::vector<QRgb> pixels;
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int level = 0; level <= alpha; ++level)
            pixels.push_back(qRgba(level, alpha - level, alpha, alpha));
    }
    const QImage::Format format = QImage::Format_ARGB32_Premultiplied;
    EXPECT_EQ(applied(cube(17, same), pixels, 1.0, format), pixels);
    EXPECT_EQ(applied(cube(17, same), pixels, 0.5, format), pixels);
}

TEST(ColorTableTest, ReadsRedFastest)
{
    const QByteArray text = cube(3, [](const Color& color) {
        return Color{color[1], color[2], color[0]};
    });

    EXPECT_EQ(applied(text, {qRgb(10, 20, 30), qRgb(255, 0, 128)}),
              (std::vector<QRgb>{qRgb(20, 30, 10), qRgb(0, 128, 255)}));
}

TEST(ColorTableTest, InvertsExactly)
{
    std::vector<QRgb> expected = randomColors(5000);
    for (QRgb& pixel : expected)
        pixel = ~pixel | 0xFF000000U;
    for (const int size : {2, 17, 33})
        EXPECT_EQ(applied(cube(size, inverse), randomColors(5000)), expected) << size;
}

TEST(ColorTableTest, InterpolatesByTetrahedra)
{
    for (const int size : {2, 3, 6, 20}) {
        const std::vector<Color> colors = randomTable(size * size * size);
        const PlainCube plain(size, colors);
        const QByteArray text = "LUT_3D_SIZE " + QByteArray::number(size) + '\n' + lines(colors);
        const std::vector<QRgb> before = randomColors(5000);
        const std::vector<QRgb> after = applied(text, before);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t index = 0; index < before.size(); ++index)
            expectNear(after[index], plain.at(colorOf(before[index])), 0.95);
    }
}

TEST(ColorTableTest, GivesTheColoursOfTheTableAtItsPlaces)
{
    const std::vector<Color> colors = randomTable(8);
    const QByteArray text = "LUT_3D_SIZE 2\n" + lines(colors);
    for (std::size_t index = 0; index < 8; ++index) {
        const QRgb corner = qRgb(index & 1 ? 255 : 0, index & 2 ? 255 : 0, index & 4 ? 255 : 0);
        expectNear(applied(text, {corner}).at(0), colors[index], 0.57);
    }
}

TEST(ColorTableTest, BlendsByTheStrength)
{
    const std::vector<QRgb> before = randomColors(1000);
    for (const double strength : {0.1, 0.25, 0.5, 0.9}) {
        const std::vector<QRgb> after = applied(cube(17, inverse), before, strength);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t index = 0; index < before.size(); ++index) {
            const Color color = colorOf(before[index]);
            Color expected{};
            for (std::size_t channel = 0; channel < 3; ++channel)
                expected[channel] = color[channel] + (1.0 - 2.0 * color[channel]) * strength;
            expectNear(after[index], expected, 0.8);
        }
    }
}

TEST(ColorTableTest, LimitsTheStrength)
{
    const std::vector<QRgb> before = randomColors(1000);
    const std::vector<QRgb> full = applied(cube(2, inverse), before, 1.0);
    EXPECT_NE(full, before);
    for (const double none : {0.0, -0.0, -3.0, -Infinity, NaN})
        EXPECT_EQ(applied(cube(2, inverse), before, none), before) << none;
    for (const double all : {1.5, 1e300, Infinity})
        EXPECT_EQ(applied(cube(2, inverse), before, all), full) << all;
}

TEST(ColorTableTest, LooksUpTheColourWithoutItsAlpha)
{
    const QImage::Format format = QImage::Format_ARGB32_Premultiplied;
    // Half transparent: (255, 51, 0) becomes (0, 204, 255).
    EXPECT_EQ(applied(cube(5, inverse), {qRgba(51 * 2, 51 * 2 / 5, 0, 102)}, 1.0, format).at(0),
              qRgba(0, 82, 102, 102));
    EXPECT_EQ(applied(cube(5, inverse), {0x00000000U}, 1.0, format).at(0), 0x00000000U);

    std::vector<QRgb> pixels(5000);
    std::mt19937 random(3);
    for (QRgb& pixel : pixels)
        pixel = qPremultiply(static_cast<QRgb>(random()));
    const std::vector<QRgb> after = applied(cube(5, inverse), pixels, 1.0, format);
    ASSERT_EQ(after.size(), pixels.size());
    for (std::size_t index = 0; index < pixels.size(); ++index) {
        const int alpha = qAlpha(pixels[index]);
        ASSERT_EQ(qAlpha(after[index]), alpha);
        ASSERT_NEAR(qRed(after[index]), alpha - qRed(pixels[index]), 1);
        ASSERT_NEAR(qGreen(after[index]), alpha - qGreen(pixels[index]), 1);
        ASSERT_NEAR(qBlue(after[index]), alpha - qBlue(pixels[index]), 1);
    }
}

TEST(ColorTableTest, TakesAPictureWithoutAlphaAsOpaque)
{
    EXPECT_EQ(applied(cube(2, inverse), {0x00102030U, 0x7F102030U}),
              (std::vector<QRgb>{0x00EFDFCFU, 0x7FEFDFCFU}));
}

TEST(ColorTableTest, ChangesEveryRow)
{
    QImage picture(7, 5, QImage::Format_RGB32);
    picture.fill(qRgb(1, 2, 3));
    const QImage copy = picture;
    ColorTable::parse(cube(2, inverse)).value().apply(picture, 1.0);

    QImage expected(7, 5, QImage::Format_RGB32);
    expected.fill(qRgb(254, 253, 252));
    EXPECT_EQ(picture, expected);
    EXPECT_EQ(copy.pixel(0, 0), qRgb(1, 2, 3));
}

TEST(ColorTableTest, ConvertsOtherFormats)
{
    QImage picture(3, 2, QImage::Format_RGB888);
    picture.fill(qRgb(1, 2, 3));
    ColorTable::parse(cube(2, inverse)).value().apply(picture, 1.0);

    EXPECT_EQ(picture.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(picture.pixel(2, 1), qRgb(254, 253, 252));
}

TEST(ColorTableTest, TakesAnEmptyPicture)
{
    QImage picture;
    ColorTable::parse(cube(2, inverse)).value().apply(picture, 1.0);

    EXPECT_TRUE(picture.isNull());
}

TEST(ColorTableTest, SpreadsOverItsDomain)
{
    const QByteArray domain = "DOMAIN_MIN 0.2 0 -1\nDOMAIN_MAX 0.6 2 1\n";
    const std::vector<QRgb> before = randomColors(2000);
    const std::vector<QRgb> after = applied(domain + cube(17, same), before);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t index = 0; index < before.size(); ++index) {
        const Color color = colorOf(before[index]);
        expectNear(
            after[index],
            {std::clamp((color[0] - 0.2) / 0.4, 0.0, 1.0), color[1] / 2.0, (color[2] + 1.0) / 2.0},
            0.7);
    }
    const QByteArray range = "LUT_3D_INPUT_RANGE 0 0.5\n";
    EXPECT_EQ(applied(range + cube(2, same), {qRgb(51, 102, 204)}).at(0), qRgb(102, 204, 255));
}

TEST(ColorTableTest, LimitsWhatTheTableGives)
{
    const QByteArray text = cube(2, [](const Color& color) {
        return color[0] > 0.5 ? Color{7, 1e30, 1} : Color{-7, -1, 0};
    });

    EXPECT_EQ(applied(text, {qRgb(255, 0, 0), qRgb(0, 0, 0)}),
              (std::vector<QRgb>{qRgb(255, 255, 255), qRgb(0, 0, 0)}));
}

TEST(ColorTableTest, TakesThreeCurves)
{
    EXPECT_EQ(applied("LUT_1D_SIZE 2\n1 0 0\n0 1 0.6\n", {qRgb(10, 20, 255), qRgb(255, 0, 0)}),
              (std::vector<QRgb>{qRgb(245, 20, 153), qRgb(0, 0, 0)}));

    QByteArray text = "LUT_1D_SIZE 1000\n";
    for (int index = 0; index < 1000; ++index) {
        const double place = index / 999.0;
        text += line({place * place, std::sqrt(place), place});
    }
    const std::vector<QRgb> before = randomColors(2000);
    const std::vector<QRgb> after = applied(text, before);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t index = 0; index < before.size(); ++index) {
        const Color color = colorOf(before[index]);
        expectNear(after[index], {color[0] * color[0], std::sqrt(color[1]), color[2]}, 0.6);
    }
}

TEST(ColorTableTest, ReadsWhateverWayTheLinesAreWritten)
{
    const QByteArray data = cubeLines(3, inverse);
    const QByteArray plain = "LUT_3D_SIZE 3\n" + data;
    QByteArray windows = plain;
    windows.replace("\n", "\r\n");
    QByteArray old = plain;
    old.replace("\n", "\r");
    QByteArray spaced = plain;
    spaced.replace(" ", " \t  ").replace("\n", "\t\n\n  # comment\n \t");
    QByteArray exponents = plain;
    exponents.replace("0.5000000", "5.0e-1")
        .replace("1.0000000", "1")
        .replace("0.0000000", "-0E+0");

    const std::vector<QRgb> expected = applied(plain, randomColors(500));
    const std::vector<QByteArray> spellings = {
        windows,
        old,
        spaced,
        exponents,
        plain.trimmed(),
        "\xEF\xBB\xBF" + plain,
        "# made by hand\nTITLE \"A \xE4 title, 1 2 3\"\n\nDOMAIN_MIN 0 0 0\n" + plain,
        "LUT_3D_SIZE 3\nDOMAIN_MAX 1.0 1.0 1.0\nTITLE\n" + data + "\n# the end\n",
    };
    for (const QByteArray& text : spellings)
        EXPECT_EQ(applied(text, randomColors(500)), expected) << text.left(60).toStdString();
}

TEST(ColorTableTest, RefusesBrokenTexts)
{
    const QByteArray size = "LUT_3D_SIZE 2\n";
    const QByteArray data = cubeLines(2, same);
    ASSERT_TRUE(ColorTable::parse(size + data));
    const QByteArray seven = data.left(data.lastIndexOf('\n', data.size() - 2) + 1);
    const std::vector<QByteArray> broken = {
        "",
        "\n\n",
        "# nothing\n",
        QByteArray(1000, '\0'),
        size,
        data,
        data + size,
        size + seven,
        size + data + "0 0 0\n",
        size + data + "TITLE \"late\"\n",
        size + size + data,
        "LUT_1D_SIZE 8\n" + size + data,
        size + seven + "1 1\n",
        size + seven + "1 1 1 1\n",
        size + seven + "1 1 one\n",
        size + seven + "1 1 1x\n",
        size + seven + "1 1 0x1\n",
        size + seven + "1 1 1,0\n",
        size + seven + "1,0 1,0 1,0\n",
        size + seven + "1 1 nan\n",
        size + seven + "nan 1 1\n",
        size + seven + "1 1 inf\n",
        size + seven + "1 1 1e999\n",
        size + seven + "1 1 1 # white\n",
        size + seven + QByteArray("1 1 1\0\n", 7),
        size + "UNKNOWN 1\n" + data,
        size + "lut_3d_size 2\n" + data,
        "LUT_3D_SIZE\n" + data,
        "LUT_3D_SIZE 2 2\n" + data,
        "LUT_3D_SIZE 2.0\n" + data,
        "LUT_3D_SIZE -2\n" + data,
        "LUT_3D_SIZE 0\n",
        "LUT_3D_SIZE 1\n0 0 0\n",
        "LUT_3D_SIZE 257\n" + data,
        "LUT_3D_SIZE 99999999999999999999\n" + data,
        "LUT_3D_SIZE two\n" + data,
        "LUT_1D_SIZE 1\n0 0 0\n",
        "LUT_1D_SIZE 65537\n" + QByteArray("0 0 0\n").repeated(65537),
        "DOMAIN_MIN 0 0\n" + size + data,
        "DOMAIN_MIN 0 0 0 0\n" + size + data,
        "DOMAIN_MIN 0 1 0\n" + size + data,
        "DOMAIN_MIN 0 nan 0\n" + size + data,
        "DOMAIN_MAX 1 1 inf\n" + size + data,
        "DOMAIN_MIN -1e308 0 0\nDOMAIN_MAX 1e308 1 1\n" + size + data,
        "LUT_3D_INPUT_RANGE 1 0\n" + size + data,
        "LUT_3D_INPUT_RANGE 0\n" + size + data,
    };
    for (const QByteArray& text : broken)
        EXPECT_FALSE(ColorTable::parse(text)) << text.left(200).toStdString();
}

TEST(ColorTableTest, RefusesASizeThatTheTextIsTooShortFor)
{
    EXPECT_FALSE(ColorTable::parse("LUT_3D_SIZE 256\n0 0 0\n"));
    EXPECT_TRUE(ColorTable::parse("LUT_3D_SIZE 2\n" + QByteArray("0 0 0\n").repeated(8)));
    EXPECT_TRUE(ColorTable::parse("LUT_1D_SIZE 65536\n" + QByteArray("0 0 0\n").repeated(65536)));
}

TEST(ColorTableTest, ReadsPointsInALocaleWithCommas)
{
    const QTemporaryDir folder;
    const QByteArray text = cube(17, inverse);
    const std::vector<QRgb> expected = applied(text, randomColors(100));
    const QLocale before;
    const ScopedCommaLocale comma(folder.path());
    QLocale::setDefault(QLocale(QLocale::German));

    EXPECT_EQ(applied(text, randomColors(100)), expected);
    EXPECT_FALSE(ColorTable::parse("LUT_1D_SIZE 2\n0 0 0\n0,5 0,5 0,5\n"));
    QLocale::setDefault(before);
}

TEST(ColorTableTest, LoadsAFile)
{
    const QTemporaryDir folder;
    const std::string path = TestMedia::file(folder.path(), "fr\u00fch.cube", cube(3, inverse));
    const auto table = ColorTable::load(path);
    ASSERT_TRUE(table);
    QImage picture = row({qRgb(1, 2, 3)});
    table->apply(picture, 1.0);
    EXPECT_EQ(picture.pixel(0, 0), qRgb(254, 253, 252));
}

TEST(ColorTableTest, RefusesWhatIsNoReadableTable)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(ColorTable::load(""));
    EXPECT_FALSE(ColorTable::load(folder.path().toStdString()));
    EXPECT_FALSE(ColorTable::load(folder.path().toStdString() + "/missing.cube"));
    EXPECT_FALSE(ColorTable::load(TestMedia::file(folder.path(), "empty.cube", "")));
    EXPECT_FALSE(ColorTable::load(TestMedia::picture(folder.path(), "a.png", 20, 20)));
}
