// A function of the system replaced within the test's own program, to see what it is asked for.
#pragma once

#include "tests/support/importslot.h"

#include <gtest/gtest.h>

namespace tests {

// While it lives the program calls another function in the place of one that it imports.
class ReplacedImport {
  public:
    template <class Function> ReplacedImport(const char* name, Function* replacement)
        : slot_(ImportSlot(GetModuleHandleA(nullptr), name)) {
        EXPECT_NE(slot_, nullptr) << name;
        if (slot_ != nullptr) {
            before_ = *slot_;
            PutIntoSlot(slot_, reinterpret_cast<void*>(replacement));
        }
    }
    ~ReplacedImport() {
        if (slot_ != nullptr) {
            PutIntoSlot(slot_, before_);
        }
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

  private:
    void** slot_;
    void* before_ = nullptr;
};

} // namespace tests
