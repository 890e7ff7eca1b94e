// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "RecorderPanel.h"
#include "widgets/player/ContextTranslator.h"
#include "widgets/support/OwnMethods.h"

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QListView>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <limits>
#include <memory>
#include <utility>

namespace {

const std::string startRule = "QPushButton{border-image: url(:/images/recorder/start.png) ;}";
const std::string stopRule = "QPushButton{border-image: url(:/images/recorder/stop.png) ;}";

class RecorderWgtTest : public testing::Test
{
protected:
    RecorderWgtTest() { backend = FakeBackend(); }

    /// The dialog; made with the first look at it.
    RecorderPanel& panel()
    {
        if (!m_panel)
            m_panel = std::make_unique<RecorderPanel>("/recorded");
        return *m_panel;
    }
    RecorderWgt& dialog() { return panel().dialog; }
    QTimer& timer() { return *dialog().findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly); }
    Qt5AudioRecorder& recorder()
    {
        return *dialog().findChild<Qt5AudioRecorder*>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// What is done to the backend since the last call.
    QStringList calls() const { return std::exchange(backend.calls, {}); }

    void tick(int count)
    {
        for (int i = 0; i < count; ++i)
            QMetaObject::invokeMethod(&dialog(), "onTimer");
    }

    bool isVisible(const char* name) { return panel().named<QWidget>(name).isVisible(); }

    FakeBackend& backend = FakeBackend::instance();

private:
    std::unique_ptr<RecorderPanel> m_panel;
};

} // namespace

TEST_F(RecorderWgtTest, HasItsSlotsInOrderAndNoSignals)
{
    EXPECT_EQ(ownMethods(RecorderWgt::staticMetaObject),
              (std::vector<std::string>{"playRecord()", "updateVolumeValue(int)", "onTimer()"}));
    for (int i = 0; i < 3; ++i) {
        const QMetaObject& metaObject = RecorderWgt::staticMetaObject;
        EXPECT_EQ(metaObject.method(metaObject.methodOffset() + i).methodType(), QMetaMethod::Slot);
    }
}

TEST_F(RecorderWgtTest, OpensIdleInItsSizeWithItsTitle)
{
    EXPECT_EQ(dialog().size(), QSize(326, 385));
    EXPECT_EQ(dialog().windowTitle(), "录音");
    EXPECT_EQ(dialog().objectName(), "recorderWgt");
    EXPECT_EQ(panel().duration(), "00:00:00");
    EXPECT_EQ(panel().tip(), "未开始录制");
    EXPECT_FALSE(panel().button().isChecked());
    EXPECT_EQ(panel().button().styleSheet(), "");
    EXPECT_EQ(panel().button().cursor().shape(), Qt::PointingHandCursor);
    EXPECT_FALSE(timer().isActive());
    EXPECT_EQ(dialog().maximumHeight(), QWIDGETSIZE_MAX) << "no height is fixed yet";
    EXPECT_EQ(recorder().parent(), &dialog());
}

TEST_F(RecorderWgtTest, GivesTheDevicesAListOfTheirOwnAndTheFocus)
{
    EXPECT_EQ(std::string(panel().devices().view()->metaObject()->className()), "QListView");
    panel().show();
    dialog().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    EXPECT_EQ(dialog().focusWidget(), &panel().devices());
}

TEST_F(RecorderWgtTest, ListsTheInputsAndTakesTheDefaultOne)
{
    backend.inputs = QStringList{"a", "b", "c"};
    backend.defaultInput = "c";
    const QComboBox& devices = panel().devices();
    ASSERT_EQ(devices.count(), 3);
    EXPECT_EQ(devices.itemText(0), "a");
    EXPECT_EQ(devices.itemText(1), "b");
    EXPECT_EQ(devices.itemText(2), "c");
    EXPECT_EQ(devices.currentText(), "a") << "the box does not tell";
    EXPECT_EQ(backend.activeInput, "c");
}

TEST_F(RecorderWgtTest, AnEmptyListOfInputsLeavesTheBoxEmptyAndTheDefaultInput)
{
    backend.inputs.clear();
    backend.defaultInput = "system";
    EXPECT_EQ(panel().devices().count(), 0);
    EXPECT_EQ(backend.activeInput, "system");
    panel().click();
    EXPECT_EQ(backend.calls.last(), "record (audio/amr)");
}

