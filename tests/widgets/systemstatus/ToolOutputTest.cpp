// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ToolOutput.h>

#include <gtest/gtest.h>

#include <QTextCodec>

using norvel::ToolOutput;

namespace {

/// Text in UTF-16 behind a byte-order mark.
QByteArray utf16(const QString& text, const char* codec)
{
    const QTextCodec::ConverterState withoutMark(QTextCodec::IgnoreHeader);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    return QTextCodec::codecForName(codec)->fromUnicode(marked.constData(), marked.size(), &state);
}

QString taskLine(const QString& memory)
{
    return QString("\"editor.exe\",\"4242\",\"Console\",\"1\",\"%1\"\r\n").arg(memory);
}

} // namespace

TEST(ToolOutputTest, IsTextInTheEncodingOfTheSystem)
{
    EXPECT_EQ(ToolOutput::decoded("LoadPercentage\r\n12\r\n"), "LoadPercentage\r\n12\r\n");
    EXPECT_EQ(ToolOutput::decoded(QString("Größe").toLocal8Bit()),
              QString::fromLocal8Bit(QString("Größe").toLocal8Bit()));
    EXPECT_EQ(ToolOutput::decoded(""), "");
}

TEST(ToolOutputTest, IsTextInTheEncodingThatAByteOrderMarkTells)
{
    const QString text = "LoadPercentage\r\r\n12  显卡\r\r\n";
    const QByteArray littleEndian = utf16(text, "UTF-16LE");
    ASSERT_EQ(littleEndian.left(4), QByteArray("\xFF\xFEL\0", 4));
    EXPECT_EQ(ToolOutput::decoded(littleEndian), text);
    const QByteArray bigEndian = utf16(text, "UTF-16BE");
    ASSERT_EQ(bigEndian.left(4), QByteArray("\xFE\xFF\0L", 4));
    EXPECT_EQ(ToolOutput::decoded(bigEndian), text);
    EXPECT_EQ(ToolOutput::decoded("\xEF\xBB\xBF" + text.toUtf8()), text);
}

TEST(ToolOutputTest, InstalledMemoryStandsBehindTheEqualsSign)
{
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=8589934592"), 8589934592);
    EXPECT_EQ(ToolOutput::installedMemory("\r\n\r\nCapacity=8589934592\r\n\r\n\r\n"), 8589934592);
    EXPECT_EQ(ToolOutput::installedMemory("\r\r\n\r\r\nCapacity=8589934592\r\r\n\r\r\n"),
              8589934592);
}

TEST(ToolOutputTest, InstalledMemoryIsThatOfTheLastModule)
{
    EXPECT_EQ(ToolOutput::installedMemory(
                  "\r\r\n\r\r\nCapacity=8589934592\r\r\n\r\r\n\r\r\nCapacity=4294967296\r\r\n"),
              4294967296);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=8589934592\r\nCapacity="), 0);
}

TEST(ToolOutputTest, InstalledMemoryThatCannotBeReadIs0)
{
    EXPECT_EQ(ToolOutput::installedMemory(""), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity\r\n8589934592\r\n"), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity="), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=much"), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=8.5"), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=99999999999999999999"), 0);
    EXPECT_EQ(ToolOutput::installedMemory("Capacity=0x10"), 0) << "base 10";
}

TEST(ToolOutputTest, CpuLoadIsTheSecondLine)
{
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\n12"), 12.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage  \r\n12              \r\n\r\n"), 12.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage  \r\r\n12              \r\r\n\r\r\n"), 12.0);
    EXPECT_EQ(ToolOutput::cpuLoad("\r\n  LoadPercentage\n  12.5\n"), 12.5) << "trimmed first";
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\n7\n93\n"), 7.0) << "of two sockets the first";
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\n\n12\n"), 0.0) << "empty lines count";
}

TEST(ToolOutputTest, CpuLoadThatCannotBeReadIs0)
{
    EXPECT_EQ(ToolOutput::cpuLoad(""), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage"), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage  \r\r\n\r\r\n"), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("12"), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\nmuch"), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\n12,5"), 0.0);
    EXPECT_EQ(ToolOutput::cpuLoad("LoadPercentage\n1e999"), 0.0);
}

TEST(ToolOutputTest, ProcessMemoryIsTheFifthFieldInKilobytes)
{
    EXPECT_EQ(ToolOutput::processMemory(taskLine("123,456 K")), 123456 * 1024);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("512 K")), 512 * 1024);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("4,000,000 K")), 4000000LL * 1024);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("12,345 K") + taskLine("1 K")), 12345 * 1024)
        << "the first process";
}

TEST(ToolOutputTest, ProcessMemoryThatCannotBeReadIs0)
{
    EXPECT_EQ(ToolOutput::processMemory(""), 0);
    EXPECT_EQ(ToolOutput::processMemory("INFO: No tasks are running which match.\r\n"), 0);
    EXPECT_EQ(ToolOutput::processMemory("\"editor.exe\",\"4242\",\"Console\",\"1\"\r\n"), 0);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("123456K")), 0) << "no space";
    EXPECT_EQ(ToolOutput::processMemory(taskLine("N/A K")), 0);
    EXPECT_EQ(ToolOutput::processMemory(taskLine(" K")), 0);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("9223372036854775807 K")), 0) << "too much";
    EXPECT_EQ(ToolOutput::processMemory(taskLine("-9223372036854775808 K")), 0);
}

TEST(ToolOutputTest, ProcessMemoryIsReadWithCommasBetweenTheThousandsAlone)
{
    EXPECT_EQ(ToolOutput::processMemory(taskLine("123.456 K")), 0);
    EXPECT_EQ(ToolOutput::processMemory(taskLine(QString("123%1456 K").arg(QChar(0x00A0)))), 0);
    EXPECT_EQ(ToolOutput::processMemory(taskLine("123 456 K")), 123 * 1024)
        << "what stands before the first space";
}
