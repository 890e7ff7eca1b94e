// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/CanvasViewer.h>

#include <rvkpcore/RvKpApplication.h>

#include <QCoreApplication>

#include <iostream>

/// A host without a `QApplication`: the framework then has no view, and the map no scene.
int main(int argc, char** argv)
{
    const QCoreApplication qtApplication(argc, argv);
    qrvkp::RvKpApplication application;
    norvel::CanvasViewer map(&application);
    map.setCanvasItemMaxSideLength(200);
    map.setPos({10, 10});
    map.show();
    map.update();
    map.setCenter();
    application.setCanvasScale(3.0F);
    map.update();
    map.hide();
    std::cout << (application.getGraphicsView() ? "a view" : "no view") << std::endl;
    return 0;
}
