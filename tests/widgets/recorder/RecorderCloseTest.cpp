// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "RecorderPanel.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QHideEvent>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <ostream>
#include <utility>

namespace {

constexpr int endlessMs = 24 * 60 * 60 * 1000; ///< a wait that meets it hangs the test

/// A dialog over a backend that completes a file some rounds of the event loop after the stop.
class RecorderCloseTest : public testing::Test
{
protected:
    RecorderCloseTest()
    {
        backend = FakeBackend();
        panel = std::make_unique<RecorderPanel>("/recorded");
        panel->show();
        recorder().setWaitLimit(endlessMs);
    }

    RecorderWgt& dialog() { return panel->dialog; }
    Qt5AudioRecorder& recorder() { return *dialog().findChild<Qt5AudioRecorder*>(); }

    /// Starts a recording, which is complete `rounds` rounds of the event loop after its stop.
    void record(int rounds = 3)
    {
        backend.isSlow = true;
        panel->click();
        backend.change(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
        for (int i = 0; i < 3; ++i)
            QMetaObject::invokeMethod(&dialog(), "onTimer");
        backend.calls.clear();
        backend.whenStopping = [this, rounds] { completeAfter(rounds); };
    }

    void completeAfter(int rounds)
    {
        QTimer::singleShot(0, &m_context, [this, rounds] {
            if (rounds > 0)
                completeAfter(rounds - 1);
            else
                backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
        });
    }

    /// A dialog that records, whose file is complete some rounds after the stop.
    RecorderWgt* recordingChild(QWidget& parent)
    {
        auto* const child = new RecorderWgt("/recorded", &parent);
        backend.isSlow = true;
        child->findChild<QPushButton*>("btnRecord")->click();
        backend.change(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
        backend.calls.clear();
        backend.whenStopping = [this] { completeAfter(3); };
        return child;
    }

    /// Whether the recording was stopped once and its file is complete.
    bool isComplete() const
    {
        return backend.calls == QStringList{"stop"} &&
               backend.status == QMediaRecorder::LoadedStatus;
    }

    /// What the dialog shows, and in which state it is.
    std::string shown()
    {
        const QTimer& timer = *dialog().findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
        return panel->tip() + ", " + panel->duration() + ", " +
               panel->button().styleSheet().toStdString() + ", " +
               (panel->button().isChecked() ? "checked" : "not checked") + ", " +
               (timer.isActive() ? "counts" : "does not count") + ", " +
               (panel->named<QWidget>("wgtMiddle").isHidden() ? "" : "middle") + ", " +
               (panel->named<QWidget>("wgtBottom").isHidden() ? "" : "bottom") + ", " +
               std::to_string(dialog().minimumHeight()) + " to " +
               std::to_string(dialog().maximumHeight());
    }

    FakeBackend& backend = FakeBackend::instance();

private:
    QObject m_context; // outlives the dialog, which may stop its recording when it goes

protected:
    std::unique_ptr<RecorderPanel> panel;
};

/// A way to close the dialog.
struct Way
{
    const char* name;
    void (*close)(RecorderWgt&);
};

void PrintTo(const Way& way, std::ostream* stream)
{
    *stream << way.name;
}

class RecorderCloseWayTest : public RecorderCloseTest, public testing::WithParamInterface<Way>
{
};

const Way ways[] = {
    {"Escape", [](RecorderWgt& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }},
    {"Close", [](RecorderWgt& dialog) { dialog.close(); }},
    {"Accept", [](RecorderWgt& dialog) { dialog.accept(); }},
    {"Reject", [](RecorderWgt& dialog) { dialog.reject(); }},
    {"Done", [](RecorderWgt& dialog) { dialog.done(7); }},
    {"Hide", [](RecorderWgt& dialog) { dialog.hide(); }},
};

INSTANTIATE_TEST_SUITE_P(, RecorderCloseWayTest, testing::ValuesIn(ways),
                         [](const auto& way) { return std::string(way.param.name); });

} // namespace

TEST_P(RecorderCloseWayTest, EndsTheRecordingAndWaitsForTheFile)
{
    record();
    GetParam().close(dialog());
    EXPECT_TRUE(isComplete());
    EXPECT_FALSE(dialog().isVisible());
}

TEST_P(RecorderCloseWayTest, TheDialogIsSeenUntilTheFileIsComplete)
{
    record();
    bool wasVisible = false;
    backend.whenStopping = [&] {
        QTimer::singleShot(0, &dialog(), [&] {
            wasVisible = dialog().isVisible() && dialog().maximumHeight() == 220;
            completeAfter(0);
        });
    };
    GetParam().close(dialog());
    EXPECT_TRUE(wasVisible);
    EXPECT_TRUE(isComplete());
}

TEST_P(RecorderCloseWayTest, TheDialogIsThenAsAfterAClickToStop)
{
    record();
    const std::string recording = shown();
    panel->click();
    const std::string stopped = shown();
    ASSERT_NE(recording, stopped);
    completeAfter(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isComplete(); }));

