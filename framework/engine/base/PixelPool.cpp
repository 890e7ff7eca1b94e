// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PixelPool.h"

#include <cstddef>
#include <limits>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

struct FreePixels
{
    void operator()(unsigned char* pixels) const
    {
        ::operator delete (pixels, std::align_val_t{PixelPool::Alignment});
    }
};

using Pixels = std::unique_ptr<unsigned char, FreePixels>;

Pixels allocated(std::size_t bytes)
{
    return Pixels(static_cast<unsigned char*>(
        ::operator new (bytes, std::align_val_t{PixelPool::Alignment}, std::nothrow)));
}

std::size_t strideOf(int width, PixelPool::Rows rows)
{
    const std::size_t bytes = static_cast<std::size_t>(width) * 4;
    constexpr std::size_t unit = PixelPool::Alignment;
    return rows == PixelPool::Rows::Dense ? bytes : (bytes + 2 * unit - 1) / unit * unit;
}

} // namespace

struct PixelPool::Store
{
    /// Pictures that are made and shown at the same time; more wait for nobody.
    static constexpr std::size_t mostKept = 3;

    Pixels take(std::size_t bytes)
    {
        const std::lock_guard lock(mutex);
        if (bytes != size) {
            kept.clear();
            size = bytes;
        }
        if (kept.empty())
            return allocated(bytes);
        Pixels pixels = std::move(kept.back());
        kept.pop_back();
        return pixels;
    }

    void takeBack(Pixels pixels, std::size_t bytes)
    {
        const std::lock_guard lock(mutex);
        if (bytes == size && kept.size() < mostKept)
            kept.push_back(std::move(pixels));
    }

    std::mutex mutex;
    std::size_t size = 0; ///< of what was taken last, bytes
    std::vector<Pixels> kept;
};

/// What a picture gives back when it ends.
struct PixelPool::Loan
{
    static void end(void* loan)
    {
        const std::unique_ptr<Loan> ended(static_cast<Loan*>(loan));
        ended->store->takeBack(std::move(ended->pixels), ended->bytes);
    }

    std::shared_ptr<Store> store;
    Pixels pixels;
    std::size_t bytes;
};

PixelPool::PixelPool()
    : m_store(std::make_shared<Store>())
{
}

PixelPool::~PixelPool() = default;

QImage PixelPool::take(QSize size, QImage::Format format, Rows rows)
{
    if (size.isEmpty())
        return {};
    const std::size_t stride = strideOf(size.width(), rows);
    const std::size_t bytes = stride * static_cast<std::size_t>(size.height()) + Alignment;
    if (bytes > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return {};
    Pixels pixels = m_store->take(bytes);
    if (!pixels)
        return {};
    unsigned char* const first = pixels.get();
    auto loan = std::make_unique<Loan>(Loan{m_store, std::move(pixels), bytes});
    QImage picture(first, size.width(), size.height(), static_cast<int>(stride), format, &Loan::end,
                   loan.get());
    if (picture.isNull())
        return {};
    static_cast<void>(loan.release()); // the picture's now
    return picture;
}

} // namespace rvengine
