// The drop-down calculator of the amount field (class "vel_calculator"): a pocket calculator on
// CalculatorModel that tells the field it serves what its value would be, and closes when done.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/calculator_model.h"
#include "controls/window_base_win.h"

// What the calculator sends its owner field (WM_NOTIFY, identifier 1): the value as the field's
// plain text.
struct NMCLCVALUECHANGE {
  NMHDR hdr;
  char value[64];  // code page 1250, NUL-terminated
};

namespace varion {

// The codes of NMCLCVALUECHANGE: the value changed while the calculator is open; the calculator
// closed (the value is the one to keep: the result on Enter, the value it opened with on Esc).
inline constexpr UINT kCalcNotifyValueChange = 1;
inline constexpr UINT kCalcNotifyCloseUp = 2;

class VARION_API CalculatorWindow : public Window {
 public:
  static constexpr int kControlId = 1;
  // The sign key of the keypad, for KeyRect and Press.
  static constexpr char kSignKey = 's';

  // The hidden calculator: a child of the desktop, a topmost tool window. nullptr when the
  // window cannot be made.
  static std::unique_ptr<CalculatorWindow> Create();
  ~CalculatorWindow() override;

  // Shows the calculator below `anchor` (screen coordinates), or above it where the monitor has
  // no room below, without taking the activation from the owner.
  void DropDown(const RECT& anchor);
  // Hides the calculator; nothing is reported.
  void Hide();
  // Hides it and reports the close-up: with the value it opened with when `cancel`, else with
  // its result (a pending operation is completed first).
  void CloseUp(bool cancel);
  bool IsShown() const;

  // A key of the keypad pressed: a character CalculatorModel::OnChar reads, or kSignKey.
  void Press(char key);
  // Where a key of the keypad is, in client coordinates; empty for a key it does not have.
  RECT KeyRect(char key) const;
  const CalculatorModel& Model() const { return m_model; }
  HWND Owner() const { return m_owner; }

  // Where a window of `size` goes against `anchor` within `workArea`: below and left-aligned,
  // above when it does not fit below, moved inside the work area otherwise.
  static POINT PlaceAgainst(const RECT& anchor, SIZE size, const RECT& workArea);

 protected:
  CalculatorWindow() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  static LRESULT CALLBACK MouseHook(int code, WPARAM wParam, LPARAM lParam);
  void Layout();
  void Paint(HDC dc);
  void OnKeyDown(WPARAM vk);
  void OnChar(WPARAM ch);
  void OnButtonDown(POINT p);
  void Notify(UINT code, const std::string& value);
  void ReportValue();

  CalculatorModel m_model;
  HWND m_owner = nullptr;
  HFONT m_font = nullptr;  // the owner's, not ours to free
  std::string m_symbol;
  std::string m_opened;    // the value text it was given before showing
  std::string m_reported;  // the value last reported
  SIZE m_key{}, m_size{};
  int m_displayHeight = 0;
  int m_pressed = -1;  // the key drawn pressed
  unique_hook m_mouseHook;
};

}  // namespace varion
