// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourOptions.h"

#include <norvel/global.h>

#include <QCommandLineParser>

namespace {

const QCommandLineOption& jsonOption()
{
    static const QCommandLineOption option(
        QStringLiteral("json"),
        QStringLiteral("Write the description of the timeline after every step to "
                       "<dir>/step-001.json and so on; the folder is made."),
        QStringLiteral("dir"));
    return option;
}

const QCommandLineOption& callsOption()
{
    static const QCommandLineOption option(
        QStringLiteral("calls"),
        QStringLiteral("Print the framework calls of every step below its line."));
    return option;
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Edits a timeline, undoes and redoes the edits, and checks after every step that the\n"
        "timeline is what the edit history holds.\n\n"
        "A line tells of each step: its number, edit, undo or redo, what was edited, the number\n"
        "of framework calls that it took, the milliseconds (for an edit with its recording), and\n"
        "whether the timeline is the same as the history says.\n\n"
        "Exit code: 0 when every step agreed and no framework object is left alive, 1 when not,\n"
        "2 when the tour could not be made."));
    parser.addPositionalArgument(
        QStringLiteral("files"),
        QStringLiteral("Videos, pictures and sounds to edit. What is missing of the three is made "
                       "with ffmpeg in a temporary folder."),
        QStringLiteral("[files...]"));
    parser.addOption(jsonOption());
    parser.addOption(callsOption());
}

TourOptions only(TourOptions::Action action, const QString& text)
{
    TourOptions options;
    options.action = action;
    options.text = text.toStdString();
    return options;
}

} // namespace

TourOptions TourOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments))
        return only(Action::Complain, parser.errorText());
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all")))
        return only(Action::Tell, parser.helpText());
    if (parser.isSet(version))
        return only(Action::Tell, QStringLiteral("norvel-tour " NORVEL_VERSION "\n"));

    TourOptions options;
    for (const QString& file : parser.positionalArguments())
        options.files.push_back(file.toStdString());
    options.jsonFolder = parser.value(jsonOption()).toStdString();
    options.showCalls = parser.isSet(callsOption());
    if (parser.isSet(jsonOption()) && options.jsonFolder.empty())
        return only(Action::Complain, QStringLiteral("Missing value after '--json'."));
    return options;
}
