// The segmented date field ("vel_dateedit"): an edit whose keys go through DateEditModel, with a
// calendar button (and optionally a copy button) in its frame that drops a CVelCalendar down
// under it. Asked for its text it answers the canonical "2024-03-31" the data exchange parses.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/date_edit_model.h"
#include "controls/vel_controls_win.h"

class CVelCalendar;

class VARION_API CVelDateEdit : public CVelEditBase {
 public:
  // Attaches a window-owned date field to an existing edit; returns the one already attached.
  static CVelDateEdit* Attach(HWND edit);
  static CVelDateEdit* FromHandle(HWND window);
  // Where "today" comes from for fields attached from now on (the system clock when null); the
  // clock must outlive them.
  static void SetDefaultClock(const DateTools::IClock* clock);

  // Rebuilds the fields from a pattern ("dd-mm-rrrr"; empty: the user's short date format) with
  // redrawing off, then shows the value in them.
  void SetPattern(const std::string& pattern);
  const varion::DateEditModel& Model() const { return m_model; }
  COleDateTime GetValue() const { return m_model.GetValue(); }
  bool SetValue(const COleDateTime& value);
  // Null leaves a limit unset; see DateEditModel::SetRange.
  bool SetRange(const COleDateTime& lower, const COleDateTime& upper);
  void ShowCopyButton(bool show);
  bool IsCopyButtonShown() const { return m_showCopy; }

  // The drop-down calendar: opened under the field (above it when the screen ends below),
  // closed by Enter, Esc, Tab, F4, a click elsewhere, deactivation and the field losing focus.
  void DropDown();
  void CloseUp();
  bool IsDroppedDown() const;
  CVelCalendar* GetCalendar() const { return m_calendar; }
  HWND GetTooltip() const { return m_tooltip.get(); }

  enum Button { kNoButton = -1, kCalendarButton = 0, kCopyButton = 1 };
  // A button's rectangle in window coordinates (GetWindowRect's origin); empty when not shown.
  RECT ButtonRect(Button button) const;
  // The text the copy button puts on the clipboard: the day as the field shows it.
  std::string GetCopyText() const;

  static constexpr UINT_PTR kHoverTimer = 1;
  static constexpr UINT kHoverMs = 10;
  static constexpr UINT kCopiedTipMs = 3000;

 protected:
  friend class CVelControlBase;
  CVelDateEdit();
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  void Initialize();
  void Apply(const varion::DateEditResult& r);
  void ShowText();
  void PlaceCaret();
  void NotifyValueChanged();
  void UpdateFrame();
  void UpdateTooltips();
  void PaintButtons();
  Button ButtonAt(POINT screen) const;
  void OnButtonClick(Button button);
  void CopyToClipboard();
  void PasteFromClipboard();
  bool IsKeyForCalendar(WPARAM key) const;

  LRESULT OnChar(WPARAM ch, LPARAM lParam);
  LRESULT OnKeyDown(UINT msg, WPARAM key, LPARAM lParam);
  LRESULT OnSetText(LPARAM text);
  LRESULT OnGetText(WPARAM size, LPARAM buffer) const;
  LRESULT OnNcHitTest(LPARAM lParam);
  LRESULT OnNotify(const NMHDR* header);

  varion::DateEditModel m_model;
  CVelCalendar* m_calendar = nullptr;  // belongs to m_calendarWindow
  varion::unique_window m_calendarWindow;
  varion::unique_bitmap m_calendarBitmap, m_calendarDisabledBitmap;
  varion::unique_window m_tooltip;
  varion::WindowTimer m_hoverTimer;
  Button m_hot = kNoButton;
  bool m_showCopy = false;
};
