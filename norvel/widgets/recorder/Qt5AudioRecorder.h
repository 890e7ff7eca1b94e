// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QObject>
#include <QString>
#include <QStringList>

class QAudioBuffer;
class QAudioProbe;
class QAudioRecorder;

/// Records the microphone to a file with the platform's recorder, and tells how loud it is.
///
/// Tells of no errors: where recording is not possible, the platform's recorder fails in its own
/// way. All of it belongs to the thread of the object.
class NORVEL_AUTOTEST_EXPORT Qt5AudioRecorder : public QObject
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
    /// Where the platform does not offer the codec that was set up, the nearest one is used.
    void startRecord();
    /// Ends the recording; does nothing when the recorder is stopped.
    void stopRecord();

    /// Tells the levels of the buffer.
    void processBuffer(const QAudioBuffer& buffer);

signals:
    /// How loud a channel is, as a fraction of full scale: once for every channel of every buffer,
    /// in the order of the channels.
    void updateProgressBar(double level);

private:
    QAudioRecorder* const recorder;
    QAudioProbe* const probe;
};
