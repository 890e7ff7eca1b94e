// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "widgets/support/OwnMethods.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <QAudioProbe>
#include <QAudioRecorder>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class Qt5AudioRecorderTest : public testing::Test
{
protected:
    Qt5AudioRecorderTest() { backend = FakeBackend(); }

    QAudioRecorder& qtRecorder() const { return *recorder.findChild<QAudioRecorder*>(); }

    /// What is done to the backend since the last call.
    QStringList calls() const { return std::exchange(backend.calls, {}); }

    static QAudioBuffer buffer(const std::vector<qint16>& samples, int channels,
                               QAudioFormat::Endian order = QAudioFormat::LittleEndian)
    {
        QAudioFormat format;
        format.setCodec("audio/pcm");
        format.setByteOrder(order);
        format.setSampleRate(16000);
        format.setChannelCount(channels);
        format.setSampleSize(16);
        format.setSampleType(QAudioFormat::SignedInt);
        return {QByteArray(reinterpret_cast<const char*>(samples.data()),
                           static_cast<int>(samples.size() * sizeof(qint16))),
                format};
    }

    FakeBackend& backend = FakeBackend::instance();
    QObject owner;
    Qt5AudioRecorder& recorder = *new Qt5AudioRecorder(&owner);
};

/// What `setupRecorder` asks for.
QAudioEncoderSettings requested()
{
    QAudioEncoderSettings settings;
    settings.setCodec("audio/amr");
    settings.setSampleRate(16000);
    settings.setBitRate(128000);
    settings.setEncodingMode(QMultimedia::ConstantBitRateEncoding);
    return settings;
}

} // namespace

TEST_F(Qt5AudioRecorderTest, HasOneSignalAndNothingElse)
{
    EXPECT_EQ(ownMethods(Qt5AudioRecorder::staticMetaObject),
              std::vector<std::string>{"updateProgressBar(double)"});
    EXPECT_EQ(recorder.parent(), &owner);
}

TEST_F(Qt5AudioRecorderTest, OwnsARecorderAndAProbeAndRecordsNothingYet)
{
    EXPECT_EQ(recorder.children().size(), 2);
    EXPECT_EQ(recorder.findChildren<QAudioRecorder*>(QString(), Qt::FindDirectChildrenOnly).size(),
              1);
    const auto* const probe =
        recorder.findChild<QAudioProbe*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_TRUE(probe);
    EXPECT_TRUE(probe->isActive());
    EXPECT_EQ(calls(), QStringList());
}

TEST_F(Qt5AudioRecorderTest, ListsTheInputsOfASecondLook)
{
    backend.inputLookups = 0;
    EXPECT_EQ(recorder.audioInputs(), (QStringList{"front", "rear"}));
    EXPECT_EQ(backend.inputLookups, 2);
    backend.inputs.clear();
    EXPECT_EQ(recorder.audioInputs(), QStringList());
}

TEST_F(Qt5AudioRecorderTest, TakesTheDefaultInputWhateverTheNameSays)
{
    for (const char* name : {"front", "rear", "", "none such"}) {
        backend.activeInput = "front";
        recorder.setupRecorder(name);
        EXPECT_EQ(backend.activeInput, "rear") << name;
    }
}

TEST_F(Qt5AudioRecorderTest, AsksForItsEncodingWhateverTheBackendOffers)
{
    for (const QStringList& codecs :
         {QStringList{"audio/amr"}, QStringList{"audio/AMR-WB"}, QStringList()}) {
        backend.codecs = codecs;
        backend.audio = QAudioEncoderSettings();
        backend.container = "as it was";
        backend.video.setCodec("as it was");
        recorder.setupRecorder("front");
        EXPECT_EQ(calls(), (QStringList{"audio", "video", "container"}));
        const QAudioEncoderSettings settings = qtRecorder().audioSettings();
        EXPECT_EQ(settings.codec(), "audio/amr");
        EXPECT_EQ(settings.sampleRate(), 16000);
        EXPECT_EQ(settings.bitRate(), 128000);
        EXPECT_EQ(static_cast<int>(settings.quality()), 10);
        EXPECT_EQ(settings.encodingMode(), QMultimedia::ConstantBitRateEncoding);
        EXPECT_EQ(static_cast<int>(settings.encodingMode()), 1);
        EXPECT_EQ(settings.channelCount(), QAudioEncoderSettings().channelCount());
        EXPECT_EQ(backend.video, QVideoEncoderSettings());
        EXPECT_EQ(backend.container, "");
    }
}

