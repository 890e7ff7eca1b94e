// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/private/LiquifyFile.h>

#include <QDataStream>
#include <QDir>
#include <QFile>

namespace qkpar {

namespace {

// A binary stream and not JSON: a stroke that is not finite must come back as it was.
constexpr quint32 magic = 0x524c5146; // "RLQF"
constexpr qint32 fileVersion = 1;

/// Whether a folder can have this name at all.
bool isFolderName(const std::string& folder)
{
    return !folder.empty() && folder.find('\0') == std::string::npos;
}

/// Under the track's id: tracks that are saved to one folder do not get each other's strokes.
QString filePath(const std::string& folder, std::uint64_t id)
{
    return QDir(QString::fromLocal8Bit(folder.data(), static_cast<int>(folder.size())))
        .filePath(QStringLiteral("liquify-%1.dat").arg(id));
}

QDataStream& operator<<(QDataStream& stream, const RvARLiquifyOperation& stroke)
{
    stream << stroke.centerX << stroke.centerY << static_cast<double>(stroke.radius)
           << static_cast<double>(stroke.strength) << stroke.movePoints[0] << stroke.movePoints[1]
           << static_cast<qint32>(stroke.liquifyStyle);
    return stream;
}

QDataStream& operator>>(QDataStream& stream, RvARLiquifyOperation& stroke)
{
    double radius = 0.0;
    double strength = 0.0;
    qint32 style = 0;
    stream >> stroke.centerX >> stroke.centerY >> radius >> strength >> stroke.movePoints[0] >>
        stroke.movePoints[1] >> style;
    stroke.radius = static_cast<float>(radius);
    stroke.strength = static_cast<float>(strength);
    stroke.liquifyStyle = style;
    return stream;
}

bool writeStrokes(QFile& file, const LiquifyStrokes& strokes)
{
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << magic << fileVersion << strokes.last
           << static_cast<quint32>(strokes.confirmed.size());
    for (const RvARLiquifyOperation& stroke : strokes.confirmed)
        stream << stroke;
    // That the last bytes found no room is told by the flush alone.
    const bool written = stream.status() == QDataStream::Ok && file.flush();
    file.close();
    return written;
}

} // namespace

bool saveStrokes(const std::string& folder, std::uint64_t id, const LiquifyStrokes& strokes)
{
    if (!isFolderName(folder))
        return false;
    const QString path = filePath(folder, id);
    // Not QSaveFile: it waits for the disk, and a cache that is written with every edit need not
    // outlive a power cut.
    QFile file(path + QStringLiteral(".new"));
    if (writeStrokes(file, strokes)) {
        QFile::remove(path);
        if (file.rename(path))
            return true;
    }
    file.remove();
    return false;
}

std::optional<LiquifyStrokes> loadStrokes(const std::string& folder, std::uint64_t id)
{
    if (!isFolderName(folder))
        return std::nullopt;
    QFile file(filePath(folder, id));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 foundMagic = 0;
    qint32 foundVersion = 0;
    quint32 count = 0;
    LiquifyStrokes strokes;
    stream >> foundMagic >> foundVersion >> strokes.last >> count;
    if (foundMagic != magic || foundVersion != fileVersion)
        return std::nullopt;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        stream >> strokes.confirmed.emplace_back();
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return std::nullopt;
    return strokes;
}

} // namespace qkpar
