// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FolderOfFiles.h"
#include "RecorderPanel.h"
#include "support/SoundSamples.h"
#include "support/TestEnvironment.h"

#include <gtest/gtest.h>

#include <QAudioRecorder>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

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

    QString path() const { return folder.path("recorded"); }

    /// Starts a recording and waits until it has failed.
    static void recordInVain(RecorderPanel& panel)
    {
        auto& recorder = *panel.dialog.findChild<QAudioRecorder*>();
        panel.click();
        EXPECT_EQ(panel.tip(), "正在录制中...") << "the dialog shows no errors";
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return recorder.error() != QMediaRecorder::NoError &&
                       recorder.state() == QMediaRecorder::StoppedState;
            },
            patienceMs));
    }

    const FolderOfFiles folder;

private:
    const ExpectedWarning m_unknownCodec{
        "QMediaRecorder::FormatError : Not compatible codecs and container format."};
    const ExpectedWarnings m_noDevice{"QMediaRecorder::ResourceError : "};
};

} // namespace

TEST_F(NoRecorderDeviceTest, TheDialogOpensAndNothingIsRecorded)
{
    RecorderPanel panel(path());
    panel.show();
    recordInVain(panel);
    EXPECT_EQ(panel.bar().value(), 0);
    panel.click();
    EXPECT_EQ(panel.tip(), "未开始录制");
    EXPECT_TRUE(decoded(path(), 16000).empty()) << "a file of no sound, at the most";
}

TEST_F(NoRecorderDeviceTest, AFileThatIsThereSurvives)
{
    folder.write("recorded", "old");
    auto panel = std::make_unique<RecorderPanel>(path());
    panel->show();
    for (int i = 0; i < 2; ++i) {
        recordInVain(*panel);
        EXPECT_EQ(folder.content("recorded"), "old") << "as soon as the recording has failed";
        EXPECT_EQ(folder.names(), QStringList{"recorded"});
        panel->click();
        EXPECT_EQ(folder.content("recorded"), "old");
    }
    recordInVain(*panel);
    panel.reset();
    EXPECT_EQ(folder.content("recorded"), "old");
    EXPECT_EQ(folder.names(), QStringList{"recorded"});
}

TEST_F(NoRecorderDeviceTest, AFileThatIsThereSurvivesADialogThatIsDestroyedAtOnce)
{
    folder.write("recorded", "old");
    {
        RecorderPanel panel(path());
        panel.show();
        panel.click();
    }
    EXPECT_EQ(folder.content("recorded"), "old");
    EXPECT_EQ(folder.names(), QStringList{"recorded"});
}

TEST_F(NoRecorderDeviceTest, AFileThatIsThereSurvivesClicksAtOnce)
{
    folder.write("recorded", "old");
    RecorderPanel panel(path());
    panel.show();
    for (int i = 0; i < 4; ++i)
        panel.click();
    panel.dialog.close();
    EXPECT_EQ(folder.content("recorded"), "old");
    EXPECT_EQ(folder.names(), QStringList{"recorded"});
}
