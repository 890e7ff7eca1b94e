// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <norvel/widgets/recorder/AudioLevels.h>

#include <QAudioBuffer>
#include <QAudioFormat>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr int channels = 2;
/// Bytes of a buffer: one that the caches hold, and one that they do not.
constexpr std::array<int, 2> sizes{64 * 1024, 32 * 1024 * 1024};

template <class Sample>
QAudioBuffer makeBuffer(int bytes)
{
    QAudioFormat format;
    format.setCodec(QStringLiteral("audio/pcm"));
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setSampleRate(48000);
    format.setChannelCount(channels);
    format.setSampleSize(8 * static_cast<int>(sizeof(Sample)));
    const bool isFloat = std::is_floating_point_v<Sample>;
    format.setSampleType(isFloat ? QAudioFormat::Float : QAudioFormat::SignedInt);
    std::vector<Sample> samples(static_cast<std::size_t>(bytes) / sizeof(Sample));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<Sample>(std::sin(static_cast<double>(i)) * (isFloat ? 1 : 32767));
    return {QByteArray(reinterpret_cast<const char*>(samples.data()), bytes), format};
}

template <class Sample>
void levels(benchmark::State& state)
{
    const QAudioBuffer buffer = makeBuffer<Sample>(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(norvel::getBufferLevels(buffer));
    state.SetItemsProcessed(state.iterations() * buffer.sampleCount());
}

/// The samples added up, in as many sums as let the compiler add many of them at a time: without
/// that, floats would have to be added one after the other.
template <class Sample, class Sum>
void plainSum(benchmark::State& state)
{
    constexpr std::size_t lanes = 16;
    const QAudioBuffer buffer = makeBuffer<Sample>(static_cast<int>(state.range(0)));
    const auto* const samples = buffer.constData<Sample>();
    const auto count = static_cast<std::size_t>(buffer.sampleCount());
    for (auto _ : state) {
        std::array<Sum, lanes> sums{};
        for (std::size_t i = 0; i + lanes <= count; i += lanes)
            for (std::size_t lane = 0; lane < lanes; ++lane)
                sums[lane] += samples[i + lane];
        benchmark::DoNotOptimize(sums);
    }
    state.SetItemsProcessed(state.iterations() * buffer.sampleCount());
}

/// All bytes read by the C library, as fast as the memory gives them.
template <class Sample>
void readBytes(benchmark::State& state)
{
    const QAudioBuffer buffer = makeBuffer<Sample>(static_cast<int>(state.range(0)));
    std::vector<char> bytes(static_cast<std::size_t>(buffer.byteCount()), 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::memchr(bytes.data(), 0, bytes.size()));
    state.SetItemsProcessed(state.iterations() * buffer.sampleCount());
}

using Benchmark = void (*)(benchmark::State&);

/// The levels of a type of samples, and what is set beside them.
struct Kind
{
    std::string what;
    std::string name;
    Benchmark levels;
    Benchmark sum;
    Benchmark read;
};

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all{
        {"16-bit stereo", "levels_s16", levels<qint16>, plainSum<qint16, int>, readBytes<qint16>},
        {"32-bit float stereo", "levels_f32", levels<float>, plainSum<float, float>,
         readBytes<float>}};
    return all;
}

void registerAll()
{
    for (const Kind& kind : kinds()) {
        for (const int size : sizes) {
            benchmark::RegisterBenchmark(kind.name.c_str(), kind.levels)->Arg(size);
            benchmark::RegisterBenchmark((kind.name + "_sum").c_str(), kind.sum)->Arg(size);
        }
        benchmark::RegisterBenchmark((kind.name + "_read").c_str(), kind.read)->Arg(sizes.back());
    }
}

bool printPromises(const RatioReporter& reporter)
{
    std::printf("\nRatios of time for a sample\n");
    bool kept = true;
    for (const Kind& kind : kinds()) {
        for (const int size : sizes) {
            const std::string run = "/" + std::to_string(size);
            const std::string what =
                "levels of " + kind.what + ", " + std::to_string(size / 1024) + " KiB, to ";
            kept &= reporter.printRatio(what + "a plain sum", kind.name + run,
                                        kind.name + "_sum" + run, 3.0);
        }
        const std::string run = "/" + std::to_string(sizes.back());
        kept &= reporter.printRatio("levels of " + kind.what + ", to reading memory",
                                    kind.name + run, kind.name + "_read" + run, 4.0);
    }
    return kept;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, registerAll, printPromises);
}
