// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Screenshots.h"

#include "Editor.h"
#include "PlayerScreens.h"
#include "RecorderScreens.h"
#include "SamplePictures.h"
#include "StatusScreens.h"

#include <norvel/norvel.h>

#include <QLabel>
#include <QPainter>
#include <QRadialGradient>
#include <QTemporaryDir>

using namespace norvel;

namespace {

const QSize canvasSize(1920, 1080);
const QSize faceSize(800, 500);

/// The canvas zoomed, with the map in its scene and the viewer dragged to the sun.
QImage canvasMapItem()
{
    Editor editor;
    if (!editor.addPicture(samplePictures::landscape(canvasSize)))
        return {};
    editor.application().setCanvasScale(2.0F);
    CanvasViewer map(&editor.application());
    map.setCanvasItemMaxSideLength(200);
    map.setPos({16, 16});
    map.update();
    stroke(editor.viewport(), {{116, 72}, {130, 66}, {160, 50}});
    return editor.grab();
}

/// The same with the map as a widget in the lower right corner.
QImage canvasMapWidget()
{
    Editor editor;
    if (!editor.addPicture(samplePictures::landscape(canvasSize)))
        return {};
    CanvasViewerWidget map(&editor.application(), &editor.window());
    map.setMaxSideLength(200);
    map.show();
    map.move(editor.window().width() - map.width() - 16,
             editor.window().height() - map.height() - 16);
    map.setCenter({0.5, 0.55}, 2.0F);
    return editor.grab();
}

/// A picture smaller than the canvas with a mask painted over its sun, and a part of that erased.
QImage trackMask()
{
    Editor editor;
    qrvkp::RvSpriteTrack* track = editor.addPicture(samplePictures::landscape({960, 540}));
    if (!track)
        return {};
    track->setScale(1.4F);
    track->setPosition(900.0F, 520.0F);
    RvTrackMaskWidget mask(&editor.application(), &editor.window());
    mask.setTrack(track);
    mask.updateGeometry();
    mask.setPenColorAndOpacity(QColor(255, 0, 90), 0.6);
    mask.setPenWidth(36);
    mask.show();
    const QPoint sun = QPoint(mask.width() * 3 / 4, mask.height() / 4);
    std::vector<QPoint> zigzag;
    for (int i = 0; i <= 6; ++i)
        zigzag.push_back(sun + QPoint(i % 2 ? 50 : -50, -54 + 18 * i));
    stroke(mask, zigzag);
    mask.grab(); // paints the stroke into the mask
    mask.setDrawTool(DrawToolEraser);
    mask.setPenColorAndOpacity(QColor(255, 0, 90), 1.0);
    mask.setEraserWidth(14);
    stroke(mask, {sun + QPoint(-90, -20), sun + QPoint(90, 20)});
    return editor.grab();
}

/// A soft mask painted over the cheeks of a face, shown within its rectangle.
QImage paintMaskView()
{
    QLabel picture;
    picture.setPixmap(QPixmap::fromImage(samplePictures::face(faceSize)));
    picture.resize(faceSize);
    LabPaintMaskView mask(&picture);
    const QRect face = samplePictures::faceRect(faceSize);
    mask.setupPaintShowRect(face, face.adjusted(-40, -40, 40, 40));
    mask.setupPaintStrokeColor(QColor(255, 40, 90));
    mask.setupPaintAlpha(0.6F);
    mask.setupPaintLineWidth(34);
    mask.resize(faceSize);
    const QPoint middle = face.center();
    stroke(mask, {middle + QPoint(-110, 40), middle + QPoint(-80, 60), middle + QPoint(-50, 50)});
    stroke(mask, {middle + QPoint(50, 50), middle + QPoint(80, 60), middle + QPoint(110, 40)});
    stroke(mask, {middle + QPoint(-50, -140), middle + QPoint(0, -150), middle + QPoint(50, -140)});
    // As a host does it: the blurred painting of the outer rectangle is shown as the mask.
    mask.setupPaintMaskImagePixmap(mask.lastPaintBlurMaskImage(2.0F, true));
    return picture.grab().toImage();
}

/// The preview of a soft brush under the pointer.
QImage touchMaskView()
{
    QLabel picture;
    picture.setPixmap(QPixmap::fromImage(samplePictures::face(faceSize)));
    picture.resize(faceSize);
    LabTouchMaskView touch(&picture);
    touch.touchImage = QImage(120, 120, QImage::Format_ARGB32_Premultiplied);
    touch.touchImage.fill(Qt::transparent);
    {
        QRadialGradient soft(60, 60, 60);
        soft.setColorAt(0.0, QColor(255, 255, 255, 200));
        soft.setColorAt(1.0, QColor(255, 255, 255, 0));
        QPainter painter(&touch.touchImage);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(soft);
        painter.setPen(QPen(Qt::white, 2.0));
        painter.drawEllipse(2, 2, 116, 116);
    }
    touch.resize(faceSize);
    stroke(touch, {{400, 250}, {470, 300}});
    return picture.grab().toImage();
}

/// A player that is paused in a video.
QImage simplePlayer()
{
    const QTemporaryDir folder;
    return PlayerScreens::simplePlayer(folder.path());
}

/// A video in grey and in colour, on both sides of a line.
QImage comparePlayer()
{
    const QTemporaryDir folder;
    return PlayerScreens::comparePlayer(folder.path());
}

} // namespace

const std::vector<Screenshot>& screenshots()
{
    static const std::vector<Screenshot> all{{"canvas-map-item", canvasMapItem},
                                             {"canvas-map-widget", canvasMapWidget},
                                             {"track-mask", trackMask},
                                             {"paint-mask-view", paintMaskView},
                                             {"touch-mask-view", touchMaskView},
                                             {"simple-player", simplePlayer},
                                             {"compare-player", comparePlayer},
                                             {"recorder-idle", RecorderScreens::idle},
                                             {"recorder-recording", RecorderScreens::recording},
                                             {"system-status", StatusScreens::collapsed},
                                             {"system-status-details", StatusScreens::expanded}};
    return all;
}
