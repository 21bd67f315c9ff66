#include "framework/dock_edge.h"

namespace varion {
namespace {

bool Between(int v, int lo, int hi) { return v >= lo && v <= hi; }

}  // namespace

DockResult GetErrorsWndDockEdge(const FlexRect& d, int errorsWidth, int errorsHeight, DockPoint c) {
  const bool alongX = Between(c.x, d.left, d.right);
  const bool alongY = Between(c.y, d.top, d.bottom);
  if (alongX && Between(c.y, d.bottom - kDockBand, d.bottom + kDockBand)) return {DockEdge::Bottom, {d.left, d.bottom}};
  if (alongY && Between(c.x, d.left - kDockBand, d.left + kDockBand))
    return {DockEdge::Left, {d.left - errorsWidth, d.top}};
  if (alongX && Between(c.y, d.top - kDockBand, d.top + kDockBand))
    return {DockEdge::Top, {d.left, d.top - errorsHeight}};
  if (alongY && Between(c.x, d.right - kDockBand, d.right + kDockBand)) return {DockEdge::Right, {d.right, d.top}};
  return {};
}

}  // namespace varion
