// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tour/TourRun.h"

#include <gtest/gtest.h>

#include <QJsonObject>
#include <QTemporaryDir>

/// The built program, run in processes of its own.
class TourProgramTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(name); }

    /// Fails the test unless every step of the run agreed and nothing was left alive.
    static void expectAgreement(const TourRun& run);
    /// The document that a run wrote for a step.
    static QJsonObject document(const QString& folder, int step);

    const QTemporaryDir m_folder;
};
