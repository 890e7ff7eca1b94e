// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

namespace norvel {

/// A file that is set aside, in its own folder, while another one is written in its place.
///
/// Its name is then the old one with `.kept-` and 32 random hexadecimal digits behind it: no other
/// file has that name, and a person finds the file where a process ends before it is put back. The
/// object owns nothing: the file stays aside until it is put back or removed.
class KeptFile
{
public:
    /// Sets a file aside with one rename. A symbolic link stays; the file that it leads to is set
    /// aside. Returns none, and changes nothing, unless this is a regular file that may be written
    /// and renamed.
    static std::optional<KeptFile> setAside(const QString& path);

    /// The path that was given.
    const QString& path() const { return m_path; }

    /// Puts the file back with one rename, over what is in its place. Returns false where the
    /// system refuses that; the file is then still aside.
    bool putBack() const;
    /// Deletes the file that is aside.
    void remove() const;

private:
    KeptFile(QString path, QString place, QString aside);

    QString m_path;
    QString m_place; ///< where the file was, links followed
    QString m_aside; ///< where it is now
};

} // namespace norvel
