// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QWidget;

/// The form of a `QLabPlayer`, in the manner of a generated form class. Everything on it belongs to
/// the player; the object names are for style sheets.
class QLabPlayerForm
{
public:
    QVBoxLayout* verticalLayout_2 = nullptr;
    QWidget* playBackWidget = nullptr;
    QWidget* widget = nullptr;
    QHBoxLayout* horizontalLayout_2 = nullptr;
    QLabel* timeLabel = nullptr;
    QPushButton* playButton = nullptr;
    QWidget* widget_2 = nullptr;

    void setupUi(QWidget* player);
    void retranslateUi(QWidget* player);

private:
    void setupControls(QWidget* player);
};
