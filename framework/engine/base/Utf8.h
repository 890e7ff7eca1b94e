// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string>

namespace rvengine {

/// UTF-8 as a QString. QString::fromStdString takes a U+FEFF at the start for a byte order mark and
/// drops it, which makes another file of a relative path.
inline QString textOf(const std::string& utf8)
{
    return QString::fromStdString('.' + utf8).mid(1);
}

} // namespace rvengine
