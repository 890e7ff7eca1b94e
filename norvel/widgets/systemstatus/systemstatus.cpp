// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/systemstatus.h>

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int panelWidth = 300;
constexpr int startHeight = 65;
constexpr int collapsedHeight = 85;
constexpr int expandedHeight = 470;
constexpr int detailMaximumHeight = 400;
constexpr int buttonWidth = 120;
constexpr int buttonHeight = 30;

/// A label for the tools' texts, which are shown as they are, whatever they look like.
QLabel* makeRawLabel()
{
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

systemstatus::systemstatus(QWidget* parent)
    : QWidget(parent)
{
    initUi();
    auto* const worker = new CalculateSysInfo;
    m_timer.reset(worker->timer);
    worker->moveToThread(&thread);
    connect(&thread, &QThread::finished, worker, &CalculateSysInfo::deleteLater);
    connect(worker, &CalculateSysInfo::updateCpuMemUsage, this, &systemstatus::updateCpuMemUsage);
    connect(&thread, &QThread::started, worker, &CalculateSysInfo::collectHardwareInfo);
    connect(worker, &CalculateSysInfo::displayInfo, this, &systemstatus::displayInfo);
    thread.start();
    resize(panelWidth, startHeight);
}

systemstatus::~systemstatus()
{
    // Without it the worker would first serve every tick that waits.
    thread.requestInterruption();
    thread.quit();
    thread.wait();
}

void systemstatus::initUi()
{
    setWindowTitle(QStringLiteral("系统信息"));
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(6, 6, 0, 10);

    layout->addWidget(
        new QLabel(QStringLiteral("当前进程名：%1").arg(QCoreApplication::applicationName())));
    cpuLabel = new QLabel(QStringLiteral("CPU Usage: -"));
    layout->addWidget(cpuLabel);
    memLabel = new QLabel(QStringLiteral("Mem Usage: -"));
    layout->addWidget(memLabel);

    initDetails();
    layout->addWidget(detailArea);

    detailButton = new QPushButton(QStringLiteral("显示更多"));
    detailButton->setCheckable(true);
    detailButton->setChecked(false);
    detailButton->setFixedSize(buttonWidth, buttonHeight);
    layout->addWidget(detailButton);
    connect(detailButton, &QPushButton::clicked, this, &systemstatus::enableDetailWgt);
}

void systemstatus::initDetails()
{
    detailArea = new QScrollArea;
    detailArea->setWidgetResizable(true);
    detailArea->setMaximumHeight(detailMaximumHeight);
    detailArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    detailArea->setStyleSheet(QStringLiteral("QScrollArea{background:transparent;}"));
    detailArea->setVisible(false);
    auto* const details = new QWidget;
    details->setStyleSheet(QStringLiteral("QWidget{background:transparent;}"));
    auto* const detailLayout = new QVBoxLayout(details);
    detailLayout->setSpacing(0);
    detailLayout->setContentsMargins(0, 0, 0, 0);
    hardwareLabel = makeRawLabel();
    detailLayout->addWidget(hardwareLabel);
    gpuLabel = makeRawLabel();
    detailLayout->addWidget(gpuLabel);
    detailArea->setWidget(details);
}

void systemstatus::updateCpuMemUsage(double cpu, double mem)
{
    cpuLabel->setText(QStringLiteral("CPU Usage: %1%").arg(cpu));
    memLabel->setText(QStringLiteral("Mem Usage: %1%").arg(mem));
}

void systemstatus::displayInfo(const QString& gpuText, const QString& hardwareText)
{
    gpuLabel->setText(gpuText);
    hardwareLabel->setText(hardwareText);
}

void systemstatus::enableDetailWgt()
{
    const bool isShown = detailButton->isChecked();
    detailArea->setVisible(isShown);
    detailArea->widget()->show();
    setFixedHeight(isShown ? expandedHeight : collapsedHeight);
    detailButton->setText(isShown ? QStringLiteral("收起") : QStringLiteral("显示详细信息"));
}
