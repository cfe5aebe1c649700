// The imaging library in memory, and sessions of it.
#include "imaging/session.h"

#include "imaging/gdiplus/bindings.h"

#include <mutex>
#include <new>
#include <set>
#include <utility>

namespace lumbrix {

namespace {

// The sessions that were started here and not ended yet.
class OpenSessions {
  public:
    void Add(SessionToken token) {
        const std::lock_guard lock(mutex_);
        tokens_.insert(token);
    }

    void Remove(SessionToken token) {
        const std::lock_guard lock(mutex_);
        if (const auto found = tokens_.find(token); found != tokens_.end()) {
            tokens_.erase(found);
        }
    }

    std::multiset<SessionToken> TakeAll() {
        const std::lock_guard lock(mutex_);
        return std::exchange(tokens_, {});
    }

  private:
    std::mutex mutex_;
    std::multiset<SessionToken> tokens_;
};

OpenSessions& TheOpenSessions() {
    static OpenSessions sessions;
    return sessions;
}

std::mutex loading;
int loads = 0; // that no unload has answered yet, those that failed among them

void End(SessionToken token) {
    TheOpenSessions().Remove(token);
    GdiplusShutdown(token);
}

} // namespace

void LoadImagingLibrary() {
    const std::lock_guard lock(loading);
    ++loads;
    if (ImagingLibraryHandle == nullptr) {
        ImagingLibraryHandle = LoadModule("gdiplus.dll");
    }
}

void UnloadImagingLibrary() {
    const std::lock_guard lock(loading);
    if (loads == 0 || --loads > 0) {
        return;
    }
    for (const SessionToken token : TheOpenSessions().TakeAll()) {
        GdiplusShutdown(token);
    }
    if (ImagingLibraryHandle != nullptr) {
        UnloadModule(ImagingLibraryHandle);
        ImagingLibraryHandle = nullptr;
    }
}

FlatStatus StartLastingSession(SessionToken* token) {
    const GdiplusStartupInput input{1, nullptr, 0, 0};
    const FlatStatus status = GdiplusStartup(token, &input, nullptr);
    if (status != 0 || ImagingLibraryHandle == nullptr) {
        return status;
    }
    try {
        TheOpenSessions().Add(*token);
    } catch (const std::bad_alloc&) {
        GdiplusShutdown(*token);
        return OutOfMemory;
    }
    return status;
}

void EndLastingSession(SessionToken token) {
    if (token != 0) {
        End(token);
    }
}

StatusValue StartImagingSession() {
    SessionToken token = 0;
    return StartLastingSession(&token) == 0 ? static_cast<StatusValue>(token) : NoSession;
}

ImagingSession::ImagingSession() {
    SessionToken token = 0;
    refusal_ = StartLastingSession(&token);
    token_ = refusal_ == Done ? static_cast<StatusValue>(token) : NoSession;
}

void EndImagingSession(StatusValue token) { End(static_cast<SessionToken>(token)); }

} // namespace lumbrix
