// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QSize>

#include <memory>

namespace rvengine {

/// Memory for pictures of one size, which is used again when a picture ends. The C library gives
/// memory of this size back to the system; to get it anew for each picture costs as much as to draw
/// it. Any thread may call it, and may hold and end its pictures, also when the pool is gone.
class PixelPool
{
public:
    PixelPool();
    ~PixelPool();
    PixelPool(const PixelPool&) = delete;
    PixelPool& operator=(const PixelPool&) = delete;

    /// Bytes in which the rows of a padded picture are aligned, and at least as many behind each.
    static constexpr int Alignment = 64;
    enum class Rows {
        Dense,  ///< one directly behind the other
        Padded, ///< with room for who writes whole vectors
    };

    /// A picture of undefined content in a format of 4 bytes a pixel; null for an empty size and
    /// without memory.
    QImage take(QSize size, QImage::Format format, Rows rows = Rows::Dense);

private:
    struct Store;
    struct Loan;
    const std::shared_ptr<Store> m_store;
};

} // namespace rvengine
