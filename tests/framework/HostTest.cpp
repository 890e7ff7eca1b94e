// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"
#include "support/OutputLines.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

namespace {

/// What a host process printed.
struct Output
{
    QStringList lines;
    QStringList errors;
};

/// Runs a host to its end, with this value of RVKP_TRACE; none when it is null.
Output runHost(const QStringList& arguments, const QString& trace = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("RVKP_TRACE");
    if (!trace.isNull())
        environment.insert("RVKP_TRACE", trace);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(FRAMEWORK_HOST, arguments);
    EXPECT_TRUE(process.waitForFinished(60000)) << process.errorString().toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    QStringList errors = outputLines(process.readAllStandardError());
    // A machine without a sound server is told about by Qt's plugin for it.
    errors.removeAll("PulseAudioService: pa_context_connect() failed");
    return {outputLines(process.readAllStandardOutput()), errors};
}

} // namespace

TEST(HostTest, NeedsNoQtApplicationForWhatIsNotPlayed)
{
    const Output output = runHost({"none", QString::fromStdString(SampleMedia::picture())});
    EXPECT_EQ(output.lines, (QStringList{"sprite 40 at 100", "no view, 110 30", "state 1",
                                         "position 40", "state 6"}));
    EXPECT_EQ(output.errors, QStringList());
}

TEST(HostTest, PlaysWithACoreApplication)
{
    const Output output = runHost({"core"});
    EXPECT_EQ(output.lines, (QStringList{"no view, 970 520", "state 1", "state 2", "state 4",
                                         "state 7", "position 100"}));
    EXPECT_EQ(output.errors, QStringList());
}

TEST(HostTest, DrawsInDevicePixels)
{
    EXPECT_EQ(runHost({"view"}).lines,
              (QStringList{"shown 400 x 200", "wanted 400 x 200", "seen 400 x 300 exact"}));
    qputenv("QT_SCALE_FACTOR", "2");
    const Output scaled = runHost({"view"});
    qputenv("QT_SCALE_FACTOR", "1.5");
    const Output scaledByHalves = runHost({"view"});
    qunsetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(scaled.lines,
              (QStringList{"shown 400 x 200", "wanted 800 x 400", "seen 800 x 600 exact"}));
    EXPECT_EQ(scaledByHalves.lines,
              (QStringList{"shown 400 x 200", "wanted 600 x 300", "seen 600 x 450 exact"}));
}

TEST(HostTest, PrintsEveryCallAsItHappensWhenTheEnvironmentAsksForIt)
{
    const Output output = runHost({"calls"}, "1");
    ASSERT_EQ(output.errors.size(), 4);
    const QRegularExpression creation(R"(^RvARFilterTrack::create\("a "b"", 1, 2\) -> ([0-9]+)$)");
    const auto match = creation.match(output.errors[0]);
    ASSERT_TRUE(match.hasMatch()) << output.errors[0].toStdString();
    EXPECT_EQ(output.errors[1], "RvITrack::setTrackID(" + match.captured(1) + ", 77)");
    EXPECT_EQ(output.errors[2], "RvARFilterTrack::setFloatParam(77, 3, 0.5)");
    EXPECT_EQ(output.errors[3], "RvITrack::setAlpha(77, 0.25)");
    EXPECT_EQ(output.lines, QStringList{"recorded 1"});
}

TEST(HostTest, PrintsNothingUnlessTheEnvironmentAsksForIt)
{
    for (const QString& trace : {QString(), QString("0"), QString("")}) {
        const Output output = runHost({"calls"}, trace);
        EXPECT_EQ(output.errors, QStringList());
        EXPECT_EQ(output.lines, QStringList{"recorded 1"});
    }
}
