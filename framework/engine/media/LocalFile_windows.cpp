// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <engine/base/Utf8.h>

#include <string>
#include <string_view>

#include <qt_windows.h>

namespace fs = std::filesystem;

namespace rvengine {

namespace {

/// In front of a name that the system takes as it stands, which may be as long as it likes.
constexpr std::wstring_view literal = L"\\\\?\\";
constexpr std::wstring_view literalShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view device = L"\\\\.\\";
constexpr std::wstring_view share = L"\\\\";

bool beginsWith(const std::wstring& text, std::wstring_view beginning)
{
    return text.size() >= beginning.size() &&
           _wcsnicmp(text.c_str(), beginning.data(), beginning.size()) == 0;
}

std::wstring prefixed(std::wstring_view beginning, std::wstring_view end)
{
    return std::wstring(beginning).append(end);
}

/// A name without the mark of a literal one.
std::wstring plainName(const std::wstring& name)
{
    if (beginsWith(name, literalShare))
        return prefixed(share, name.substr(literalShare.size()));
    return beginsWith(name, literal) ? name.substr(literal.size()) : name;
}

/// An absolute name as a literal one. Others end after 259 characters.
std::wstring literalName(const fs::path& absolute)
{
    const std::wstring& name = absolute.native();
    return beginsWith(name, share) ? prefixed(literalShare, name.substr(share.size()))
                                   : prefixed(literal, name);
}

/// The absolute name, or an empty one when the system knows none.
std::wstring fullName(const std::wstring& name)
{
    constexpr DWORD longest = 1 << 15;
    std::wstring full(longest, L'\0');
    const DWORD length = GetFullPathNameW(name.c_str(), longest, full.data(), nullptr);
    full.resize(length < longest ? length : 0);
    return full;
}

std::uint64_t joined(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

} // namespace

// Neither the standard library of GCC nor Qt knows all names of the system: the one takes a share
// for a folder of the current drive, the other a literal name of a share for a relative one.
std::optional<fs::path> absolutePath(const std::string& path)
{
    const std::wstring name = fs::u8path(path).native();
    const std::wstring plain = plainName(name);
    const std::wstring full = fullName(plain);
    // A literal name may be one that stands for something else, or nothing, without its mark.
    if (full.empty() || beginsWith(full, device) || (plain != name && plain != full))
        return std::nullopt;
    return full;
}

bool openForReading(QFile& file, const fs::path& path, QIODevice::OpenMode mode)
{
    file.setFileName(textOf(path.u8string()));
    return file.open(mode);
}

bool canBeNamed(const QString& /*name*/)
{
    return true;
}

bool isRegularFile(const fs::path& path)
{
    const DWORD attributes = GetFileAttributesW(literalName(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

bool mayRead(const fs::path& path)
{
    QFile file;
    return openForReading(file, path);
}

// The standard library of GCC knows whole seconds only, the system knows 100 ns.
std::optional<FileStamp> stampOf(const fs::path& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(literalName(path).c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return FileStamp{joined(data.nFileSizeHigh, data.nFileSizeLow),
                     static_cast<std::int64_t>(joined(data.ftLastWriteTime.dwHighDateTime,
                                                      data.ftLastWriteTime.dwLowDateTime))};
}

} // namespace rvengine
