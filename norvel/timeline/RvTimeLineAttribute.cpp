// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace norvel {

namespace {

QJsonArray recordsToJson(const std::vector<RvAttribute*>& records)
{
    QJsonArray array;
    for (const RvAttribute* record : records) {
        if (!record)
            continue;
        const std::string text = record->serialization();
        const auto latin1 = QString::fromLatin1(text.data(), static_cast<int>(text.size()));
        const QJsonDocument document = QJsonDocument::fromJson(latin1.toUtf8());
        if (document.isObject())
            array.append(document.object());
    }
    return array;
}

void deleteAll(const std::vector<RvAttribute*>& records)
{
    for (const RvAttribute* record : records)
        delete record;
}

} // namespace

RvTimeLineAttribute::~RvTimeLineAttribute()
{
    deleteAll(mainAttribs);
    deleteAll(mixAttribs);
}

std::string RvTimeLineAttribute::serialization() const
{
    const QJsonObject json{
        {"width", static_cast<double>(width)},
        {"height", static_cast<double>(height)},
        {"mainAttribs", recordsToJson(mainAttribs)},
        {"mixAttribs", recordsToJson(mixAttribs)},
    };
    return QJsonDocument(json).toJson().toStdString();
}

} // namespace norvel
