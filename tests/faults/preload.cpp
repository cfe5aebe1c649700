// Has the calls of a whole process fail, as a variable of its environment says: "write 3 28 onwards" for the third.
#include "tests/faults/faultyfiles.h"
#include "tests/faults/faultymemory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace tests;

constexpr const char* Calls[] = {"open", "read", "write", "flush", "name", "close", "rename", "remove"};
constexpr const char* Manners[] = {"once", "onwards", "halfway"};

__attribute__((constructor)) void BeginFaultOfTheEnvironment() {
    const char* words = std::getenv("FAULT");
    char call[16] = "";
    char manner[16] = "";
    int number = 0;
    int error = 0;
    if (words == nullptr || std::sscanf(words, "%15s %d %d %15s", call, &number, &error, manner) != 4) {
        return;
    }
    Failing failing = Failing::Once;
    for (int i = 0; i < 3; ++i) {
        failing = std::strcmp(manner, Manners[i]) == 0 ? static_cast<Failing>(i) : failing;
    }
    for (int i = 0; i < static_cast<int>(FileCall::Kinds); ++i) {
        if (std::strcmp(call, Calls[i]) == 0) {
            BeginFileFault({static_cast<FileCall>(i), number, error, failing});
        }
    }
    if (std::strcmp(call, "memory") == 0) {
        BeginMemoryFault(number, failing);
    }
}

} // namespace
