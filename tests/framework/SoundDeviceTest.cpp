// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Reference.h"
#include "support/PlayedSound.h"
#include "support/TestMedia.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <memory>

using namespace qrvkp;

namespace {

constexpr int patienceMs = 120000;
constexpr int rate = PlayedSound::Rate;
constexpr int channels = 2;
constexpr double pi = 3.14159265358979323846;

/// A player that plays a tone of 440 Hz for 4 s and then one of 1000 Hz for 4 s.
class SoundDeviceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_played = std::make_unique<PlayedSound>();
        s_folder = std::make_unique<QTemporaryDir>();
    }

    static void TearDownTestSuite()
    {
        s_played.reset();
        s_folder.reset();
    }

    void SetUp() override
    {
        ASSERT_TRUE(played().record());
        appendTone("low.wav", 440);
        appendTone("high.wav", 1000);
        m_player->setTimeLine(m_timeline.get());
        m_player->prepareAsync();
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_player->getState() == RvKpPlayerPrepared; },
                                    patienceMs));
    }

    static PlayedSound& played() { return *s_played; }

    void appendTone(const QString& name, int frequency)
    {
        const auto track = adopt(RvAudioTrack::create(tone(name, frequency), 0, -1, 0));
        ASSERT_TRUE(track);
        const auto group = adopt(RvKpGroup::create(track->getDuration()));
        group->addTrack(track.get());
        m_timeline->pushBackGroup(group.get());
    }

    /// Waits until the recorder hears the frequency, and no other one; gives the sound.
    bool hears(double frequency)
    {
        return QTest::qWaitFor(
            [&] {
                const Samples samples = played().next(4800);
                return amplitudeAt(samples, frequency, rate) >
                           0.9 * std::sqrt(2.0) * levelOf(samples) &&
                       levelOf(samples) > 0.05;
            },
            patienceMs);
    }

    bool hearsNothing()
    {
        return QTest::qWaitFor([&] { return levelOf(played().next(4800)) == 0.0; }, patienceMs);
    }

    /// Whether one of many tries succeeds: sound that is measured has gaps, and is heard late,
    /// while other programs take the processor.
    template <class Try>
    testing::AssertionResult succeedsInTime(Try&& attempt)
    {
        QElapsedTimer timer;
        timer.start();
        for (;;) {
            const testing::AssertionResult result = attempt();
            if (result || timer.hasExpired(patienceMs))
                return result;
        }
    }

    /// Plays from the start of the first tone and waits until it is heard.
    bool hearsFromTheStart()
    {
        m_player->start();
        m_player->seekTo(0, true);
        return hears(440.0);
    }

    static constexpr long long LowMs = 4000; ///< how long each tone is

    std::unique_ptr<RvKpApplication> m_application = std::make_unique<RvKpApplication>();
    RvKpPlayer* m_player = m_application->getPlayer();
    const Reference<RvKpTimeLine> m_timeline = adopt(RvKpTimeLine::create());

private:
    /// A file with 4 s of a tone at half of full level.
    static std::string tone(const QString& name, int frequency)
    {
        QByteArray samples;
        constexpr int frames = static_cast<int>(LowMs) * rate / 1000;
        for (int i = 0; i < frames; ++i) {
            const double value = 0.5 * std::sin(2 * pi * frequency * i / rate);
            const auto sample = static_cast<qint16>(std::lround(value * 32767));
            for (int channel = 0; channel < channels; ++channel)
                samples.append(reinterpret_cast<const char*>(&sample), sizeof sample);
        }
        const std::string raw = TestMedia::file(s_folder->path(), name + ".raw", samples);
        const QString path = QDir(s_folder->path()).filePath(name);
        QProcess ffmpeg;
        ffmpeg.start("ffmpeg", {"-v", "error", "-nostdin", "-y", "-f", "s16le", "-ar", "48000",
                                "-ac", "2", "-i", QString::fromStdString(raw), path});
        EXPECT_TRUE(ffmpeg.waitForFinished(patienceMs) && ffmpeg.exitCode() == 0);
        return path.toStdString();
    }

    static std::unique_ptr<PlayedSound> s_played;
    static std::unique_ptr<QTemporaryDir> s_folder;
};

std::unique_ptr<PlayedSound> SoundDeviceTest::s_played;
std::unique_ptr<QTemporaryDir> SoundDeviceTest::s_folder;

} // namespace

