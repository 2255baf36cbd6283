#include <zelcore/RefCountedObject.h>

namespace zelcore {
namespace utility {

RefCountedObject::RefCountedObject() noexcept : mRefCount(0) {}

RefCountedObject::RefCountedObject(const RefCountedObject&) noexcept : mRefCount(0) {}

RefCountedObject& RefCountedObject::operator=(const RefCountedObject&) noexcept { return *this; }

RefCountedObject::~RefCountedObject() = default;

long RefCountedObject::GetRefCount() const noexcept { return mRefCount.load(std::memory_order_relaxed); }

void RefCountedObject::AddRef() const noexcept { mRefCount.fetch_add(1, std::memory_order_relaxed); }

void RefCountedObject::Release() const noexcept {
    // What other threads did through their pointers must be visible to the destructor.
    if (mRefCount.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

}  // namespace utility
}  // namespace zelcore
