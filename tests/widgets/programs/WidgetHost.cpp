// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/norvel.h>

#include <support/FrameworkRef.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QApplication>
#include <QCursor>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>

#include <iostream>
#include <memory>
#include <string>

using namespace qrvkp;

namespace {

void send(QWidget& widget, QEvent::Type type, const QPoint& point, Qt::MouseButton button,
          Qt::MouseButtons buttons)
{
    QMouseEvent event(type, point, widget.mapToGlobal(point), button, buttons, {});
    QCoreApplication::sendEvent(&widget, &event);
}

void stroke(QWidget& widget, const QPoint& from, const QPoint& to)
{
    send(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    send(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    send(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

void print(const char* what, const QRect& rect)
{
    std::cout << what << " " << rect.x() << " " << rect.y() << " " << rect.width() << " "
              << rect.height() << std::endl;
}

/// The size in device px of a widget as it is seen.
void printGrabbed(const char* what, QWidget& widget)
{
    const QPixmap seen = widget.grab();
    std::cout << "seen " << what << " " << seen.width() << " x " << seen.height() << std::endl;
}

void useMaps(RvKpApplication& application, QWidget& window)
{
    norvel::CanvasViewer item(&application);
    item.setPos({300, 200});
    item.update();
    stroke(*application.getGraphicsView()->viewport(), {348, 227}, {352, 230});
    for (const QGraphicsItem* part : application.getGraphicsView()->scene()->items()) {
        if (part->type() == QGraphicsItem::UserType + 1)
            print("item", dynamic_cast<const QGraphicsRectItem*>(part)->rect().toRect());
    }
    norvel::CanvasViewerWidget map(&application, &window);
    map.show();
    map.setCenter();
    QWidget* viewer = map.findChildren<QWidget*>().first();
    stroke(*viewer, {10, 10}, {15, 8});
    print("map", map.geometry());
    print("viewer", viewer->geometry());
    printGrabbed("map", map);
    printGrabbed("viewer", *viewer);
}

void useTrackMask(RvKpApplication& application, QWidget& window, RvITrack* track)
{
    RvTrackMaskWidget mask(&application, &window);
    mask.setTrack(track);
    mask.updateGeometry();
    mask.show();
    print("mask", mask.geometry());
    stroke(mask, {50, 50}, {150, 50});
    printGrabbed("mask", mask);
    const std::unique_ptr<QImage> image(mask.getMaskImage());
    const std::unique_ptr<const uchar[]> pixels(image->constBits());
    QRect area;
    for (int y = 0; y < image->height(); ++y) {
        for (int x = 0; x < image->width(); ++x) {
            if (image->constScanLine(y)[x])
                area |= QRect(x, y, 1, 1);
        }
    }
    std::cout << "image " << image->width() << " x " << image->height() << std::endl;
    print("masked", area);
    const QPixmap cursor = mask.cursor().pixmap();
    std::cout << "cursor " << cursor.width() << " x " << cursor.height() << std::endl;
}

void usePaintViews(QWidget& window)
{
    QWidget picture(&window);
    picture.resize(400, 300);
    LabPaintMaskView paint(&picture);
    paint.paintMode = true;
    paint.setupPaintShowRect({50, 40, 300, 200}, {50, 40, 300, 200});
    LabTouchMaskView touch(&picture);
    touch.touchImage = QImage(30, 30, QImage::Format_RGB32);
    touch.touchImage.fill(Qt::red);
    picture.show();
    paint.grab(); // takes the parent's size
    touch.grab();
    printGrabbed("paint", paint);
    printGrabbed("touch", touch);
    print("paint", paint.geometry());
    print("touch", touch.geometry());
    stroke(paint, {100, 100}, {200, 100});
    stroke(touch, {100, 100}, {200, 100});
    const QImage soft = paint.lastPaintBlurMaskImage(2.0F, false).toImage();
    std::cout << "soft " << soft.width() << " x " << soft.height();
    for (const int y : {45, 52, 60, 68, 75}) // across the stroke, which is at 60
        std::cout << " " << soft.pixelColor(100, y).alpha();
    std::cout << std::endl;
}

} // namespace

/// A host that uses every widget over a view of 800 x 600, and prints sizes and places. Run with
/// several numbers of device pixels per px, for which a process of its own is needed.
int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    if (argc < 2)
        return 2;
    RvKpApplication application;
    application.getRvKpConfig()->setKpSize(1600.0F, 900.0F);
    QWidget window;
    window.resize(800, 600);
    application.getGraphicsView()->setParent(&window);
    application.getGraphicsView()->setGeometry(0, 0, 800, 600);
    window.show();
    QCoreApplication::processEvents();
    application.setCanvasScale(2.0F);
    const auto track = adopt(RvSpriteTrack::create(argv[1], 0, 1000));
    if (!track)
        return 1;
    track->setWidthAndHeight(400.0F, 200.0F);
    track->setPosition(800.0F, 450.0F);
    useMaps(application, window);
    application.setCanvasPosition(0.0F, 0.0F);
    useTrackMask(application, window, track.get());
    usePaintViews(window);
    printGrabbed("window", window);
    return 0;
}
