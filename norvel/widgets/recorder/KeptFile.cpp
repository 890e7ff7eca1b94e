// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/KeptFile.h>

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

/// Renames a file in one step, over one that has the name already; `QFile` would copy it where that
/// is not possible.
bool rename(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(std::filesystem::u8path(from.toStdString()),
                            std::filesystem::u8path(to.toStdString()), error);
    return !error;
}

} // namespace

norvel::KeptFile::KeptFile(QString path, QString place, QString aside)
    : m_path(std::move(path))
    , m_place(std::move(place))
    , m_aside(std::move(aside))
{
}

std::optional<norvel::KeptFile> norvel::KeptFile::setAside(const QString& path)
{
    const QFileInfo file(path);
    // A file that may not be written may well be renamed: it would make way for a recording that
    // was to fail.
    if (path.isEmpty() || !file.isFile() || !file.isWritable())
        return std::nullopt;
    const QString place = file.canonicalFilePath();
    const QString aside =
        place + QStringLiteral(".kept-") + QUuid::createUuid().toString(QUuid::Id128);
    if (!rename(place, aside))
        return std::nullopt;
    return KeptFile(path, place, aside);
}

bool norvel::KeptFile::putBack() const
{
    return rename(m_aside, m_place);
}

void norvel::KeptFile::remove() const
{
    QFile::remove(m_aside);
}
