// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/ValueText.h"

#include <QBuffer>
#include <QLocale>

std::string ValueText::of(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest).toStdString();
}

std::string ValueText::of(const QPointF& value)
{
    return of(std::make_pair(value.x(), value.y()));
}

std::string ValueText::of(const QImage& value)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    value.save(&buffer, "PNG");
    return bytes.toBase64().toStdString();
}

std::string ValueText::of(const qkpar::RvARMakeupARGroupData& value)
{
    return of(value.groupDataId) + ' ' + of(value.groupName) + ' ' + of(value.groupAlpha) + ' ' +
           of(value.entries);
}

std::string ValueText::of(const qkpar::RvARFaceGroupData& value)
{
    return of(value.faceId) + ' ' + of(value.suitAlpha) + ' ' + of(value.groupDatas) + ' ' +
           of(value.groupOrders);
}
