// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/recorder/KeptFile.h>

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class QAudioBuffer;
class QAudioProbe;
class QAudioRecorder;

/// Records the microphone to a file with the platform's recorder, and tells how loud it is.
///
/// Tells of no errors: where recording is not possible, the platform's recorder fails in its own
/// way. All of it belongs to the thread of the object.
///
/// Backends start and end a recording in the background. Where an operation waits for that, it runs
/// the event loop without the user's input, and gives up when the limit is over: 10 s after the
/// start or the stop was asked for. The other one may be asked for meanwhile; the last request
/// counts. The object may be deleted meanwhile, too.
///
/// A file that is in the place of a recording is set aside as a `norvel::KeptFile` before it
/// starts. It is put back when nothing was recorded, and deleted when the recording is complete.
/// Where a recording broke off with an error after there was sound, or has not ended when the
/// object goes, both files stay. Where a file cannot be set aside, it is recorded over at once.
class Qt5AudioRecorder : public QObject
{
    Q_OBJECT

public:
    explicit Qt5AudioRecorder(QObject* parent);

    /// The names of the sound inputs.
    QStringList audioInputs() const;
    /// Sets the system's default input, whatever the name says, and the encoding.
    void setupRecorder(const QString& inputName);
    /// The path of the file to record to, taken as it is: the platform may append an extension.
    void setOutputFile(const QString& path);
    /// Starts a recording, over what is in the file; does nothing unless the recorder is stopped.
    /// Waits until the recording before it is complete.
    /// Where the platform does not offer the codec that was set up, the nearest one is used.
    void startRecord();
    /// Ends the recording; does nothing when the recorder is stopped. Waits until a recording that
    /// is about to start has done so; its file is completed in the background.
    void stopRecord();
    /// Ends the recording and waits until its file is complete.
    void finishRecord();
    /// How long operations wait for the backend, in ms.
    void setWaitLimit(int milliseconds);

    /// Tells the levels of the buffer.
    void processBuffer(const QAudioBuffer& buffer);

signals:
    /// How loud a channel is, as a fraction of full scale: once for every channel of every buffer,
    /// in the order of the channels.
    void updateProgressBar(double level);

private:
    void want(bool recording);
    template <class Condition>
    bool waitWhile(const Condition& holds);
    bool isStarting() const;
    bool isOver() const;
    bool hasRecorded() const;
    void record();
    std::vector<norvel::KeptFile> setFilesAside() const;
    void settleKeptFile();

    QAudioRecorder* const recorder;
    QAudioProbe* const probe;
    std::optional<norvel::KeptFile> keptFile; ///< which the recording takes the place of
    bool isWanted = false;                    ///< what was asked for last: to record, or to stop
    int waitLimit = 10000;                    ///< ms
    QDeadlineTimer deadline;                  ///< of what was asked for last
    bool isHeard = false;                     ///< some sound came in
    bool hasLength = false;                   ///< some sound went into the file
};
