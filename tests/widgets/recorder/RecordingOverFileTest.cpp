// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "FolderOfFiles.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QAudioBuffer>
#include <QAudioFormat>

namespace {

/// A recording into a file that is there already. The backend writes an empty container when it
/// starts.
class RecordingOverFileTest : public testing::Test
{
protected:
    RecordingOverFileTest()
    {
        backend = FakeBackend();
        folder.write("voice", "old");
        recorder.setOutputFile(folder.path("voice"));
        backend.whenRecording = [this] { folder.write("voice", "container"); };
    }

    void hearSound() const
    {
        QAudioFormat format;
        format.setCodec("audio/pcm");
        format.setByteOrder(QAudioFormat::LittleEndian);
        format.setSampleRate(16000);
        format.setChannelCount(1);
        format.setSampleSize(16);
        format.setSampleType(QAudioFormat::SignedInt);
        backend.probe(QAudioBuffer(QByteArray(320, '\0'), format));
    }

    /// What is in the file that is aside, which is the only other one; "none" where there is none.
    std::string aside(const QString& name = "voice") const
    {
        const QStringList found = folder.names().filter(name + ".kept-");
        EXPECT_LE(found.size(), 1);
        return found.isEmpty() ? "none" : folder.content(found.first());
    }

    FakeBackend& backend = FakeBackend::instance();
    const FolderOfFiles folder;
    Qt5AudioRecorder recorder{nullptr};
};

} // namespace

TEST_F(RecordingOverFileTest, TheFileIsAsideWhenTheBackendStarts)
{
    std::string found;
    backend.whenRecording = [&] { found = folder.content("voice") + ", " + aside(); };
    recorder.startRecord();
    EXPECT_EQ(found, "none, old");
    EXPECT_EQ(backend.location, QUrl::fromLocalFile(folder.path("voice")));
}

TEST_F(RecordingOverFileTest, ItIsBackAtOnceWhereARecordingCannotStart)
{
    backend.whenRecording = [&] {
        folder.write("voice", "container");
        backend.fail();
    };
    recorder.startRecord();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
    EXPECT_EQ(backend.location, QUrl::fromLocalFile(folder.path("voice")));
}

TEST_F(RecordingOverFileTest, ItIsBackWhenARecordingFailsBeforeThereIsSound)
{
    recorder.startRecord();
    EXPECT_EQ(folder.content("voice"), "container");
    backend.fail();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "old");
}

TEST_F(RecordingOverFileTest, ItIsBackWhenSoundCameInAndNoneWasEncoded)
{
    recorder.startRecord();
    hearSound();
    backend.fail();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, ItIsBackAfterAStopBeforeThereIsSound)
{
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, ItIsNotBackBeforeTheBackendIsDone)
{
    backend.isSlow = true;
    recorder.startRecord();
    backend.change(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
    recorder.stopRecord();
    hearSound(); // which was on its way
    EXPECT_EQ(aside(), "old");
    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(aside(), "none");
}

TEST_F(RecordingOverFileTest, ItIsDeletedWhenThereWasSound)
{
    recorder.startRecord();
    hearSound();
    EXPECT_EQ(aside(), "old") << "not before the end";
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, ItIsDeletedWhenTheRecordingHasALength)
{
    recorder.startRecord();
    backend.whenStopping = [&] { backend.duration = 0; };
    backend.duration = 1;
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, BothFilesStayWhenARecordingBreaksOff)
{
    recorder.startRecord();
    backend.duration = 1;
    hearSound();
    backend.duration = 0;
    backend.fail();
    recorder.finishRecord();
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(aside(), "old");
}

TEST_F(RecordingOverFileTest, ItIsBackWhenABackendNeverStopsAndThereWasNoSound)
{
    backend.isSlow = true;
    recorder.setWaitLimit(20);
    recorder.startRecord();
    recorder.finishRecord();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, BothFilesStayWhenABackendNeverStopsAndThereWasSound)
{
    backend.isSlow = true;
    recorder.setWaitLimit(20);
    recorder.startRecord();
    hearSound();
    recorder.finishRecord();
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(aside(), "old");
    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
    EXPECT_EQ(aside(), "none") << "it does, after all";
    EXPECT_EQ(folder.content("voice"), "container");
}

TEST_F(RecordingOverFileTest, ThreeRecordingsLeaveTheLastOne)
{
    for (const char* sound : {"first", "second", "third"}) {
        backend.whenRecording = [&] { folder.write("voice", sound); };
        recorder.startRecord();
        hearSound();
        recorder.stopRecord();
        EXPECT_EQ(folder.content("voice"), sound);
        EXPECT_EQ(folder.names(), QStringList{"voice"});
    }
}

TEST_F(RecordingOverFileTest, TheSoundOfOneRecordingIsNotThatOfTheNext)
{
    recorder.startRecord();
    backend.duration = 1;
    hearSound();
    recorder.stopRecord();
    backend.duration = 0;
    folder.write("voice", "good");
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "good");
}

