// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace norvel {

ProcSystemSource::ProcSystemSource(const QString& root)
    : m_root(root)
    , m_lastTimes(ProcText::cpuTimes(contentOf(QStringLiteral("proc/stat"))))
{
}

qint64 ProcSystemSource::installedMemory()
{
    return ProcText::installedMemory(contentOf(QStringLiteral("proc/meminfo")));
}

double ProcSystemSource::cpuLoad()
{
    return m_lastTimes.advanceTo(ProcText::cpuTimes(contentOf(QStringLiteral("proc/stat"))));
}

qint64 ProcSystemSource::processMemory()
{
    return ProcText::residentPages(contentOf(QStringLiteral("proc/self/statm"))) *
           sysconf(_SC_PAGESIZE);
}

QString ProcSystemSource::hardwareText()
{
    QString text = ProcText::processors(contentOf(QStringLiteral("proc/cpuinfo")));
    if (const qint64 memory = installedMemory())
        text += QStringLiteral("Capacity=%1\n").arg(memory);
    return text;
}

QString ProcSystemSource::graphicsText()
{
    const QString folder = QStringLiteral("sys/bus/pci/devices");
    const QByteArray database = pciDatabase();
    QString text;
    for (const QString& name :
         QDir(QDir(m_root).filePath(folder)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString device = folder + '/' + name;
        if (!contentOf(device + QStringLiteral("/class")).startsWith("0x03"))
            continue;
        text += QStringLiteral("Name=%1\n")
                    .arg(ProcText::pciName(database, contentOf(device + QStringLiteral("/vendor")),
                                           contentOf(device + QStringLiteral("/device"))));
    }
    return text;
}

QByteArray ProcSystemSource::contentOf(const QString& file) const
{
    QFile opened(QDir(m_root).filePath(file));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

QByteArray ProcSystemSource::pciDatabase() const
{
    // Where the distributions put it.
    const QByteArray database = contentOf(QStringLiteral("usr/share/misc/pci.ids"));
    return database.isEmpty() ? contentOf(QStringLiteral("usr/share/hwdata/pci.ids")) : database;
}

} // namespace norvel
