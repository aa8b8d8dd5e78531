// Advice for a large buffer that is made at its final size and then filled (a whole file being
// read, a vector's storage sized for the count its table announces): its memory is better served
// by the system's large pages, each of which costs the kernel one fault where thousands of small
// ones would. (Not for memory that grows as it is written, reallocated step by step: each step
// would search for large pages again.) Only advice: where the system has no such pages, or keeps
// them for those who ask (as Linux does by default), nothing else changes. Call it before the
// buffer is first written.
#ifndef VYRBASE_SRC_CORE_VYRLARGEPAGES_H
#define VYRBASE_SRC_CORE_VYRLARGEPAGES_H

#include <cstddef>
#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

inline void VyrAdviseLargePages(void* buffer, size_t bytes) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    const uintptr_t huge = uintptr_t(2) << 20;
    if (!buffer || bytes < 4 * huge)
        return;
    // Only the whole large pages inside the buffer.
    const uintptr_t first = (reinterpret_cast<uintptr_t>(buffer) + huge - 1) & ~(huge - 1);
    const uintptr_t last = (reinterpret_cast<uintptr_t>(buffer) + bytes) & ~(huge - 1);
    if (last > first)
        madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#else
    (void)buffer;
    (void)bytes;
#endif
}

#endif
