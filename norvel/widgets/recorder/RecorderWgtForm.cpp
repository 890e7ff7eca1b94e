// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/RecorderWgtForm.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QDialog>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QSpacerItem>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int unlimited = 16777215;
constexpr Qt::Alignment textBelow = Qt::AlignLeft | Qt::AlignTop;

const char* const styleSheet = R"(
QWidget#recorderWgt {
    background-color: #1B1B1C;
}
QWidget#wgtPlayRecord {
    background-color: #070709;
    border-radius: 14px;
}
QLabel#lblRecorderTips {
    color: #4C4C4C;
    font-size: 16px;
}
QLabel#lblDuration {
    color: white;
    font-size: 20px;
}
QLabel#lblInputDevice, QLabel#lblIputVolume {
    color: #D4D4D4;
    font-size: 14px;
}
QLabel#lblMicrophoneState, QLabel#lblRemoveEchoInfo, QLabel#lblDraftMute {
    color: #6C6C6C;
    font-size: 13px;
}
QCheckBox {
    color: white;
    font-size: 14px;
    font-weight: bold;
}
QFrame#frmLine {
    background-color: #2D2D2E;
}
QPushButton#btnRecord {
    border-image: url(:/images/recorder/start.png);
}

QComboBox {
    border-radius: 3px;
    background-color: #29292D;
    color: rgb(255, 255, 255);
    border: none;
}
QComboBox:hover {
    border: 1px solid #72787E;
}
QComboBox QAbstractItemView {
    outline: none;
    color: white;
    background-color: #2E2E33;
    selection-background-color: #303842;
}
QComboBox QAbstractItemView::item {
    height: 25px;
}
QComboBox QAbstractItemView::item:selected {
    color: white;
}
QComboBox::drop-down {
    border: none;
}
QComboBox::down-arrow {
    width: 26px;
    height: 26px;
    right: 10px;
    image: url(:/images/recorder/combox_up.png);
}
QComboBox::down-arrow:on {
    image: url(:/images/recorder/combox_up.png);
}

QSpinBox {
    padding-top: 2px;
    padding-bottom: 2px;
    padding-left: 4px;
    padding-right: 15px;
    border: 1px solid rgb(64, 64, 64);
    border-radius: 3px;
    color: rgb(200, 200, 200);
    background-color: rgb(44, 44, 44);
    selection-color: rgb(235, 235, 235);
    selection-background-color: rgb(83, 121, 180);
    font-size: 10px;
}
QSpinBox:hover {
    background-color: rgb(59, 59, 59);
}
QSpinBox::up-button {
    subcontrol-origin: margin;
    subcontrol-position: top right;
    width: 12px;
    border: none;
    margin: 2px 1px 0px 0px;
}
QSpinBox::down-button {
    subcontrol-origin: margin;
    subcontrol-position: bottom right;
    width: 12px;
    border: none;
    margin: 0px 1px 2px 0px;
}
QSpinBox::up-arrow, QSpinBox::down-arrow {
    image: none;
}

QSlider::groove:horizontal {
    border: none;
}
QSlider::sub-page:horizontal {
    background-color: #017CFF;
    border-radius: 2px;
    margin-top: 10px;
    margin-bottom: 10px;
}
QSlider::add-page:horizontal {
    background-color: white;
    border-radius: 2px;
    margin-top: 10px;
    margin-bottom: 10px;
}
QSlider::handle:horizontal, QSlider::handle:horizontal:hover {
    border-image: url(:/images/recorder/box.png);
    width: 10px;
    margin-top: 4px;
    margin-bottom: 4px;
}

QProgressBar#progressBar {
    border: 1px solid grey;
    border-radius: 3px;
    background-color: transparent;
    text-align: center;
    qproperty-textVisible: false;
    height: 8px;
}
QProgressBar#progressBar::chunk {
    background-color: #004D52;
    width: 8px;
    margin: 0.5px;
}
)";

QString translated(const char* text)
{
    return QCoreApplication::translate("recorderWgt", text);
}

template <class Part>
Part* make(const char* name, QWidget* parent)
{
    auto* const part = new Part(parent);
    part->setObjectName(QLatin1String(name));
    return part;
}

/// A layout for a widget, or one that stands in another layout when there is no widget.
template <class Layout>
Layout* makeLayout(const char* name, QWidget* widget, int spacing)
{
    auto* const layout = make<Layout>(name, widget);
    layout->setSpacing(spacing);
    return layout;
}