TEST_F(RecordingOverFileTest, AFileThatCouldNotComeBackComesBackLater)
{
    backend.whenRecording = [&] { EXPECT_TRUE(QDir().mkpath(folder.path("voice/sub"))); };
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_EQ(aside(), "old");
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_EQ(aside(), "old") << "what is in its place is not set aside";
    EXPECT_TRUE(QDir(folder.path("voice")).removeRecursively());
    recorder.finishRecord();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, AFileThatCouldNotComeBackIsKeptForTheNextRecording)
{
    backend.whenRecording = [&] { EXPECT_TRUE(QDir().mkpath(folder.path("voice/sub"))); };
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_TRUE(QDir(folder.path("voice")).removeRecursively());
    folder.write("voice", "rest");
    backend.whenRecording = [&] {
        EXPECT_EQ(folder.content("voice"), "none");
        EXPECT_EQ(aside(), "old");
        EXPECT_EQ(folder.names().size(), 1);
    };
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice"), "old");
    EXPECT_EQ(folder.names(), QStringList{"voice"});
}

TEST_F(RecordingOverFileTest, TheFileWithTheExtensionIsKeptWhereTheBackendAppendsIt)
{
    folder.write("voice.wav", "old sound");
    backend.actualLocation = QUrl::fromLocalFile(folder.path("voice.wav"));
    backend.whenRecording = [&] { folder.write("voice.wav", "container"); };
    recorder.startRecord();
    EXPECT_EQ(folder.content("voice"), "old") << "is not in the way";
    EXPECT_EQ(aside("voice.wav"), "old sound");
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice.wav"), "old sound");
    EXPECT_EQ(folder.names(), (QStringList{"voice", "voice.wav"}));
}

TEST_F(RecordingOverFileTest, AFileWithAnExtensionIsBackWhereTheBackendAppendsNone)
{
    folder.write("voice.wav", "other");
    backend.actualLocation = QUrl::fromLocalFile(folder.path("voice"));
    recorder.startRecord();
    EXPECT_EQ(folder.content("voice.wav"), "other");
    hearSound();
    recorder.stopRecord();
    EXPECT_EQ(folder.content("voice.wav"), "other");
    EXPECT_EQ(folder.content("voice"), "container");
    EXPECT_EQ(folder.names(), (QStringList{"voice", "voice.wav"}));
}

TEST_F(RecordingOverFileTest, AFileThatCannotBeSetAsideIsRecordedOver)
{
    const QString name(250, 'n');
    folder.write(name, "old");
    recorder.setOutputFile(folder.path(name));
    backend.whenRecording = [&] { folder.write(name, "new"); };
    recorder.startRecord();
    hearSound();
    recorder.stopRecord();
    EXPECT_EQ(folder.content(name), "new");
    EXPECT_EQ(backend.calls.filter("record").size(), 1);
    EXPECT_EQ(backend.calls.last(), "stop");
}

TEST_F(RecordingOverFileTest, WithoutALocationNothingIsSetAside)
{
    const QString current = QDir::currentPath();
    folder.write(".wav", "other");
    ASSERT_TRUE(QDir::setCurrent(QFileInfo(folder.path("voice")).path()));
    recorder.setOutputFile(QString());
    backend.whenRecording = [&] { EXPECT_EQ(folder.names(), (QStringList{".wav", "voice"})); };
    recorder.startRecord();
    recorder.stopRecord();
    EXPECT_TRUE(QDir::setCurrent(current));
    EXPECT_EQ(backend.calls.filter("record").size(), 1);
}
