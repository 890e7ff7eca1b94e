// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Scrub.h"

#include "BareReader.h"
#include "BenchMedia.h"
#include "BenchScene.h"

#include <engine/compose/Compositor.h>
#include <engine/playback/Playback.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace rvengine;

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr QSize pictureSize(640, 360);
constexpr auto seekInterval = std::chrono::microseconds(16667);
constexpr int seeksOfAScrub = 360;
constexpr auto longestWait = std::chrono::seconds(5);

/// A host that shows what the playback gives.
class Host
{
public:
    Host()
        : m_playback([this] { wake(); })
    {
        m_playback.setPictureSize(pictureSize);
        m_playback.setScene(std::make_shared<const Scene>(longScene()));
    }

    void seek(long long position) { m_playback.seek(position); }

    /// The next picture that is ready before `deadline`, else null.
    QImage waitForPicture(Clock::time_point deadline)
    {
        while (Clock::now() < deadline) {
            {
                std::unique_lock lock(m_mutex);
                if (!m_wake.wait_until(lock, deadline, [this] { return m_hasNews; }))
                    break;
                m_hasNews = false;
            }
            const QImage picture = m_playback.takeNews();
            if (!picture.isNull())
                return picture;
        }
        return {};
    }

private:
    void wake()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_hasNews = true;
        }
        m_wake.notify_one();
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_hasNews = false;
    Playback m_playback;
};

/// Where the hand is: four minutes to either side of the middle, ms.
long long placeOfSeek(int seek)
{
    constexpr double pi = 3.14159265358979;
    constexpr double seeksOfASwing = 240.0;
    return std::llround(300000.0 + 240000.0 * std::sin(seek / seeksOfASwing * 2.0 * pi));
}

/// Late in a run of pictures without a key frame, in another one for each round, ms.
long long lastPlace(int round)
{
    constexpr int beforeKeyFrame = 20;
    const int picture = (10 + 17 * round) * BenchMedia::picturesPerKeyFrame - beforeKeyFrame;
    return std::llround(picture * 1000.0 / BenchMedia::picturesPerSecond);
}

void drag(Host& host, ScrubResult& result)
{
    auto last = Clock::now();
    auto due = last;
    for (int i = 0; i < seeksOfAScrub; ++i) {
        host.seek(placeOfSeek(i));
        ++result.seeks;
        due += seekInterval;
        while (!host.waitForPicture(due).isNull()) {
            const auto now = Clock::now();
            result.longestGap = std::max(result.longestGap, Seconds(now - last).count());
            last = now;
            ++result.pictures;
        }
    }
    result.longestGap = std::max(result.longestGap, Seconds(Clock::now() - last).count());
}

void letGo(Host& host, long long place, const QImage& right, ScrubResult& result)
{
    const auto start = Clock::now();
    host.seek(place);
    const auto deadline = start + longestWait;
    for (QImage shown; shown != right;) {
        shown = host.waitForPicture(deadline);
        result.settled = Seconds(Clock::now() - start).count();
        if (shown.isNull()) {
            result.problem = "the right picture does not come";
            return;
        }
    }
}

void seekBare(long long place, ScrubResult& result)
{
    const int threads = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    const auto reader = BareReader::open(BenchMedia::longVideo(), threads);
    if (!reader || !reader->next()) {
        result.problem = "the film cannot be read";
        return;
    }
    const auto start = Clock::now();
    if (!reader->seek((static_cast<double>(place) + 0.5) / 1000.0))
        result.problem = "the film cannot be sought in";
    reader->image(pictureSize);
    result.bareSeek = Seconds(Clock::now() - start).count();
}

} // namespace

ScrubResult scrub(int round)
{
    ScrubResult result;
    const long long place = lastPlace(round);
    const QImage right = Compositor(makePictureSource()).compose(longScene(), place, pictureSize);
    {
        Host host;
        if (host.waitForPicture(Clock::now() + longestWait).isNull()) {
            result.problem = "no picture";
            return result;
        }
        drag(host, result);
        letGo(host, place, right, result);
    }
    seekBare(place, result);
    return result;
}
