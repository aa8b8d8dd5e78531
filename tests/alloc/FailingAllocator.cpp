// The global operator new and delete of the allocation-failure tests: malloc and free underneath
// (so that the address and leak sanitizers still see every block), with one failure on demand.
#include "FailingAllocator.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>

namespace failingalloc {

namespace {

std::atomic<bool> g_armed{false};
std::atomic<long> g_nth{0};
std::atomic<long> g_count{0};
std::atomic<bool> g_failed{false};
std::atomic<bool> g_spared{false};

// True when the allocation is made inside a part of the toolkit that is not exception-safe:
// its JPEG handler (an allocation failing inside it leaves the codec's state and the picture's
// buffer behind) and its character converters (a file name or a narrow text being converted
// loses its conversion buffer). Measured under the leak sanitizer; these are the toolkit's own
// leaks, which the library cannot prevent (it avoids the converters where it can), so such
// allocations are spared.
bool InsideUnsafeToolkitCode() {
    static const char* const kUnsafe[] = {
        "wxJPEGHandler",       "wxImage6DoLoad",       "wxMBConv",
        "wxWhateverWorksConv", "wxString10ConvertStr", "wxString6AsChar",
    };
    void* frames[64];
    const int count = backtrace(frames, 64);
    for (int i = 0; i < count; ++i) {
        Dl_info info;
        if (!dladdr(frames[i], &info) || !info.dli_sname)
            continue;
        for (const char* name : kUnsafe)
            if (std::strstr(info.dli_sname, name))
                return true;
    }
    return false;
}

// Counts one allocation; true when it is the one to fail.
bool Fails() {
    if (!g_armed.load(std::memory_order_relaxed))
        return false;
    const long n = ++g_count;
    if (n != g_nth.load())
        return false;
    // backtrace allocates on its first use: keep this allocator out of the way meanwhile.
    g_armed = false;
    const bool spared = InsideUnsafeToolkitCode();
    g_armed = true;
    if (spared) {
        g_spared = true;
        return false;
    }
    g_failed = true;
    return true;
}

void* Allocate(std::size_t size) {
    return std::malloc(size ? size : 1);
}

void* AllocateAligned(std::size_t size, std::align_val_t alignment) {
    const std::size_t align = static_cast<std::size_t>(alignment);
    // aligned_alloc wants a size that is a multiple of the alignment.
    const std::size_t rounded = (size + align - 1) / align * align;
    return std::aligned_alloc(align, rounded ? rounded : align);
}

}  // namespace

void Arm(long nth) {
    g_nth = nth;
    g_count = 0;
    g_failed = false;
    g_spared = false;
    g_armed = true;
}

void Disarm() {
    g_armed = false;
}

long Count() {
    return g_count.load();
}

bool Failed() {
    return g_failed.load();
}

bool Spared() {
    return g_spared.load();
}

}  // namespace failingalloc

using failingalloc::Allocate;
using failingalloc::AllocateAligned;
using failingalloc::Fails;

void* operator new(std::size_t size) {
    void* p = Fails() ? nullptr : Allocate(size);
    if (!p)
        throw std::bad_alloc();
    return p;
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Fails() ? nullptr : Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Fails() ? nullptr : Allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    void* p = Fails() ? nullptr : AllocateAligned(size, alignment);
    if (!p)
        throw std::bad_alloc();
    return p;
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
    return operator new(size, alignment);
}

void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Fails() ? nullptr : AllocateAligned(size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return Fails() ? nullptr : AllocateAligned(size, alignment);
}

void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete[](void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}
void operator delete(void* p, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t, std::align_val_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept {
    std::free(p);
}
