// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMediaServiceProviderPlugin>

/// How Qt Multimedia finds the `FakeBackend`.
class FakePlugin : public QMediaServiceProviderPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.qt.mediaserviceproviderfactory/5.0" FILE
                          "FakePlugin.json")

public:
    QMediaService* create(const QString& key) override;
    void release(QMediaService* service) override;
};
