#pragma once

#include <atomic>

#include <zelcore/Export.h>

namespace zelcore {
namespace utility {

/// Base of the objects that `boost::intrusive_ptr` holds. The count starts at zero: the first pointer makes it one,
/// the last one deletes the object on the thread that lets go of it. The count is atomic; the object itself is as
/// thread-safe as its own class says.
class ZELCORE_API RefCountedObject {
public:
    /// Number of pointers that hold the object now. For tests and assertions only: it may be out of date at once.
    long GetRefCount() const noexcept;

    /// One more holds the object. Any thread.
    void AddRef() const noexcept;
    /// One less holds it; the last one ends it, on the calling thread.
    void Release() const noexcept;

protected:
    RefCountedObject() noexcept;
    /// A copy is a new object that nobody holds yet.
    RefCountedObject(const RefCountedObject&) noexcept;
    /// Leaves the count alone: who holds an object does not come with its value.
    RefCountedObject& operator=(const RefCountedObject&) noexcept;
    virtual ~RefCountedObject();

private:
    mutable std::atomic<long> mRefCount;
};

inline void intrusive_ptr_add_ref(const RefCountedObject* object) noexcept { object->AddRef(); }
inline void intrusive_ptr_release(const RefCountedObject* object) noexcept { object->Release(); }

}  // namespace utility
}  // namespace zelcore
