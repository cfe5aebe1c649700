// An object that lives until the library is unloaded or the process ends, and is not destroyed then.
#pragma once

#include <cstddef>
#include <new>

namespace imaginglibrary {

// For what may be asked for while the process ends, when others may be gone. Static, not new: whatever a library that
// is unloaded has on the heap would be lost, so what the object owns must be given back before.
template <class Object> class NeverDestroyed {
  public:
    NeverDestroyed() : object_(*new (storage_) Object) {}
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    Object& Get() { return object_; }

  private:
    alignas(Object) std::byte storage_[sizeof(Object)];
    Object& object_;
};

} // namespace imaginglibrary
