// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// The threads of one decoder. All decoders of the process together get as many as there are
/// processors; those for which none are left decode in the thread that asks them.
class DecoderThreads
{
public:
    /// Takes what is left, if that is worth it.
    DecoderThreads();
    ~DecoderThreads();
    DecoderThreads(const DecoderThreads&) = delete;
    DecoderThreads& operator=(const DecoderThreads&) = delete;

    /// How many threads decode: 1 is the one that asks.
    int count() const { return m_count; }

private:
    int m_count = 1;
};

} // namespace rvengine
