// Start-up and shut-down. Sessions are counted one by one, for callers may leave some open for good.
#include "imaginglibrary/flat/sessions.h"

#include "imaginglibrary/flat/flattypes.h"
#include "imaginglibrary/operations/parallel.h"

#include <atomic>
#include <mutex>
#include <new>
#include <set>
#include <vector>

namespace imaginglibrary {

namespace {

class Sessions {
  public:
    std::uintptr_t Open() {
        const std::lock_guard lock(mutex_);
        const std::uintptr_t token = ++last_;
        open_.insert(token);
        count_ = open_.size();
        return token;
    }

    // A token that was never given out, or was given back already, is passed over. Nobody can open a session while what
    // the last one left behind is cleared away.
    void Close(std::uintptr_t token) {
        const std::lock_guard lock(mutex_);
        const bool wasOpen = open_.erase(token) != 0;
        count_ = open_.size();
        if (wasOpen && open_.empty()) {
            for (void (*clear)() : clearers_) {
                clear();
            }
            EndWaitingThreads();
        }
    }

    void CallAtLast(void (*clear)()) {
        const std::lock_guard lock(mutex_);
        clearers_.push_back(clear);
    }

    bool Any() const { return count_ != 0; }

  private:
    std::mutex mutex_;
    std::set<std::uintptr_t> open_;
    std::vector<void (*)()> clearers_;
    std::uintptr_t last_ = 0;
    std::atomic<std::size_t> count_ = 0;
};

Sessions& TheSessions() {
    static Sessions sessions;
    return sessions;
}

constexpr bool IsKnownVersion(std::uint32_t version) { return version >= 1 && version <= 3; }

} // namespace

bool HasSession() { return TheSessions().Any(); }

void CallAtLastShutdown(void (*clear)()) { TheSessions().CallAtLast(clear); }

// The background thread that a caller may suppress exists in the platform's library only; here there is nothing to
// suppress, and the hooks of the output record do nothing.
FLAT_EXPORT Status FLAT_CALL GdiplusStartup(std::uintptr_t* token, const GdiplusStartupInput* input,
                                            GdiplusStartupOutput* output) {
    if (token == nullptr || input == nullptr || (input->suppressBackgroundThread != 0 && output == nullptr)) {
        return Status::InvalidParameter;
    }
    if (!IsKnownVersion(input->gdiplusVersion)) {
        return Status::UnsupportedGdiplusVersion;
    }
    try {
        *token = TheSessions().Open();
    } catch (const std::bad_alloc&) {
        return Status::OutOfMemory;
    }
    if (output != nullptr) {
        *output = {};
    }
    return Status::Ok;
}

FLAT_EXPORT void FLAT_CALL GdiplusShutdown(std::uintptr_t token) { TheSessions().Close(token); }

} // namespace imaginglibrary
