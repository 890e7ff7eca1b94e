// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/attribute/RecordJson.h>

#include <QJsonDocument>

namespace norvel {

QString jsonText(const std::string& utf8)
{
    // Qt takes a U+FEFF at the start for a byte order mark and drops it: something else goes first.
    if (utf8.compare(0, 3, "\xEF\xBB\xBF") == 0)
        return QString::fromStdString(' ' + utf8).mid(1);
    return QString::fromStdString(utf8);
}

QJsonArray jsonTexts(const std::vector<std::string>& utf8)
{
    QJsonArray texts;
    for (const std::string& text : utf8)
        texts.append(jsonText(text));
    return texts;
}

QString jsonDecimal(std::int64_t number)
{
    return QString::number(static_cast<qint64>(number));
}

QString jsonDecimal(std::uint64_t number)
{
    return QString::number(static_cast<quint64>(number));
}

QJsonArray jsonDecimals(const std::vector<std::uint64_t>& numbers)
{
    QJsonArray decimals;
    for (const std::uint64_t number : numbers)
        decimals.append(jsonDecimal(number));
    return decimals;
}

double jsonNumber(std::int64_t number)
{
    // A QJsonValue of a 64-bit integer may keep more digits than a reader of JSON numbers has.
    return static_cast<double>(number);
}

QString jsonFileTime(float milliseconds)
{
    return QString::number(static_cast<double>(milliseconds), 'g', 6);
}

std::string jsonDocument(const QJsonObject& json)
{
    return QJsonDocument(json).toJson().toStdString();
}

} // namespace norvel
