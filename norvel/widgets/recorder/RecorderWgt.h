// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QDialog>
#include <QString>

#include <memory>

class Qt5AudioRecorder;
class QTimer;
class RecorderWgtForm;

/// A dialog that records sound from the system's default input into a file.
///
/// A button starts and stops the recording; beside it are the elapsed time and how loud it is.
/// While it records, the dialog shows nothing else. The inputs, the volume and the two options
/// below are for show: they change nothing. Errors are not told.
///
/// The pictures of its style sheet are resources of the host, all of them in
/// `:/images/recorder/`: `start.png` and `stop.png` (the button, 64 x 64 px), `combox_up.png` (an
/// arrow, 26 x 26 px) and `box.png` (the slider's handle, 10 px wide). Without them the parts look
/// plain, and work.
class NORVEL_EXPORT RecorderWgt : public QDialog
{
    Q_OBJECT

public:
    /// Every recording goes into the file of this path, over what was there. The path is taken as
    /// it is; the platform may append an extension.
    RecorderWgt(QString outputPath, QWidget* parent);
    ~RecorderWgt() override;

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): moc tells the two apart.
public slots:
    /// Starts or stops the recording, as the button is now checked or not.
    void playRecord();
    /// Gives the value, in per cent, to the volume's spin box when its slider sends it, else to the
    /// slider.
    void updateVolumeValue(int value);
    /// Counts one second of recording.
    void onTimer();

private:
    void showLevel(double level);

    const std::unique_ptr<RecorderWgtForm> ui;
    /// What the volume would drive; nothing, so far.
    QObject* volumeTarget = nullptr;
    Qt5AudioRecorder* recorder = nullptr;
    QTimer* timer = nullptr;
    int seconds = 0; ///< how long it has been recording
};
