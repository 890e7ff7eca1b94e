// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourProgramFixture.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

void TourProgramTest::expectAgreement(const TourRun& run)
{
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.complaint, "");
    EXPECT_GE(run.count("edit"), 20);
    EXPECT_EQ(run.steps("same").size(), run.lines().size()) << run.output;
    EXPECT_NE(run.summary().find("; 0 framework objects left alive"), std::string::npos)
        << run.summary();
}

QJsonObject TourProgramTest::document(const QString& folder, int step)
{
    QFile file(QDir(folder).filePath(QString("step-%1.json").arg(step, 3, 10, QChar('0'))));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(file.readAll(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return json.object();
}