TEST_F(Qt5AudioRecorderTest, TakesThePathOfTheFileAsItIs)
{
    recorder.setOutputFile("/some where/声音#1%20");
    EXPECT_EQ(backend.location, QUrl::fromLocalFile("/some where/声音#1%20"));
    EXPECT_EQ(backend.location.toLocalFile(), "/some where/声音#1%20");
}

TEST_F(Qt5AudioRecorderTest, StartsFromStoppedAlone)
{
    recorder.setupRecorder("");
    calls();
    recorder.startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
    recorder.startRecord();
    EXPECT_EQ(calls(), QStringList()) << "it records already";
    backend.change(QMediaRecorder::PausedState, QMediaRecorder::PausedStatus);
    recorder.startRecord();
    EXPECT_EQ(calls(), QStringList()) << "nor does it go on with a paused one";
}

TEST_F(Qt5AudioRecorderTest, StopsUnlessItIsStopped)
{
    recorder.stopRecord();
    EXPECT_EQ(calls(), QStringList());
    for (const auto state : {QMediaRecorder::RecordingState, QMediaRecorder::PausedState}) {
        backend.change(state, QMediaRecorder::RecordingStatus);
        recorder.stopRecord();
        EXPECT_EQ(calls(), QStringList{"stop"});
        recorder.stopRecord();
        EXPECT_EQ(calls(), QStringList());
    }
}

TEST_F(Qt5AudioRecorderTest, StartsWithTheRequestedSettingsWhereTheirCodecIsOffered)
{
    backend.codecs = QStringList{"audio/AMR-WB", "audio/amr"};
    recorder.setupRecorder("");
    const QAudioEncoderSettings before = qtRecorder().audioSettings();
    calls();
    recorder.startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"}) << "no setting is touched";
    EXPECT_EQ(qtRecorder().audioSettings(), before);
}

TEST_F(Qt5AudioRecorderTest, StartsWithTheNearestCodecElse)
{
    backend.codecs = QStringList{"audio/pcm", "audio/AMR", "audio/AMR-WB"};
    recorder.setupRecorder("");
    calls();
    recorder.startRecord();
    EXPECT_EQ(calls(), (QStringList{"audio", "video", "container", "record (audio/AMR-WB)"}));
    EXPECT_EQ(backend.audio.sampleRate(), 16000);
    EXPECT_EQ(backend.video, QVideoEncoderSettings());
    EXPECT_EQ(backend.container, "");

    recorder.stopRecord();
    calls();
    recorder.startRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/AMR-WB)"}) << "which it then stays with";
}

TEST_F(Qt5AudioRecorderTest, LeavesTheCodecToABackendThatHasNoAmr)
{
    backend.codecs = QStringList{"audio/pcm"};
    recorder.setupRecorder("");
    EXPECT_EQ(qtRecorder().audioSettings().codec(), requested().codec());
    recorder.startRecord();
    EXPECT_EQ(calls().last(), "record ()");
    EXPECT_EQ(backend.container, "");
}

TEST_F(Qt5AudioRecorderTest, TellsTheLevelOfEachChannelOfEachProbedBufferInOrder)
{
    QSignalSpy levels(&recorder, &Qt5AudioRecorder::updateProgressBar);
    backend.probe(buffer({32767, 0, -100, -16384}, 2));
    ASSERT_EQ(levels.count(), 2);
    EXPECT_EQ(levels[0][0].toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(levels[1][0].toDouble(), 16384.0 / 32767.0);
    backend.probe(buffer({-16384}, 1));
    ASSERT_EQ(levels.count(), 3);
    EXPECT_DOUBLE_EQ(levels[2][0].toDouble(), 16384.0 / 32767.0);
}

TEST_F(Qt5AudioRecorderTest, TellsNothingOfABufferThatHasNoLevels)
{
    QSignalSpy levels(&recorder, &Qt5AudioRecorder::updateProgressBar);
    backend.probe(QAudioBuffer());
    backend.probe(buffer({1, 2}, 2, QAudioFormat::BigEndian));
    EXPECT_EQ(levels.count(), 0);
}
