// What the test's own process holds of the system's resources.
#include "tests/support/resources.h"

#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tests {

namespace {

template <class Function> Function* SystemFunction(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name)));
}

bool IsWine() { return SystemFunction<void()>("wine_get_version") != nullptr; }

// One of the entries that the process's environment block leads to.
struct GdiTableEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t generation;
    std::uint8_t type; // 0 for a free one
    std::uint8_t flags;
    std::uint64_t data;
};

int CountEntriesOfGdiTable() {
    constexpr std::size_t TableInEnvironment = sizeof(void*) == 4 ? 0x94 : 0xF8;
    constexpr int Entries = 65536;
    const auto* environment = reinterpret_cast<const char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const auto* table = *reinterpret_cast<GdiTableEntry* const*>(environment + TableInEnvironment);
    return static_cast<int>(std::count_if(table, table + Entries, [](const auto& entry) { return entry.type != 0; }));
}

// A handle's low half counts the places of Wine's table from 0x20 on, in steps of 2. A new one takes a free place where
// there is one; else the table becomes longer by it. So the one that makes it longer tells how many there are.
int CountPlacesOfWineUserTable() {
    constexpr std::size_t MoreThanAreFree = 4000;
    static std::uintptr_t longest = 0;
    std::vector<HMENU> made;
    std::uintptr_t place = 0;
    do {
        made.push_back(CreateMenu());
        place = (reinterpret_cast<std::uintptr_t>(made.back()) & 0xFFFF) / 2 - 0x10;
    } while (made.back() != nullptr && (longest == 0 ? made.size() < MoreThanAreFree : place <= longest));
    const int count = static_cast<int>(place + 1 - made.size());
    longest = std::max(longest, place);
    std::for_each(made.begin(), made.end(), DestroyMenu);
    return count;
}

} // namespace

int CountGdiObjects() {
    return IsWine() ? CountEntriesOfGdiTable() : static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
}

int CountUserObjects() {
    return IsWine() ? CountPlacesOfWineUserTable()
                    : static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
}

// Wine's GetProcessHandleCount tells of none either, so there the list of all handles in the session is gone through.
int CountHandles() {
    if (!IsWine()) {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return static_cast<int>(count);
    }
    struct Entry {
        ULONG process;
        UCHAR type;
        UCHAR flags;
        USHORT value;
        void* object;
        ACCESS_MASK access;
    };
    struct List {
        ULONG count;
        Entry entries[20000];
    };
    constexpr ULONG AllHandles = 16;
    static const auto query = SystemFunction<LONG WINAPI(ULONG, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
    const auto list = std::make_unique<List>();
    if (query(AllHandles, list.get(), sizeof *list, nullptr) != 0) {
        return -1;
    }
    const ULONG own = GetCurrentProcessId();
    return static_cast<int>(std::count_if(list->entries, list->entries + list->count,
                                          [own](const Entry& entry) { return entry.process == own; }));
}

std::int64_t CountPrivateBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<std::int64_t>(counters.PagefileUsage);
}

std::int64_t CountHeapBytes() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    std::int64_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? static_cast<std::int64_t>(entry.cbData) : 0;
        }
    }
    return bytes;
}

} // namespace tests
