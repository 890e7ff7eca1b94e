// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "AllocationCount.h"
#include "BenchEngine.h"
#include "RatioReporter.h"

#include <engine/Compositor.h>
#include <engine/Exporter.h>
#include <engine/MltRuntime.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QGraphicsView>
#include <QTemporaryDir>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>

using namespace rvengine;

namespace {

constexpr int videoFrames = 290; ///< a little less than the videos have
constexpr int frameMs = 34;

constexpr QSize hd(1280, 720);
constexpr QSize fullHd(1920, 1080);

std::string sizeName(QSize size)
{
    return std::to_string(size.height()) + "p";
}

/// One picture after the other, as they are played.
void composeScene(benchmark::State& state, const Scene& scene)
{
    Compositor compositor(makePictureSource());
    const QSize size = scene.canvas.toSize();
    int frame = 0;
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        compositor.compose(scene, frame++ * frameMs, size);
    for (auto _ : state) {
        const QImage picture = compositor.compose(scene, frame * frameMs, size);
        if (picture.isNull())
            state.SkipWithError("no picture");
        frame = (frame + 1) % videoFrames;
    }
    state.SetItemsProcessed(state.iterations());
}

void renderByMlt(benchmark::State& state, BenchScene kind, QSize canvas)
{
    MltScene scene(kind, canvas);
    if (!scene.problem().empty()) {
        state.SkipWithError(scene.problem().c_str());
        return;
    }
    int frame = 0;
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        scene.render(frame++);
    for (auto _ : state) {
        if (!scene.render(frame))
            state.SkipWithError("no picture");
        frame = (frame + 1) % videoFrames;
    }
    state.SetItemsProcessed(state.iterations());
}

void composeWithAbsentLayers(benchmark::State& state, int count)
{
    Scene scene = benchScene(BenchScene::Main, hd);
    addAbsentLayers(scene, count);
    composeScene(state, scene);
}

/// A host that plays 1,000 clips, and what it does with them.
class PlayingHost
{
public:
    PlayingHost()
    {
        auto* const player = m_application.getPlayer();
        for (int i = 0; i < clips; ++i) {
            auto* const track = qrvkp::RvKpTrack::create(BenchMedia::video(hd), 0, 1000, 0);
            auto* const group = qrvkp::RvKpGroup::create(1000);
            group->addTrack(track);
            m_timeline->pushBackGroup(group);
            track->release();
            group->release();
        }
        m_application.getGraphicsView()->resize(640, 360);
        player->setTimeLine(m_timeline);
        player->prepareAsync();
        player->start();
        while (!player->isPlaying())
            QCoreApplication::processEvents();
    }

    ~PlayingHost()
    {
        m_application.getPlayer()->setTimeLine(nullptr);
        m_timeline->release();
    }

    /// Moves the last group somewhere else, and lets the player have it.
    void move(int round)
    {
        const auto groups = m_timeline->getGroups();
        m_timeline->changeGroupPosition(groups.back(), round * 7 % clips);
        for (auto* const group : groups)
            group->release();
        QCoreApplication::processEvents();
    }

