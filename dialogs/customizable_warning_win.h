// The warning windows: CCustomizableWarning shown in the library's box with its don't-show-again
// check box bound to the warning's row, and two plain warnings that report the same choice to
// their caller instead of storing it (CSimpleWarningDlg, and CSimpleWarningWithTimerDlg, which
// closes itself after its time).
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "base/export.h"
#include "dialogs/customizable_message_box_win.h"
#include "dialogs/customizable_warning.h"

// Shows the warning when ShouldShow allows it: an OK box with the check box. A database that
// cannot say (a failure in ShouldShow) is logged and the warning shows, without the check box.
// None when it did not show.
VARION_API std::optional<CMB::ButtonId> ShowCustomizableWarning(CCustomizableWarning& warning, HWND parent = nullptr);

class VARION_API CSimpleWarningDlg : public CMB::CustomizableMessageBox {
 public:
  explicit CSimpleWarningDlg(std::string text, HWND parent = nullptr, std::string title = {});
  // False when the user ticked "don't show again" and confirmed; the caller keeps the choice.
  bool GetShowWarning() const;

 private:
  class Choice;
  Choice* m_choice;  // owned by the box as its data-saving setting
};

class VARION_API CSimpleWarningWithTimerDlg : public CSimpleWarningDlg {
 public:
  // Closes itself after `seconds`, as if OK was pressed; the OK caption counts down.
  CSimpleWarningWithTimerDlg(std::string text, unsigned seconds, HWND parent = nullptr, std::string title = {});
  unsigned GetSecondsLeft() const { return m_left; }

 protected:
  BOOL OnInitDialog() override;
  bool OnMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;

 private:
  void ShowCountdown();
  unsigned m_left;
};
