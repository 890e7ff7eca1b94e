// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/private/ARCallText.h>

namespace qrvkp::calls {

std::string ArgumentText<QPointF>::of(const QPointF& point)
{
    return '(' + text(point.x()) + ", " + text(point.y()) + ')';
}

std::string ArgumentText<QImage>::of(const QImage& image)
{
    if (image.isNull())
        return "null";
    // A line of less than a byte for a pixel may end within a byte, whose other bits say nothing.
    const QImage pixels = image.depth() < 8 ? image.convertToFormat(QImage::Format_RGB32) : image;
    uint checksum = 0;
    const auto lineBytes =
        static_cast<std::size_t>(pixels.width()) * static_cast<std::size_t>(pixels.depth()) / 8;
    for (int y = 0; y < pixels.height(); ++y)
        checksum = qHashBits(pixels.constScanLine(y), lineBytes, checksum);
    return "image " + std::to_string(image.width()) + 'x' + std::to_string(image.height()) + " #" +
           std::to_string(checksum);
}

std::string
ArgumentText<qkpar::RvARLiquifyOperation>::of(const qkpar::RvARLiquifyOperation& operation)
{
    return '{' + text(operation.centerX) + ", " + text(operation.centerY) + ", " +
           text(operation.radius) + ", " + text(operation.strength) + ", " +
           ArgumentText<QPointF>::of(operation.movePoints[0]) + ", " +
           ArgumentText<QPointF>::of(operation.movePoints[1]) + ", " +
           text(operation.liquifyStyle) + '}';
}

std::string
ArgumentText<qkpar::RvARMakeupARGroupData>::of(const qkpar::RvARMakeupARGroupData& group)
{
    std::string entries;
    for (const auto& [key, value] : group.entries)
        entries += ", " + text(key) + ": " + text(value);
    return '{' + text(group.groupDataId) + ", " + text(group.groupName) + ", " +
           text(group.groupAlpha) + entries + '}';
}

std::string ArgumentText<qkpar::RvARFaceGroupData>::of(const qkpar::RvARFaceGroupData& face)
{
    return '{' + text(face.faceId) + ", " + text(face.suitAlpha) + ", " +
           ArgumentText<std::vector<qkpar::RvARMakeupARGroupData>>::of(face.groupDatas) + ", " +
           ArgumentText<std::vector<std::string>>::of(face.groupOrders) + '}';
}

} // namespace qrvkp::calls
