// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QTranslator>

/// Translates every text to its context and itself.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return QString("%1:%2").arg(context, text);
    }
};
