// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ProcText_linux.h>

#include <QList>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <vector>

namespace norvel {

namespace {

/// What "/proc/cpuinfo" says of the processor in one socket.
struct Processor
{
    QByteArray socket;
    QByteArray name;
    double megahertz = 0.0;
    QSet<QByteArray> cores;
    int logicalProcessors = 0;
};

/// The value of the line "key : value" in a text; empty without such a line.
QByteArray valueOf(const QByteArray& text, const QByteArray& key)
{
    for (const QByteArray& line : text.split('\n')) {
        const int colon = line.indexOf(':');
        if (colon >= 0 && line.left(colon).trimmed() == key)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

Processor& processorIn(const QByteArray& socket, std::vector<Processor>& processors)
{
    const auto found =
        std::find_if(processors.begin(), processors.end(),
                     [&](const Processor& processor) { return processor.socket == socket; });
    if (found != processors.end())
        return *found;
    processors.push_back({});
    processors.back().socket = socket;
    return processors.back();
}

/// Adds what the paragraph of one logical processor says.
void addLogicalProcessor(const QByteArray& paragraph, std::vector<Processor>& processors)
{
    Processor& processor = processorIn(valueOf(paragraph, "physical id"), processors);
    ++processor.logicalProcessors;
    processor.name = valueOf(paragraph, "model name");
    processor.megahertz = std::max(processor.megahertz, valueOf(paragraph, "cpu MHz").toDouble());
    const QByteArray core = valueOf(paragraph, "core id");
    if (!core.isEmpty())
        processor.cores.insert(core);
}

void print(const Processor& processor, QTextStream& text)
{
    if (!processor.name.isEmpty())
        text << "Name=" << QString::fromUtf8(processor.name) << '\n';
    if (processor.megahertz > 0.0)
        text << "CurrentClockSpeed=" << qRound(processor.megahertz) << '\n';
    if (!processor.cores.isEmpty())
        text << "NumberOfCores=" << processor.cores.size() << '\n';
    text << "NumberOfLogicalProcessors=" << processor.logicalProcessors << '\n';
}

/// "0x8086" as the database writes it: "8086".
QByteArray databaseNumber(const QByteArray& number)
{
    const QByteArray trimmed = number.trimmed();
    return trimmed.startsWith("0x") ? trimmed.mid(2) : trimmed;
}

/// Takes the next line off the front of a text, without copying the rest.
QByteArray lineAt(const QByteArray& text, int& position)
{
    const int end = text.indexOf('\n', position);
    const int stop = end < 0 ? text.size() : end;
    QByteArray line = text.mid(position, stop - position);
    position = stop + 1;
    return line;
}

/// The name in a line of the database, "number  name"; empty for the line of another number.
QByteArray nameIn(const QByteArray& line, const QByteArray& number)
{
    return line.startsWith(number + "  ") ? line.mid(number.size()).trimmed() : QByteArray();
}

} // namespace

CpuTimes ProcText::cpuTimes(const QByteArray& stat)
{
    // user nice system idle iowait irq softirq steal; what guests take is within the first two.
    constexpr int firstIdle = 4;
    constexpr int lastIdle = 5;
    constexpr int lastTime = 8;
    const QList<QByteArray> fields = stat.split('\n').first().simplified().split(' ');
    if (fields.first() != "cpu" || fields.size() <= firstIdle)
        return {};
    CpuTimes times;
    for (int i = 1; i < std::min(fields.size(), lastTime + 1); ++i) {
        const qint64 ticks = fields[i].toLongLong();
        times.total += ticks;
        if (i < firstIdle || i > lastIdle)
            times.busy += ticks;
    }
    return times;
}

qint64 ProcText::installedMemory(const QByteArray& meminfo)
{
    constexpr qint64 bytesPerKilobyte = 1024;
    const QList<QByteArray> parts = valueOf(meminfo, "MemTotal").split(' ');
    return parts.first().toLongLong() * bytesPerKilobyte;
}

qint64 ProcText::residentPages(const QByteArray& statm)
{
    const QList<QByteArray> pages = statm.simplified().split(' ');
    return pages.size() < 2 ? 0 : pages[1].toLongLong();
}

QString ProcText::processors(const QByteArray& cpuinfo)
{
    std::vector<Processor> processors;
    QByteArray paragraph;
    // Ends the last paragraph too.
    for (const QByteArray& line : (cpuinfo + "\n\n").split('\n')) {
        if (!line.trimmed().isEmpty()) {
            paragraph += line + '\n';
            continue;
        }
        if (!valueOf(paragraph, "processor").isEmpty())
            addLogicalProcessor(paragraph, processors);
        paragraph.clear();
    }
    QString printed;
    QTextStream text(&printed);
    for (const Processor& processor : processors)
        print(processor, text);
    return printed;
}

QString ProcText::pciName(const QByteArray& database, const QByteArray& vendor,
                          const QByteArray& device)
{
    const QByteArray vendorNumber = databaseNumber(vendor);
    const QByteArray deviceNumber = databaseNumber(device);
    QByteArray vendorName;
    QByteArray deviceName;
    int position = 0;
    while (position < database.size() && deviceName.isEmpty()) {
        const QByteArray line = lineAt(database, position);
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (!line.startsWith('\t')) {
            if (!vendorName.isEmpty())
                break; // the next vendor
            vendorName = nameIn(line, vendorNumber);
        } else if (!vendorName.isEmpty()) {
            deviceName = nameIn(line.mid(1), deviceNumber);
        }
    }
    const auto orNumber = [](const QByteArray& name, const QByteArray& number) {
        return QString::fromUtf8(name.isEmpty() ? number : name);
    };
    return orNumber(vendorName, vendorNumber) + ' ' + orNumber(deviceName, deviceNumber);
}

} // namespace norvel
