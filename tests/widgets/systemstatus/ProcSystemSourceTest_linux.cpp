// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using norvel::ProcSystemSource;

namespace {

/// A root folder whose files a test writes.
class PlantedRootTest : public testing::Test
{
protected:
    void write(const QString& name, const QByteArray& content) const
    {
        const QString path = m_folder.filePath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    void plantDevice(const QString& slot, const QByteArray& deviceClass, const QByteArray& vendor,
                     const QByteArray& device) const
    {
        const QString folder = "sys/bus/pci/devices/" + slot;
        write(folder + "/class", deviceClass);
        write(folder + "/vendor", vendor);
        write(folder + "/device", device);
    }

    ProcSystemSource source() const { return ProcSystemSource(m_folder.path()); }

    QTemporaryDir m_folder;
};

/// Busy and total time of all processors, read without the library.
struct ReadTimes
{
    double busy = 0.0;
    double total = 0.0;
};

ReadTimes readTimes()
{
    std::ifstream stat("/proc/stat");
    std::string name;
    stat >> name;
    EXPECT_EQ(name, "cpu");
    double user = 0, nice = 0, system = 0, idle = 0, wait = 0, irq = 0, softirq = 0, steal = 0;
    stat >> user >> nice >> system >> idle >> wait >> irq >> softirq >> steal;
    EXPECT_TRUE(stat.good());
    const double busy = user + nice + system + irq + softirq + steal;
    return {busy, busy + idle + wait};
}

/// The processors that these times are of, which may be more than this process may use.
int processorsCounted()
{
    std::ifstream stat("/proc/stat");
    int count = 0;
    for (std::string line; std::getline(stat, line);)
        count += line.compare(0, 3, "cpu") == 0 && line.compare(0, 4, "cpu ") != 0;
    EXPECT_GT(count, 0);
    return count;
}

void keepBusy(int milliseconds)
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < milliseconds) {
    }
}

} // namespace

TEST_F(PlantedRootTest, NumbersAreReadFromTheFiles)
{
    write("proc/stat", "cpu  100 0 0 900 0 0 0 0\n");
    write("proc/meminfo", "MemTotal: 2000 kB\n");
    write("proc/self/statm", "1000 250 30 4 0 50 0\n");
    ProcSystemSource planted(m_folder.path());
    EXPECT_EQ(planted.installedMemory(), 2000 * 1024);
    EXPECT_EQ(planted.processMemory() % 250, 0);
    EXPECT_GE(planted.processMemory() / 250, 4096) << "a page";
}

TEST_F(PlantedRootTest, TheLoadIsThatSinceTheLastCall)
{
    write("proc/stat", "cpu  100 0 0 900 0 0 0 0\n");
    ProcSystemSource planted(m_folder.path());
    write("proc/stat", "cpu  150 0 0 950 0 0 0 0\n");
    EXPECT_EQ(planted.cpuLoad(), 50.0) << "since it was made";
    EXPECT_EQ(planted.cpuLoad(), 0.0) << "no time has passed";
    write("proc/stat", "cpu  160 0 0 1040 0 0 0 0\n");
    EXPECT_EQ(planted.cpuLoad(), 10.0);
}

TEST_F(PlantedRootTest, TheHardwareIsProcessorsAndMemory)
{
    write("proc/cpuinfo", "processor : 0\nmodel name : Some CPU\ncore id : 0\n");
    write("proc/meminfo", "MemTotal: 2000 kB\n");
    ProcSystemSource planted(m_folder.path());
    EXPECT_EQ(planted.hardwareText(), "Name=Some CPU\nNumberOfCores=1\n"
                                      "NumberOfLogicalProcessors=1\nCapacity=2048000\n");
}

TEST_F(PlantedRootTest, TheGraphicsAreThePciDevicesOfTheClassDisplay)
{
    plantDevice("0000:00:00.0", "0x060000\n", "0x8086\n", "0x0001\n");
    plantDevice("0000:00:02.0", "0x030000\n", "0x8086\n", "0x1234\n");
    plantDevice("0000:01:00.0", "0x030200\n", "0x10de\n", "0x0002\n");
    ProcSystemSource planted(m_folder.path());
    EXPECT_EQ(planted.graphicsText(), "Name=8086 1234\nName=10de 0002\n");
    write("usr/share/hwdata/pci.ids", "8086  Intel Corporation\n\t1234  Some Adapter\n");
    EXPECT_EQ(planted.graphicsText(), "Name=Intel Corporation Some Adapter\nName=10de 0002\n");
    write("usr/share/misc/pci.ids", "10de  Other\n\t0002  Adapter\n");
    EXPECT_EQ(planted.graphicsText(), "Name=8086 1234\nName=Other Adapter\n");
}

TEST_F(PlantedRootTest, MissingFilesGive0AndNoText)
{
    ProcSystemSource planted(m_folder.path());
    EXPECT_EQ(planted.installedMemory(), 0);
    EXPECT_EQ(planted.cpuLoad(), 0.0);
    EXPECT_EQ(planted.processMemory(), 0);
    EXPECT_EQ(planted.hardwareText(), "");
    EXPECT_EQ(planted.graphicsText(), "");
}

TEST(ProcSystemSourceTest, KnowsThisMachine)
{
    ProcSystemSource source;
    EXPECT_GT(source.installedMemory(), 100 * 1024 * 1024);
    EXPECT_TRUE(source.hardwareText().contains("NumberOfLogicalProcessors="));
    EXPECT_TRUE(source.hardwareText().contains("Capacity="));
}

TEST(ProcSystemSourceTest, SeesWhatThisProcessTakes)
{
    constexpr std::size_t taken = std::size_t(64) * 1024 * 1024;
    ProcSystemSource source;
    const qint64 before = source.processMemory();
    EXPECT_GT(before, 1024 * 1024);
    EXPECT_LT(before, source.installedMemory());
    const std::vector<char> bytes(taken, 'x');
    EXPECT_GE(source.processMemory() - before, static_cast<qint64>(taken * 9 / 10));
    EXPECT_EQ(bytes.back(), 'x');
}

TEST(ProcSystemSourceTest, ABusyLoopIsSeenInTheNextSample)
{
    CalculateSysInfo worker(std::make_unique<ProcSystemSource>());
    const std::unique_ptr<QTimer> timer(worker.timer);
    QSignalSpy samples(&worker, &CalculateSysInfo::updateCpuMemUsage);
    worker.sample();
    const ReadTimes before = readTimes();
    keepBusy(1000);
    const ReadTimes after = readTimes();
    worker.sample();
    ASSERT_EQ(samples.size(), 2);
    const double load = samples.value(1).value(0).toDouble();
    const double expected = 100.0 * (after.busy - before.busy) / (after.total - before.total);
    const double ofOneThread = 100.0 / processorsCounted();
    EXPECT_GT(load, 0.7 * ofOneThread);
    EXPECT_LE(load, 100.0);
    // The reads are some milliseconds apart.
    EXPECT_NEAR(load, expected, 4.0);
}
