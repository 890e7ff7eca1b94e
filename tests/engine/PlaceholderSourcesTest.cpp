// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>
#include <engine/playback/Exporter.h>
#include <engine/sound/SoundMixer.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "WarningCapture.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

using rvengine::Compositor;
using rvengine::Layer;
using rvengine::Placement;
using rvengine::SoundChannels;
using rvengine::SoundMixer;

namespace {

constexpr QSize CanvasSize(320, 180);

/// Without an engine files are neither opened nor missed: layers are rectangles, and silent.
class PlaceholderSourcesTest : public testing::Test
{
protected:
    QImage composed() { return m_compositor.compose(m_sketch.scene(), 0, CanvasSize); }

    WarningCapture m_warnings;
    SceneSketch m_sketch;
    Compositor m_compositor{rvengine::makePictureSource()};
};

} // namespace

TEST_F(PlaceholderSourcesTest, DrawEachLayerAsARectangleWithABorder)
{
    for (const Layer& kind : {m_sketch.video("/a/clip.mp4"), m_sketch.picture("/a/clip.png")}) {
        m_sketch = SceneSketch();
        Layer layer = kind;
        layer.placement = Placement{160, 90, QPointF(160, 90)};
        m_sketch.addMain(layer);
        const QImage picture = composed();

        EXPECT_EQ(picture.pixelColor(10, 10), QColor(Qt::black));
        EXPECT_EQ(picture.pixelColor(160, 46), QColor(Qt::white));
        EXPECT_EQ(picture.pixelColor(81, 90), QColor(Qt::white));
        const QColor inside = picture.pixelColor(95, 55);
        EXPECT_NE(inside, QColor(Qt::black));
        EXPECT_NE(inside, QColor(Qt::white));
    }
}

TEST_F(PlaceholderSourcesTest, GiveAFileTheSameColorEverywhere)
{
    Layer left = m_sketch.video("/a/clip.mp4");
    left.placement = Placement{160, 180, QPointF(80, 90)};
    Layer right = m_sketch.video("/b/clip.mp4");
    right.placement = Placement{160, 180, QPointF(240, 90)};
    m_sketch.addMix(left);
    m_sketch.addMix(right);
    const QImage picture = composed();

    EXPECT_EQ(picture.pixelColor(20, 20), picture.pixelColor(180, 20));
}

TEST_F(PlaceholderSourcesTest, GiveAPictureForAnySize)
{
    const auto source = rvengine::makePictureSource();
    const Layer sane = m_sketch.video("a.mp4");
    Layer huge = sane;
    huge.placement.width = huge.placement.height = 1e9;
    Layer senseless = sane;
    senseless.placement.width = -1.0;
    senseless.placement.height = 0.0;

    EXPECT_EQ(source->picture(sane, 0, 0.0, QSize(100, 50)).size(), QSize(100, 50));
    EXPECT_EQ(source->picture(sane, 0, 0.0, QSize()).size(), CanvasSize);
    EXPECT_EQ(source->picture(huge, 0, 0.0, QSize()).size(), QSize(1920, 1920));
    EXPECT_EQ(source->picture(senseless, 0, 0.0, QSize()).size(), QSize(1, 1));
    source->endFrame();
}

TEST_F(PlaceholderSourcesTest, AreSilent)
{
    m_sketch.addMain(m_sketch.video("/a/clip.mp4"));
    m_sketch.addMix(m_sketch.sound("/a/tone.wav"));
    SoundMixer mixer(rvengine::makeSoundSource());
    std::vector<float> samples(480 * SoundChannels, 1.0F);
    mixer.mix(m_sketch.scene(), 0, 480, samples.data());

    EXPECT_EQ(std::count(samples.begin(), samples.end(), 0.0F),
              static_cast<std::ptrdiff_t>(samples.size()));
}

TEST_F(PlaceholderSourcesTest, ExportNothing)
{
    m_sketch.addMain(m_sketch.video("/a/clip.mp4"));

    EXPECT_EQ(rvengine::startExport(std::make_shared<const rvengine::Scene>(m_sketch.scene()),
                                    "/nowhere/out.mp4", {}, [] {}),
              nullptr);
}
