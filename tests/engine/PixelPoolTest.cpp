// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/base/PixelPool.h>

#include <gtest/gtest.h>

#include <optional>

using rvengine::PixelPool;

namespace {

constexpr QSize size(30, 20);
constexpr auto format = QImage::Format_RGB32;

} // namespace

TEST(PixelPoolTest, GivesPicturesThatCanBeWritten)
{
    PixelPool pool;
    QImage dense = pool.take(size, format);
    QImage padded = pool.take(size, format, PixelPool::Rows::Padded);
    dense.fill(Qt::red);
    padded.fill(Qt::blue);

    EXPECT_EQ(dense.size(), size);
    EXPECT_EQ(dense.format(), format);
    EXPECT_EQ(dense.bytesPerLine(), 4 * size.width());
    EXPECT_EQ(dense.pixelColor(29, 19), QColor(Qt::red));
    EXPECT_GE(padded.bytesPerLine(), 4 * size.width() + PixelPool::Alignment);
    EXPECT_EQ(padded.bytesPerLine() % PixelPool::Alignment, 0);
    EXPECT_EQ(padded.pixelColor(29, 19), QColor(Qt::blue));
}

TEST(PixelPoolTest, UsesMemoryAgainOnlyAfterItsLastPictureHasEnded)
{
    PixelPool pool;
    QImage first = pool.take(size, format);
    const auto* const pixels = first.constBits();
    QImage same = first;
    first = QImage();
    EXPECT_NE(pool.take(size, format).constBits(), pixels);

    same = QImage();
    EXPECT_EQ(pool.take(size, format).constBits(), pixels);
}

TEST(PixelPoolTest, LeavesPicturesWholeWhenItEnds)
{
    std::optional<PixelPool> pool(std::in_place);
    QImage picture = pool->take(size, format);
    picture.fill(Qt::green);
    pool.reset();

    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::green));
}

TEST(PixelPoolTest, GivesNothingForNoSizeOrTooLargeAOne)
{
    PixelPool pool;
    EXPECT_TRUE(pool.take(QSize(0, 5), format).isNull());
    EXPECT_TRUE(pool.take(QSize(100000, 100000), format).isNull());
}