QFrame* makeLine(const char* name, QWidget* parent)
{
    auto* const line = make<QFrame>(name, parent);
    line->setMinimumSize(QSize(0, 1));
    line->setMaximumSize(QSize(unlimited, 1));
    line->setFrameShape(QFrame::StyledPanel);
    return line;
}

} // namespace

void RecorderWgtForm::setupUi(QDialog* dialog)
{
    if (dialog->objectName().isEmpty())
        dialog->setObjectName(QStringLiteral("recorderWgt"));
    dialog->setEnabled(true);
    dialog->resize(365, 546);
    dialog->setStyleSheet(QLatin1String(styleSheet));
    verticalLayout = makeLayout<QVBoxLayout>("verticalLayout", dialog, 10);
    verticalLayout->setContentsMargins(15, 23, 15, 15);

    setupPlayRecord(dialog);
    setupBottom(dialog);
    verticalSpacer = new QSpacerItem(20, 40, QSizePolicy::Minimum, QSizePolicy::Expanding);
    verticalLayout->addItem(verticalSpacer);

    retranslateUi(dialog);
    QMetaObject::connectSlotsByName(dialog);
}

void RecorderWgtForm::setupPlayRecord(QDialog* dialog)
{
    wgtPlayRecord = make<QWidget>("wgtPlayRecord", dialog);
    wgtPlayRecord->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    wgtPlayRecord->setStyleSheet(QString());
    verticalLayout_4 = makeLayout<QVBoxLayout>("verticalLayout_4", wgtPlayRecord, 6);
    verticalLayout_4->setContentsMargins(-1, 25, -1, 12);

    setupButtonAndTexts();
    progressBar = make<QProgressBar>("progressBar", wgtPlayRecord);
    progressBar->setMinimumSize(QSize(0, 30));
    progressBar->setMaximumSize(QSize(unlimited, 30));
    progressBar->setValue(0);
    verticalLayout_4->addWidget(progressBar);
    setupMiddle();
    verticalLayout->addWidget(wgtPlayRecord);
}

void RecorderWgtForm::setupButtonAndTexts()
{
    horizontalLayout = makeLayout<QHBoxLayout>("horizontalLayout", nullptr, 10);
    btnRecord = make<QPushButton>("btnRecord", wgtPlayRecord);
    btnRecord->setMinimumSize(QSize(64, 64));
    btnRecord->setMaximumSize(QSize(64, 64));
    btnRecord->setCursor(QCursor(Qt::PointingHandCursor));
    btnRecord->setCheckable(true);
    horizontalLayout->addWidget(btnRecord);

    verticalLayout_2 = makeLayout<QVBoxLayout>("verticalLayout_2", nullptr, 0);
    lblDuration = make<QLabel>("lblDuration", wgtPlayRecord);
    lblDuration->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    verticalLayout_2->addWidget(lblDuration);
    lblRecorderTips = make<QLabel>("lblRecorderTips", wgtPlayRecord);
    lblRecorderTips->setAlignment(textBelow);
    verticalLayout_2->addWidget(lblRecorderTips);
    horizontalLayout->addLayout(verticalLayout_2);
    verticalLayout_4->addLayout(horizontalLayout);
}

void RecorderWgtForm::setupMiddle()
{
    wgtMiddle = make<QWidget>("wgtMiddle", wgtPlayRecord);
    wgtMiddle->setMinimumSize(QSize(0, 0));
    verticalLayout_7 = makeLayout<QVBoxLayout>("verticalLayout_7", wgtMiddle, 0);
    verticalLayout_7->setContentsMargins(0, 0, 0, 0);
    frmLine = makeLine("frmLine", wgtMiddle);
    verticalLayout_7->addWidget(frmLine);
    setupDevice();
    setupVolume();
    verticalLayout_4->addWidget(wgtMiddle);
}

