// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeTools.h"

#include <norvel/widgets/systemstatus/systemstatus.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>

namespace {

constexpr int patienceMs = 60000;

/// A panel whose handlers a test can call.
class OpenPanel : public systemstatus
{
public:
    using systemstatus::displayInfo;
    using systemstatus::enableDetailWgt;
    using systemstatus::systemstatus;
    using systemstatus::updateCpuMemUsage;
};

template <class Widget>
Widget* itemOf(const QLayout& layout, int index)
{
    return qobject_cast<Widget*>(layout.itemAt(index)->widget());
}

/// A panel on silent tools in a window that does not lay it out, and what is on it.
class StatusPanelTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(layout, nullptr);
        ASSERT_EQ(layout->count(), 5);
        nameLabel = itemOf<QLabel>(*layout, 0);
        cpuLabel = itemOf<QLabel>(*layout, 1);
        memLabel = itemOf<QLabel>(*layout, 2);
        detailArea = itemOf<QScrollArea>(*layout, 3);
        detailButton = itemOf<QPushButton>(*layout, 4);
        ASSERT_TRUE(nameLabel && cpuLabel && memLabel && detailArea && detailButton);
        details = qobject_cast<QVBoxLayout*>(detailArea->widget()->layout());
        ASSERT_NE(details, nullptr);
        ASSERT_EQ(details->count(), 2);
        hardwareLabel = itemOf<QLabel>(*details, 0);
        gpuLabel = itemOf<QLabel>(*details, 1);
        ASSERT_TRUE(hardwareLabel && gpuLabel);
    }

    FakeTools tools;
    QWidget window;
    OpenPanel panel{&window};
    QVBoxLayout* layout = qobject_cast<QVBoxLayout*>(panel.layout());
    QLabel* nameLabel = nullptr;
    QLabel* cpuLabel = nullptr;
    QLabel* memLabel = nullptr;
    QScrollArea* detailArea = nullptr;
    QPushButton* detailButton = nullptr;
    QVBoxLayout* details = nullptr;
    QLabel* hardwareLabel = nullptr;
    QLabel* gpuLabel = nullptr;
};

} // namespace

TEST_F(StatusPanelTest, HasNoSignalsOrSlotsOfItsOwn)
{
    const QMetaObject& meta = systemstatus::staticMetaObject;
    EXPECT_STREQ(meta.className(), "systemstatus");
    EXPECT_EQ(meta.methodCount(), meta.methodOffset());
    EXPECT_EQ(meta.superClass(), &QWidget::staticMetaObject);
}

TEST_F(StatusPanelTest, BelongsToItsParent)
{
    EXPECT_EQ(panel.parentWidget(), &window);
    const systemstatus alone(nullptr);
    EXPECT_EQ(alone.parentWidget(), nullptr);
    EXPECT_TRUE(alone.isWindow());
}

TEST_F(StatusPanelTest, IsALeanColumn)
{
    EXPECT_EQ(panel.windowTitle(), "系统信息");
    EXPECT_EQ(panel.size(), QSize(300, 65));
    EXPECT_EQ(panel.maximumHeight(), QWIDGETSIZE_MAX) << "free until the first click";
    EXPECT_EQ(layout->spacing(), 0);
    EXPECT_EQ(layout->contentsMargins(), QMargins(6, 6, 0, 10));
}

TEST_F(StatusPanelTest, StartsWithItsNameAndWithoutNumbers)
{
    EXPECT_FALSE(QCoreApplication::applicationName().isEmpty());
    EXPECT_EQ(nameLabel->text(), "当前进程名：" + QCoreApplication::applicationName());
    EXPECT_EQ(cpuLabel->text(), "CPU Usage: -");
    EXPECT_EQ(memLabel->text(), "Mem Usage: -");
}

TEST_F(StatusPanelTest, HasDetailsThatScroll)
{
    EXPECT_TRUE(detailArea->isHidden());
    EXPECT_TRUE(detailArea->widgetResizable());
    EXPECT_EQ(detailArea->maximumHeight(), 400);
    EXPECT_EQ(detailArea->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    EXPECT_EQ(detailArea->styleSheet(), "QScrollArea{background:transparent;}");
    EXPECT_STREQ(detailArea->widget()->metaObject()->className(), "QWidget");
    EXPECT_EQ(detailArea->widget()->styleSheet(), "QWidget{background:transparent;}");
    EXPECT_EQ(details->spacing(), 0);
    EXPECT_EQ(details->contentsMargins(), QMargins(0, 0, 0, 0));
    EXPECT_EQ(hardwareLabel->text(), "");
    EXPECT_EQ(gpuLabel->text(), "");
}

TEST_F(StatusPanelTest, HasAButtonForTheDetails)
{
    EXPECT_EQ(detailButton->text(), "显示更多");
    EXPECT_TRUE(detailButton->isCheckable());
    EXPECT_FALSE(detailButton->isChecked());
    EXPECT_EQ(detailButton->minimumSize(), QSize(120, 30));
    EXPECT_EQ(detailButton->maximumSize(), QSize(120, 30));
}

TEST_F(StatusPanelTest, ShowsNumbersInTheirGeneralForm)
{
    panel.updateCpuMemUsage(7.0, 0.0);
    EXPECT_EQ(cpuLabel->text(), "CPU Usage: 7%");
    EXPECT_EQ(memLabel->text(), "Mem Usage: 0%");
    panel.updateCpuMemUsage(12.5, 100.0);
    EXPECT_EQ(cpuLabel->text(), "CPU Usage: 12.5%");
    EXPECT_EQ(memLabel->text(), "Mem Usage: 100%");
    panel.updateCpuMemUsage(100.0 / 3.0, 12345678.0);
    EXPECT_EQ(cpuLabel->text(), "CPU Usage: 33.3333%");
    EXPECT_EQ(memLabel->text(), "Mem Usage: 1.23457e+07%");
}

TEST_F(StatusPanelTest, ShowsTheHardwareAsItIsPrinted)
{
    panel.displayInfo("Name  \r\r\n<b>GPU</b>  ", "MaxClockSpeed  Name\r\r\n3600  A & B");
    EXPECT_EQ(gpuLabel->text(), "Name  \r\r\n<b>GPU</b>  ");
    EXPECT_EQ(hardwareLabel->text(), "MaxClockSpeed  Name\r\r\n3600  A & B");
    EXPECT_EQ(gpuLabel->textFormat(), Qt::PlainText);
    EXPECT_EQ(hardwareLabel->textFormat(), Qt::PlainText);
}

TEST_F(StatusPanelTest, AClickShowsTheDetails)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(detailButton, Qt::LeftButton);
    EXPECT_TRUE(detailArea->isVisible());
    EXPECT_TRUE(detailArea->widget()->isVisible());
    EXPECT_EQ(panel.minimumHeight(), 470);
    EXPECT_EQ(panel.maximumHeight(), 470);
    EXPECT_EQ(panel.height(), 470);
    EXPECT_EQ(panel.width(), 300);
    EXPECT_EQ(detailButton->text(), "收起");
}

