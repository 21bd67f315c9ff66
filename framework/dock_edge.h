// Where the errors window docks when the user lets go of it: bands 25 pixels deep on both sides
// of each edge of the dialog's window rectangle, tested in the order bottom, left, top, right.
#pragma once

#include <cstdint>

#include "base/export.h"
#include "framework/flex_layout.h"

namespace varion {

enum class DockEdge : std::uint8_t { None, Bottom, Left, Top, Right };

struct DockPoint {
  int x = 0, y = 0;
  bool operator==(const DockPoint&) const = default;
};

struct DockResult {
  DockEdge edge = DockEdge::None;
  DockPoint topLeft;  // the errors window's new top-left corner; meaningless with DockEdge::None
};

inline constexpr int kDockBand = 25;

// `dialog` in screen coordinates; the errors window's size as width and height; the cursor in
// screen coordinates. A band runs along the whole edge and includes both its ends and its outer
// limit, so a cursor exactly 25 pixels off an edge still docks there.
VARION_API DockResult GetErrorsWndDockEdge(const FlexRect& dialog, int errorsWidth, int errorsHeight, DockPoint cursor);

}  // namespace varion
