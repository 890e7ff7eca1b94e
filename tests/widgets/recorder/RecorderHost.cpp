// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"

#include <norvel/widgets/recorder/RecorderWgt.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QPixmap>

#include <iostream>

namespace {

/// Saves the dialog as it is seen and prints its height and the button's place.
void show(const char* name, RecorderWgt& dialog, const QString& folder)
{
    QCoreApplication::processEvents();
    dialog.grab().save(QDir(folder).filePath(QString("%1.png").arg(name)));
    const QRect button =
        dialog.findChild<QAbstractButton*>("btnRecord")
            ->rect()
            .translated(dialog.findChild<QAbstractButton*>("btnRecord")->mapTo(&dialog, QPoint()));
    std::cout << name << " " << dialog.height() << ", button " << button.x() << " " << button.y()
              << " " << button.width() << " " << button.height() << std::endl;
}

} // namespace

/// A host that shows the dialog as it opens, records and shows it again, and stops and shows it
/// once more. It saves what is seen in a folder. Its backend records nothing.
int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    if (argc < 2)
        return 2;
    FakeBackend::instance();
    RecorderWgt dialog("/recorded", nullptr);
    dialog.show();
    show("opened", dialog, argv[1]);
    dialog.findChild<QAbstractButton*>("btnRecord")->click();
    show("recording", dialog, argv[1]);
    dialog.findChild<QAbstractButton*>("btnRecord")->click();
    show("stopped", dialog, argv[1]);
    return 0;
}
