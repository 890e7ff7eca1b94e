// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// The threads of one decoder. All decoders of the process together get two more than there are
/// processors, and one at most half of these, so that the clip that follows has some too; those for
/// which none are left decode in the thread that asks them.
class DecoderThreads
{
public:
    /// Takes what is left, if that is worth it.
    DecoderThreads();
    ~DecoderThreads();
    DecoderThreads(const DecoderThreads&) = delete;
    DecoderThreads& operator=(const DecoderThreads&) = delete;

    /// Whether another decoder would get some now.
    static bool areLeft();

    /// How many threads decode: 1 is the one that asks.
    int count() const { return m_count; }

private:
    int m_count = 1;
};

} // namespace rvengine
