// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RecorderPanel.h"
#include "support/SoundServer_linux.h"
#include "support/TestEnvironment.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QAudioRecorder>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <memory>

namespace {

constexpr int patienceMs = 20000;
constexpr int rate = 16000;

/// The dialog on a machine with an input, on which a tone of 440 Hz is to be heard.
class RecorderDeviceTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_server = std::make_unique<SoundServer>(); }
    static void TearDownTestSuite() { s_server.reset(); }

    void SetUp() override { ASSERT_TRUE(s_server->play(440)); }

    /// The dialog; made and shown with the first look at it. Its bar is as wide as a level of 1 is
    /// shown.
    RecorderPanel& panel()
    {
        if (!m_panel) {
            m_panel = std::make_unique<RecorderPanel>(path());
            m_panel->bar().setFixedWidth(100);
            m_panel->show();
        }
        return *m_panel;
    }

    /// A click by a hand, which is never at once after the last one. The backend counts on that:
    /// for some milliseconds of the event loop after a stop it is deaf.
    void click()
    {
        QTest::qWait(100);
        panel().click();
    }

    /// The platform's own recorder in the dialog.
    QAudioRecorder& qtRecorder() { return *panel().dialog.findChild<QAudioRecorder*>(); }

    bool isStopped() { return qtRecorder().state() == QMediaRecorder::StoppedState; }

    /// Waits until that many levels were told that are not those of silence.
    testing::AssertionResult hears(int count)
    {
        int heard = 0;
        int silent = 0;
        const auto* const recorder = panel().dialog.findChild<Qt5AudioRecorder*>();
        const auto connection =
            QObject::connect(recorder, &Qt5AudioRecorder::updateProgressBar,
                             [&](double level) { ++(level > 0.1 ? heard : silent); });
        const bool came = QTest::qWaitFor([&] { return heard >= count; }, patienceMs);
        QObject::disconnect(connection);
        return (came ? testing::AssertionSuccess() : testing::AssertionFailure())
               << heard << " levels and " << silent << " of silence; state " << qtRecorder().state()
               << ", " << qtRecorder().errorString().toStdString();
    }

    /// Stops the recording and gives what is then in the file.
    Samples stopped()
    {
        click();
        EXPECT_TRUE(QTest::qWaitFor([&] { return isStopped(); }, patienceMs));
        Samples samples;
        // The file is finished in the background.
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                samples = decoded(path(), rate);
                return !samples.empty();
            },
            patienceMs));
        return samples;
    }

    /// Whether there is a frequency in the sound, all through, and hardly anything else.
    static testing::AssertionResult isTone(const Samples& samples, double frequency)
    {
        constexpr std::size_t slice = rate / 10;
        // The codec wants some time to swing in.
        for (std::size_t start = 2 * slice; start + 2 * slice < samples.size(); start += slice) {
            const Samples part(samples.begin() + static_cast<std::ptrdiff_t>(start),
                               samples.begin() + static_cast<std::ptrdiff_t>(start + slice));
            const double amplitude = amplitudeAt(part, frequency, rate);
            if (amplitude < 0.3 || amplitude < 0.9 * std::sqrt(2.0) * levelOf(part))
                return testing::AssertionFailure()
                       << amplitude << " of " << levelOf(part) << " at sample " << start << " of "
                       << samples.size();
        }
        return testing::AssertionSuccess();
    }

    static double secondsOf(const Samples& samples)
    {
        return static_cast<double>(samples.size()) / rate;
    }

    /// Has the dialog record into a folder below that of the test.
    void useFolder(const QString& name) { m_subfolder = name; }
    QString path() const { return QDir(m_folder.path()).filePath(m_subfolder + "/recorded"); }
    void closePanel() { m_panel.reset(); }

    static std::unique_ptr<SoundServer> s_server;

private:
    const QTemporaryDir m_folder;
    /// The backend tells of the codec that is asked for before a recording starts.
    const ExpectedWarning m_unknownCodec{
        "QMediaRecorder::FormatError : Not compatible codecs and container format."};
    QString m_subfolder = ".";
    std::unique_ptr<RecorderPanel> m_panel;
};

std::unique_ptr<SoundServer> RecorderDeviceTest::s_server;

} // namespace

TEST_F(RecorderDeviceTest, RecordsWhatIsHeardWithATimeAndALevel)
{
    EXPECT_GT(panel().devices().count(), 0);
    EXPECT_EQ(qtRecorder().audioSettings().codec(), "audio/amr");
    click();
    ASSERT_TRUE(hears(1));
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(qtRecorder().state(), QMediaRecorder::RecordingState);
    EXPECT_TRUE(hears(100));
    ASSERT_TRUE(QTest::qWaitFor([&] { return time.elapsed() > 3000; }, patienceMs));
    EXPECT_GE(panel().duration(), "00:00:03");
    const double seconds = static_cast<double>(time.elapsed()) / 1000;
    const Samples samples = stopped();
    EXPECT_EQ(panel().duration(), "00:00:00");
    EXPECT_TRUE(isTone(samples, 440));
    EXPECT_NEAR(secondsOf(samples), seconds, 0.7);
}

TEST_F(RecorderDeviceTest, TheLevelIsThatOfTheTone)
{
    click();
    ASSERT_TRUE(hears(50));
    EXPECT_NEAR(panel().bar().value(), 50, 2);
    ASSERT_TRUE(s_server->play(0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel().bar().value() == 0; }, patienceMs))
        << "silence";
    click();
}

TEST_F(RecorderDeviceTest, ASecondRecordingTakesThePlaceOfTheFirst)
{
    click();
    ASSERT_TRUE(hears(100));
    EXPECT_TRUE(isTone(stopped(), 440));

    ASSERT_TRUE(s_server->play(1000));
    click();
    EXPECT_EQ(panel().duration(), "00:00:00");
    ASSERT_TRUE(hears(200));
    const Samples samples = stopped();
    EXPECT_TRUE(isTone(samples, 1000));
    EXPECT_GT(secondsOf(samples), 1.5);
}

TEST_F(RecorderDeviceTest, AStopAtOnceIsNoHarm)
{
    for (int i = 0; i < 5; ++i) {
        click();
        EXPECT_EQ(qtRecorder().state(), QMediaRecorder::RecordingState);
        panel().click(); // without so much as a look at the events
        EXPECT_TRUE(isStopped());
        EXPECT_EQ(panel().tip(), "未开始录制");
    }
    click();
    ASSERT_TRUE(hears(100));
    EXPECT_TRUE(isTone(stopped(), 440));
}

TEST_F(RecorderDeviceTest, GoesWhileItRecords)
{
    click();
    ASSERT_TRUE(hears(1));
    closePanel();
}

TEST_F(RecorderDeviceTest, AFileThatCannotBeWrittenIsNotRecorded)
{
    useFolder("missing");
    const ExpectedWarnings warnings("QMediaRecorder::ResourceError : ");
    click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isStopped(); }, patienceMs));
    EXPECT_NE(qtRecorder().error(), QMediaRecorder::NoError);
    EXPECT_FALSE(QFileInfo::exists(path()));
    EXPECT_EQ(panel().tip(), "正在录制中...") << "the dialog shows no errors";
    click();
    EXPECT_EQ(panel().tip(), "未开始录制");
}
