// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "AllocationCount.h"
#include "BareLoop.h"
#include "BareReader.h"
#include "BenchMedia.h"
#include "BenchScene.h"
#include "FfmpegProgram.h"
#include "ItemCount.h"
#include "MltPlaylist.h"
#include "MltScene.h"
#include "OpenFiles.h"
#include "RatioReporter.h"
#include "Scrub.h"

#include <engine/compose/Compositor.h>
#include <engine/playback/Exporter.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTrack.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QGraphicsView>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace rvengine;

namespace {

constexpr int videoPictures = 290; ///< a little less than the videos have

constexpr QSize hd(1280, 720);
constexpr QSize fullHd(1920, 1080);

std::string sizeName(QSize size)
{
    return std::to_string(size.height()) + "p";
}

/// When the picture of that number begins, to the nearest ms.
long long timeOf(int picture)
{
    return std::llround(picture * 1000.0 / BenchMedia::picturesPerSecond);
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Whether the pictures show the same, as far as scaling and rounding allow.
bool areAlike(const QImage& one, const QImage& other)
{
    constexpr double mostDifference = 1.0; // of 255 for each byte
    if (one.size() != other.size() || one.isNull())
        return false;
    long long difference = 0;
    for (int y = 0; y < one.height(); ++y) {
        const uchar* const left = one.constScanLine(y);
        const uchar* const right = other.constScanLine(y);
        for (int x = 0; x < 4 * one.width(); ++x)
            difference += x % 4 == 3 ? 0 : std::abs(left[x] - right[x]);
    }
    return static_cast<double>(difference) <= mostDifference * 3.0 * one.width() * one.height();
}

/// One picture after the other, as they are played.
void composeScene(benchmark::State& state, const Scene& scene)
{
    Compositor compositor(makePictureSource());
    const QSize size = scene.canvas.toSize();
    int picture = 0;
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        compositor.compose(scene, timeOf(picture++), size);
    const ItemCount items(state);
    for (auto _ : state) {
        if (compositor.compose(scene, timeOf(picture), size).isNull())
            state.SkipWithError("no picture");
        picture = (picture + 1) % videoPictures;
    }
}

void renderByMlt(benchmark::State& state, BenchScene kind, QSize canvas)
{
    MltScene scene(kind, canvas);
    if (!scene.problem().empty()) {
        state.SkipWithError(scene.problem().c_str());
        return;
    }
    int picture = 0;
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        scene.render(picture++);
    const ItemCount items(state);
    for (auto _ : state) {
        if (!scene.render(picture))
            state.SkipWithError("no picture");
        picture = (picture + 1) % videoPictures;
    }
}

/// Whether the loop shows what the engine shows. The scene with a matte, which the loop leaves out,
/// is taken for the same.
bool showsTheSame(BareLoop& loop, BenchScene kind, QSize canvas)
{
    if (kind == BenchScene::MattedOverlay)
        return true;
    Compositor compositor(makePictureSource());
    const Scene scene = benchScene(kind, canvas);
    for (int picture = 0; picture < 20; ++picture) {
        if (!areAlike(loop.render(), compositor.compose(scene, timeOf(picture), canvas)))
            return false;
    }
    return loop.rewind();
}

void renderByBareLoop(benchmark::State& state, BenchScene kind, QSize canvas)
{
    BareLoop loop(kind, canvas);
    if (!showsTheSame(loop, kind, canvas)) {
        state.SkipWithError("the bare loop does not show what the engine shows");
        return;
    }
    int picture = 0;
    for (int warmUp = 0; warmUp < 3; ++warmUp, ++picture)
        loop.render();
    const ItemCount items(state);
    for (auto _ : state) {
        if (picture == 0 && !loop.rewind())
            state.SkipWithError("no first picture");
        if (loop.render().isNull())
            state.SkipWithError("no picture");
        picture = (picture + 1) % videoPictures;
    }
}

void composeWithAbsentLayers(benchmark::State& state, int count)
{
    Scene scene = benchScene(BenchScene::Main, hd);
    addAbsentLayers(scene, count);
    composeScene(state, scene);
}

/// Places in the video for seeks, ms, each behind another key frame than the one before: no reader
/// gets from one to the next without a seek.
const std::vector<long long>& seekPlaces()
{
    static const auto places = [] {
        constexpr int count = 12;
        constexpr int keyFrames = 3;
        std::mt19937 random(1);
        std::vector<long long> made;
        for (int i = 0; i < count; ++i) {
            const auto behind = static_cast<int>(random() % BenchMedia::picturesPerKeyFrame);
            made.push_back(timeOf(i % keyFrames * BenchMedia::picturesPerKeyFrame + behind));
        }
        return made;
    }();
    return places;
}

long long seekCount()
{
    return static_cast<long long>(seekPlaces().size());
}

std::shared_ptr<Layer> layerForSeeks()
{
    auto layer = std::make_shared<Layer>();
    layer->source = BenchMedia::videoForSeeks(hd);
    return layer;
}

void seekInEngine(benchmark::State& state)
{
    const auto layer = layerForSeeks();
    const auto source = makePictureSource();
    source->picture(*layer, MainLane, 0.0, hd);
    const ItemCount items(state, seekCount());
    for (auto _ : state) {
        for (const long long place : seekPlaces()) {
            if (source->picture(*layer, MainLane, static_cast<double>(place), hd).isNull())
                state.SkipWithError("no picture");
            source->endFrame();
        }
    }
}

/// Null if the file has no such picture.
QImage bareSeek(BareReader& reader, long long place)
{
    constexpr double rounding = 0.0005; // what a picture may begin after its place, seconds
    return reader.seek(static_cast<double>(place) / 1000.0 + rounding) ? reader.image(hd)
                                                                       : QImage();
}

void seekBare(benchmark::State& state)
{
    const int threads = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    const auto reader = BareReader::open(BenchMedia::videoForSeeks(hd), threads);
    if (!reader) {
        state.SkipWithError("the file cannot be opened");
        return;
    }
    {
        const auto layer = layerForSeeks();
        const auto source = makePictureSource();
        for (const long long place : seekPlaces()) {
            if (!areAlike(bareSeek(*reader, place),
                          source->picture(*layer, MainLane, static_cast<double>(place), hd)))
                state.SkipWithError("the bare loop does not show what the engine shows");
        }
    }
    const ItemCount items(state, seekCount());
    for (auto _ : state) {
        for (const long long place : seekPlaces()) {
            if (bareSeek(*reader, place).isNull())
                state.SkipWithError("no picture");
        }
    }
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
    MltPlaylist playlist(BenchMedia::video(hd));
    if (!playlist.problem().empty()) {
        state.SkipWithError(playlist.problem().c_str());
        return;
    }
    for (auto _ : state)
        playlist.rebuild(PlayingHost::clips);
    state.SetItemsProcessed(state.iterations());
}

/// FFmpeg's own allocations are most of what a reader holds.
bool countsFfmpeg()
{
    constexpr std::size_t size = 100000;
    const std::size_t before = heapBytes();
    void* const bytes = av_malloc(size);
    const bool counts = heapBytes() >= before + size;
    av_free(bytes);
    return counts;
}

/// The most that the renderer holds while it shows ten seconds that consist of so many clips.
void holdClips(benchmark::State& state)
{
    if (!countsFfmpeg()) {
        state.SkipWithError("the memory that FFmpeg allocates is not counted");
        return;
    }
    const auto clips = static_cast<int>(state.range(0));
    constexpr int picturesShown = 1000;
    for (auto _ : state) {
        const std::size_t before = heapBytes();
        std::size_t most = before;
        const Scene scene = clipsOfOneFile(clips, hd);
        Compositor compositor(makePictureSource());
        for (int i = 0; i < picturesShown; ++i) {
            const QImage picture =
                compositor.compose(scene, i * scene.duration / picturesShown, hd);
            most = std::max(most, heapBytes());
        }
        state.counters["bytes"] = static_cast<double>(most - before);
    }
    state.SetItemsProcessed(state.iterations() * picturesShown);
}

/// Clips of as many files on one main line, and how they are cut.
struct FileCuts
{
    const char* name;
    const char* description;
    long long length;    ///< of a clip, ms
    long long fileStart; ///< ms
};

constexpr int cutFiles = 200;
const std::vector<FileCuts> fileCuts{
    {"whole", "500 ms from the start of each", 500, 0},
    {"trimmed", "500 ms from the middle of each", 500, 500},
    {"short", "100 ms from the start of each", 100, 0},
};

/// Played in real time. The time is how long after it was due the latest picture that follows a cut
/// was there.
void playManyFiles(benchmark::State& state, const FileCuts& cuts)
{
    const Scene scene = clipsOfFiles(cutFiles, cuts.length, cuts.fileStart, hd);
    for (auto _ : state) {
        Compositor compositor(makePictureSource());
        std::vector<double> afterCuts;
        std::size_t open = 0;
        const std::size_t before = heapBytes();
        std::size_t most = before;
        const auto start = std::chrono::steady_clock::now();
        for (int picture = 0; timeOf(picture) < scene.duration; ++picture) {
            const long long time = timeOf(picture);
            const auto due = start + std::chrono::milliseconds(time);
            std::this_thread::sleep_until(due);
            if (compositor.compose(scene, time, hd).isNull())
                state.SkipWithError("no picture");
            // The first one opens the first file, which is no cut.
            constexpr int counted = 2;
            if (time >= cuts.length && time % cuts.length < timeOf(counted))
                afterCuts.push_back(secondsSince(due));
            compositor.prepare(scene, time);
            open = std::max(open, openFilesBelow(BenchMedia::folder()));
            most = std::max(most, heapBytes());
        }
        std::sort(afterCuts.begin(), afterCuts.end());
        state.counters["median_ms"] = 1000.0 * afterCuts[afterCuts.size() / 2];
        state.counters["99_of_100_ms"] = 1000.0 * afterCuts[afterCuts.size() * 99 / 100];
        state.counters["bytes"] = static_cast<double>(most - before);
        state.counters["open_files"] = static_cast<double>(open);
        state.SetIterationTime(afterCuts.back());
    }
    state.SetItemsProcessed(state.iterations());
}

/// Several scrubs, done once for all runs that are about them.
const std::vector<ScrubResult>& scrubs()
{
    static const auto results = [] {
        std::vector<ScrubResult> made;
        constexpr int rounds = 3;
        for (int round = 0; round < rounds; ++round)
            made.push_back(scrub(round));
        return made;
    }();
    return results;
}

/// The time is the sum of that of all scrubs, or the longest of them.
void measureScrubs(benchmark::State& state, double ScrubResult::*time, bool isSum)
{
    for (auto _ : state) {
        double seconds = 0.0;
        for (const ScrubResult& result : scrubs()) {
            if (!result.problem.empty())
                state.SkipWithError(result.problem.c_str());
            const double own = result.*time;
            seconds = isSum ? seconds + own : std::max(seconds, own);
            state.counters["pictures_of_100_seeks"] = 100.0 * result.pictures / result.seeks;
        }
        state.SetIterationTime(seconds);
    }
    state.SetItemsProcessed(state.iterations());
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
    const ItemCount items(state, scene->duration / 1000);
    for (auto _ : state) {
        std::mutex mutex;
        std::condition_variable told;
        auto exporter = startExport(scene, folder.filePath("out.mp4").toStdString(), {},
                                    [&] { told.notify_all(); });
        waitForEnd(exporter, mutex, told);
        if (exporter->news().state != ExportState::Finished)
            state.SkipWithError("not saved");
    }
}

/// The same film by the ffmpeg program, with the same encoders.
void exportByProgram(benchmark::State& state, QSize canvas)
{
    const QTemporaryDir folder;
    const QRect area = overlayRectangle(canvas, overlayPlaces(BenchScene::Overlay).front());
    const QString graph = QString("[1:v]scale=%1:%2,format=yuva420p,colorchannelmixer=aa=%3[over];"
                                  "[0:v][over]overlay=%4:%5[v];[0:a][1:a]amix=normalize=0[a]")
                              .arg(area.width())
                              .arg(area.height())
                              .arg(overlayAlpha)
                              .arg(area.x())
                              .arg(area.y());
    const QStringList arguments{"-i",
                                QString::fromStdString(BenchMedia::video(canvas)),
                                "-i",
                                QString::fromStdString(BenchMedia::video(overlayVideo)),
                                "-filter_complex",
                                graph,
                                "-map",
                                "[v]",
                                "-map",
                                "[a]",
                                "-c:v",
                                "libx264",
                                "-preset",
                                "veryfast",
                                "-pix_fmt",
                                "yuv420p",
                                "-c:a",
                                "aac",
                                "-movflags",
                                "+faststart",
                                folder.filePath("out.mp4")};
    constexpr int seconds = 10;
    const ItemCount items(state, seconds);
    for (auto _ : state) {
        if (!runFfmpeg(arguments))
            state.SkipWithError("the ffmpeg program cannot do it");
    }
}

/// Something that takes so many seconds, to set others against.
void lastFor(benchmark::State& state, double seconds)
{
    for (auto _ : state)
        state.SetIterationTime(seconds);
    state.SetItemsProcessed(state.iterations());
}

const std::vector<std::pair<BenchScene, std::string>> scenes{
    {BenchScene::Main, "main"},
    {BenchScene::Overlay, "overlay"},
    {BenchScene::MattedOverlay, "matted"},
};

/// What is measured is the time that passes: much of the work is done by other threads.
template <class Function>
benchmark::internal::Benchmark* add(const std::string& name, Function&& function)
{
    return benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function))
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}

