#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include <zelcore/Export.h>

namespace zelcore {
namespace utility {

/// The allocator behind the system's strings. It keeps nothing of its own beside the platform's heap, whose caches for
/// small blocks measured faster than pools shared by all threads; strings of static objects may be destroyed at any
/// time.
class ZELCORE_API SmallBlockAllocator {
public:
    /// Returns a block of `size` bytes aligned for any fundamental type. Throws std::bad_alloc. Any thread.
    static void* Allocate(std::size_t size);

    /// Gives back a block of exactly the `size` that it was allocated with. Any thread.
    static void Deallocate(void* block, std::size_t size) noexcept;

    /// The standard-library face of the allocator. Stateless: every instance can free what another one allocated.
    template <typename T>
    class STLAllocator {
    public:
        /// What it allocates, as the C++ library asks for it.
        typedef T value_type;

        STLAllocator() noexcept = default;
        /// Allocators have no state: one of any type does.
        template <typename U>
        STLAllocator(const STLAllocator<U>&) noexcept {}

        /// Room for `count` objects. Throws std::bad_alloc.
        T* allocate(std::size_t count) {
            if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_alloc();
            return static_cast<T*>(SmallBlockAllocator::Allocate(count * sizeof(T)));
        }
        /// Takes back what allocate gave for the same count.
        void deallocate(T* block, std::size_t count) noexcept {
            SmallBlockAllocator::Deallocate(block, count * sizeof(T));
        }

        /// Always: what one allocates another may take back.
        template <typename U>
        bool operator==(const STLAllocator<U>&) const noexcept {
            return true;
        }
    };
};

}  // namespace utility
}  // namespace zelcore
