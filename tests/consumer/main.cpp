// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/norvel.h>

#include <kparextension/RvARBeautyTrack.h>
#include <rvkpcore/RvKpApplication.h>

#include <QCoreApplication>

#include <cstdio>
#include <memory>

#ifdef NORVEL_STATIC_DEFINE
#error "the installed library must not ask its users to build as its tests do"
#endif

namespace {

/// Tells of a step that did not give what it should.
bool holds(bool condition, const char* what)
{
    if (!condition)
        std::fprintf(stderr, "not so: %s\n", what);
    return condition;
}

/// Edits a track under the eyes of a history, goes back and forth, and prints.
bool editAndUndo(qrvkp::RvKpApplication& application, qkpar::RvARBeautyTrack& beauty)
{
    const std::unique_ptr<norvel::RvEditorTrace> trace(norvel::RvEditorTrace::create(&application));
    bool good = holds(trace->initTrace(), "the history begins");
    beauty.setAlpha(0.5F);
    good &= holds(trace->recordStatus(), "the edit is recorded");
    trace->undo();
    good &= holds(beauty.getAlpha() == 1.0F, "undo brings the alpha back");
    trace->redo();
    good &= holds(beauty.getAlpha() == 0.5F, "redo brings it forth");
    trace->printStatus();
    application.getPlayer()->setTimeLine(nullptr);
    trace->initTrace();
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication qtApplication(argc, argv);
    qrvkp::RvKpApplication application;
    auto* timeline = qrvkp::RvKpTimeLine::create();
    auto* beauty = qkpar::RvARBeautyTrack::create("beauty.ar", 0, 1000);
    timeline->addMixTrack(beauty);
    application.getPlayer()->setTimeLine(timeline);

    const bool good = editAndUndo(application, *beauty);
    beauty->release();
    timeline->release();
    const bool tidy = holds(qrvkp::RvRef::liveCount() == 0, "nothing is left");
    std::printf("norvel %s\n", NORVEL_VERSION);
    return good && tidy ? 0 : 1;
}
