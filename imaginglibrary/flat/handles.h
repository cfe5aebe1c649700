// Handles that callers hold: numbers that are checked on every use and never reused too soon.
#pragma once

#include "imaginglibrary/core/neverdestroyed.h"
#include "imaginglibrary/core/status.h"
#include "imaginglibrary/flat/sessions.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <utility>
#include <vector>

namespace imaginglibrary {

// All living objects of one kind. A handle is a slot number and a count of how often the slot was used, so a handle
// that was disposed of, or never given out, finds nothing. Lookups of several threads run side by side; the lock is
// never held while anything is done with an object.
template <class Object> class HandleTable {
  public:
    using Handle = std::uintptr_t;

    Handle Add(std::shared_ptr<Object> object) {
        const std::unique_lock lock(mutex_);
        std::size_t slot = slots_.size();
        if (firstFree_ != None) {
            slot = std::exchange(firstFree_, slots_[firstFree_].nextFree);
        } else if (slot + 1 < (std::size_t{1} << SlotBits)) {
            slots_.push_back({nullptr, firstUse_, None});
        } else {
            throw std::bad_alloc();
        }
        slots_[slot].object = std::move(object);
        return (static_cast<Handle>(slots_[slot].uses) << SlotBits) | (slot + 1);
    }

    // The object, or null for a handle that is zero, foreign or disposed of.
    std::shared_ptr<Object> Find(Handle handle) const {
        const std::shared_lock lock(mutex_);
        const Slot* slot = SlotOf(handle);
        return slot != nullptr ? slot->object : nullptr;
    }

    // False where there was no such object.
    bool Remove(Handle handle) {
        std::shared_ptr<Object> removed; // destroyed behind the lock
        const std::unique_lock lock(mutex_);
        auto* slot = const_cast<Slot*>(SlotOf(handle));
        if (slot == nullptr) {
            return false;
        }
        removed = std::move(slot->object);
        Retire(*slot);
        return true;
    }

    // Removes all objects, and owns no memory then; their handles find nothing from now on.
    void Clear() {
        std::vector<Slot> removed; // destroyed behind the lock
        const std::unique_lock lock(mutex_);
        removed.swap(slots_);
        firstFree_ = lastFree_ = None;
        for (const Slot& slot : removed) {
            firstUse_ = std::max(firstUse_, slot.uses);
        }
        firstUse_ = Next(firstUse_);
    }

  private:
    static constexpr unsigned SlotBits = 20;
    static constexpr std::uint32_t MostUses = (1u << (32 - SlotBits)) - 1;
    static constexpr std::size_t None = SIZE_MAX;

    struct Slot {
        std::shared_ptr<Object> object;
        std::uint32_t uses;
        std::size_t nextFree; // behind this one, where it is free
    };

    static std::uint32_t Next(std::uint32_t uses) { return (uses + 1) & MostUses; }

    void Retire(Slot& slot) {
        const auto index = static_cast<std::size_t>(&slot - slots_.data());
        slot.object = nullptr;
        slot.uses = Next(slot.uses);
        slot.nextFree = None;
        (firstFree_ == None ? firstFree_ : slots_[lastFree_].nextFree) = index;
        lastFree_ = index;
    }

    const Slot* SlotOf(Handle handle) const {
        const std::size_t number = handle & ((Handle{1} << SlotBits) - 1);
        if (number == 0 || number > slots_.size()) {
            return nullptr;
        }
        const Slot& slot = slots_[number - 1];
        return slot.object != nullptr && slot.uses == handle >> SlotBits ? &slot : nullptr;
    }

    mutable std::shared_mutex mutex_;
    std::vector<Slot> slots_;
    std::size_t firstFree_ = None; // the slot that was freed first is used first
    std::size_t lastFree_ = None;  // only where there is a first one
    std::uint32_t firstUse_ = 1;   // of slots that are new
};

// The table of one kind of object, and its handles as the flat interface has them: pointers to `Tag`. Objects that
// callers left behind end with the last session.
template <class Tag, class Object> class Handles {
  public:
    static Tag* Add(std::shared_ptr<Object> object) { return reinterpret_cast<Tag*>(Table().Add(std::move(object))); }

    // Null for a handle that is zero, foreign or disposed of.
    static std::shared_ptr<Object> Find(const Tag* handle) {
        return Table().Find(reinterpret_cast<std::uintptr_t>(handle));
    }

    static Status Remove(const Tag* handle) {
        return Table().Remove(reinterpret_cast<std::uintptr_t>(handle)) ? Status::Ok : Status::InvalidParameter;
    }

  private:
    static HandleTable<Object>& Table() {
        static NeverDestroyed<HandleTable<Object>> table;
        static const bool isRegistered = (CallAtLastShutdown([] { table.Get().Clear(); }), true);
        static_cast<void>(isRegistered);
        return table.Get();
    }
};

} // namespace imaginglibrary
