// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RecorderPanel.h"
#include "support/SoundSamples.h"
#include "support/TestEnvironment.h"

#include <gtest/gtest.h>

#include <QAudioRecorder>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int patienceMs = 20000;

/// The dialog on a machine without any sound: no server is found, and no card.
class NoRecorderDeviceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static const QTemporaryDir home;
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
            qputenv(name, QFile::encodeName(home.path()));
        qputenv("PULSE_SERVER", QFile::encodeName("unix:" + QDir(home.path()).filePath("none")));
        qputenv("ALSA_CONFIG_PATH", "/dev/null");
    }

    QString path() const { return QDir(m_folder.path()).filePath("recorded"); }

private:
    const QTemporaryDir m_folder;
};

} // namespace

TEST_F(NoRecorderDeviceTest, TheDialogOpensAndNothingIsRecorded)
{
    const ExpectedWarning unknownCodec(
        "QMediaRecorder::FormatError : Not compatible codecs and container format.");
    const ExpectedWarnings noDevice("QMediaRecorder::ResourceError : ");
    RecorderPanel panel(path());
    panel.show();
    auto& recorder = *panel.dialog.findChild<QAudioRecorder*>();
    panel.click();
    EXPECT_EQ(panel.tip(), "正在录制中...") << "the dialog shows no errors";
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return recorder.error() != QMediaRecorder::NoError; }, patienceMs));
    EXPECT_EQ(panel.bar().value(), 0);
    panel.click();
    EXPECT_EQ(panel.tip(), "未开始录制");
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorder.state() == QMediaRecorder::StoppedState; },
                                patienceMs));
    EXPECT_TRUE(decoded(path(), 16000).empty()) << "a file of no sound, at the most";
}
