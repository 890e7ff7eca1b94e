// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayedTimeline.h"

#include "SampleMedia.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace qrvkp;

namespace {

/// The bit that a pixel of a bar stands for; -1 for none.
int bitOf(QRgb pixel)
{
    constexpr int dark = 64;
    constexpr int bright = 192;
    const int grey = qGray(pixel);
    return grey < dark ? 0 : grey > bright ? 1 : -1;
}

/// The number of 16 bits that `bitAt(index)` gives.
template <class BitAt>
int numberOfBits(const BitAt& bitAt)
{
    int number = 0;
    for (int i = 0; i < SampleMedia::NumberedBits; ++i) {
        const int bit = bitAt(i);
        if (bit < 0)
            return -1;
        number |= bit << i;
    }
    return number;
}

double middleOfBar(int index)
{
    return (index + 0.5) / SampleMedia::NumberedBits;
}

} // namespace

int numberOf(const QImage& picture)
{
    return numberOfBits([&](int index) {
        return bitOf(picture.pixel(static_cast<int>(middleOfBar(index) * picture.width()),
                                   picture.height() / 2));
    });
}

testing::AssertionResult isColour(QRgb colour, QRgb expected, int tolerance)
{
    const int error = std::max({std::abs(qRed(colour) - qRed(expected)),
                                std::abs(qGreen(colour) - qGreen(expected)),
                                std::abs(qBlue(colour) - qBlue(expected))});
    if (error <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hex << "the colour " << colour << " is not " << expected;
}

void PlayedTimeline::SetUp()
{
    application->getRvKpConfig()->setKpSize(static_cast<float>(CanvasWidth),
                                            static_cast<float>(CanvasHeight));
    showView();
}

void PlayedTimeline::showView()
{
    view().resize(CanvasWidth, CanvasHeight);
    view().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view()));
    ASSERT_EQ(view().viewport()->size(), QSize(CanvasWidth, CanvasHeight));
}

void PlayedTimeline::append(RvITrack& track)
{
    const auto group = adopt(RvKpGroup::create(track.getDuration()));
    ASSERT_TRUE(group->addTrack(&track));
    ASSERT_TRUE(timeline->pushBackGroup(group.get()));
}

Reference<RvKpTrack> PlayedTimeline::appendNumbers()
{
    auto track = adopt(RvKpTrack::create(SampleMedia::numberedVideo(), 0, -1, 0));
    append(*track);
    return track;
}

Reference<RvSpriteTrack> PlayedTimeline::appendColour(QRgb rgb, long long duration)
{
    auto track = adopt(RvSpriteTrack::create(SampleMedia::colour(rgb), 0, duration));
    track->setWidthAndHeight(static_cast<float>(CanvasWidth), static_cast<float>(CanvasHeight));
    append(*track);
    return track;
}

Reference<RvSpriteTrack> PlayedTimeline::addColour(QRgb rgb, const QSize& size)
{
    auto track = adopt(RvSpriteTrack::create(SampleMedia::colour(rgb), 0, 10000));
    track->setWidthAndHeight(static_cast<float>(size.width()), static_cast<float>(size.height()));
    EXPECT_TRUE(timeline->addMixTrack(track.get()));
    return track;
}

void PlayedTimeline::prepare()
{
    player().setTimeLine(timeline.get());
    player().prepareAsync();
    ASSERT_TRUE(reaches(RvKpPlayerPrepared));
}

void PlayedTimeline::prepareAndStart()
{
    prepare();
    player().start();
    ASSERT_TRUE(reaches(RvKpPlayerPlaying));
}

bool PlayedTimeline::reaches(int state)
{
    return QTest::qWaitFor([&] { return player().getState() == state; }, PatienceMs);
}

QImage PlayedTimeline::grabbed()
{
    return view().grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QRgb PlayedTimeline::seenAt(const QPointF& canvasPoint)
{
    const QPointF point = application->convertCanvasToView(canvasPoint);
    const QPoint pixel(static_cast<int>(std::floor(point.x())),
                       static_cast<int>(std::floor(point.y())));
    const QImage image = grabbed();
    return image.rect().contains(pixel) ? image.pixel(pixel) : QRgb();
}

int PlayedTimeline::seenNumber()
{
    const QImage image = grabbed();
    return numberOfBits([&](int index) {
        const QPointF point = application->convertCanvasToView(
            {middleOfBar(index) * CanvasWidth, CanvasHeight / 2.0});
        const QPoint pixel(static_cast<int>(std::floor(point.x())),
                           static_cast<int>(std::floor(point.y())));
        return image.rect().contains(pixel) ? bitOf(image.pixel(pixel)) : -1;
    });
}

bool PlayedTimeline::becomesNumber(int number)
{
    return QTest::qWaitFor([&] { return seenNumber() == number; }, PatienceMs);
}

testing::AssertionResult PlayedTimeline::becomes(const QPointF& canvasPoint, QRgb colour)
{
    const auto isSeen = [&] { return bool(isColour(seenAt(canvasPoint), colour)); };
    if (QTest::qWaitFor(isSeen, PatienceMs))
        return testing::AssertionSuccess();
    return isColour(seenAt(canvasPoint), colour)
           << " at " << canvasPoint.x() << ", " << canvasPoint.y();
}
