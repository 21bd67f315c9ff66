// A host program's first dialog on the library: a contractor form on CFlgDialog whose template
// names the library's amount, date and tax-number controls. It runs without a person: it types
// into the form, presses OK twice (once with mistakes), and prints what the form saved, the
// errors it collected and an amount in words, in UTF-8.
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/text.h"
#include "controls/amount_words.h"
#include "diagnostics/message_box_seam_win.h"
#include "framework/data_exchange_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/hook_supp_win.h"
#include "host_resource.h"

namespace {

void Print(const std::string& cp1250) { std::printf("%s\n", varion::text::Cp1250ToUtf8(cp1250).c_str()); }

class ContractorDialog : public CFlgDialog {
 public:
  ContractorDialog() : CFlgDialog(IDD_HOST_CONTRACTOR) {}

  std::string name = "Zielarnia";
  varion::Amount limit = varion::Amount::FromRaw(15000000);  // 1 500,00
  varion::DateTime since = varion::DateTime(2023, 5, 1);
  std::string nip = "5260250274";
  long branch = 20;

 protected:
  void OnLoadData(CFlgDataExchange& dx) override {
    HWND combo = GetDlgItem(m_hWnd, IDC_HOST_BRANCH);
    if (SendMessageW(combo, CB_GETCOUNT, 0, 0) == 0) {
      for (auto [text, id] : {std::pair{L"Centrala", 10L}, {L"Oddzia\u0142 Krak\u00f3w", 20L}}) {
        const LRESULT i = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(i), id);
      }
    }
    DLX_Text(dx, IDC_HOST_NAME, name);
    DLX_Text(dx, IDC_HOST_LIMIT, limit);
    DLX_Text(dx, IDC_HOST_SINCE, since);
    DLX_Text(dx, IDC_HOST_NIP, nip);
    DLX_CBIdent(dx, IDC_HOST_BRANCH, branch);
  }
  // Every check runs and adds its error; the dialog shows them all at once.
  void OnSaveData(CFlgDataExchange& dx) override {
    DV_Required(dx, IDC_HOST_NAME);
    DSX_Text(dx, IDC_HOST_NAME, name);
    DSX_Text(dx, IDC_HOST_LIMIT, limit);
    DSX_Text(dx, IDC_HOST_SINCE, since);
    DV_PoprawnyNIP(dx, IDC_HOST_NIP);
    DSX_Text(dx, IDC_HOST_NIP, nip);
    DSX_CBIdent(dx, IDC_HOST_BRANCH, branch);
  }
};

void Type(HWND dialog, int id, const wchar_t* text) { SetDlgItemTextW(dialog, id, text); }

}  // namespace

int main() {
  // Once, before the first dialog: registers the library's window classes ("vel_curredit" and
  // the rest) and hooks this thread, so template controls get their objects as they are made.
  CHookSupp::InitVXAXVelControls(nullptr);
  CHookSupp::InstallUIHook();
  // Boxes are answered at once: nobody is there to press a button.
  varion::SetFrameworkMessageBox([](HWND, const std::string& text, const std::string&, UINT) {
    Print("okno komunikatu: " + text);
    return IDOK;
  });

  ContractorDialog dialog;
  if (!dialog.Create(nullptr)) {
    std::printf("the dialog did not open (GetLastError %lu)\n", GetLastError());
    return 1;
  }
  HWND h = dialog.m_hWnd;

  // With mistakes: every one is collected, none stops the others. (The amount and date fields
  // refuse what is no amount or day as it is typed, so they keep a valid value.)
  Type(h, IDC_HOST_NAME, L"");
  Type(h, IDC_HOST_LIMIT, L"du\u017co");
  Type(h, IDC_HOST_NIP, L"5260250275");
  if (dialog.HandleApply()) Print("zapisano mimo błędów");
  for (const auto& error : *dialog.GetErrorsArray()) Print("błąd: " + error.message);

  // Corrected.
  Type(h, IDC_HOST_NAME, L"Hurtownia \u0141\u00f3d\u017a");
  Type(h, IDC_HOST_LIMIT, L"2 500,75");
  Type(h, IDC_HOST_SINCE, L"2024-03-01");
  Type(h, IDC_HOST_NIP, L"5260250274");
  if (!dialog.HandleApply()) Print("nie zapisano");
  char saved[160];
  std::snprintf(saved, sizeof saved, "limit=%lld.%04lld; od=%04d-%02d-%02d; NIP=%s; oddział=%ld",
                static_cast<long long>(dialog.limit.Raw() / 10000), static_cast<long long>(dialog.limit.Raw() % 10000),
                dialog.since.GetYear(), dialog.since.GetMonth(), dialog.since.GetDay(), dialog.nip.c_str(),
                dialog.branch);
  Print("zapisano: nazwa=" + dialog.name + "; " + saved);
  Print("słownie: " + KwotaSlownie(dialog.limit));
  DestroyWindow(h);
  return 0;
}
