// Which control the mouse was last seen over, for labels that let the mouse through.
#pragma once

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace lumbrix {

class HoveredControl {
  public:
    // These controls are links: a press on them does something.
    explicit HoveredControl(std::vector<int> links) : links_(std::move(links)) {}

    // The mouse is over a control, by its id, over the plain window, whose id is 0, or, for nothing, over neither: then
    // the one before stays.
    void MoveOver(std::optional<int> control) { control_ = control.value_or(control_); }

    // The control remembered, 0 for none yet.
    int Id() const { return control_; }
    bool IsLink() const { return std::find(links_.begin(), links_.end(), control_) != links_.end(); }

  private:
    std::vector<int> links_;
    int control_ = 0;
};

} // namespace lumbrix
