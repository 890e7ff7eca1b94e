// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "support/PlayedSound.h"

#include <QTest>

#include <algorithm>

namespace {

constexpr int patienceMs = 120000;
constexpr int channels = 2;
constexpr int frameSize = channels * static_cast<int>(sizeof(qint16));

} // namespace

PlayedSound::PlayedSound()
    : m_source(makeSource())
{
}

PlayedSound::~PlayedSound() = default;

testing::AssertionResult PlayedSound::record()
{
    if (m_isStarted)
        return testing::AssertionSuccess();
    auto started = m_source->start();
    if (!started)
        return started;
    m_isStarted = true;
    if (!QTest::qWaitFor([this] { return recorded() > 0; }, patienceMs))
        return testing::AssertionFailure() << "nothing is recorded";
    return started;
}

std::size_t PlayedSound::recorded()
{
    m_bytes += m_source->read();
    return static_cast<std::size_t>(m_bytes.size() / frameSize);
}

Samples PlayedSound::sound(std::size_t from, std::size_t to) const
{
    const int begin = static_cast<int>(from) * frameSize;
    return firstChannel(m_bytes.mid(begin, static_cast<int>(to) * frameSize - begin), channels);
}

Samples PlayedSound::next(std::size_t frames)
{
    const std::size_t from = recorded();
    EXPECT_TRUE(QTest::qWaitFor([&] { return recorded() >= from + frames; }, patienceMs));
    return sound(from, std::min(from + frames, recorded()));
}
