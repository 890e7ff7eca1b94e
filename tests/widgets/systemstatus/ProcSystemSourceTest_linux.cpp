// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/CalculateSysInfo.h>
#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>

#include <gtest/gtest.h>

#include <QDir>
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

#include <ctime>
#include <sys/sysinfo.h>
#include <unistd.h>

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

/// Uses the processor for this long, however long it takes to get it.
void useProcessor(double seconds)
{
    const std::clock_t begin = std::clock();
    while (static_cast<double>(std::clock() - begin) < seconds * CLOCKS_PER_SEC) {
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
    EXPECT_EQ(planted.processMemory(), 250 * sysconf(_SC_PAGESIZE));
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
    struct sysinfo system
    {
    };
    ASSERT_EQ(sysinfo(&system), 0);
    EXPECT_EQ(source.installedMemory(), static_cast<qint64>(system.totalram) * system.mem_unit);
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
    const ReadTimes beforeFirst = readTimes();
    worker.sample();
    const ReadTimes afterFirst = readTimes();
    useProcessor(0.5);
    const ReadTimes beforeSecond = readTimes();
    worker.sample();
    const ReadTimes afterSecond = readTimes();
    ASSERT_EQ(samples.size(), 2);
    const double load = samples.value(1).value(0).toDouble();
    // What is read around the samples bounds what they read, however long that takes.
    const double leastBusy = beforeSecond.busy - afterFirst.busy;
    const double mostBusy = afterSecond.busy - beforeFirst.busy;
    const double leastTotal = beforeSecond.total - afterFirst.total;
    const double mostTotal = afterSecond.total - beforeFirst.total;
    constexpr double rounding = 1.0;
    EXPECT_GT(leastBusy, 0.0);
    EXPECT_GE(load, 100.0 * leastBusy / mostTotal - rounding);
    EXPECT_LE(load, 100.0 * mostBusy / leastTotal + rounding);
}