TEST_F(RecorderWgtTest, SetsTheRecorderUpBeforeItGivesItTheFile)
{
    panel();
    EXPECT_EQ(calls(), (QStringList{"audio", "video", "container", "location"}));
    EXPECT_EQ(backend.audio.codec(), "audio/amr");
    EXPECT_EQ(backend.location, QUrl::fromLocalFile("/recorded"));
}

TEST_F(RecorderWgtTest, AClickRecordsAndShowsTheTopBlockAlone)
{
    panel().show();
    calls();
    panel().click();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
    EXPECT_TRUE(panel().button().isChecked());
    EXPECT_EQ(panel().button().styleSheet().toStdString(), stopRule);
    EXPECT_EQ(panel().tip(), "正在录制中...");
    EXPECT_TRUE(timer().isActive());
    EXPECT_EQ(timer().interval(), 1000);
    EXPECT_FALSE(isVisible("wgtMiddle"));
    EXPECT_FALSE(isVisible("wgtBottom"));
    EXPECT_TRUE(isVisible("wgtPlayRecord"));
    EXPECT_TRUE(isVisible("progressBar"));
    EXPECT_EQ(dialog().minimumHeight(), 220);
    EXPECT_EQ(dialog().maximumHeight(), 220);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog().height() == 220; }));
}

TEST_F(RecorderWgtTest, ASecondClickStopsAndShowsAllAgain)
{
    panel().show();
    panel().click();
    tick(5);
    calls();
    panel().click();
    EXPECT_EQ(calls(), QStringList{"stop"});
    EXPECT_FALSE(panel().button().isChecked());
    EXPECT_EQ(panel().button().styleSheet().toStdString(), startRule);
    EXPECT_EQ(panel().tip(), "未开始录制");
    EXPECT_EQ(panel().duration(), "00:00:00");
    EXPECT_FALSE(timer().isActive());
    EXPECT_TRUE(isVisible("wgtMiddle"));
    EXPECT_TRUE(isVisible("wgtBottom"));
    EXPECT_EQ(dialog().minimumHeight(), 540);
    EXPECT_EQ(dialog().maximumHeight(), 540);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialog().height() == 540; }));
    tick(1);
    EXPECT_EQ(panel().duration(), "00:00:01") << "it counts anew";
}

TEST_F(RecorderWgtTest, RecordsToTheSameFileAgain)
{
    panel();
    calls();
    for (int i = 0; i < 2; ++i) {
        panel().click();
        panel().click();
        EXPECT_EQ(calls(), (QStringList{"record (audio/amr)", "stop"}));
    }
    EXPECT_EQ(backend.location, QUrl::fromLocalFile("/recorded"));
}

TEST_F(RecorderWgtTest, FollowsTheButtonWhoeverCheckedIt)
{
    panel();
    calls();
    panel().button().setChecked(true);
    EXPECT_EQ(calls(), QStringList()) << "it is no click";
    dialog().playRecord();
    EXPECT_EQ(calls(), QStringList{"record (audio/amr)"});
}

TEST_F(RecorderWgtTest, TranslatesTheTextsThatChange)
{
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(dialog().windowTitle(), "recorderWgt:录音");
    panel().click();
    EXPECT_EQ(panel().tip(), "recorderWgt:正在录制中...");
    tick(1);
    EXPECT_EQ(panel().duration(), "00:00:01");
    panel().click();
    EXPECT_EQ(panel().tip(), "recorderWgt:未开始录制");
}

TEST_F(RecorderWgtTest, CountsSecondsMinutesAndHoursWithoutEnd)
{
    tick(1);
    EXPECT_EQ(panel().duration(), "00:00:01");
    tick(58);
    EXPECT_EQ(panel().duration(), "00:00:59");
    tick(1);
    EXPECT_EQ(panel().duration(), "00:01:00");
    tick(3661 - 60);
    EXPECT_EQ(panel().duration(), "01:01:01");
    tick(359999 - 3661);
    EXPECT_EQ(panel().duration(), "99:59:59");
    tick(1);
    EXPECT_EQ(panel().duration(), "100:00:00");
}

