// The flexible layout of a dialog: moves and stretches controls as the dialog grows (the rules
// are in flex_layout.h), keeps the smallest and the fixed-width sizes, and remembers the
// dialog's placement in the application's profile.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "base/export.h"
#include "framework/flex_layout.h"
#include "framework/window_placement.h"

class VARION_API CVelFlexPlugin {
 public:
  // Records the dialog's client size and window rectangle as the base of the layout.
  void Attach(HWND dialog);
  HWND GetDialog() const { return m_dialog; }
  SIZE GetBaseClientSize() const { return m_baseClient; }

  CVelFlexConstraintList& Constraints() { return m_constraints; }
  // The control's current rectangle becomes its base when the constraint is added.
  bool AddIfNotPresentFlexConstraint(UINT ctrlId, double left, double right, double top, double bottom);
  void ReplaceFlexConstraint(UINT ctrlId, double left, double right, double top, double bottom, bool keepBase = true);
  void ReplaceFlexConstraint(UINT ctrlId, const CVelFlexHorizontalConstraint& horizontal,
                             const CVelFlexVerticalConstraint& vertical, bool keepBase = true);
  bool SetFlexConstraintBaseRect(UINT ctrlId, const RECT& rect);

  // Moves every constrained control for a client area of cx by cy: one deferred batch, with
  // nested dialogs moved directly afterwards so that their own layout runs after ours.
  void PositionControls(int cx, int cy);
  // Sends the dialog a size message with its current client size.
  void OnRedoFlexLayout();

  // Size limits: the smallest size the user can drag to (0: the template size), and a fixed
  // width.
  void SetMinTracking(int cx, int cy);
  void SetNoHResize(bool noHResize) { m_noHResize = noHResize; }
  void OnGetMinMaxInfo(MINMAXINFO* info) const;

  // Placement in the application's profile under this section; empty: not remembered.
  void SetProfileSection(std::string section) { m_section = std::move(section); }
  const std::string& GetProfileSection() const { return m_section; }
  // The size used when there is no usable stored placement (0: the template size).
  void SetDefaultSize(int cx, int cy);
  void SaveToReg() const;
  // Applies the stored placement, or the default size when there is none or it cannot be used.
  // True when a stored placement was applied.
  bool LoadFromReg();
  // Whether the stored placement asks for a maximised window (the caller shows it so).
  bool ShouldShowMaximized() const { return m_showMaximized; }

  // The checks applied to a stored rectangle, against the monitors of now.
  bool IsValidWindowRect(const RECT& rect) const;
  bool IsValidWindowPos(int left, int top) const;
  bool IsValidWindowSize(int cx, int cy) const;

  // The work areas of all monitors, in screen coordinates.
  static std::vector<varion::FlexRect> WorkAreas();

 private:
  void ApplyDefaultSize();
  SIZE MinTrackSize() const;

  HWND m_dialog = nullptr;
  SIZE m_baseClient{0, 0};
  RECT m_baseWindow{0, 0, 0, 0};
  CVelFlexConstraintList m_constraints;
  SIZE m_minTrack{0, 0};
  bool m_noHResize = false;
  std::string m_section;
  SIZE m_defaultSize{0, 0};
  bool m_showMaximized = false;
};
