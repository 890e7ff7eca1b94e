// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ProcText_linux.h>

#include <gtest/gtest.h>

using norvel::CpuTimes;
using norvel::ProcText;

namespace {

const QByteArray database = "# a comment\n"
                            "\n"
                            "0001  First Vendor\n"
                            "\t1234  Not this one\n"
                            "8086  Intel Corporation\n"
                            "\t# a comment within\n"
                            "\t1234  Some Adapter [Family]\n"
                            "\t\t1028 1234  A subsystem\n"
                            "\tabcd  Another Adapter\n"
                            "ffff  Last Vendor\n"
                            "\t5678  Not of the vendor before\n";

/// A paragraph of "/proc/cpuinfo".
QByteArray logicalProcessor(int number, int socket, int core, const QByteArray& megahertz)
{
    return "processor\t: " + QByteArray::number(number) +
           "\nvendor_id\t: Maker\nmodel name\t: Maker CPU: 3000\ncpu MHz\t\t: " + megahertz +
           "\nphysical id\t: " + QByteArray::number(socket) +
           "\nsiblings\t: 2\ncore id\t\t: " + QByteArray::number(core) + "\npower management:\n\n";
}

} // namespace

TEST(ProcTextTest, AProcessorIsBusyWhenItNeitherIdlesNorWaits)
{
    const CpuTimes times = ProcText::cpuTimes("cpu  10 20 30 400 500 1 2 3 1000 2000\n"
                                              "cpu0 9 9 9 9 9 9 9 9 9 9\nintr 12\n");
    EXPECT_EQ(times.busy, 10 + 20 + 30 + 1 + 2 + 3) << "guests are among the first two";
    EXPECT_EQ(times.total, 66 + 400 + 500);
}

TEST(ProcTextTest, CpuTimesOfAnOldKernelAreUnderstood)
{
    const CpuTimes times = ProcText::cpuTimes("cpu 10 20 30 400");
    EXPECT_EQ(times.busy, 60);
    EXPECT_EQ(times.total, 460);
}

TEST(ProcTextTest, CpuTimesThatCannotBeReadAre0)
{
    for (const char* text :
         {"", "\n", "cpu", "cpu 1 2 3\n", "cpu0 1 2 3 4 5\n", "intr 1 2 3 4 5 6"}) {
        EXPECT_EQ(ProcText::cpuTimes(text).total, 0) << text;
        EXPECT_EQ(ProcText::cpuTimes(text).busy, 0) << text;
    }
}

TEST(ProcTextTest, InstalledMemoryIsTheTotal)
{
    EXPECT_EQ(ProcText::installedMemory("MemTotal:       24684084 kB\nMemFree:  1 kB\n"),
              24684084LL * 1024);
    EXPECT_EQ(ProcText::installedMemory("MemFree:  1 kB\nMemTotal: 2 kB"), 2048);
}

TEST(ProcTextTest, InstalledMemoryThatCannotBeReadIs0)
{
    EXPECT_EQ(ProcText::installedMemory(""), 0);
    EXPECT_EQ(ProcText::installedMemory("MemFree:  1 kB\n"), 0);
    EXPECT_EQ(ProcText::installedMemory("MemTotal: much kB\n"), 0);
    EXPECT_EQ(ProcText::installedMemory("MemTotal:\n"), 0);
    EXPECT_EQ(ProcText::installedMemory("SomeMemTotal: 1 kB\n"), 0);
}

TEST(ProcTextTest, ResidentPagesAreTheSecondNumber)
{
    EXPECT_EQ(ProcText::residentPages("1000 250 30 4 0 50 0\n"), 250);
    EXPECT_EQ(ProcText::residentPages("1000 250"), 250);
    EXPECT_EQ(ProcText::residentPages(""), 0);
    EXPECT_EQ(ProcText::residentPages("1000"), 0);
    EXPECT_EQ(ProcText::residentPages("1000 many"), 0);
}

TEST(ProcTextTest, ProcessorsAreToldBySocket)
{
    EXPECT_EQ(ProcText::processors(
                  logicalProcessor(0, 0, 0, "1200.4") + logicalProcessor(1, 1, 0, "900.0") +
                  logicalProcessor(2, 0, 0, "3599.6") + logicalProcessor(3, 0, 1, "800.0")),
              "Name=Maker CPU: 3000\nCurrentClockSpeed=3600\nNumberOfCores=2\n"
              "NumberOfLogicalProcessors=3\n"
              "Name=Maker CPU: 3000\nCurrentClockSpeed=900\nNumberOfCores=1\n"
              "NumberOfLogicalProcessors=1\n");
}

TEST(ProcTextTest, OfProcessorsIsToldWhatIsKnown)
{
    EXPECT_EQ(ProcText::processors("processor\t: 0\nBogoMIPS\t: 50\n\nprocessor\t: 1\n\n"
                                   "Hardware\t: Board\n"),
              "NumberOfLogicalProcessors=2\n");
    EXPECT_EQ(ProcText::processors("processor : 0\nmodel name : A"),
              "Name=A\nNumberOfLogicalProcessors=1\n")
        << "no line end";
    EXPECT_EQ(ProcText::processors(""), "");
}

TEST(ProcTextTest, PciDevicesHaveTheNamesOfTheDatabase)
{
    EXPECT_EQ(ProcText::pciName(database, "0x8086\n", "0x1234\n"),
              "Intel Corporation Some Adapter [Family]");
    EXPECT_EQ(ProcText::pciName(database, "0x8086", "0xabcd"), "Intel Corporation Another Adapter");
}

TEST(ProcTextTest, PciDevicesThatTheDatabaseDoesNotKnowHaveTheirNumbers)
{
    EXPECT_EQ(ProcText::pciName(database, "0x8086\n", "0x5678\n"), "Intel Corporation 5678");
    EXPECT_EQ(ProcText::pciName(database, "0x8087\n", "0x1234\n"), "8087 1234");
    EXPECT_EQ(ProcText::pciName(database, "0x8086", "0x12"), "Intel Corporation 12")
        << "another number begins so";
    EXPECT_EQ(ProcText::pciName("", "0x8086\n", "0x1234\n"), "8086 1234");
    EXPECT_EQ(ProcText::pciName(database, "0xffff", "0x0001"), "Last Vendor 0001");
}