/// What tells its time by itself.
template <class Function>
void addOnce(const std::string& name, Function&& function)
{
    benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function))
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

/// The median of several runs.
template <class Function>
void addRepeated(const std::string& name, int repetitions, Function&& function)
{
    add(name, std::forward<Function>(function))->Repetitions(repetitions)->ReportAggregatesOnly();
}

void registerFrames()
{
    for (const QSize canvas : {hd, fullHd}) {
        for (const auto& [kind, name] : scenes) {
            const std::string run = name + "/" + sizeName(canvas);
            addRepeated("frame/" + run, 3, [kind = kind, canvas](benchmark::State& state) {
                composeScene(state, benchScene(kind, canvas));
            });
            addRepeated("frame_by_bare_loop/" + run, 3,
                        [kind = kind, canvas](benchmark::State& state) {
                            renderByBareLoop(state, kind, canvas);
                        });
            addRepeated("frame_by_mlt/" + run, 3, [kind = kind, canvas](benchmark::State& state) {
                renderByMlt(state, kind, canvas);
            });
        }
    }
    for (const int count : {0, 200})
        addRepeated("absent_layers/" + std::to_string(count), 5,
                    [count](benchmark::State& state) { composeWithAbsentLayers(state, count); });
}

void registerFilms()
{
    for (const QSize canvas : {hd, fullHd}) {
        addRepeated("save/" + sizeName(canvas), 3,
                    [canvas](benchmark::State& state) { exportScene(state, canvas); });
        addRepeated("save_by_program/" + sizeName(canvas), 3,
                    [canvas](benchmark::State& state) { exportByProgram(state, canvas); });
    }
}

