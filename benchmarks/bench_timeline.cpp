// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "AllocationCount.h"
#include "BenchTimeline.h"
#include "RatioReporter.h"

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/private/AttributeIndex.h>
#include <norvel/trace/RvEditorTrace.h>

#include <algorithm>
#include <functional>

using norvel::RvAttribute;
using norvel::RvAttributeUtility;
using norvel::RvTimeLineAttribute;

namespace {

using Description = std::unique_ptr<RvTimeLineAttribute>;

std::vector<RvAttribute*>& records(RvTimeLineAttribute& description, Line line)
{
    return line == Line::Main ? description.mainAttribs : description.mixAttribs;
}

int trackCount(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

/// Time per track, and how the time grows with the number of tracks.
void report(benchmark::State& state, std::int64_t passesPerIteration = 1)
{
    state.SetItemsProcessed(state.iterations() * passesPerIteration * state.range(0));
    state.SetComplexityN(state.range(0));
}

void capture(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(bench.capture());
    report(state);
    const std::size_t before = allocatedBytes();
    const Description description = bench.capture();
    state.counters["bytes/record"] =
        static_cast<double>(allocatedBytes() - before) / static_cast<double>(state.range(0));
}

/// Every record of a description against a list, through an index made once.
void compareIndexed(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    const Description one = bench.capture();
    const Description other = bench.capture();
    for (auto _ : state) {
        norvel::AttributeIndex index(records(*other, line));
        for (const RvAttribute* record : records(*one, line))
            benchmark::DoNotOptimize(index.compare(record));
    }
    report(state);
}

/// The record in the middle against a list by a walk: what each record would cost without the
/// index.
void compareWalked(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    const Description one = bench.capture();
    const Description other = bench.capture();
    const auto& list = records(*other, line);
    const RvAttribute* record = records(*one, line)[list.size() / 2];
    for (auto _ : state)
        benchmark::DoNotOptimize(norvel::compareWithList(record, list));
    state.SetItemsProcessed(state.iterations());
    state.SetComplexityN(state.range(0));
}

/// Goes from one description to the other and back, one of the two an iteration.
void reconcile(benchmark::State& state, BenchTimeline& bench, const RvTimeLineAttribute& here,
               const RvTimeLineAttribute& there)
{
    const RvTimeLineAttribute* from = &here;
    const RvTimeLineAttribute* to = &there;
    for (auto _ : state) {
        RvAttributeUtility::updateTimeLine(bench.timeline(), from, to);
        std::swap(from, to);
    }
    report(state);
}

using Edit = std::function<void(std::vector<RvAttribute*>&)>;

void reconcileWith(benchmark::State& state, Line line, const Edit& edit)
{
    BenchTimeline bench(line, trackCount(state));
    const Description here = bench.capture();
    const Description there = bench.capture();
    edit(records(*there, line));
    reconcile(state, bench, *here, *there);
}

void updateNothing(benchmark::State& state, Line line)
{
    reconcileWith(state, line, [](auto&) {});
}

void updateOne(benchmark::State& state, Line line)
{
    reconcileWith(state, line, [](auto& list) { list[list.size() / 2]->alpha = 0.25F; });
}

/// The main line in reverse order; mix tracks at another time.
void updateAllMoved(benchmark::State& state, Line line)
{
    reconcileWith(state, line, [line](auto& list) {
        if (line == Line::Main)
            std::reverse(list.begin(), list.end());
        else
            for (RvAttribute* record : list)
                record->startTime += 1000;
    });
}

/// All tracks removed, and as many others created.
void updateAllNew(benchmark::State& state, Line line)
{
    reconcileWith(state, line, [](auto& list) {
        for (RvAttribute* record : list)
            record->uuid += 1000000000;
    });
}

/// The history of a timeline, freed with its descriptions.
class BenchTrace
{
public:
    explicit BenchTrace(BenchTimeline& bench)
        : m_player(bench.application().getPlayer())
        , m_trace(norvel::RvEditorTrace::create(&bench.application()))
    {
        m_trace->initTrace();
    }
    ~BenchTrace()
    {
        m_player->setTimeLine(nullptr);
        m_trace->initTrace();
    }
    BenchTrace(const BenchTrace&) = delete;
    BenchTrace& operator=(const BenchTrace&) = delete;
    norvel::RvEditorTrace* operator->() { return m_trace.get(); }

private:
    qrvkp::RvKpPlayer* m_player;
    std::unique_ptr<norvel::RvEditorTrace> m_trace;
};

void recordUndoRedo(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    BenchTrace trace(bench);
    for (auto _ : state) {
        bench.changeOneTrack();
        trace->recordStatus();
        trace->undo();
        trace->redo();
        trace->undo(); // the next record then replaces this one: the history does not grow
    }
    report(state);
    const std::size_t before = allocatedBytes();
    trace->redo();
    trace->recordStatus();
    state.counters["bytes/entry"] = static_cast<double>(allocatedBytes() - before);
}

/// One step of a history whose two entries differ in one track.
void undoOne(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    BenchTrace trace(bench);
    bench.changeOneTrack();
    trace->recordStatus();
    bool undone = false;
    for (auto _ : state) {
        undone ? trace->redo() : trace->undo();
        undone = !undone;
    }
    report(state);
}

void recordJson(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    const Description description = bench.capture();
    for (auto _ : state) {
        for (const RvAttribute* record : records(*description, line))
            benchmark::DoNotOptimize(record->serialization());
    }
    report(state);
}

void documentJson(benchmark::State& state, Line line)
{
    BenchTimeline bench(line, trackCount(state));
    const Description description = bench.capture();
    for (auto _ : state)
        benchmark::DoNotOptimize(description->serialization());
    report(state);
}

using Benchmark = void (*)(benchmark::State&, Line);

void registerBoth(const std::string& name, Benchmark function, benchmark::BigO complexity)
{
    for (const Line line : {Line::Main, Line::Mix}) {
        benchmark::RegisterBenchmark((name + (line == Line::Main ? "/main" : "/mix")).c_str(),
                                     [=](benchmark::State& state) { function(state, line); })
            ->RangeMultiplier(10)
            ->Range(100, 100000)
            ->Unit(benchmark::kMillisecond)
            ->Complexity(complexity);
    }
}

void registerAll()
{
    registerBoth("capture", capture, benchmark::oN);
    registerBoth("compare_all_indexed", compareIndexed, benchmark::oN);
    registerBoth("compare_one_walked", compareWalked, benchmark::oN);
    registerBoth("update_nothing", updateNothing, benchmark::oN);
    registerBoth("update_one", updateOne, benchmark::oN);
    registerBoth("update_all_moved", updateAllMoved, benchmark::oN);
    registerBoth("update_all_new", updateAllNew, benchmark::oN);
    registerBoth("record_undo_redo_undo", recordUndoRedo, benchmark::oN);
    registerBoth("undo_one", undoOne, benchmark::oN);
    registerBoth("json_records", recordJson, benchmark::oN);
    registerBoth("json_document", documentJson, benchmark::oN);
}

/// The promises on speed, each as a ratio of two figures of this run.
bool printPromises(const RatioReporter& reporter)
{
    std::printf("\nRatios of time per track\n");
    bool kept = true;
    for (const std::string line : {"main", "mix"}) {
        for (const std::string name :
             {"update_nothing", "update_one", "update_all_moved", "update_all_new"}) {
            const std::string run = name + "/" + line;
            kept &= reporter.printRatio(run + ": 100,000 tracks against 1,000", run + "/100000",
                                        run + "/1000", 2.0);
        }
        kept &= reporter.printRatio(
            "undo of one changed " + line + " track among 10,000 against their capture",
            "undo_one/" + line + "/10000", "capture/" + line + "/10000", 2.0);
    }
    return kept;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, registerAll, printPromises);
}
