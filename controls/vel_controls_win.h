// The control objects the library attaches to its windows. CVelControlBase gives every library
// edit and combo the three private messages of error display: a faulty control gets a red
// frame (and, in a dialog of ours, a tinted background), the error text shows as a balloon while
// the control has the focus or when the dialog points at it. The currency and date edits derive
// from CVelEditBase.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/balloon_tip_win.h"
#include "controls/window_base_win.h"

class VARION_API CVelControlBase : public varion::Window {
 public:
  ~CVelControlBase() override = default;

  // The library control object attached to a window, or nullptr.
  static CVelControlBase* FromHandle(HWND window) { return FromHandleAs<CVelControlBase>(window); }

  bool IsFaulty() const { return m_faulty; }
  const std::string& GetErrorMessage() const { return m_message; }
  const std::string& GetErrorTitle() const { return m_title; }
  std::uint32_t GetErrorCode() const { return m_code; }
  const varion::BalloonTip& Balloon() const { return m_balloon; }

  // Colours of a faulty control.
  static constexpr COLORREF kFaultyFrame = RGB(220, 0, 0);
  static constexpr COLORREF kFaultyBackground = RGB(255, 228, 228);
  // A brush of kFaultyBackground, shared by all controls, for WM_CTLCOLOR* answers.
  static HBRUSH FaultyBrush();

 protected:
  CVelControlBase() = default;
  // Attaches a new object of type T to an existing window, owned by the window; nullptr when it
  // is no window or another object of the library is attached.
  template <class T>
  static T* AttachNew(HWND window) {
    if (!IsWindow(window)) return nullptr;
    auto* object = new T;
    if (object->AttachWindow(window, kOwnedByWindow)) return object;
    delete object;
    return nullptr;
  }

  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

  virtual void OnMarkFaulty(bool faulty);
  virtual void OnIndicate();
  virtual void OnErrorText(const char* title, const char* message, std::uint32_t code);
  void ShowErrorBalloon();
  void HideBalloon() { m_balloon.Hide(); }
  // Draws the faulty frame over the control's outer edge (also while blinking).
  void DrawFrame();

 private:
  bool m_faulty = false;
  int m_blinkLeft = 0;
  bool m_blinkOn = false;
  std::string m_message, m_title;
  std::uint32_t m_code = 0;
  varion::BalloonTip m_balloon;
  varion::WindowTimer m_blinkTimer, m_balloonTimer;
};

// Every library edit: error display, and nothing else yet.
class VARION_API CVelEditBase : public CVelControlBase {
 public:
  // Attaches a window-owned object to an existing edit; returns the object already attached
  // when there is one.
  static CVelEditBase* Attach(HWND edit);

 protected:
  friend class CVelControlBase;
  CVelEditBase() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
};

// "DropdownCombobox": a combo box with error display.
class VARION_API CVelComboBox : public CVelControlBase {
 public:
  static CVelComboBox* Attach(HWND combo);

 protected:
  friend class CVelControlBase;
  CVelComboBox() = default;
};

// The analytic-account edit: shows an account's text and keeps its identifier (0: none).
class VARION_API CVelAnalitykaEdit : public CVelEditBase {
 public:
  static CVelAnalitykaEdit* Attach(HWND edit);
  static CVelAnalitykaEdit* FromHandle(HWND window);

  void SetAccount(long accountId, const std::string& text);
  long GetAccountId() const { return m_accountId; }

 protected:
  friend class CVelControlBase;
  CVelAnalitykaEdit() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  long m_accountId = 0;
  bool m_settingText = false;
};

// The colour picker ("vel_colorpicker"): a swatch of the chosen colour, or of the automatic
// colour in mode kAutomatic. A click opens the system's colour dialog.
class VARION_API CVelColorPicker : public CVelControlBase {
 public:
  enum Mode : int { kAutomatic = 0, kChosen = 1 };
  static CVelColorPicker* Attach(HWND window);
  static CVelColorPicker* FromHandle(HWND window);

  void SetColor(int mode, COLORREF color);
  int GetMode() const { return m_mode; }
  COLORREF GetColor() const { return m_color; }
  // The colour shown for kAutomatic.
  void SetAutomaticColor(COLORREF color);

 protected:
  friend class CVelControlBase;
  CVelColorPicker() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  void Paint(HDC dc);
  void Choose();
  int m_mode = kAutomatic;
  COLORREF m_color = RGB(0, 0, 0);
  COLORREF m_automatic = GetSysColor(COLOR_WINDOWTEXT);
};
