// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <functional>
#include <string>

/// Media files that several tests read, made when they are first asked for, once in a process.
namespace sharedMedia {

/// Where tests put files of their own that may stay until the process ends.
QString folder();

/// The path of a file of that name in `folder`, which `make` makes the first time.
std::string once(const QString& name, const std::function<std::string()>& make);

/// 100 numbered pictures, 320 x 180, 25 a second.
const std::string& numbered();

/// Five seconds of 440 Hz at half the full level, one channel of 48 kHz.
const std::string& tone();

} // namespace sharedMedia