void registerAll()
{
    addOnce("last/1s", [](benchmark::State& state) { lastFor(state, 1.0); });
    addOnce("last/100ms", [](benchmark::State& state) { lastFor(state, 0.1); });
    addOnce("last/a_picture",
            [](benchmark::State& state) { lastFor(state, 1.0 / BenchMedia::picturesPerSecond); });
    registerFrames();
    addRepeated("seek", 3, seekInEngine);
    addRepeated("seek_bare", 3, seekBare);
    add("move_one_of_1000", moveOneClip);
    add("rebuild_by_mlt_1000", rebuildPlaylist);
    benchmark::RegisterBenchmark("clips_of_one_file", holdClips)
        ->Arg(1)
        ->Arg(1000)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
    for (const FileCuts& cuts : fileCuts)
        addOnce(std::string("cuts/") + cuts.name,
                [&cuts](benchmark::State& state) { playManyFiles(state, cuts); });
    addOnce("scrub_gap",
            [](benchmark::State& state) { measureScrubs(state, &ScrubResult::longestGap, false); });
    addOnce("scrub_settled",
            [](benchmark::State& state) { measureScrubs(state, &ScrubResult::settled, true); });
    addOnce("scrub_bare_seek",
            [](benchmark::State& state) { measureScrubs(state, &ScrubResult::bareSeek, true); });
    registerFilms();
}