TEST_F(RecorderWgtTest, CountsByTheClockWhileItRecords)
{
    panel().show();
    panel().click();
    QSignalSpy ticks(&timer(), &QTimer::timeout);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks.count() == 2; }, 10000));
    EXPECT_EQ(panel().duration(), "00:00:02");
}

TEST_F(RecorderWgtTest, ShowsALevelAsTheShareOfTheBarsWidthInPercent)
{
    QProgressBar& bar = panel().bar();
    bar.resize(150, 30);
    emit recorder().updateProgressBar(0.5);
    EXPECT_EQ(bar.value(), 75);
    emit recorder().updateProgressBar(0.1);
    EXPECT_EQ(bar.value(), 15);
    emit recorder().updateProgressBar(0.1199);
    EXPECT_EQ(bar.value(), 17) << "cut off, not rounded";
    emit recorder().updateProgressBar(0.0);
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(RecorderWgtTest, ALevelBeyondTheBarsRangeIsIgnored)
{
    QProgressBar& bar = panel().bar();
    bar.resize(300, 30);
    emit recorder().updateProgressBar(0.2);
    EXPECT_EQ(bar.value(), 60);
    emit recorder().updateProgressBar(0.5);
    EXPECT_EQ(bar.value(), 60) << "150 is beyond";
    for (const double level : {1.0, 1e9, 1e300, std::numeric_limits<double>::infinity()}) {
        emit recorder().updateProgressBar(level);
        EXPECT_EQ(bar.value(), 60) << level;
    }
    emit recorder().updateProgressBar(1.0 / 3);
    EXPECT_EQ(bar.value(), 100);
}

TEST_F(RecorderWgtTest, ShowsTheLastChannelOfWhatIsProbed)
{
    QAudioFormat format;
    format.setCodec("audio/pcm");
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setSampleRate(16000);
    format.setChannelCount(2);
    format.setSampleSize(8);
    format.setSampleType(QAudioFormat::SignedInt);
    panel().bar().resize(100, 30);
    const QByteArray leftAndRight("\x7f\x20", 2);
    backend.probe({leftAndRight, format});
    EXPECT_EQ(panel().bar().value(), 100 * 32 / 127);
}

TEST_F(RecorderWgtTest, SliderAndSpinBoxMirrorEachOther)
{
    QSignalSpy slid(&panel().slider(), &QSlider::valueChanged);
    QSignalSpy spun(&panel().spinBox(), QOverload<int>::of(&QSpinBox::valueChanged));
    panel().slider().setValue(37);
    EXPECT_EQ(panel().spinBox().value(), 37);
    panel().spinBox().setValue(62);
    EXPECT_EQ(panel().slider().value(), 62);
    EXPECT_EQ(slid.count(), 2);
    EXPECT_EQ(spun.count(), 2);
    dialog().updateVolumeValue(12);
    EXPECT_EQ(panel().slider().value(), 12) << "told by neither of them";
    EXPECT_EQ(panel().spinBox().value(), 12);
}

TEST_F(RecorderWgtTest, VolumeAndOptionsDriveNothing)
{
    panel();
    calls();
    panel().slider().setValue(80);
    panel().named<QCheckBox>("chkRemoveEcho").setChecked(true);
    panel().named<QCheckBox>("chkDraftMute").setChecked(true);
    panel().devices().setCurrentIndex(1);
    EXPECT_EQ(calls(), QStringList());
    EXPECT_EQ(panel().bar().value(), 0);
    EXPECT_EQ(panel().label("lblMicrophoneState").text(), "麦克风连接成功");
    panel().click();
    EXPECT_TRUE(panel().named<QCheckBox>("chkRemoveEcho").isChecked());
}

TEST_F(RecorderWgtTest, GoesWithItsParentWhileItRecords)
{
    auto parent = std::make_unique<QWidget>();
    const QPointer<RecorderWgt> child = new RecorderWgt("/recorded", parent.get());
    EXPECT_EQ(child->parentWidget(), parent.get());
    child->findChild<QPushButton*>("btnRecord")->click();
    EXPECT_EQ(FakeBackend::recorderCount(), 1U);
    calls();
    parent.reset();
    EXPECT_TRUE(child.isNull());
    EXPECT_EQ(calls(), QStringList{"stop"});
    EXPECT_EQ(FakeBackend::recorderCount(), 0U) << "nothing is left that a sound could reach";
}
