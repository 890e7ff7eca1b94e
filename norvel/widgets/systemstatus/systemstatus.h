// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QString>
#include <QThread>
#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;
class QScrollArea;
class QTimer;

/// A small panel that shows the process's name, the load of the machine and the share of the memory
/// that the process has, anew every second, and behind a button what hardware the machine has.
///
/// All of it comes from the Windows tools `wmic` and `tasklist`, two processes every second, which
/// run in a thread of the panel's own. Where `wmic` is not on the search path, Windows itself is
/// asked; where one of the two is not, Linux is. On other systems all numbers are 0. One debug
/// message of the category "norvel.systemstatus" names the tools that are missing.
///
/// The panel belongs to the thread of the user interface, which it does not block, but for two
/// times: the constructor reads the installed memory and the destructor waits for the command that
/// runs. Each takes as long as the tool does, at most 30 s.
class NORVEL_EXPORT systemstatus : public QWidget
{
    Q_OBJECT

public:
    /// Reads the installed memory and starts the measurements; the first one comes after a second.
    explicit systemstatus(QWidget* parent);
    /// Ends the measurements; waits for the command that runs.
    ~systemstatus() override;

protected:
    /// Builds what is on the panel.
    void initUi();
    /// Shows a measurement, percent.
    void updateCpuMemUsage(double cpu, double mem);
    /// Shows the graphics adapters, and the processors and the memory, as they are printed.
    void displayInfo(const QString& gpuText, const QString& hardwareText);
    /// Shows or hides the details, as the button is checked or not.
    void enableDetailWgt();

private:
    void initDetails();

    QLabel* cpuLabel = nullptr;
    QLabel* memLabel = nullptr;
    QLabel* hardwareLabel = nullptr;
    QLabel* gpuLabel = nullptr;
    QScrollArea* detailArea = nullptr;
    QPushButton* detailButton = nullptr;
    QThread thread;
    /// Ticks in the panel's thread, and goes after the worker that it ticks for.
    std::unique_ptr<QTimer> m_timer;
};
