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
/// A dialog that is not seen does not record: hiding it, by whatever way, ends the recording as a
/// click on the button does; minimising does not. When `done`, `close`, `hide` or `exec` return,
/// when the dialog is destroyed and when the application is about to quit, the file is complete.
/// For that they wait, some milliseconds as a rule and 10 s at the most, and run the event loop
/// without the user's input; so does a click that stops a recording while the device is still being
/// opened, or starts one before the last file is complete. The dialog may be deleted meanwhile.
/// Destroyed with its parent, it keeps events from the parent and its children while it waits. A
/// host whose own timers must not run when it deletes the dialog closes it before. A dialog within
/// a window of the host ends its recording, but does not wait, when the host hides the window.
///
/// A file that is in the place of a recording is set aside, in its folder, as its own name with
/// `.kept-` and 32 random hexadecimal digits behind it. It is deleted when the recording is
/// complete, and put back when nothing was recorded: no device, no encoder. Where the process ends
/// in a recording, or the recording broke off with an error after there was sound, the file stays
/// under that name. A file in a folder that cannot be written is recorded over at once.
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
    /// Ends the recording.
    ~RecorderWgt() override;

    /// As those of `QDialog`; they end the recording.
    int exec() override;
    void done(int result) override;
    void setVisible(bool visible) override;

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): moc tells the two apart.
public slots:
    /// Starts or stops the recording, as the button is now checked or not.
    void playRecord();
    /// Gives the value, in per cent, to the volume's spin box when its slider sends it, else to the
    /// slider.
    void updateVolumeValue(int value);
    /// Counts one second of recording.
    void onTimer();

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool endRecording();
    void release();
    void showParts();
    void showLevel(double level);

    const std::unique_ptr<RecorderWgtForm> ui;
    /// What the volume would drive; nothing, so far.
    QObject* volumeTarget = nullptr;
    Qt5AudioRecorder* recorder = nullptr;
    QTimer* timer = nullptr;
    int seconds = 0; ///< how long it has been recording
};
