// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/EffectCache.h>

#include <gtest/gtest.h>

#include "ManualClock.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

using rvengine::EffectCache;
using rvengine::Layer;
using rvengine::LiquifyStroke;
using rvengine::MatteShape;

namespace {

constexpr auto Patience = EffectCache::PatienceInFrames;

class EffectCacheTest : public testing::Test
{
protected:
    /// Ends so many frames, in each of which `use` is called before.
    template <class Use>
    void frames(std::uint64_t count, Use&& use)
    {
        for (std::uint64_t i = 0; i < count; ++i) {
            use();
            m_cache.endFrame();
        }
    }

    void idleFrames(std::uint64_t count)
    {
        frames(count, [] {});
    }

    std::string writeTable() const
    {
        return TestMedia::file(m_folder.path(), "table.cube",
                               "LUT_3D_SIZE 2\n"
                               "0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n");
    }

    WarningCapture m_warnings;
    QTemporaryDir m_folder;
    ManualClock m_clock;
    EffectCache m_cache{m_clock.clock()};
};

std::shared_ptr<const MatteShape> matteShape()
{
    MatteShape shape;
    shape.box = QSizeF(8, 4);
    shape.path.addRect(0, 0, 8, 4);
    return std::make_shared<const MatteShape>(shape);
}

std::shared_ptr<const Layer> liquifyLayer()
{
    Layer layer;
    layer.kind = rvengine::LayerKind::Liquify;
    layer.strokes = {LiquifyStroke()};
    return std::make_shared<const Layer>(layer);
}

} // namespace

TEST_F(EffectCacheTest, KeepsATableWhileItIsUsed)
{
    const std::string path = writeTable();
    ASSERT_NE(m_cache.table(path), nullptr);
    m_cache.endFrame();
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));

    frames(3 * Patience, [&] { ASSERT_NE(m_cache.table(path), nullptr); });
}

TEST_F(EffectCacheTest, DropsATableThatIsNotUsedForLong)
{
    const std::string path = writeTable();
    ASSERT_NE(m_cache.table(path), nullptr);
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));
    idleFrames(Patience + 1);
    ASSERT_NE(m_cache.table(path), nullptr);
    idleFrames(Patience + 2);

    EXPECT_EQ(m_cache.table(path), nullptr);
    EXPECT_EQ(m_warnings.take().size(), 1);
}

TEST_F(EffectCacheTest, TakesTheExtensionOfATableInAnyCase)
{
    const std::string path = writeTable();
    EXPECT_NE(m_cache.table(TestMedia::copy(path, m_folder.path(), "TABLE.CUBE")), nullptr);
    EXPECT_EQ(m_cache.table(TestMedia::copy(path, m_folder.path(), "table.txt")), nullptr);
}

TEST_F(EffectCacheTest, TriesATableThatCouldNotBeReadAgainAfterAWhile)
{
    const std::string path = m_folder.filePath("table.cube").toStdString();
    EXPECT_EQ(m_cache.table(path), nullptr);
    EXPECT_EQ(m_warnings.take().size(), 1);
    writeTable();
    EXPECT_EQ(m_cache.table(path), nullptr);
    m_clock.advance(rvengine::UnreadableFiles::UntilNextTry);
    EXPECT_NE(m_cache.table(path), nullptr);
}

// What the cache makes of a shape or a layer holds the shape or the layer.

TEST_F(EffectCacheTest, KeepsAMatteWhileItIsUsed)
{
    const auto shape = matteShape();
    frames(3 * Patience, [&] {
        m_cache.matte(shape, 1.0);
        ASSERT_EQ(shape.use_count(), 2);
    });
    EXPECT_EQ(shape.use_count(), 2);
    idleFrames(Patience);
    EXPECT_EQ(shape.use_count(), 2);
    idleFrames(1);
    EXPECT_EQ(shape.use_count(), 1);
}

TEST_F(EffectCacheTest, MakesAMatteForEveryScaleAndShape)
{
    const auto shape = matteShape();
    const auto other = matteShape();
    const auto* small = &m_cache.matte(shape, 1.0);
    const auto* large = &m_cache.matte(shape, 2.0);
    EXPECT_NE(small, large);
    EXPECT_NE(small, &m_cache.matte(other, 1.0));
    EXPECT_EQ(small, &m_cache.matte(shape, 1.0));
    EXPECT_EQ(shape.use_count(), 3);
}

TEST_F(EffectCacheTest, KeepsADisplacementWhileItIsUsed)
{
    const auto layer = liquifyLayer();
    frames(3 * Patience, [&] {
        m_cache.warp(layer, QSize(32, 18));
        ASSERT_EQ(layer.use_count(), 2);
    });
    EXPECT_EQ(layer.use_count(), 2);
    idleFrames(Patience);
    EXPECT_EQ(layer.use_count(), 2);
    idleFrames(1);
    EXPECT_EQ(layer.use_count(), 1);
}

TEST_F(EffectCacheTest, MakesADisplacementForEverySizeAndLayer)
{
    const auto layer = liquifyLayer();
    const auto other = liquifyLayer();
    const auto* first = &m_cache.warp(layer, QSize(32, 18));
    EXPECT_NE(first, &m_cache.warp(layer, QSize(33, 18)));
    EXPECT_NE(first, &m_cache.warp(layer, QSize(32, 19)));
    EXPECT_NE(first, &m_cache.warp(other, QSize(32, 18)));
    EXPECT_EQ(first, &m_cache.warp(layer, QSize(32, 18)));
    EXPECT_EQ(layer.use_count(), 4);
}
