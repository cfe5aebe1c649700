// Memory that runs out when it is told to.
#include "tests/faults/faultymemory.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <link.h>

// What the C library has its own functions call; these are replaced in this program.
extern "C" {
void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* memory, std::size_t bytes);
void* __libc_memalign(std::size_t alignment, std::size_t bytes);
void __libc_free(void* memory);
}

namespace tests {

namespace {

std::atomic<bool> isCounting{false};
std::atomic<bool> hasRunOut{false};
std::atomic<int> allocations{0};
std::atomic<int> firstToFail{0};
std::atomic<bool> isLasting{false};
std::atomic<long> living{0};

// The code of libraries whose allocations always work.
struct Range {
    std::uintptr_t from = 0;
    std::uintptr_t to = 0;
};
constexpr int MostSpared = 4;
Range spared[MostSpared];
int sparedCount = 0;

bool IsSpared(const void* caller) {
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    return std::any_of(spared, spared + sparedCount,
                       [&](const Range& range) { return address >= range.from && address < range.to; });
}

void Spare(const dl_phdr_info& library) {
    for (int i = 0; i < library.dlpi_phnum && sparedCount < MostSpared; ++i) {
        const auto& part = library.dlpi_phdr[i];
        if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
            const std::uintptr_t start = library.dlpi_addr + part.p_vaddr;
            spared[sparedCount++] = {start, start + part.p_memsz};
        }
    }
}

// `caller` is the address behind the call.
bool RunsOut(const void* caller) {
    if (!isCounting || IsSpared(caller)) {
        return false;
    }
    const int number = ++allocations;
    const bool fails = number == firstToFail || (isLasting && number > firstToFail);
    if (fails) {
        hasRunOut = true;
        errno = ENOMEM;
    }
    return fails;
}

void* Counted(void* memory) {
    living += memory != nullptr ? 1 : 0;
    return memory;
}

} // namespace

void BeginMemoryFault(int number, Failing failing) {
    isCounting = false;
    hasRunOut = false;
    allocations = 0;
    firstToFail = number;
    isLasting = failing == Failing::Onwards;
    isCounting = true;
}

bool EndMemoryFault() {
    isCounting = false;
    return hasRunOut;
}

void SpareLibraries(const std::vector<std::string>& names) {
    sparedCount = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* library, std::size_t, void* wanted) {
            for (const std::string& name : *static_cast<const std::vector<std::string>*>(wanted)) {
                if (std::strstr(library->dlpi_name, name.c_str()) != nullptr) {
                    Spare(*library);
                }
            }
            return 0;
        },
        const_cast<std::vector<std::string>*>(&names));
}

int CountedAllocations() { return allocations; }

long LivingAllocations() { return living; }

} // namespace tests

#pragma GCC visibility push(default) // for libraries to find
extern "C" {

void* malloc(std::size_t bytes) noexcept {
    return tests::RunsOut(__builtin_return_address(0)) ? nullptr : tests::Counted(__libc_malloc(bytes));
}

void* calloc(std::size_t count, std::size_t bytes) noexcept {
    return tests::RunsOut(__builtin_return_address(0)) ? nullptr : tests::Counted(__libc_calloc(count, bytes));
}

void* realloc(void* memory, std::size_t bytes) noexcept {
    if (bytes != 0 && tests::RunsOut(__builtin_return_address(0))) {
        return nullptr;
    }
    void* const moved = __libc_realloc(memory, bytes);
    if (memory == nullptr) {
        return tests::Counted(moved);
    }
    tests::living -= bytes == 0 ? 1 : 0;
    return moved;
}

void* memalign(std::size_t alignment, std::size_t bytes) noexcept {
    return tests::RunsOut(__builtin_return_address(0)) ? nullptr : tests::Counted(__libc_memalign(alignment, bytes));
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept { return memalign(alignment, bytes); }

int posix_memalign(void** memory, std::size_t alignment, std::size_t bytes) noexcept {
    void* const made = memalign(alignment, bytes);
    *memory = made != nullptr ? made : *memory;
    return made != nullptr ? 0 : ENOMEM;
}

void free(void* memory) noexcept {
    tests::living -= memory != nullptr ? 1 : 0;
    __libc_free(memory);
}

} // extern "C"
#pragma GCC visibility pop
