// The imaging library in memory, and sessions of it.
#pragma once

#include "imaging/gdiplus/flattypes.h"
#include "imaging/status.h"

namespace lumbrix {

// Loads "gdiplus.dll" by its bare name unless it is loaded; that it cannot be is simply kept, and shows in what the
// operations answer. Loads are counted, those that fail too, and the unload that answers the first of them unloads: it
// ends the sessions that are still open, and with them what was left open in these. One too many does nothing. Not
// while another thread is inside the engine; but threads may load and unload at the same time.
void LoadImagingLibrary();
void UnloadImagingLibrary();

// Starts a session that outlasts one operation; the library's status. Without a loaded library it counts as started,
// and the token stays as it was.
FlatStatus StartLastingSession(SessionToken* token);

// A token of 0 ends nothing.
void EndLastingSession(SessionToken token);

// The token of a new session, or NoSession.
StatusValue StartImagingSession();

// Takes what StartImagingSession returned, NoSession as well.
void EndImagingSession(StatusValue token);

// A session for as long as it lives. One that was refused passes its number to the shutdown all the same.
class ImagingSession {
  public:
    ImagingSession();
    ~ImagingSession() {
        if (!isLeftOpen_) {
            EndImagingSession(token_);
        }
    }
    ImagingSession(const ImagingSession&) = delete;
    ImagingSession& operator=(const ImagingSession&) = delete;

    // Done, or NoSession.
    StatusValue Status() const { return token_ == NoSession ? NoSession : Done; }

    // What the imaging library answered.
    FlatStatus LibraryStatus() const { return refusal_; }

    // From now on the session stays open for good, as some procedures are known to leave theirs.
    void LeaveOpen() { isLeftOpen_ = true; }

  private:
    StatusValue token_;
    FlatStatus refusal_ = Done;
    bool isLeftOpen_ = false;
};

} // namespace lumbrix
