// What is known of damage in one file's image data, and whether it is put up with.
#pragma once

#include "imaginglibrary/core/status.h"

#include <atomic>

namespace imaginglibrary {

// Shared by all pictures and readers of the file, on any thread.
class FileDamage {
  public:
    // To be called where data turn out to be damaged or missing: Ok where grey shall stand in their place,
    // UndecodableContent where damage was refused.
    Status Meet() {
        isMet_ = true;
        return isRefused_ ? UndecodableContent : Status::Ok;
    }

    // From now on damage is undecodable.
    void Refuse() { isRefused_ = true; }

    bool IsMet() const { return isMet_; }
    bool IsRefused() const { return isRefused_; }

  private:
    std::atomic<bool> isMet_ = false;
    std::atomic<bool> isRefused_ = false;
};

} // namespace imaginglibrary
