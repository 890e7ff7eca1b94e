// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaMethod>
#include <QMetaObject>

#include <string>
#include <vector>

/// The names of a class's own signals and slots, by their index.
inline std::vector<std::string> ownMethods(const QMetaObject& metaObject)
{
    std::vector<std::string> methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        methods.push_back(metaObject.method(i).methodSignature().toStdString());
    return methods;
}
