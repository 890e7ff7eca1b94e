// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "StatusScreens.h"

#include "SamplePictures.h"

#include <norvel/norvel.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr QSize windowSize(800, 500);
constexpr QSize pictureSize(480, 500);
constexpr int columnWidth = 300;

/// A panel that shows what no machine measured, in the form that Linux gives it. Its own
/// measurements arrive with the events of the event loop, which does not run here.
class SampleStatus : public systemstatus
{
public:
    SampleStatus()
        : systemstatus(nullptr)
    {
        updateCpuMemUsage(12.0, 0.0);
        displayInfo(QStringLiteral("Name=Example Corporation Graphics 7000\n"),
                    QStringLiteral("Name=Example CPU 8-Core Processor\n"
                                   "CurrentClockSpeed=3600\n"
                                   "NumberOfCores=8\n"
                                   "NumberOfLogicalProcessors=16\n"
                                   "Capacity=17179869184\n"));
    }
};

/// A window with a picture and, in a column beside it, the panel.
class StatusWindow : public QWidget
{
public:
    StatusWindow()
    {
        resize(windowSize);
        auto* const row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        auto* const picture = new QLabel;
        picture->setPixmap(QPixmap::fromImage(samplePictures::landscape(pictureSize)));
        row->addWidget(picture);
        auto* const column = new QVBoxLayout;
        m_status->setFixedWidth(columnWidth);
        column->addWidget(m_status);
        column->addStretch();
        row->addLayout(column);
    }

    void clickButton() { m_status->findChild<QPushButton*>()->click(); }

private:
    SampleStatus* const m_status = new SampleStatus;
};

} // namespace

QImage StatusScreens::collapsed()
{
    StatusWindow window;
    return window.grab().toImage();
}

QImage StatusScreens::expanded()
{
    StatusWindow window;
    window.clickButton();
    return window.grab().toImage();
}
