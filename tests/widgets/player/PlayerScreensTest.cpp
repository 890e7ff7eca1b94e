// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <screenshots/PlayerScreens.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <set>

namespace {

/// How many colours there are on a grid over a part of a picture.
std::size_t coloursIn(const QImage& image, const QRect& part)
{
    std::set<QRgb> colours;
    for (int y = part.top(); y <= part.bottom(); y += 4)
        for (int x = part.left(); x <= part.right(); x += 4)
            colours.insert(image.pixel(x, y));
    return colours.size();
}

/// The largest difference between the channels of a pixel on a grid over a part of a picture.
int strongestColour(const QImage& image, const QRect& part)
{
    int strongest = 0;
    for (int y = part.top(); y <= part.bottom(); y += 4)
        for (int x = part.left(); x <= part.right(); x += 4) {
            const QColor colour = image.pixelColor(x, y);
            strongest = std::max(strongest, colour.hsvSaturation() * colour.value() / 255);
        }
    return strongest;
}

} // namespace

TEST(PlayerScreensTest, ShowsAPausedPlayer)
{
    const QTemporaryDir folder;
    const QImage image = PlayerScreens::simplePlayer(folder.path());
    ASSERT_EQ(image.size(), QSize(800, 500));
    EXPECT_GT(coloursIn(image, {100, 50, 600, 350}), 100U);
}

TEST(PlayerScreensTest, ShowsTwoVideosOnBothSidesOfALine)
{
    const QTemporaryDir folder;
    const QImage image = PlayerScreens::comparePlayer(folder.path());
    ASSERT_EQ(image.size(), QSize(800, 500));
    EXPECT_GT(coloursIn(image, {40, 200, 320, 200}), 20U);
    EXPECT_LT(strongestColour(image, {40, 200, 320, 200}), 20) << "the left one is grey";
    EXPECT_GT(strongestColour(image, {440, 200, 320, 200}), 150) << "the right one is not";
}

TEST(PlayerScreensTest, GivesNoPictureWhereNoVideoCanBeMade)
{
    const QTemporaryDir folder;
    EXPECT_TRUE(PlayerScreens::simplePlayer(folder.filePath("missing")).isNull());
    EXPECT_TRUE(PlayerScreens::comparePlayer(folder.filePath("missing")).isNull());
}