    record();
    ASSERT_EQ(shown(), recording);
    GetParam().close(dialog());
    EXPECT_EQ(shown(), stopped);
    panel->show();
    EXPECT_EQ(shown(), stopped);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog().height() == 540; }));
}

TEST_P(RecorderCloseWayTest, TheDialogRecordsAgain)
{
    record();
    GetParam().close(dialog());
    panel->show();
    backend.calls.clear();
    panel->click();
    EXPECT_EQ(backend.calls, QStringList{"record (audio/amr)"});
    EXPECT_EQ(panel->duration(), "00:00:00");
    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
}

TEST_P(RecorderCloseWayTest, ADialogThatDoesNotRecordStaysAsItIs)
{
    const std::string before = shown();
    const QSize size = dialog().size();
    GetParam().close(dialog());
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(dialog().size(), size);
    EXPECT_EQ(backend.calls.filter("stop"), QStringList());
}

TEST_P(RecorderCloseWayTest, WaitsForAFileThatAClickHasLeftToBeCompleted)
{
    record();
    panel->click();
    EXPECT_EQ(backend.status, QMediaRecorder::FinalizingStatus);
    GetParam().close(dialog());
    EXPECT_TRUE(isComplete());
}

TEST_P(RecorderCloseWayTest, GoesAllTheSameWhereTheBackendNeverStops)
{
    recorder().setWaitLimit(20);
    record();
    const std::string recording = shown();
    backend.whenStopping = nullptr;
    GetParam().close(dialog());
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(backend.calls, QStringList{"stop"});
    EXPECT_NE(shown(), recording);
}

