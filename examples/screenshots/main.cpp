// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Screenshots.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>

#include <cstdio>

/// Makes the pictures of the documents, without a screen: norvel-screenshots OUTDIR.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // For style sheets that have pictures of several sizes.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    // The players tell what they do.
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2 || !QDir(arguments[1]).exists()) {
        std::fprintf(stderr, "usage: norvel-screenshots OUTDIR\n");
        return 2;
    }
    for (const Screenshot& screenshot : screenshots()) {
        const QString path =
            QDir(arguments[1]).filePath(QLatin1String(screenshot.name) + QStringLiteral(".png"));
        const QImage image = screenshot.make();
        if (image.isNull() || !image.convertToFormat(QImage::Format_RGB32).save(path, "PNG", 0)) {
            std::fprintf(stderr, "%s could not be made\n", qPrintable(path));
            return 1;
        }
        std::printf("%s\n", qPrintable(path));
    }
    return 0;
}
