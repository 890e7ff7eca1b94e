// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

namespace norvel {

// How the values of a record are written as JSON. Floats and doubles need no help: they are JSON
// numbers.

/// UTF-8 as JSON text; bytes that are no UTF-8 become U+FFFD.
QString jsonText(const std::string& utf8);
QJsonArray jsonTexts(const std::vector<std::string>& utf8);

/// An integer as its decimal digits in a JSON string, which keeps all 64 bits.
QString jsonDecimal(std::int64_t number);
QString jsonDecimal(std::uint64_t number);
QJsonArray jsonDecimals(const std::vector<std::uint64_t>& numbers);

/// A 64-bit integer as a JSON number, that is as the nearest double: exact up to 2^53.
double jsonNumber(std::int64_t number);

/// A position in a media file as JSON text with at most six significant digits.
QString jsonFileTime(float milliseconds);

/// \p json as an indented document in UTF-8.
std::string jsonDocument(const QJsonObject& json);

} // namespace norvel
