#include "framework/dock_edge.h"

#include <gtest/gtest.h>

namespace varion {
namespace {

TEST(DockEdge, BandsAreTestedBottomLeftTopRightAndIncludeTheirLimits) {
  const FlexRect dlg{100, 100, 500, 400};
  const int w = 200, h = 80;
  struct Case {
    const char* what;
    DockPoint cursor;
    DockEdge edge;
    DockPoint topLeft;
  } cases[] = {
      {"just below the bottom", {300, 410}, DockEdge::Bottom, {100, 400}},
      {"exactly 25 below the bottom", {300, 425}, DockEdge::Bottom, {100, 400}},
      {"26 below the bottom", {300, 426}, DockEdge::None, {}},
      {"25 inside the bottom", {300, 375}, DockEdge::Bottom, {100, 400}},
      {"26 inside the bottom", {300, 374}, DockEdge::None, {}},
      {"left of the left edge", {80, 250}, DockEdge::Left, {-100, 100}},
      {"on the top edge", {300, 100}, DockEdge::Top, {100, 20}},
      {"right of the right edge", {525, 250}, DockEdge::Right, {500, 100}},
      {"bottom-left corner goes to the bottom", {100, 400}, DockEdge::Bottom, {100, 400}},
      {"top-left corner goes to the left", {100, 100}, DockEdge::Left, {-100, 100}},
      {"top-right corner goes to the top", {500, 100}, DockEdge::Top, {100, 20}},
      {"bottom-right corner goes to the bottom", {500, 400}, DockEdge::Bottom, {100, 400}},
      {"beside the bottom band, past the right end", {520, 410}, DockEdge::None, {}},
      {"middle of the dialog", {300, 250}, DockEdge::None, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    DockResult r = GetErrorsWndDockEdge(dlg, w, h, c.cursor);
    EXPECT_EQ(r.edge, c.edge);
    if (c.edge != DockEdge::None) {
      EXPECT_EQ(r.topLeft, c.topLeft);
    }
  }
}

}  // namespace
}  // namespace varion
