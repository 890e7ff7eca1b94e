// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvKpTimeLine.h>

int main()
{
    auto* timeline = qrvkp::RvKpTimeLine::create();
    auto* filter = qkpar::RvARFilterTrack::create("filter.ar", 0, 1000);
    const bool good = timeline->addMixTrack(filter) && timeline->getDuration() == 1000;
    filter->release();
    timeline->release();
    return good ? 0 : 1;
}
