// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/mask/MaskedTrack.h"

#include <rvkpcore/RvKpApplication.h>

#include <algorithm>

using namespace qrvkp;

namespace {

std::string smallPicture()
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath("small.png");
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    EXPECT_TRUE(image.save(path));
    return path.toStdString();
}

} // namespace

void MaskedTrack::SetUp()
{
    ShownEditor::SetUp();
    if (HasFatalFailure())
        return;
    application.getRvKpConfig()->setKpSize(1600.0F, 900.0F);
    track = adopt(RvSpriteTrack::create(smallPicture(), 0, 1000));
    ASSERT_TRUE(track);
    track->setWidthAndHeight(400.0F, 200.0F);
    track->setPosition(800.0F, 450.0F);
    mask = std::make_unique<OpenMaskWidget>(&application, window.get());
    mask->setTrack(track.get());
    mask->show();
    placeAt(2.0F);
}

void MaskedTrack::TearDown()
{
    mask.reset();
    track.reset();
    ShownEditor::TearDown();
}

void MaskedTrack::placeAt(float canvasScale)
{
    application.setCanvasScale(canvasScale);
    mask->updateGeometry();
}

void MaskedTrack::stroke(const QPoint& from, const QPoint& to)
{
    drag(mask->pos() + from, mask->pos() + to);
    paint();
}

void MaskedTrack::strokePaintedOnce(const QPoint& from, const QPoint& to)
{
    send(*mask, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    send(*mask, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    send(*mask, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    paint();
}

QImage MaskedTrack::maskImage() const
{
    const std::unique_ptr<QImage> image(mask->getMaskImage());
    if (!image)
        return {};
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    return image->copy();
}

int MaskedTrack::maskedPixels() const
{
    const QImage image = maskImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        const uchar* line = image.constScanLine(y);
        count += static_cast<int>(std::count(line, line + image.width(), 255));
    }
    return count;
}
