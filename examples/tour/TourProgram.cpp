// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourProgram.h"

#include "tour/Tour.h"
#include "tour/TourOptions.h"

#include <rvkpcore/RvRef.h>

#include <QTemporaryDir>

#include <algorithm>
#include <ostream>

namespace {

/// Says on one line what is wrong, whatever a file's name has in it.
TourExit complain(std::ostream& err, std::string problem)
{
    std::replace_if(
        problem.begin(), problem.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    err << "norvel-tour: " << problem << '\n';
    return TourNotMade;
}

void printMedia(std::ostream& out, const char* kind, const std::vector<std::string>& paths)
{
    for (const std::string& path : paths)
        out << kind << "  " << path << '\n';
}

void printMedia(std::ostream& out, const TourMedia& media)
{
    printMedia(out, "video  ", media.videos);
    printMedia(out, "picture", media.pictures);
    printMedia(out, "sound  ", media.sounds);
    out << '\n';
}

/// Makes the tour with its media. All that it makes of the framework is gone when it returns.
bool makeTour(const TourMedia& media, const std::string& cacheFolder, TourReport& report,
              TourDocuments& documents, std::string& problem)
{
    qrvkp::RvKpApplication application;
    TourTimeline timeline(application, media);
    if (!timeline.build()) {
        problem = "the framework makes no timeline of the files";
        return false;
    }
    Tour tour(timeline, cacheFolder, report, documents);
    if (!tour.run(tourEdits(), branchEdits())) {
        problem = documents.problem();
        return false;
    }
    return true;
}

TourExit run(const TourOptions& options, std::ostream& out, std::ostream& err)
{
    const long long liveBefore = qrvkp::RvRef::liveCount();
    const QTemporaryDir folder;
    if (!folder.isValid())
        return complain(err,
                        "cannot make a temporary folder: " + folder.errorString().toStdString());
    std::string problem;
    const auto media = TourMedia::gather(options.files, folder.path(), problem);
    if (!media)
        return complain(err, problem);
    TourDocuments documents(options.jsonFolder);
    if (!documents.prepare())
        return complain(err, documents.problem());

    printMedia(out, *media);
    TourReport report(out, options.showCalls);
    report.printHeading();
    if (!makeTour(*media, folder.path().toStdString(), report, documents, problem))
        return complain(err, problem);
    report.printSummary(qrvkp::RvRef::liveCount() - liveBefore);
    return report.agreed() ? TourAgreed : TourDisagreed;
}

} // namespace

TourExit runTourProgram(const QStringList& arguments, std::ostream& out, std::ostream& err)
{
    const TourOptions options = TourOptions::parse(arguments);
    switch (options.action) {
    case TourOptions::Action::Tell:
        out << options.text;
        return TourAgreed;
    case TourOptions::Action::Complain:
        return complain(err, options.text);
    case TourOptions::Action::Run:
        break;
    }
    return run(options, out, err);
}
