#include "support/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool tCounts = false;
thread_local std::size_t tCount = 0;

void Note() {
    if (tCounts) ++tCount;
}

void* AllocateQuietly(std::size_t size) noexcept {
    Note();
    return std::malloc(size != 0 ? size : 1);
}

void* Allocate(std::size_t size) {
    if (void* const memory = AllocateQuietly(size)) return memory;
    throw std::bad_alloc();
}

void Free(void* memory) {
    if (memory != nullptr) Note();
    std::free(memory);
}

}  // namespace

// For the whole program: all forms but those for great alignments, or one form would free what another has made.
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return AllocateQuietly(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return AllocateQuietly(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

namespace zeltests {

AllocationCount::AllocationCount() {
    tCount = 0;
    tCounts = true;
}

AllocationCount::~AllocationCount() { tCounts = false; }

std::size_t AllocationCount::Get() const { return tCount; }

}  // namespace zeltests
