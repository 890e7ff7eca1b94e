// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>
#include <engine/media/ContentAhead.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QFile>
#include <QTemporaryDir>

#include <string>
#include <thread>
#include <vector>

using rvengine::ContentAhead;
using rvengine::Layer;

namespace {

class ContentAheadTest : public testing::Test
{
protected:
    Layer video() const { return m_sketch.video(sharedMedia::numbered()); }

    std::string picture(const QString& name) const
    {
        return TestMedia::solidPicture(m_folder.path(), name, 64, 36, Qt::red);
    }

    /// Has the content of the layer opened and waits until it is.
    void prepare(const Layer& layer, double fileTime = 0.0)
    {
        m_ahead.prepare(layer, fileTime);
        while (m_ahead.isOpening())
            std::this_thread::yield();
    }

    WarningCapture m_warnings;
    QTemporaryDir m_folder;
    SceneSketch m_sketch;
    rvengine::Interrupt m_interrupt;
    ContentAhead m_ahead{m_interrupt};
};

} // namespace

TEST_F(ContentAheadTest, HasTheFirstPictureOfAVideoDecoded)
{
    const Layer layer = video();
    prepare(layer, 2000.0);
    const auto content = m_ahead.take(layer);
    ASSERT_NE(content.reader, nullptr);
    const long long before = content.reader->decodedCount();
    EXPECT_GT(before, 0);
    EXPECT_EQ(TestMedia::frameNumber(content.reader->picture(2000.0, QSize())), 50);
    EXPECT_EQ(content.reader->decodedCount(), before);
    EXPECT_EQ(TestMedia::frameNumber(content.reader->picture(2040.0, QSize())), 51);
}

TEST_F(ContentAheadTest, HasAStillPictureRead)
{
    const Layer layer = m_sketch.picture(picture("a.png"));
    prepare(layer);
    ASSERT_TRUE(QFile::remove(QString::fromStdString(layer.source)));
    const auto content = m_ahead.take(layer);
    EXPECT_EQ(content.picture.size(), QSize(64, 36));
    EXPECT_EQ(content.picture.pixelColor(3, 3), QColor(Qt::red));
    EXPECT_EQ(content.reader, nullptr);
}

TEST_F(ContentAheadTest, GivesWhatIsStillBeingOpened)
{
    const Layer layer = video();
    m_ahead.prepare(layer, 3000.0);
    EXPECT_NE(m_ahead.take(layer).reader, nullptr);
}

TEST_F(ContentAheadTest, GivesALayerItsOwnContentOnce)
{
    const Layer one = video();
    const Layer other = video();
    prepare(one);
    EXPECT_EQ(m_ahead.take(other).reader, nullptr) << "it shows the same file";
    EXPECT_NE(m_ahead.take(one).reader, nullptr);
    EXPECT_EQ(m_ahead.take(one).reader, nullptr);
}

TEST_F(ContentAheadTest, HasNothingOfAFileThatCannotBeRead)
{
    const Layer missing = m_sketch.video(m_folder.filePath("missing.mp4").toStdString());
    prepare(missing);
    EXPECT_EQ(m_ahead.size(), 1U) << "it is not tried in every round";
    const auto content = m_ahead.take(missing);
    EXPECT_EQ(content.reader, nullptr);
    EXPECT_TRUE(content.picture.isNull());
}

TEST_F(ContentAheadTest, DropsWhatIsAskedForNoMore)
{
    const Layer layer = video();
    prepare(layer);
    m_ahead.endRound();
    EXPECT_EQ(m_ahead.size(), 1U);
    prepare(layer);
    m_ahead.endRound();
    EXPECT_EQ(m_ahead.size(), 1U);
    m_ahead.endRound();
    EXPECT_EQ(m_ahead.size(), 0U);
}

TEST_F(ContentAheadTest, OpensAgainALayerThatBeginsElsewhere)
{
    const Layer layer = video();
    prepare(layer, 0.0);
    m_ahead.endRound();
    prepare(layer, 2000.0);
    m_ahead.endRound();
    EXPECT_EQ(m_ahead.size(), 1U);
    const auto content = m_ahead.take(layer);
    ASSERT_NE(content.reader, nullptr);
    const long long before = content.reader->decodedCount();
    EXPECT_EQ(TestMedia::frameNumber(content.reader->picture(2000.0, QSize())), 50);
    EXPECT_EQ(content.reader->decodedCount(), before);
}

TEST_F(ContentAheadTest, KeepsNotTooMany)
{
    std::vector<Layer> layers;
    for (std::size_t i = 0; i < 2 * ContentAhead::MostPrepared; ++i)
        layers.push_back(m_sketch.picture(picture(QString("%1.png").arg(i))));
    for (const Layer& layer : layers)
        prepare(layer);
    EXPECT_EQ(m_ahead.size(), ContentAhead::MostPrepared);
    EXPECT_TRUE(m_ahead.take(layers.back()).picture.isNull());
    EXPECT_FALSE(m_ahead.take(layers.front()).picture.isNull());
}

TEST_F(ContentAheadTest, EndsInTheMiddleOfAnOpening)
{
    m_ahead.prepare(video(), 3900.0);
    m_interrupt.raise();
}

TEST_F(ContentAheadTest, ShowsTheSameAsWithoutPreparation)
{
    Layer still = m_sketch.picture(picture("a.png"));
    Layer part = video();
    part.fileStart = 2000;
    for (const Layer& layer : {video(), still, part, still})
        m_sketch.addMain(layer, 400);
    const auto played = [&](bool isPrepared) {
        rvengine::Compositor compositor(rvengine::makePictureSource());
        std::vector<QImage> pictures;
        for (long long time = 0; time < m_sketch.scene().duration; time += 40) {
            pictures.push_back(compositor.compose(m_sketch.scene(), time, QSize(320, 180)));
            if (isPrepared)
                compositor.prepare(m_sketch.scene(), time);
        }
        return pictures;
    };
    const auto plain = played(false);
    ASSERT_EQ(plain.size(), 40U);
    EXPECT_EQ(TestMedia::frameNumber(plain[20]), 50);
    EXPECT_TRUE(played(true) == plain);
}