    static constexpr int clips = 1000;

private:
    qrvkp::RvKpApplication m_application;
    qrvkp::RvKpTimeLine* const m_timeline = qrvkp::RvKpTimeLine::create();
};

void moveOneClip(benchmark::State& state)
{
    PlayingHost host;
    int round = 0;
    for (auto _ : state)
        host.move(round++);
    state.SetItemsProcessed(state.iterations());
}

void rebuildPlaylist(benchmark::State& state)
{
    startMltRuntime();
    Mlt::Profile profile;
    Mlt::Producer file(profile, BenchMedia::video(hd).c_str());
    if (!file.is_valid()) {
        state.SkipWithError("MLT cannot open the file");
        return;
    }
    for (auto _ : state)
        rebuildMltPlaylist(profile, file, PlayingHost::clips);
    state.SetItemsProcessed(state.iterations());
}

/// What the renderer holds after it has shown every clip.
void holdManyClips(benchmark::State& state)
{
    const auto clips = static_cast<int>(state.range(0));
    for (auto _ : state) {
        const std::size_t before = heapBytes();
        const Scene scene = manyClips(clips, hd);
        Compositor compositor(makePictureSource());
        for (const PlacedLayer& clip : scene.main)
            benchmark::DoNotOptimize(compositor.compose(scene, clip.start, hd));
        state.counters["bytes"] = static_cast<double>(heapBytes() - before);
    }
    state.SetItemsProcessed(state.iterations() * clips);
}

void waitForEnd(std::unique_ptr<Exporter>& exporter, std::mutex& mutex,
                std::condition_variable& told)
{
    std::unique_lock lock(mutex);
    while (exporter->news().state == ExportState::Running)
        told.wait_for(lock, std::chrono::milliseconds(50));
}

/// An item is a second of the scene, so that the time for it is a share of real time.
void exportScene(benchmark::State& state, QSize canvas)
{
    const auto scene = std::make_shared<const Scene>(benchScene(BenchScene::Overlay, canvas));
    const QTemporaryDir folder;
    for (auto _ : state) {
        std::mutex mutex;
        std::condition_variable told;
        auto exporter = startExport(scene, folder.filePath("out.mp4").toStdString(), {},
                                    [&] { told.notify_all(); });
        waitForEnd(exporter, mutex, told);
        if (exporter->news().state != ExportState::Finished)
            state.SkipWithError("not saved");
    }
    state.SetItemsProcessed(state.iterations() * scene->duration / 1000);
}

void realTime(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(1.0);
    state.SetItemsProcessed(state.iterations());
}

const std::vector<std::pair<BenchScene, std::string>> scenes{
    {BenchScene::Main, "main"},
    {BenchScene::Overlay, "overlay"},
    {BenchScene::MattedOverlay, "matted"},
};

void registerAll()
{
    for (const QSize canvas : {hd, fullHd}) {
        for (const auto& [kind, name] : scenes) {
            const std::string run = name + "/" + sizeName(canvas);
            benchmark::RegisterBenchmark(("frame/" + run).c_str(),
                                         [kind = kind, canvas](benchmark::State& state) {
                                             composeScene(state, benchScene(kind, canvas));
                                         })
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark(("frame_by_mlt/" + run).c_str(),
                                         [kind = kind, canvas](benchmark::State& state) {
                                             renderByMlt(state, kind, canvas);
                                         })
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
    for (const int count : {0, 200})
        benchmark::RegisterBenchmark(
            ("absent_layers/" + std::to_string(count)).c_str(),
            [count](benchmark::State& state) { composeWithAbsentLayers(state, count); })
            ->UseRealTime()
            ->Repetitions(5)
            ->ReportAggregatesOnly()
            ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("move_one_of_1000", moveOneClip)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("rebuild_by_mlt_1000", rebuildPlaylist)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("clips_of_one_file", holdManyClips)
        ->Arg(1)
        ->Arg(1000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    for (const QSize canvas : {hd, fullHd})
        benchmark::RegisterBenchmark(
            ("save/" + sizeName(canvas)).c_str(),
            [canvas](benchmark::State& state) { exportScene(state, canvas); })
            ->Iterations(1)
            ->UseRealTime()
            ->Unit(benchmark::kSecond);
    benchmark::RegisterBenchmark("real_time", realTime)->Iterations(1)->UseManualTime();
}

/// What the name of a run has that was measured in real time.
const std::string real = "/real_time";

/// The promises on speed, each as a ratio of two figures of this run.
bool printPromises(const RatioReporter& reporter)
{
    std::printf("\nRatios of time\n");
    bool kept = true;
    for (const QSize canvas : {hd, fullHd}) {
        for (const auto& [kind, name] : scenes) {
            const std::string run = name + "/" + sizeName(canvas);
            kept &=
                reporter.printRatio(run + " against MLT's own transitions", "frame/" + run + real,
                                    "frame_by_mlt/" + run + real, 1.0 / 1.3);
        }
    }
    kept &= reporter.printRatio("200 layers of which none is seen against none",
                                "absent_layers/200/repeats:5" + real,
                                "absent_layers/0/repeats:5" + real, 1.05);
    kept &= reporter.printRatio("a move among 1,000 clips while playing against a new playlist",
                                "move_one_of_1000" + real, "rebuild_by_mlt_1000" + real, 0.01);
    for (const QSize canvas : {hd, fullHd})
        kept &= reporter.printRatio("saving, main and overlay, " + sizeName(canvas) +
                                        ", against real time",
                                    "save/" + sizeName(canvas) + "/iterations:1" + real,
                                    "real_time/iterations:1/manual_time", 1.0);
    return kept;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, registerAll, printPromises);
}
