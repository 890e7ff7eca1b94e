// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAudioBuffer>
#include <QAudioEncoderSettings>
#include <QMediaRecorder>
#include <QStringList>
#include <QUrl>
#include <QVideoEncoderSettings>

#include <cstddef>
#include <functional>

/// The platform's recorder as the tests want it: a backend of Qt Multimedia that records nothing,
/// offers what a test says and keeps what is asked of it.
///
/// It is a static plugin, and the only one that is found: the program's plugin folders are taken
/// away with the first look at it, which must come before the first recorder is made.
struct FakeBackend
{
    /// The one that all recorders of the program talk to.
    static FakeBackend& instance();

    /// Shows a buffer to all probes.
    void probe(const QAudioBuffer& buffer) const;
    /// The state and the status, as if the backend had changed them by itself.
    void change(QMediaRecorder::State state, QMediaRecorder::Status status);
    /// An error, which stops the recording.
    void fail();
    /// How many recorders there are.
    static std::size_t recorderCount();

    QStringList inputs{"front", "rear"};
    QString defaultInput = "rear";
    QStringList codecs{"audio/amr"};

    QString activeInput;
    int inputLookups = 0;
    QAudioEncoderSettings audio;
    QVideoEncoderSettings video;
    QString container = "as it was";
    QUrl location;
    QMediaRecorder::State state = QMediaRecorder::StoppedState;
    QMediaRecorder::Status status = QMediaRecorder::LoadedStatus;
    qint64 duration = 0;
    /// Whether a recording is only starting after "record", and its file only about to be completed
    /// after "stop": until `change`.
    bool isSlow = false;
    /// What a recording does when it starts; may call `change`.
    std::function<void()> whenRecording;
    /// What is called just before a recording stops.
    std::function<void()> whenStopping;
    /// The file that is written, where that is not the location.
    QUrl actualLocation;
    /// What was done to the recorder and its settings, in order: "audio", "video", "container",
    /// "location", and "record (codec)", "pause" and "stop".
    QStringList calls;
};
