// Makes screen colours from CIE L*a*b*.
#pragma once

#include "imaginglibrary/core/pixelformat.h"

namespace imaginglibrary {

// The opaque sRGB colour of a lightness (0 to 100) and two chromas under D50, the light of prints: its white becomes
// the screen's, as colour management does it. What the screen cannot show is cut off channel by channel.
Color ColorFromLab(double lightness, double a, double b);

} // namespace imaginglibrary
