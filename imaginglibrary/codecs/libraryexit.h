// The way back out of a C library that reports an error by not returning to its caller.
#pragma once

#include "imaginglibrary/core/status.h"

#include <csetjmp>
#include <type_traits>

namespace imaginglibrary {

// One per library object. An exception cannot pass through C code on every system, so the library's error function
// jumps over it instead: nothing with a destructor may be alive between Run and Leave. Belongs to one thread at a time.
class LibraryExit {
  public:
    // Does `work`, which calls the library; gives back Ok, or what Leave was called with on the way.
    template <class Work> Status Run(const Work& work) {
        static_assert(std::is_trivially_destructible_v<Work>);
        if (setjmp(jump_) != 0) {
            return failure_;
        }
        work();
        return Status::Ok;
    }

    // For the library's callbacks, only while Run is under way.
    [[noreturn]] void Leave(Status failure) {
        failure_ = failure;
        std::longjmp(jump_, 1);
    }

  private:
    std::jmp_buf jump_;
    Status failure_ = Status::Ok;
};

} // namespace imaginglibrary
