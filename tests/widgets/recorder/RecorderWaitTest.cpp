// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>

namespace {

constexpr int shortMs = 20;
constexpr int endlessMs = 24 * 60 * 60 * 1000; ///< a wait that meets it hangs the test

/// A recorder over a backend that starts a recording and completes a file when the test says so.
class RecorderWaitTest : public testing::Test
{
protected:
    RecorderWaitTest()
    {
        backend = FakeBackend();
        backend.isSlow = true;
        recorder->setWaitLimit(endlessMs);
        recorder->setupRecorder(QString());
        calls();
    }

    /// Does something as soon as the event loop runs.
    void whileWaiting(const std::function<void()>& act) { QTimer::singleShot(0, &m_context, act); }

    /// Whether an operation runs the event loop.
    template <class Operation>
    static bool waits(const Operation& operation)
    {
        bool hasRun = false;
        QObject context;
        QTimer::singleShot(0, &context, [&] { hasRun = true; });
        operation();
        return hasRun;
    }

    void startRecording()
    {
        recorder->startRecord();
        become(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
        calls();
    }
    void become(QMediaRecorder::State state, QMediaRecorder::Status status)
    {
        backend.change(state, status);
    }
    void complete() { become(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus); }

    /// What is done to the backend since the last call.
    QStringList calls() const { return std::exchange(backend.calls, {}); }

    FakeBackend& backend = FakeBackend::instance();
    std::unique_ptr<Qt5AudioRecorder> recorder = std::make_unique<Qt5AudioRecorder>(nullptr);
    const QStringList nothing;

private:
    QObject m_context;
};

} // namespace

TEST_F(RecorderWaitTest, AStopWaitsUntilTheRecordingHasStarted)
{
    recorder->startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
    whileWaiting([&] {
        EXPECT_EQ(calls(), nothing);
        become(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
    });
    recorder->stopRecord();
    EXPECT_EQ(calls(), QStringList{"stop"});
    EXPECT_EQ(backend.status, QMediaRecorder::FinalizingStatus) << "it waits no longer";
}

TEST_F(RecorderWaitTest, AStopOfARecordingThatHasStartedDoesNotWait)
{
    startRecording();
    EXPECT_FALSE(waits([&] { recorder->stopRecord(); }));
    EXPECT_EQ(calls(), QStringList{"stop"});
}

TEST_F(RecorderWaitTest, AStopOfARecordingThatFailsToStartIsNoCall)
{
    recorder->startRecord();
    calls();
    whileWaiting([&] { backend.fail(); });
    recorder->stopRecord();
    EXPECT_EQ(calls(), nothing);
}

TEST_F(RecorderWaitTest, AStopDoesNotWaitForABackendThatToldOfAnErrorAndStillStarts)
{
    recorder->startRecord();
    calls();
    backend.fail();
    become(QMediaRecorder::RecordingState, QMediaRecorder::StartingStatus);
    EXPECT_FALSE(waits([&] { recorder->stopRecord(); }));
    EXPECT_EQ(calls(), QStringList{"stop"});
}

TEST_F(RecorderWaitTest, AStopGivesUpWaiting)
{
    recorder->setWaitLimit(shortMs);
    recorder->startRecord();
    calls();
    recorder->stopRecord();
    EXPECT_EQ(calls(), QStringList{"stop"});
}

TEST_F(RecorderWaitTest, AStartWaitsUntilTheLastFileIsComplete)
{
    startRecording();
    recorder->stopRecord();
    calls();
    whileWaiting([&] {
        EXPECT_EQ(calls(), nothing);
        complete();
    });
    recorder->startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
    EXPECT_EQ(backend.status, QMediaRecorder::StartingStatus) << "it waits no longer";
}

TEST_F(RecorderWaitTest, AStartGivesUpWaiting)
{
    startRecording();
    recorder->stopRecord();
    calls();
    recorder->setWaitLimit(shortMs);
    recorder->startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
}

TEST_F(RecorderWaitTest, AnEndIsAStopAndWaitsUntilTheFileIsComplete)
{
    startRecording();
    whileWaiting([&] {
        EXPECT_EQ(calls(), QStringList{"stop"});
        complete();
    });
    recorder->finishRecord();
    EXPECT_EQ(backend.status, QMediaRecorder::LoadedStatus);
    EXPECT_EQ(calls(), nothing);
}

TEST_F(RecorderWaitTest, AnEndWaitsForAStartAndForTheFile)
{
    recorder->startRecord();
    calls();
    whileWaiting([&] {
        become(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
        whileWaiting([&] {
            EXPECT_EQ(calls(), QStringList{"stop"});
            complete();
        });
    });
    recorder->finishRecord();
    EXPECT_EQ(backend.status, QMediaRecorder::LoadedStatus);
}

TEST_F(RecorderWaitTest, AnEndWaitsForAFileThatAStopHasLeftToBeCompleted)
{
    startRecording();
    recorder->stopRecord();
    whileWaiting([&] { complete(); });
    recorder->finishRecord();
    EXPECT_EQ(calls(), QStringList{"stop"});
    EXPECT_EQ(backend.status, QMediaRecorder::LoadedStatus);
}

TEST_F(RecorderWaitTest, AStoppedStateIsNotTheEndWhileTheStatusIsThatOfARecording)
{
    startRecording();
    become(QMediaRecorder::StoppedState, QMediaRecorder::RecordingStatus);
    whileWaiting([&] { complete(); });
    recorder->finishRecord();
    EXPECT_EQ(backend.status, QMediaRecorder::LoadedStatus);
}

TEST_F(RecorderWaitTest, AnEndGivesUpWaitingAndWaitsOnce)
{
    startRecording();
    recorder->setWaitLimit(shortMs);
    recorder->finishRecord();
    EXPECT_EQ(calls(), QStringList{"stop"});
    recorder->setWaitLimit(endlessMs);
    EXPECT_FALSE(waits([&] { recorder->finishRecord(); }));
    EXPECT_EQ(calls(), nothing);
}

TEST_F(RecorderWaitTest, NothingWaitsWhereNothingIsRecorded)
{
    EXPECT_FALSE(waits([&] {
        recorder->stopRecord();
        recorder->finishRecord();
        recorder->startRecord();
    }));
}

TEST_F(RecorderWaitTest, AStopDuringTheWaitOfAStartCounts)
{
    startRecording();
    recorder->stopRecord();
    calls();
    whileWaiting([&] {
        recorder->stopRecord();
        complete();
    });
    recorder->startRecord();
    EXPECT_EQ(calls(), nothing);
}

TEST_F(RecorderWaitTest, AStartDuringTheWaitOfAStartIsNotASecondOne)
{
    startRecording();
    recorder->stopRecord();
    calls();
    whileWaiting([&] {
        complete();
        recorder->startRecord();
    });
    recorder->startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
}

TEST_F(RecorderWaitTest, AStartDuringTheWaitOfAStopCounts)
{
    recorder->startRecord();
    calls();
    whileWaiting([&] { recorder->startRecord(); });
    recorder->stopRecord();
    EXPECT_EQ(calls(), nothing);
    EXPECT_EQ(backend.state, QMediaRecorder::RecordingState);
}

TEST_F(RecorderWaitTest, AStartDuringTheWaitOfAnEndCounts)
{
    startRecording();
    whileWaiting([&] {
        complete();
        recorder->startRecord();
    });
    recorder->finishRecord();
    EXPECT_EQ(calls(), (QStringList{"stop", "record (audio/amr)"}));
    EXPECT_EQ(backend.state, QMediaRecorder::RecordingState);
}

TEST_F(RecorderWaitTest, ItMayBeDeletedInAnyWait)
{
    const auto remove = [&] { recorder.reset(); };
    recorder->startRecord();
    whileWaiting(remove);
    recorder->stopRecord();
    EXPECT_FALSE(recorder);

    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::FinalizingStatus);
    recorder = std::make_unique<Qt5AudioRecorder>(nullptr);
    whileWaiting(remove);
    recorder->startRecord();
    EXPECT_FALSE(recorder);

    for (const auto status : {QMediaRecorder::StartingStatus, QMediaRecorder::RecordingStatus}) {
        complete();
        recorder = std::make_unique<Qt5AudioRecorder>(nullptr);
        recorder->startRecord();
        backend.change(QMediaRecorder::RecordingState, status);
        whileWaiting(remove);
        recorder->finishRecord();
        EXPECT_FALSE(recorder);
    }
}

TEST_F(RecorderWaitTest, ItWaitsWhileTheApplicationQuits)
{
    startRecording();
    whileWaiting([&] {
        QCoreApplication::quit();
        whileWaiting([&] { complete(); });
        recorder->finishRecord();
        EXPECT_EQ(backend.status, QMediaRecorder::LoadedStatus);
    });
    QCoreApplication::exec();
    EXPECT_EQ(calls(), QStringList{"stop"});
}