/// What Google Benchmark adds to the names of runs.
const std::string real = "/real_time";
const std::string thrice = "/repeats:3/real_time";
const std::string fiveTimes = "/repeats:5/real_time";
const std::string once = "/iterations:1/manual_time";

bool printFrames(const RatioReporter& reporter)
{
    bool kept = true;
    for (const QSize canvas : {hd, fullHd}) {
        for (const auto& [kind, name] : scenes) {
            const std::string run = name + "/" + sizeName(canvas);
            kept &=
                reporter.printRatio(run + " against MLT's own transitions", "frame/" + run + thrice,
                                    "frame_by_mlt/" + run + thrice, 0.25);
            const char* const reference = kind == BenchScene::MattedOverlay
                                              ? " against a bare loop without the matte"
                                              : " against a bare loop";
            kept &= reporter.printRatio(run + reference, "frame/" + run + thrice,
                                        "frame_by_bare_loop/" + run + thrice, 1.3);
        }
    }
    kept &=
        reporter.printRatio("200 layers of which none is seen against none",
                            "absent_layers/200" + fiveTimes, "absent_layers/0" + fiveTimes, 1.05);
    return kept;
}

bool printFiles(const RatioReporter& reporter)
{
    bool kept = reporter.printCounterRatio("memory of 1,000 clips of one file against one clip",
                                           "bytes", "clips_of_one_file/1000/iterations:1",
                                           "clips_of_one_file/1/iterations:1", 1.2);
    for (const FileCuts& cuts : fileCuts) {
        const std::string name = std::string("cuts/") + cuts.name + once;
        const std::string what = std::string("200 files, ") + cuts.description;
        kept &= reporter.printRatio(what + ": longest gap, pictures", name, "last/a_picture" + once,
                                    1.0);
        kept &= reporter.printCounter(what + ": most open files", "open_files", name, 16.0);
    }
    return kept;
}

