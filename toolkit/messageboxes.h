// Messages as the platform shows them.
#pragma once

#include "toolkit/messages.h"

#include <windows.h>

namespace lumbrix {

// Plain message boxes. They have no owner, so the windows that are open go on being served.
class MessageBoxes : public Messages {
  public:
    void Show(const std::string& text, const std::string& title) override;
    void ShowTechnical(const std::string& text) override;
    bool Confirm(const std::string& text, const std::string& title) override;
    void BeginWaiting() override;
    void EndWaiting() override;

  private:
    int ShowBox(const std::string& text, const std::string& title, UINT style) const;

    int waits_ = 0;
    HCURSOR before_ = nullptr; // the first wait
};

} // namespace lumbrix
