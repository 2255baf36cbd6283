#include "AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool tCounts = false;
thread_local std::size_t tCount = 0;

void Note() {
    if (tCounts) ++tCount;
}

void* Allocate(std::size_t size) {
    Note();
    if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

void Free(void* memory) {
    if (memory != nullptr) Note();
    std::free(memory);
}

}  // namespace

// For the whole program; the other forms end in these.
void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }

namespace zeltests {

AllocationCount::AllocationCount() {
    tCount = 0;
    tCounts = true;
}

AllocationCount::~AllocationCount() { tCounts = false; }

std::size_t AllocationCount::Get() const { return tCount; }

}  // namespace zeltests