TEST_F(StatusPanelTest, ASecondClickHidesThemAndTheButtonReadsOtherwiseThanAtTheStart)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(detailButton, Qt::LeftButton);
    QTest::mouseClick(detailButton, Qt::LeftButton);
    EXPECT_FALSE(detailArea->isVisible());
    EXPECT_EQ(panel.minimumHeight(), 85);
    EXPECT_EQ(panel.maximumHeight(), 85);
    EXPECT_EQ(panel.height(), 85);
    EXPECT_EQ(detailButton->text(), "显示详细信息");
    QTest::mouseClick(detailButton, Qt::LeftButton);
    EXPECT_TRUE(detailArea->isVisible());
    EXPECT_EQ(detailButton->text(), "收起");
}

TEST_F(StatusPanelTest, FollowsTheStateOfTheButton)
{
    panel.enableDetailWgt();
    EXPECT_TRUE(detailArea->isHidden());
    EXPECT_EQ(panel.maximumHeight(), 85);
    EXPECT_EQ(detailButton->text(), "显示详细信息");
}

TEST(MeasuringPanelTest, KeepsTheDetailsInTheirArea)
{
    QByteArray manyLines;
    for (int i = 0; i < 100; ++i)
        manyLines += "Name=" + QByteArray::number(i) + "\r\n";
    FakeTools tools;
    tools.answer(Query::Hardware, manyLines);
    tools.answer(Query::Graphics, "Some GPU");
    QWidget window;
    const systemstatus panel(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(panel.findChild<QPushButton*>(), Qt::LeftButton);
    const auto* const detailArea = panel.findChild<QScrollArea*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return detailArea->widget()->height() > 1000; }, patienceMs));
    EXPECT_LE(detailArea->height(), 400);
    EXPECT_EQ(panel.height(), 470);
    const auto* const hardware = itemOf<QLabel>(*detailArea->widget()->layout(), 0);
    const auto* const graphics = itemOf<QLabel>(*detailArea->widget()->layout(), 1);
    EXPECT_EQ(hardware->text(), manyLines);
    EXPECT_EQ(graphics->text(), "Some GPU");
    EXPECT_GE(graphics->y(), hardware->geometry().bottom());
}

TEST(MeasuringPanelTest, ShowsWhatTheToolsTell)
{
    FakeTools tools;
    tools.answerAll();
    const systemstatus panel(nullptr);
    const auto shows = [&](const QString& text) {
        return QTest::qWaitFor(
            [&] {
                for (const QLabel* label : panel.findChildren<QLabel*>()) {
                    if (label->text() == text)
                        return true;
                }
                return false;
            },
            patienceMs);
    };
    EXPECT_TRUE(shows("MaxClockSpeed  Name\r\r\n3600           Some CPU\r\r\n"));
    EXPECT_TRUE(shows("Name\r\r\nSome GPU\r\r\n"));
    EXPECT_TRUE(shows("CPU Usage: 12%"));
    EXPECT_TRUE(shows("Mem Usage: 0%"));
    tools.answer(Query::CpuLoad, "LoadPercentage\n99\n");
    EXPECT_TRUE(shows("CPU Usage: 99%")) << "it goes on";
}

TEST(MeasuringPanelTest, AsksForTheMemoryOnceThenForTheHardwareAndThenEverySecond)
{
    FakeTools tools;
    tools.answerAll();
    const systemstatus panel(nullptr);
    EXPECT_EQ(tools.ended().value(0), FakeTools::callOf(Query::InstalledMemory))
        << "read by the constructor";
    ASSERT_TRUE(QTest::qWaitFor([&] { return tools.ended().size() >= 7; }, patienceMs));
    EXPECT_EQ(
        tools.ended().mid(0, 7),
        (QStringList{FakeTools::callOf(Query::InstalledMemory), FakeTools::callOf(Query::Hardware),
                     FakeTools::callOf(Query::Graphics), FakeTools::callOf(Query::CpuLoad),
                     FakeTools::callOf(Query::ProcessMemory), FakeTools::callOf(Query::CpuLoad),
                     FakeTools::callOf(Query::ProcessMemory)}));
}
