// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RecorderPanel.h"
#include "support/SoundSamples.h"
#include "support/SoundServer_linux.h"
#include "support/TestEnvironment.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QAudioBuffer>
#include <QAudioProbe>
#include <QAudioRecorder>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <functional>
#include <memory>
#include <string>

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
            watch(m_panel->dialog);
        }
        return *m_panel;
    }

    /// Adds up how long the sound is that comes in from now on.
    void watch(RecorderWgt& dialog)
    {
        m_heard = 0;
        QObject::disconnect(m_watch);
        m_watch =
            QObject::connect(dialog.findChild<QAudioProbe*>(), &QAudioProbe::audioBufferProbed,
                             [this](const QAudioBuffer& buffer) {
                                 m_heard += static_cast<double>(buffer.duration()) / 1e6;
                             });
    }
    /// How many seconds of sound came in; some of it may have passed unseen.
    double heard() const { return m_heard; }
    testing::AssertionResult hearsSeconds(double seconds)
    {
        const double goal = m_heard + seconds;
        const bool came = QTest::qWaitFor([&] { return m_heard >= goal; }, patienceMs);
        return (came ? testing::AssertionSuccess() : testing::AssertionFailure())
               << m_heard << " of " << goal << " s";
    }

    /// Whether the file has its end at this moment and no less sound than came in.
    testing::AssertionResult isComplete(const QString& file)
    {
        const double length = durationOf(file);
        const double sound = secondsOf(decoded(file, rate));
        const bool isWhole = sound > 0 && std::abs(length - sound) < 0.1 && sound > m_heard - 0.1;
        return (isWhole ? testing::AssertionSuccess() : testing::AssertionFailure())
               << length << " s by its head, " << sound << " s of sound, of " << m_heard;
    }

    /// The length that a file says it has, in seconds; 0 where it says none.
    static double durationOf(const QString& file)
    {
        QProcess probe;
        probe.start("ffprobe", {"-v", "error", "-show_entries", "format=duration", "-of",
                                "default=noprint_wrappers=1:nokey=1", file});
        return probe.waitForFinished(patienceMs)
                   ? probe.readAllStandardOutput().trimmed().toDouble()
                   : 0.0;
    }

    void click() { panel().click(); }

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
    void destroyPanel() { m_panel.reset(); }

    static std::unique_ptr<SoundServer> s_server;

private:
    const QTemporaryDir m_folder;
    /// The backend tells of the codec that is asked for before a recording starts.
    const ExpectedWarning m_unknownCodec{
        "QMediaRecorder::FormatError : Not compatible codecs and container format."};
    QString m_subfolder = ".";
    double m_heard = 0; ///< seconds
    QMetaObject::Connection m_watch;
    std::unique_ptr<RecorderPanel> m_panel;
};

std::unique_ptr<SoundServer> RecorderDeviceTest::s_server;

/// A way to close the dialog and keep it.
struct Way
{
    const char* name;
    void (*close)(RecorderWgt&);
};

void PrintTo(const Way& way, std::ostream* stream)
{
    *stream << way.name;
}

class RecorderDeviceCloseTest : public RecorderDeviceTest, public testing::WithParamInterface<Way>
{
};

const Way ways[] = {
    {"Escape", [](RecorderWgt& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }},
    {"Close", [](RecorderWgt& dialog) { dialog.close(); }},
    {"Accept", [](RecorderWgt& dialog) { dialog.accept(); }},
    {"Hide", [](RecorderWgt& dialog) { dialog.hide(); }},
};

INSTANTIATE_TEST_SUITE_P(, RecorderDeviceCloseTest, testing::ValuesIn(ways),
                         [](const auto& way) { return std::string(way.param.name); });

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
    const Samples samples = stopped();
    EXPECT_EQ(panel().duration(), "00:00:00");
    EXPECT_TRUE(isTone(samples, 440));
    EXPECT_TRUE(isComplete(path()));
    EXPECT_LT(secondsOf(samples), static_cast<double>(time.elapsed()) / 1000 + 0.7);
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

TEST_F(RecorderDeviceTest, AStopAndAtOnceAStartRecordAgain)
{
    click();
    ASSERT_TRUE(hears(50));
    click();
    click();
    watch(panel().dialog);
    EXPECT_EQ(qtRecorder().state(), QMediaRecorder::RecordingState);
    ASSERT_TRUE(hears(100));
    panel().dialog.close();
    EXPECT_TRUE(isComplete(path()));
}

TEST_P(RecorderDeviceCloseTest, LeavesACompleteFileAndRecordsAgain)
{
    for (int i = 0; i < 2; ++i) {
        panel().show();
        click();
        ASSERT_TRUE(hearsSeconds(0.5));
        GetParam().close(panel().dialog);
        EXPECT_TRUE(isComplete(path()));
        EXPECT_FALSE(panel().dialog.isVisible());
        EXPECT_FALSE(panel().button().isChecked());
        watch(panel().dialog);
    }
}

TEST_P(RecorderDeviceCloseTest, LeavesACompleteFileAtOnceAfterAStart)
{
    click();
    GetParam().close(panel().dialog);
    EXPECT_TRUE(isComplete(path()));
}

TEST_F(RecorderDeviceTest, LeavesACompleteFileWhenExecEnds)
{
    panel().dialog.hide();
    for (const bool quits : {false, true}) {
        watch(panel().dialog);
        QTimer::singleShot(0, &panel().dialog, [&] {
            QTimer::singleShot(0, &panel().dialog, [&] {
                click();
                EXPECT_TRUE(hearsSeconds(0.5));
                quits ? QCoreApplication::quit() : panel().dialog.reject();
            });
            panel().dialog.exec();
            EXPECT_TRUE(isComplete(path())) << quits;
            QCoreApplication::quit();
        });
        QCoreApplication::exec();
    }
}

TEST_F(RecorderDeviceTest, LeavesACompleteFileWhenItIsDestroyed)
{
    click();
    ASSERT_TRUE(hearsSeconds(0.5));
    destroyPanel();
    EXPECT_TRUE(isComplete(path()));
}

TEST_F(RecorderDeviceTest, LeavesACompleteFileWhenItsParentIsDestroyed)
{
    auto window = std::make_unique<QWidget>();
    window->show();
    const QPointer<RecorderWgt> dialog = new RecorderWgt(path(), window.get());
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    watch(*dialog);
    dialog->findChild<QPushButton*>("btnRecord")->click();
    ASSERT_TRUE(hearsSeconds(0.5));
    window.reset();
    EXPECT_FALSE(dialog);
    EXPECT_TRUE(isComplete(path()));
}

TEST_F(RecorderDeviceTest, AFileThatIsThereIsRecordedOver)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000000, 'x'));
    file.close();
    click();
    ASSERT_TRUE(hearsSeconds(0.5));
    panel().dialog.close();
    EXPECT_TRUE(isComplete(path()));
    EXPECT_LT(QFileInfo(path()).size(), 1000000);
    EXPECT_EQ(QFileInfo(path()).dir().entryList(QDir::Files), QStringList{"recorded"});
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