TEST_P(RecorderCloseWayTest, TheDialogMayBeDeletedDuringTheWait)
{
    QPointer<RecorderWgt> child = new RecorderWgt("/recorded", nullptr);
    child->show();
    backend.isSlow = true;
    child->findChild<QPushButton*>("btnRecord")->click();
    backend.change(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
    backend.whenStopping = [&] {
        QTimer::singleShot(0, &dialog(), [&] {
            backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
            delete child;
        });
    };
    GetParam().close(*child);
    EXPECT_FALSE(child);
}

TEST_F(RecorderCloseTest, ADialogThatWasNeverShownEndsItsRecordingWhenItIsClosed)
{
    dialog().hide();
    record();
    dialog().close();
    EXPECT_TRUE(isComplete());
    EXPECT_FALSE(panel->button().isChecked());
}

TEST_F(RecorderCloseTest, ACloseThatEndsExecWaits)
{
    dialog().hide();
    QTimer::singleShot(0, &dialog(), [&] {
        record();
        dialog().accept();
    });
    EXPECT_EQ(dialog().exec(), QDialog::Accepted);
    EXPECT_TRUE(isComplete());
}

TEST_F(RecorderCloseTest, AnApplicationThatQuitsEndsExecAndTheRecording)
{
    dialog().hide();
    QTimer::singleShot(0, &dialog(), [&] {
        QTimer::singleShot(0, &dialog(), [&] {
            record();
            QCoreApplication::quit();
        });
        EXPECT_EQ(dialog().exec(), QDialog::Rejected);
        EXPECT_TRUE(isComplete());
        EXPECT_FALSE(panel->button().isChecked());
    });
    QCoreApplication::exec();
    EXPECT_TRUE(isComplete());
}

TEST_F(RecorderCloseTest, AHostMayDeleteTheDialogInExec)
{
    panel.reset();
    QPointer<RecorderWgt> child = new RecorderWgt("/recorded", nullptr);
    QTimer::singleShot(0, child, [&] { delete child; });
    EXPECT_EQ(child->exec(), QDialog::Rejected);
    EXPECT_FALSE(child);
}

TEST_F(RecorderCloseTest, AnApplicationThatQuitsEndsTheRecordingOfAnOpenDialog)
{
    record();
    QTimer::singleShot(0, &dialog(), &QCoreApplication::quit);
    QCoreApplication::exec();
    EXPECT_TRUE(isComplete());
    EXPECT_FALSE(panel->button().isChecked());
}

TEST_F(RecorderCloseTest, ADestroyedDialogEndsItsRecordingAndWaits)
{
    record();
    panel.reset();
    EXPECT_TRUE(isComplete());
    EXPECT_EQ(FakeBackend::recorderCount(), 0U);
}

TEST_F(RecorderCloseTest, ADestroyedDialogHoldsUpNobodysEvents)
{
    panel.reset();
    QWidget parent;
    int ticks = 0;
    QTimer timer(&parent);
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    const RecorderWgt* const child = recordingChild(parent);
    timer.start(0);
    delete child;
    EXPECT_TRUE(isComplete());
    EXPECT_GT(ticks, 0);
}

TEST_F(RecorderCloseTest, ADestroyedFamilyEndsTheRecordingAndGetsNoEventsMeanwhile)
{
    panel.reset();
    auto window = std::make_unique<QWidget>();
    auto* const page = new QWidget(window.get());
    int ticks = 0;
    const QPointer<RecorderWgt> child = recordingChild(*page);
    // Children that came later are there still when the dialog waits.
    for (QWidget* ancestor : {window.get(), page}) {
        auto* const timer = new QTimer(ancestor);
        QObject::connect(timer, &QTimer::timeout, ancestor, [&] { ++ticks; });
        timer->start(0);
        QCoreApplication::postEvent(ancestor, new QEvent(QEvent::PolishRequest));
    }
    window.reset();
    EXPECT_FALSE(child);
    EXPECT_TRUE(isComplete());
    EXPECT_EQ(ticks, 0);
}

TEST_F(RecorderCloseTest, AHiddenParentEndsTheRecordingOfAnEmbeddedDialog)
{
    QWidget window;
    auto* const child = new RecorderWgt("/recorded", &window);
    child->setWindowFlags(Qt::Widget);
    window.show();
    ASSERT_TRUE(child->isVisible());
    child->findChild<QPushButton*>("btnRecord")->click();
    backend.calls.clear();
    window.hide();
    EXPECT_EQ(backend.calls, QStringList{"stop"});
    EXPECT_FALSE(child->findChild<QPushButton*>("btnRecord")->isChecked());
}

TEST_F(RecorderCloseTest, AMinimizedDialogGoesOnRecording)
{
    record();
    QHideEvent minimized;
    QSpontaneKeyEvent::setSpontaneous(&minimized);
    static_cast<QObject&>(dialog()).event(&minimized); // to send it would make it one of ours
    EXPECT_TRUE(panel->button().isChecked());
    EXPECT_EQ(backend.calls, QStringList());
}

TEST_F(RecorderCloseTest, AClickToStartDuringTheWaitOfAClickToStopCounts)
{
    backend.isSlow = true;
    panel->button().click();
    backend.calls.clear();
    QTimer::singleShot(0, &dialog(), [&] { panel->button().click(); });
    panel->button().click();
    EXPECT_EQ(backend.calls, QStringList());
    EXPECT_TRUE(panel->button().isChecked());
    EXPECT_EQ(dialog().maximumHeight(), 220);
    EXPECT_TRUE(panel->named<QWidget>("wgtMiddle").isHidden());
    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
}

TEST_F(RecorderCloseTest, ClicksToStopAndAtOnceToStartRecordAgain)
{
    record();
    panel->click();
    panel->click();
    EXPECT_EQ(backend.calls, (QStringList{"stop", "record (audio/amr)"}));
    EXPECT_TRUE(panel->button().isChecked());
    backend.change(QMediaRecorder::StoppedState, QMediaRecorder::LoadedStatus);
}

TEST_F(RecorderCloseTest, TheDialogMayBeDeletedDuringTheWaitOfAClick)
{
    QPointer<RecorderWgt> child = new RecorderWgt("/recorded", nullptr);
    backend.isSlow = true;
    child->findChild<QPushButton*>("btnRecord")->click();
    QTimer::singleShot(0, &dialog(), [&] {
        backend.change(QMediaRecorder::RecordingState, QMediaRecorder::RecordingStatus);
        backend.isSlow = false;
        delete child;
    });
    child->findChild<QPushButton*>("btnRecord")->click();
    EXPECT_FALSE(child);
}
