// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "screenshots/RecorderScreens.h"

#include <norvel/norvel.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QPainter>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QStringList>

namespace {

constexpr QSize screenSize(800, 500);

/// Keeps Qt from finding the platform's recorder, and from telling so.
class Soundless
{
public:
    Soundless()
    {
        QCoreApplication::setLibraryPaths({});
        m_handler =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    ~Soundless()
    {
        qInstallMessageHandler(m_handler);
        QCoreApplication::setLibraryPaths(m_paths);
    }
    Soundless(const Soundless&) = delete;
    Soundless& operator=(const Soundless&) = delete;

private:
    const QStringList m_paths = QCoreApplication::libraryPaths();
    QtMessageHandler m_handler = nullptr;
};

/// The dialog in the middle of a dark ground, after something was done to it.
template <class Use>
QImage onGround(const Use& use)
{
    const Soundless soundless;
    RecorderWgt dialog(QString(), nullptr);
    dialog.findChild<QComboBox*>("cbDevice")->addItem("USB Microphone");
    dialog.show();
    use(dialog);
    const QPixmap shown = dialog.grab();
    QPixmap screen(screenSize * shown.devicePixelRatio());
    screen.setDevicePixelRatio(shown.devicePixelRatio());
    screen.fill(QColor(0x30, 0x33, 0x38));
    QPainter(&screen).drawPixmap((screenSize.width() - dialog.width()) / 2,
                                 (screenSize.height() - dialog.height()) / 2, shown);
    return screen.toImage();
}

} // namespace

QImage RecorderScreens::idle()
{
    return onGround(
        [](RecorderWgt& dialog) { dialog.findChild<QSlider*>("horizontalSlider")->setValue(60); });
}

QImage RecorderScreens::recording()
{
    return onGround([](RecorderWgt& dialog) {
        dialog.findChild<QPushButton*>("btnRecord")->click();
        for (int second = 0; second < 7; ++second)
            dialog.onTimer();
        dialog.findChild<QProgressBar*>("progressBar")->setValue(62);
    });
}
