// The amount field: an edit whose every keystroke, paste and set text goes through the portable
// CurrencyEditModel, which answers what to show. CVelCurrencyEnterEdit also reports Enter.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "controls/calculator_win.h"
#include "controls/currency_model.h"
#include "controls/vel_controls_win.h"

namespace varion {

// The message the Enter variant sends its parent on Enter: wParam the control's identifier,
// lParam 0.
inline constexpr UINT kMsgCurrencyEnter = 0x471;

// A refused digit beeps with MessageBeep(0x30). Tests put a counter in its place; the previous
// hook comes back, and nullptr restores MessageBeep.
using CurrencyBeepHook = void (*)(UINT type);
VARION_API CurrencyBeepHook SetCurrencyBeepHook(CurrencyBeepHook hook);

}  // namespace varion

class VARION_API CVelCurrencyEdit : public CVelEditBase {
 public:
  // Attaches a window-owned field to an existing edit and shows its value (the edit's text read
  // as an amount, else zero); returns the field already attached when there is one.
  static CVelCurrencyEdit* Attach(HWND edit);
  static CVelCurrencyEdit* FromHandle(HWND window);
  // For the creation hook: the edit's creation messages are still to come, so the value is shown
  // once the edit has been created.
  static BOOL AttachCreating(HWND edit, CREATESTRUCTW* create);

  // Decimals 0..4 with the currency symbol, or one of the commands kSetBalloonPending,
  // kSetShowCopyButton, kSetForbidMinus, kSetAllowMinus in `decimals`.
  void OnSetSettings(const std::string& symbol, unsigned decimals);

  varion::Amount GetValue() const { return m_model.Value(); }
  const varion::CurrencyEditModel& Model() const { return m_model; }

  // The text a copy or a cut puts on the clipboard: the selected part of the amount (the whole
  // amount with nothing selected), without thousands separators and symbol.
  virtual std::string GetCopyText();
  // A pasted text goes through the set-text rules, with every "-" removed while minus is
  // forbidden.
  virtual void PasteText(const std::string& text);

  // The buttons in the frame, in window coordinates (empty without the button), and the
  // tooltip window that names them (made when the mouse first comes over a button).
  const RECT& CalcButtonRect() const { return m_calcRect; }
  const RECT& CopyButtonRect() const { return m_copyRect; }
  HWND Tooltip() const { return m_tooltip.get(); }
  bool IsButtonHot() const { return m_hot; }
  bool IsHoverTimerRunning() const { return m_hoverTimer.IsSet(); }

  // Shows the calculator (made on first use) against the field with the field's font, decimals,
  // symbol and value, or hides it. Without a calculator window the field works on without one.
  void DropDownCalc(bool show);
  bool IsCalcShown() const { return m_calc && m_calc->IsShown(); }
  varion::CalculatorWindow* Calculator() const { return m_calc.get(); }

 protected:
  friend class CVelControlBase;
  CVelCurrencyEdit();

  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
  virtual LRESULT OnKeyDown(WPARAM vk, LPARAM flags);
  virtual LRESULT OnGetDlgCode(WPARAM vk, LPARAM msg);

  // Does what a model result says: beep, text, selection, modified flag, posted commands.
  // `setText`: the result of a text set by a program, shown as the edit's own set-text shows it.
  void Apply(const varion::CurrencyEditModel::Result& r, bool setText = false);
  varion::CurrencySelection ReadSelection();
  // Shows the value the edit's own text holds; once the edit exists.
  void Initialize();

 private:
  void SyncStyle();
  void ShowDisplay(const std::string& display, bool setText);
  LRESULT OnChar(WPARAM ch);
  LRESULT OnGetText(WPARAM size, LPARAM buffer) const;
  LRESULT OnSetText(LPARAM text);
  void OnCut();
  void OnPaste();
  void OnReplaceSel(LPARAM text);
  // The frame's buttons.
  LRESULT OnNcCalcSize(WPARAM wp, LPARAM lp);
  LRESULT OnNcHitTest(WPARAM wp, LPARAM lp);
  bool OnNcButtonDown(LPARAM screenPoint);
  void OnHoverTimer();
  void OnStyleChanged(DWORD oldStyle, DWORD newStyle);
  void DrawButtons();
  void RedrawFrame();
  void UpdateTooltips();
  void RelayToTooltip(UINT mouseMsg, LPARAM screenPoint);
  POINT ToWindow(LPARAM screenPoint) const;
  void ButtonClicked();
  void CopyBtnClicked();
  bool OnCalcNotify(const NMHDR& header);
  void SendCalcSettings();

  varion::CurrencyEditModel m_model;
  std::wstring m_shown;        // the display text last given to the edit
  bool m_initialized = false;  // the value has been shown

  varion::unique_bitmap m_calcBitmap, m_calcBitmapDisabled, m_copyBitmap;
  SIZE m_calcSize{}, m_copySize{};
  RECT m_calcRect{}, m_copyRect{};  // window coordinates
  POINT m_clientOrigin{};           // the client area's corner in window coordinates
  bool m_hot = false;
  varion::WindowTimer m_hoverTimer;
  varion::unique_window m_tooltip;
  std::unique_ptr<varion::CalculatorWindow> m_calc;
};

// The amount field that also reports Enter to its parent (message kMsgCurrencyEnter).
class VARION_API CVelCurrencyEnterEdit : public CVelCurrencyEdit {
 public:
  static CVelCurrencyEnterEdit* Attach(HWND edit);
  static BOOL AttachCreating(HWND edit, CREATESTRUCTW* create);

 protected:
  friend class CVelControlBase;
  CVelCurrencyEnterEdit() = default;
  LRESULT OnKeyDown(WPARAM vk, LPARAM flags) override;
  LRESULT OnGetDlgCode(WPARAM vk, LPARAM msg) override;
};
