#include "framework/flex_layout.h"

#include <algorithm>
#include <cmath>

bool CVelFlexConstraintList::AddIfNotPresent(std::uint32_t ctrlId, double left, double right, double top,
                                             double bottom) {
  if (Find(ctrlId)) return false;
  m_items.push_back({ctrlId, {left, right}, {top, bottom}, std::nullopt});
  return true;
}

void CVelFlexConstraintList::Replace(std::uint32_t ctrlId, const CVelFlexHorizontalConstraint& horizontal,
                                     const CVelFlexVerticalConstraint& vertical, bool keepBase) {
  if (CVelFlexConstraint* c = FindMutable(ctrlId)) {
    c->horizontal = horizontal;
    c->vertical = vertical;
    if (!keepBase) c->base.reset();
    return;
  }
  m_items.push_back({ctrlId, horizontal, vertical, std::nullopt});
}

bool CVelFlexConstraintList::Remove(std::uint32_t ctrlId) {
  auto it = std::find_if(m_items.begin(), m_items.end(), [&](const auto& c) { return c.ctrlId == ctrlId; });
  if (it == m_items.end()) return false;
  m_items.erase(it);
  return true;
}

bool CVelFlexConstraintList::SetBaseRect(std::uint32_t ctrlId, const varion::FlexRect& rect) {
  CVelFlexConstraint* c = FindMutable(ctrlId);
  if (!c) return false;
  c->base = rect;
  return true;
}

const CVelFlexConstraint* CVelFlexConstraintList::Find(std::uint32_t ctrlId) const {
  for (const auto& c : m_items)
    if (c.ctrlId == ctrlId) return &c;
  return nullptr;
}

CVelFlexConstraint* CVelFlexConstraintList::FindMutable(std::uint32_t ctrlId) {
  return const_cast<CVelFlexConstraint*>(Find(ctrlId));
}

varion::FlexRect CVelFlexConstraintList::Position(const CVelFlexConstraint& c, const varion::FlexRect& base,
                                                  int baseWidth, int baseHeight, int newWidth, int newHeight) {
  const int dx = std::max(0, newWidth - baseWidth);
  const int dy = std::max(0, newHeight - baseHeight);
  auto shift = [](int growth, double factor) { return static_cast<int>(std::lround(growth * factor)); };
  return {base.left + shift(dx, c.horizontal.Left()), base.top + shift(dy, c.vertical.Top()),
          base.right + shift(dx, c.horizontal.Right()), base.bottom + shift(dy, c.vertical.Bottom())};
}
