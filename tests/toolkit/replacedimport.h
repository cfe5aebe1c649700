// A function of the system replaced within the test's own program, to see what it is asked for.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>

namespace tests {

// The place from which the program takes the address of a function that it imports; null where it imports none of this
// name.
inline void** ImportSlot(std::string_view name) {
    auto* const base = reinterpret_cast<std::uint8_t*>(GetModuleHandleA(nullptr));
    const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + start.e_lfanew);
    const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
         library->Name != 0; ++library) {
        const auto* entry = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; entry->u1.AddressOfData != 0; ++entry, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(entry->u1.Ordinal)) {
                continue;
            }
            const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + entry->u1.AddressOfData);
            if (name == reinterpret_cast<const char*>(import->Name)) {
                return reinterpret_cast<void**>(&slot->u1.Function);
            }
        }
    }
    return nullptr;
}

// While it lives the program calls another function in the place of one that it imports.
class ReplacedImport {
  public:
    template <class Function> ReplacedImport(const char* name, Function* replacement) : slot_(ImportSlot(name)) {
        EXPECT_NE(slot_, nullptr) << name;
        if (slot_ != nullptr) {
            before_ = *slot_;
            Put(reinterpret_cast<void*>(replacement));
        }
    }
    ~ReplacedImport() {
        if (slot_ != nullptr) {
            Put(before_);
        }
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

  private:
    void Put(void* function) const {
        DWORD protection = 0;
        VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &protection);
        *slot_ = function;
        VirtualProtect(slot_, sizeof *slot_, protection, &protection);
    }

    void** slot_;
    void* before_ = nullptr;
};

} // namespace tests
