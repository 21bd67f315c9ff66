// The arithmetic of the flexible layout: each control keeps its template rectangle and four
// factors saying how much of the dialog's growth moves each of its edges. The window side
// (CVelFlexPlugin) records the rectangles and moves the controls; everything else is here.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/export.h"

namespace varion {

struct FlexRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool operator==(const FlexRect&) const = default;
};

}  // namespace varion

// Left and right factors: 0, 0 keeps the control where it is, 0, 1 stretches it with the
// dialog's width, 1, 1 moves it with the right edge.
class VARION_API CVelFlexHorizontalConstraint {
 public:
  CVelFlexHorizontalConstraint(double left = 0, double right = 0) : m_left(left), m_right(right) {}
  double Left() const { return m_left; }
  double Right() const { return m_right; }
  bool operator==(const CVelFlexHorizontalConstraint&) const = default;

 private:
  double m_left, m_right;
};

// Top and bottom factors, the same for the dialog's height.
class VARION_API CVelFlexVerticalConstraint {
 public:
  CVelFlexVerticalConstraint(double top = 0, double bottom = 0) : m_top(top), m_bottom(bottom) {}
  double Top() const { return m_top; }
  double Bottom() const { return m_bottom; }
  bool operator==(const CVelFlexVerticalConstraint&) const = default;

 private:
  double m_top, m_bottom;
};

struct VARION_API CVelFlexConstraint {
  std::uint32_t ctrlId = 0;
  CVelFlexHorizontalConstraint horizontal;
  CVelFlexVerticalConstraint vertical;
  // The control's rectangle at the base client size, in client coordinates; unset until the
  // window side records it.
  std::optional<varion::FlexRect> base;
};

class VARION_API CVelFlexConstraintList {
 public:
  // Factors in the order left, right, top, bottom. False (and nothing changed) when the control
  // already has a constraint.
  bool AddIfNotPresent(std::uint32_t ctrlId, double left, double right, double top, double bottom);
  // Sets the control's constraint whether or not it has one. With keepBase the recorded base
  // rectangle survives the replacement.
  void Replace(std::uint32_t ctrlId, const CVelFlexHorizontalConstraint& horizontal,
               const CVelFlexVerticalConstraint& vertical, bool keepBase = true);
  bool Remove(std::uint32_t ctrlId);
  // False when the control has no constraint.
  bool SetBaseRect(std::uint32_t ctrlId, const varion::FlexRect& rect);

  const CVelFlexConstraint* Find(std::uint32_t ctrlId) const;
  const std::vector<CVelFlexConstraint>& Items() const { return m_items; }
  bool IsEmpty() const { return m_items.empty(); }
  void Clear() { m_items.clear(); }

  // The rectangle of one constraint at a new client size. Growth below the base size counts as
  // zero, so controls never shrink below their template size (deliberately: a dialog dragged
  // smaller than its template clips instead of squeezing its controls). Each product of growth
  // and factor is rounded to the nearest integer, halves away from zero.
  static varion::FlexRect Position(const CVelFlexConstraint& constraint, const varion::FlexRect& base, int baseWidth,
                                   int baseHeight, int newWidth, int newHeight);

 private:
  CVelFlexConstraint* FindMutable(std::uint32_t ctrlId);
  std::vector<CVelFlexConstraint> m_items;
};
