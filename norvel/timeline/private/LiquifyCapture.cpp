// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/timeline/private/LiquifyCapture.h>

#include <norvel/timeline/RvAttributeUtility.h>

#include <kparextension/RvARLiquifyTrack.h>

#include <QDir>
#include <QStandardPaths>

namespace norvel {

namespace {

/// The folder of the undo cache with this name, made when it is not there.
QString makeCacheFolder(qint64 name)
{
    std::string& root = RvAttributeUtility::_sCacheDir;
    if (root.empty())
        root = QStandardPaths::writableLocation(QStandardPaths::CacheLocation).toStdString();
    const QString folder =
        QString::fromStdString(root) + QStringLiteral("/Norvel/Undo/") + QString::number(name);
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    return folder;
}

} // namespace

void captureStrokes(RvARLiquifyAttribute& record, qkpar::RvARLiquifyTrack& track,
                    qint64 milliseconds)
{
    const qkpar::RvARLiquifyOperation operation = track.getAppendOperation();
    record.centerX = operation.centerX;
    record.centerY = operation.centerY;
    record.radius = operation.radius;
    record.strength = operation.strength;
    record.movePoints = operation.movePoints;
    record.liquifyStyle = operation.liquifyStyle;

    const QString folder = makeCacheFolder(milliseconds);
    track.confirmCurrentLiquify();
    if (track.saveLiquifyConfig(folder.toLocal8Bit().toStdString())) {
        record.effectPath = folder;
        RvAttributeUtility::_sCurrentCacheLiquefyDir = folder.toStdString();
    }
}

} // namespace norvel