bool printFilms(const RatioReporter& reporter)
{
    bool kept = true;
    for (const QSize canvas : {hd, fullHd}) {
        const std::string run = "save/" + sizeName(canvas) + thrice;
        const std::string what = "saving, main and overlay, " + sizeName(canvas);
        kept &= reporter.printRatio(what + ", against real time", run, "last/1s" + once,
                                    canvas == hd ? 0.35 : 0.8);
        kept &= reporter.printRatio(what + ", against the ffmpeg program", run,
                                    "save_by_program/" + sizeName(canvas) + thrice, 1.5);
    }
    return kept;
}

/// The promises on speed and memory, each as a ratio of two figures of this run.
bool printPromises(const RatioReporter& reporter)
{
    std::printf("\nRatios of time and memory\n");
    bool kept = printFrames(reporter);
    kept &= reporter.printRatio("exact seek, 250 pictures a key frame, against a bare loop",
                                "seek" + thrice, "seek_bare" + thrice, 1.1);
    kept &= reporter.printRatio("a move among 1,000 clips while playing against a new playlist",
                                "move_one_of_1000" + real, "rebuild_by_mlt_1000" + real, 0.01);
    kept &= printFiles(reporter);
    kept &= reporter.printRatio("scrub, 60 seeks a second: longest time without a picture, 100 ms",
                                "scrub_gap" + once, "last/100ms" + once, 1.0);
    // The seek that is under way may be done before the last one.
    kept &= reporter.printRatio("scrub: from the last seek to its picture against a bare seek",
                                "scrub_settled" + once, "scrub_bare_seek" + once, 2.0);
    kept &= printFilms(reporter);
    return kept;
}

} // namespace

int main(int argc, char** argv)
{
    // What else the machine does changes from minute to minute: what is compared takes turns.
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleaving.data());
    return runBenchmarks(static_cast<int>(arguments.size()), arguments.data(), registerAll,
                         printPromises);
}
