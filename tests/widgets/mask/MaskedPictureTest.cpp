// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"

#include <cmath>
#include <ostream>

using namespace qrvkp;

namespace {

struct Placement
{
    float trackScale;
    float rotation;
    QPointF position; ///< canvas px of the track's centre
    float canvasScale;
    QPointF canvasPosition;
};

void PrintTo(const Placement& placement, std::ostream* out)
{
    *out << "track x " << placement.trackScale << " turned by " << placement.rotation << " at "
         << placement.position.x() << ", " << placement.position.y() << ", canvas x "
         << placement.canvasScale << " at " << placement.canvasPosition.x() << ", "
         << placement.canvasPosition.y();
}

/// A picture of 480 x 320 with a coloured spot of 24 x 24 about each of three points.
struct Spot
{
    QPoint middle; ///< picture px, y down
    QColor color;
};
const std::vector<Spot> spots{
    {{240, 160}, Qt::green}, {{180, 200}, Qt::red}, {{300, 130}, Qt::blue}};

QImage spotted()
{
    QImage image(480, 320, QImage::Format_RGB32);
    image.fill(QColor(70, 70, 70));
    QPainter painter(&image);
    for (const Spot& spot : spots)
        painter.fillRect(spot.middle.x() - 12, spot.middle.y() - 12, 24, 24, spot.color);
    return image;
}

bool isColor(QRgb pixel, const QColor& color)
{
    return std::abs(qRed(pixel) - color.red()) < 60 &&
           std::abs(qGreen(pixel) - color.green()) < 60 &&
           std::abs(qBlue(pixel) - color.blue()) < 60;
}

/// The middle of the px of that colour, NaN where there are none.
QPointF middleOf(const QImage& image, const QColor& color)
{
    QPointF sum;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isColor(image.pixel(x, y), color))
                continue;
            sum += QPointF(x + 0.5, y + 0.5);
            ++count;
        }
    }
    return count > 9 ? sum / count : QPointF(std::nan(""), std::nan(""));
}

/// The middle of what is set in a mask, with its width and height.
QRectF maskedArea(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.constScanLine(y)[x])
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/// A mask over a picture that the player shows: what is painted over a spot as it is seen must be
/// in the mask where the picture has that spot.
class MaskedPictureTest : public ShownEditor, public testing::WithParamInterface<Placement>
{
protected:
    void TearDown() override
    {
        mask.reset();
        sprite.reset();
        ShownEditor::TearDown();
    }

    QImage maskImage() const
    {
        const std::unique_ptr<QImage> image(mask->getMaskImage());
        const std::unique_ptr<const uchar[]> pixels(image->constBits());
        return image->copy();
    }

    FrameworkRef<RvSpriteTrack> sprite;
    std::unique_ptr<RvTrackMaskWidget> mask;
};

} // namespace

TEST_P(MaskedPictureTest, StrokesLandOnThePixelsThatAreSeenThere)
{
    const Placement& placement = GetParam();
    sprite = showPicture(spotted());
    ASSERT_EQ(sprite->getWidth(), 480.0F);
    sprite->setScale(placement.trackScale);
    sprite->setRotation(placement.rotation);
    sprite->setPosition(static_cast<float>(placement.position.x()),
                        static_cast<float>(placement.position.y()));
    application.setCanvasScale(placement.canvasScale);
    application.setCanvasPosition(static_cast<float>(placement.canvasPosition.x()),
                                  static_cast<float>(placement.canvasPosition.y()));

    // The picture is made for the new placement by another thread: wait until it is seen there.
    std::vector<QPointF> seen;
    const auto isSeenInPlace = [&] {
        const QImage image = grabbed();
        seen.clear();
        bool inPlace = true;
        for (const Spot& spot : spots) {
            seen.push_back(middleOf(image, spot.color));
            const QPointF trackPoint(spot.middle.x(), 320 - spot.middle.y()); // y up
            const QPointF expected = application.convertCanvasToView(
                application.convertTrackToCanvas(sprite.get(), trackPoint));
            const QPointF error = seen.back() - expected;
            inPlace &= std::hypot(error.x(), error.y()) < 1.5; // not for NaN
        }
        return inPlace;
    };
    ASSERT_TRUE(QTest::qWaitFor(isSeenInPlace, 10000));

    mask = std::make_unique<RvTrackMaskWidget>(&application, window.get());
    mask->setTrack(sprite.get());
    mask->setPenWidth(6);
    mask->show();
    mask->updateGeometry();
    // A view px is this many track px: what the eye and whole px of the mouse may be off by.
    const double trackPixels =
        1920.0 / 800.0 / static_cast<double>(placement.canvasScale * placement.trackScale);
    for (std::size_t i = 0; i < spots.size(); ++i) {
        const QPoint point(static_cast<int>(std::floor(seen[i].x())),
                           static_cast<int>(std::floor(seen[i].y())));
        ASSERT_TRUE(mask->geometry().contains(point)) << i;
        mask->clear();
        press(point);
        move(point + QPoint(1, 0));
        release(point);
        mask->grab();
        const QRectF area = maskedArea(maskImage());
        ASSERT_FALSE(area.isEmpty()) << i;
        EXPECT_NEAR(area.center().x(), spots[i].middle.x(), 1.0 + 2.0 * trackPixels) << i;
        EXPECT_NEAR(area.center().y(), spots[i].middle.y(), 1.0 + 2.0 * trackPixels) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Placements, MaskedPictureTest,
                         testing::Values(Placement{1.0F, 0.0F, {960, 540}, 2.4F, {0, 0}},
                                         Placement{1.0F, 0.0F, {960, 540}, 1.0F, {0, 0}},
                                         Placement{2.0F, 0.0F, {700, 700}, 1.0F, {0, 0}},
                                         Placement{1.5F, 0.0F, {1300, 300}, 3.0F, {-300, 250}},
                                         Placement{2.0F, 20.0F, {960, 540}, 1.0F, {0, 0}},
                                         Placement{2.0F, -14.0F, {960, 540}, 1.3F, {25, -40}},
                                         Placement{1.2F, 15.0F, {500, 800}, 2.0F, {380, -200}},
                                         Placement{0.5F, -10.0F, {960, 540}, 6.0F, {10, 20}}));
