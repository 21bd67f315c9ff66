// A balloon pointing at a control, drawn by a tracked tooltip window. Edit controls have their
// own balloon message, but not every system draws it (Wine ignores it), so the library's error
// texts and info tips all come through this one window kind.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"
#include "base/handles_win.h"

namespace varion {

class VARION_API BalloonTip {
 public:
  BalloonTip() = default;
  BalloonTip(const BalloonTip&) = delete;
  BalloonTip& operator=(const BalloonTip&) = delete;

  // Shows the balloon below the middle of `anchor`, or pointing at `at` (screen coordinates).
  // `icon` is a TTI_ value; the title may be empty (then no icon shows either, as the tooltip
  // control draws icons beside titles only).
  void Show(HWND anchor, const std::string& title, const std::string& text, int icon, const POINT* at = nullptr);
  void Hide();
  bool IsVisible() const;
  HWND Window() const { return IsWindow(m_tip.get()) ? m_tip.get() : nullptr; }
  // The shown text and title, code page 1250.
  const std::string& Text() const { return m_text; }
  const std::string& Title() const { return m_title; }
  // The TTI_* icon shown beside the title (TTI_NONE without a title).
  int Icon() const { return m_icon; }

 private:
  unique_window m_tip;
  HWND m_anchor = nullptr;
  std::string m_text, m_title;
  int m_icon = 0;
};

// A tip balloon at a control that goes away by itself after `milliseconds` (or with the
// control's window). One per control: a new tip at the same control replaces the previous one.
// `style` takes the MB_ICON* bits of a message box and picks the balloon's icon. Returns the
// tooltip window.
VARION_API HWND TipMsgBox(HWND control, const std::string& title, const std::string& text, UINT style,
                          UINT milliseconds = 8000);
// The same tip pointing at `at` (screen coordinates) instead of below the control's middle.
VARION_API HWND TipMsgBoxAt(HWND control, POINT at, const std::string& title, const std::string& text, UINT style,
                            UINT milliseconds);
// The tip shown at the control, or nullptr when none shows.
VARION_API HWND CurrentTipWindow(HWND control);
// The text of the tip shown at the control; empty when none shows.
VARION_API std::string CurrentTipText(HWND control);
// The TTI_* icon of the tip shown at the control; TTI_NONE when none shows.
VARION_API int CurrentTipIcon(HWND control);
// Hides the control's tip; with nullptr every tip of the thread.
VARION_API void HideTipMsgBox(HWND control = nullptr);

// The TTI_* icon for MB_ICON* bits.
VARION_API int TipIconFromStyle(UINT style);

}  // namespace varion
