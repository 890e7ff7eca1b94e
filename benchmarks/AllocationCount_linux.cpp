// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {
std::atomic<std::size_t> allocated{0};

void* allocate(std::size_t size)
{
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    allocated += malloc_usable_size(memory);
    return memory;
}

void deallocate(void* memory) noexcept
{
    if (memory)
        allocated -= malloc_usable_size(memory);
    std::free(memory);
}
} // namespace

std::size_t allocatedBytes()
{
    return allocated;
}

void* operator new(std::size_t size)
{
    return allocate(size);
}
void* operator new[](std::size_t size)
{
    return allocate(size);
}
void operator delete(void* memory) noexcept
{
    deallocate(memory);
}
void operator delete[](void* memory) noexcept
{
    deallocate(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    deallocate(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    deallocate(memory);
}

std::size_t heapBytes()
{
    const auto usage = mallinfo2();
    return usage.uordblks + usage.hblkhd;
}
