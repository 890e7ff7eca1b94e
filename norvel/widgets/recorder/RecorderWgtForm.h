// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QCheckBox;
class QComboBox;
class QDialog;
class QFrame;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QSlider;
class QSpacerItem;
class QSpinBox;
class QVBoxLayout;
class QWidget;

/// The form of a `RecorderWgt`, in the manner of a generated form class. Everything on it belongs
/// to the dialog; the object names are for style sheets.
class RecorderWgtForm
{
public:
    QVBoxLayout* verticalLayout = nullptr;
    QWidget* wgtPlayRecord = nullptr;
    QVBoxLayout* verticalLayout_4 = nullptr;
    QHBoxLayout* horizontalLayout = nullptr;
    QPushButton* btnRecord = nullptr;
    QVBoxLayout* verticalLayout_2 = nullptr;
    QLabel* lblDuration = nullptr;
    QLabel* lblRecorderTips = nullptr;
    QProgressBar* progressBar = nullptr;
    QWidget* wgtMiddle = nullptr;
    QVBoxLayout* verticalLayout_7 = nullptr;
    QFrame* frmLine = nullptr;
    QWidget* widget_5 = nullptr;
    QVBoxLayout* verticalLayout_3 = nullptr;
    QLabel* lblInputDevice = nullptr;
    QComboBox* cbDevice = nullptr;
    QLabel* lblMicrophoneState = nullptr;
    QHBoxLayout* horizontalLayout_2 = nullptr;
    QLabel* lblIputVolume = nullptr;
    QSlider* horizontalSlider = nullptr;
    QSpinBox* spinBox = nullptr;
    QWidget* widget_4 = nullptr;
    QVBoxLayout* verticalLayout_8 = nullptr;
    QWidget* wgtBottom = nullptr;
    QVBoxLayout* verticalLayout_5 = nullptr;
    QCheckBox* chkRemoveEcho = nullptr;
    QLabel* lblRemoveEchoInfo = nullptr;
    QFrame* frame = nullptr;
    QCheckBox* chkDraftMute = nullptr;
    QLabel* lblDraftMute = nullptr;
    QWidget* widget_3 = nullptr;
    QVBoxLayout* verticalLayout_6 = nullptr;
    QSpacerItem* verticalSpacer = nullptr;

    void setupUi(QDialog* dialog);
    void retranslateUi(QDialog* dialog);

    /// The texts that change while the dialog is used; translated like those of the form.
    static QString dialogTitle();
    static QString idleTip();
    static QString recordingTip();
    static QString noDuration();

private:
    void setupPlayRecord(QDialog* dialog);
    void setupButtonAndTexts();
    void setupMiddle();
    void setupDevice();
    void setupVolume();
    void setupBottom(QDialog* dialog);
};
