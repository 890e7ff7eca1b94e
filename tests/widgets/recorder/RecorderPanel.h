// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/recorder/RecorderWgt.h>

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <stdexcept>
#include <string>

/// A recorder's dialog as its user has it: shown, with its parts by their names.
class RecorderPanel
{
public:
    explicit RecorderPanel(const QString& path)
        : dialog(path, nullptr)
    {
    }

    template <class Kind>
    Kind& named(const char* name)
    {
        Kind* const found = dialog.findChild<Kind*>(name);
        if (!found)
            throw std::runtime_error(std::string("there is no ") + name);
        return *found;
    }
    QLabel& label(const char* name) { return named<QLabel>(name); }
    QPushButton& button() { return named<QPushButton>("btnRecord"); }
    QProgressBar& bar() { return named<QProgressBar>("progressBar"); }
    QSlider& slider() { return named<QSlider>("horizontalSlider"); }
    QSpinBox& spinBox() { return named<QSpinBox>("spinBox"); }
    QComboBox& devices() { return named<QComboBox>("cbDevice"); }
    std::string duration() { return label("lblDuration").text().toStdString(); }
    std::string tip() { return label("lblRecorderTips").text().toStdString(); }

    void show()
    {
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            throw std::runtime_error("the dialog is not shown");
    }
    void click() { QTest::mouseClick(&button(), Qt::LeftButton); }

    RecorderWgt dialog;
};