void RecorderWgtForm::setupDevice()
{
    widget_5 = make<QWidget>("widget_5", wgtMiddle);
    verticalLayout_3 = makeLayout<QVBoxLayout>("verticalLayout_3", widget_5, 10);
    verticalLayout_3->setContentsMargins(0, 15, 0, 35);
    lblInputDevice = make<QLabel>("lblInputDevice", widget_5);
    verticalLayout_3->addWidget(lblInputDevice);
    cbDevice = make<QComboBox>("cbDevice", widget_5);
    cbDevice->setMinimumSize(QSize(0, 30));
    cbDevice->setMaximumSize(QSize(unlimited, 30));
    verticalLayout_3->addWidget(cbDevice);
    lblMicrophoneState = make<QLabel>("lblMicrophoneState", widget_5);
    lblMicrophoneState->setAlignment(textBelow);
    verticalLayout_3->addWidget(lblMicrophoneState);
    verticalLayout_7->addWidget(widget_5);
}

void RecorderWgtForm::setupVolume()
{
    horizontalLayout_2 = makeLayout<QHBoxLayout>("horizontalLayout_2", nullptr, 9);
    lblIputVolume = make<QLabel>("lblIputVolume", wgtMiddle);
    horizontalLayout_2->addWidget(lblIputVolume);
    horizontalSlider = make<QSlider>("horizontalSlider", wgtMiddle);
    horizontalSlider->setMaximum(100);
    horizontalSlider->setOrientation(Qt::Horizontal);
    horizontalLayout_2->addWidget(horizontalSlider);
    spinBox = make<QSpinBox>("spinBox", wgtMiddle);
    spinBox->setMinimumSize(QSize(50, 0));
    spinBox->setMaximum(100);
    horizontalLayout_2->addWidget(spinBox);
    verticalLayout_7->addLayout(horizontalLayout_2);
}

void RecorderWgtForm::setupBottom(QDialog* dialog)
{
    widget_4 = make<QWidget>("widget_4", dialog);
    widget_4->setMinimumSize(QSize(0, 0));
    verticalLayout_8 = makeLayout<QVBoxLayout>("verticalLayout_8", widget_4, 0);
    verticalLayout_8->setContentsMargins(0, 0, 0, 0);
    wgtBottom = make<QWidget>("wgtBottom", widget_4);
    wgtBottom->setStyleSheet(QString());
    verticalLayout_5 = makeLayout<QVBoxLayout>("verticalLayout_5", wgtBottom, 9);
    verticalLayout_5->setContentsMargins(0, 0, 0, 0);
    chkRemoveEcho = make<QCheckBox>("chkRemoveEcho", wgtBottom);
    verticalLayout_5->addWidget(chkRemoveEcho);
    lblRemoveEchoInfo = make<QLabel>("lblRemoveEchoInfo", wgtBottom);
    verticalLayout_5->addWidget(lblRemoveEchoInfo);
    frame = makeLine("frame", wgtBottom);
    verticalLayout_5->addWidget(frame);
    chkDraftMute = make<QCheckBox>("chkDraftMute", wgtBottom);
    verticalLayout_5->addWidget(chkDraftMute);
    lblDraftMute = make<QLabel>("lblDraftMute", wgtBottom);
    verticalLayout_5->addWidget(lblDraftMute);
    verticalLayout_8->addWidget(wgtBottom);
    verticalLayout->addWidget(widget_4);

    widget_3 = make<QWidget>("widget_3", dialog);
    widget_3->setStyleSheet(QString());
    verticalLayout_6 = makeLayout<QVBoxLayout>("verticalLayout_6", widget_3, 9);
    verticalLayout_6->setContentsMargins(0, 0, 0, 0);
    verticalLayout->addWidget(widget_3);
}

void RecorderWgtForm::retranslateUi(QDialog* dialog)
{
    dialog->setWindowTitle(translated("recorderWgt"));
    btnRecord->setText(QString());
    lblDuration->setText(noDuration());
    lblRecorderTips->setText(idleTip());
    lblInputDevice->setText(translated("输入设备"));
    lblMicrophoneState->setText(translated("麦克风连接成功"));
    lblIputVolume->setText(translated("输入音量"));
    chkRemoveEcho->setText(translated("回声消除"));
    lblRemoveEchoInfo->setText(translated("开启后将避免扬声器产生的回声问题"));
    chkDraftMute->setText(translated("草稿静音"));
    lblDraftMute->setText(translated("开启后会将时间片段所有声音关闭"));
}

QString RecorderWgtForm::dialogTitle()
{
    return translated("录音");
}

QString RecorderWgtForm::idleTip()
{
    return translated("未开始录制");
}

QString RecorderWgtForm::recordingTip()
{
    return translated("正在录制中...");
}

QString RecorderWgtForm::noDuration()
{
    return translated("00:00:00");
}