TEST_F(SoundDeviceTest, PlaysATonePureAndAtItsLevel)
{
    EXPECT_TRUE(succeedsInTime([&]() -> testing::AssertionResult {
        if (!hearsFromTheStart())
            return testing::AssertionFailure() << "not heard";
        const Samples samples = played().next(rate);
        const double tone = amplitudeAt(samples, 440.0, rate);
        const double level = levelOf(samples);
        if (std::abs(tone - 0.5) > 0.01)
            return testing::AssertionFailure() << "the tone has " << tone;
        if (std::abs(level - 0.5 / std::sqrt(2.0)) > 0.01)
            return testing::AssertionFailure() << "with what is not the tone: " << level;
        return testing::AssertionSuccess();
    }));
}

TEST_F(SoundDeviceTest, IsSilentAtOnceWhenPaused)
{
    EXPECT_TRUE(succeedsInTime([&]() -> testing::AssertionResult {
        if (!hearsFromTheStart())
            return testing::AssertionFailure() << "not heard";
        const std::size_t before = played().recorded();
        m_player->pause();
        if (!hearsNothing())
            return testing::AssertionFailure() << "never silent";
        const std::size_t heard = played().recorded() - before;
        if (heard >= std::size_t(rate))
            return testing::AssertionFailure() << "silent after " << heard << " frames";
        return testing::AssertionSuccess();
    }));
    EXPECT_EQ(levelOf(played().next(rate / 4)), 0.0);
    m_player->start();
    EXPECT_TRUE(hears(440.0));
    m_player->stop();
    EXPECT_TRUE(hearsNothing());
}

TEST_F(SoundDeviceTest, ThePositionAdvancesInRealTime)
{
    EXPECT_TRUE(succeedsInTime([&]() -> testing::AssertionResult {
        if (!hearsFromTheStart())
            return testing::AssertionFailure() << "not heard";
        QElapsedTimer timer;
        timer.start();
        const long long start = m_player->getCurrentPosition();
        if (!QTest::qWaitFor([&] { return m_player->getCurrentPosition() > start + 2000; },
                             patienceMs))
            return testing::AssertionFailure() << "it does not advance";
        const auto elapsed = static_cast<double>(timer.elapsed());
        const auto advanced = static_cast<double>(m_player->getCurrentPosition() - start);
        if (std::abs(advanced - elapsed) > elapsed / 10)
            return testing::AssertionFailure() << advanced << " ms in " << elapsed << " ms";
        return testing::AssertionSuccess();
    }));
}

TEST_F(SoundDeviceTest, HearsWhatThePositionSaysAfterASeek)
{
    m_player->start();
    ASSERT_TRUE(hears(440.0));
    m_player->seekTo(5000, true);
    EXPECT_TRUE(hears(1000.0));
    m_player->seekTo(500, true);
    EXPECT_TRUE(hears(440.0));

    // The second tone begins when the clock says so.
    EXPECT_TRUE(succeedsInTime([&]() -> testing::AssertionResult {
        m_player->seekTo(LowMs - 700, true);
        if (!hears(440.0))
            return testing::AssertionFailure() << "not heard";
        long long position = 0;
        const auto isHigh = [&] {
            const Samples samples = played().next(960);
            position = m_player->getCurrentPosition();
            return amplitudeAt(samples, 1000.0, rate) > 0.25;
        };
        if (!QTest::qWaitFor(isHigh, patienceMs))
            return testing::AssertionFailure() << "the second tone is not heard";
        if (std::abs(position - LowMs) > 200)
            return testing::AssertionFailure() << "heard at " << position << " ms";
        return testing::AssertionSuccess();
    }));
}

TEST_F(SoundDeviceTest, AVolumeThatChangesIsHeardWhilePlaying)
{
    m_player->start();
    ASSERT_TRUE(hears(440.0));
    const auto group = adopt(m_timeline->getGroups());
    const auto track = adopt(group[0]->getTracks());
    track[0]->setVolumeAtTime(0.0F, 0);
    EXPECT_TRUE(hearsNothing());
    track[0]->clearVolumes();
    EXPECT_TRUE(hears(440.0));
}

TEST_F(SoundDeviceTest, GoesWhileItSounds)
{
    for (int round = 0; round < 5; ++round) {
        m_player->setTimeLine(m_timeline.get());
        m_player->prepareAsync();
        m_player->start();
        ASSERT_TRUE(hears(440.0));
        m_application.reset();
        EXPECT_TRUE(hearsNothing());
        m_application = std::make_unique<RvKpApplication>();
        m_player = m_application->getPlayer();
    }
}
