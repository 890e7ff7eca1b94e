// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// The dialog with Windows' own sound. The default input must have a tone, whose frequency in Hz
// stands in the environment as NORVEL_TONE.

#include "RecorderPanel.h"
#include "support/SoundSamples.h"

#include <gtest/gtest.h>

#include <QAudioRecorder>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

namespace {

constexpr int patienceMs = 20000;

class RecorderDeviceTest : public testing::Test
{
protected:
    RecorderDeviceTest()
    {
        m_panel.bar().setFixedWidth(100); // as wide as a level of 1 is shown
        m_panel.show();
    }

    QAudioRecorder& qtRecorder() { return *m_panel.dialog.findChild<QAudioRecorder*>(); }

    /// Records for so long after the first sound was heard, which takes an input some time to open;
    /// gives the greatest value of the level bar.
    int record(int milliseconds)
    {
        int highest = 0;
        m_panel.click();
        EXPECT_EQ(qtRecorder().state(), QMediaRecorder::RecordingState)
            << qtRecorder().errorString().toStdString();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_panel.bar().value() > 0; }, patienceMs));
        QElapsedTimer time;
        time.start();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                highest = std::max(highest, m_panel.bar().value());
                return time.elapsed() >= milliseconds;
            },
            patienceMs));
        EXPECT_GE(m_panel.duration(), "00:00:01");
        m_panel.click();
        EXPECT_EQ(qtRecorder().state(), QMediaRecorder::StoppedState);
        return highest;
    }

    /// The file that the backend wrote.
    QString written() { return qtRecorder().actualLocation().toLocalFile(); }

    /// Fails the test unless the file is a WAV of about so many seconds of the tone.
    void expectTone(double seconds)
    {
        QFile file(written());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << written().toStdString();
        const QByteArray head = file.read(12);
        EXPECT_TRUE(head.startsWith("RIFF") && head.endsWith("WAVE"));

        constexpr int rate = 16000;
        const Samples samples = decoded(written(), rate);
        EXPECT_NEAR(static_cast<double>(samples.size()) / rate, seconds, 0.8);
        const int frequency = qEnvironmentVariableIntValue("NORVEL_TONE");
        ASSERT_GT(frequency, 0);
        const double amplitude = amplitudeAt(samples, frequency, rate);
        EXPECT_GT(amplitude, 0.3);
        EXPECT_GT(amplitude, 0.9 * std::sqrt(2.0) * levelOf(samples));
    }

    const QTemporaryDir m_folder;
    RecorderPanel m_panel{QDir(m_folder.path()).filePath("recorded")};
};

} // namespace

TEST_F(RecorderDeviceTest, ListsTheInputs)
{
    EXPECT_GT(m_panel.devices().count(), 0);
    EXPECT_EQ(qtRecorder().audioSettings().codec(), "audio/amr");
}

TEST_F(RecorderDeviceTest, RecordsAWavFileOfWhatIsHeard)
{
    record(3000);
    EXPECT_EQ(m_panel.duration(), "00:00:00");
    expectTone(3.0);
}

TEST_F(RecorderDeviceTest, ASecondRecordingTakesThePlaceOfTheFirst)
{
    record(4000);
    const QString first = written();
    record(2000);
    EXPECT_EQ(written(), first);
    expectTone(2.0);
}

TEST_F(RecorderDeviceTest, ShowsTheLevel)
{
    EXPECT_NEAR(record(2000), 50, 4);
}
