#include "dialogs/customizable_warning_win.h"

#include <memory>

#include "base/text.h"
#include "diagnostics/failure.h"

namespace {

constexpr const char* kFailureArea = "warning";
constexpr UINT_PTR kCountdownTimer = 1;

CMB::ButtonsSetting OkOnly() {
  CMB::ButtonsSetting buttons = CMB::InitButtonsSetting();
  buttons[CMB::ButtonId::No].visible = CMB::IsVisible(false);
  buttons[CMB::ButtonId::Cancel].visible = CMB::IsVisible(false);
  return buttons;
}

}  // namespace

std::optional<CMB::ButtonId> ShowCustomizableWarning(CCustomizableWarning& warning, HWND parent) {
  const WarningParams& p = warning.Params();
  CMB::CustomizableMessageBox box(p.type, p.text, p.question, OkOnly(), parent);
  box.SetTitle(p.title);
  try {
    if (!warning.ShouldShow()) return std::nullopt;
    const WarningIdentity& id = warning.Identity();
    box.SetDataSavingSettings(
        std::make_unique<CMB::DatabaseSetting>(id.messageNumber, id.programBit, warning.Db(), warning.GetUserId()));
  } catch (...) {
    varion::LogFailure(kFailureArea, varion::DescribeFailure(std::current_exception()));
  }
  return box.Show();
}

// The choice of a simple warning, kept for its caller: ticked, and confirmed by OK.
class CSimpleWarningDlg::Choice : public CMB::DataSavingSettings {
 public:
  bool CanShow() override { return true; }
  void SaveData() override { confirmed = checked; }
  void HandleBtnClickDontShowAgain(bool c) override { checked = c; }
  bool checked = false, confirmed = false;
};

CSimpleWarningDlg::CSimpleWarningDlg(std::string text, HWND parent, std::string title)
    : CMB::CustomizableMessageBox(CMB::MessageBoxType::Warning, std::move(text), {}, OkOnly(), parent) {
  auto choice = std::make_unique<Choice>();
  m_choice = choice.get();
  SetDataSavingSettings(std::move(choice));
  SetTitle(std::move(title));
}

bool CSimpleWarningDlg::GetShowWarning() const { return !m_choice->confirmed; }

CSimpleWarningWithTimerDlg::CSimpleWarningWithTimerDlg(std::string text, unsigned seconds, HWND parent,
                                                       std::string title)
    : CSimpleWarningDlg(std::move(text), parent, std::move(title)), m_left(seconds) {}

BOOL CSimpleWarningWithTimerDlg::OnInitDialog() {
  const BOOL r = CSimpleWarningDlg::OnInitDialog();
  ShowCountdown();
  if (m_left == 0)
    PostMessageW(m_hWnd, WM_TIMER, kCountdownTimer, 0);
  else
    SetTimer(m_hWnd, kCountdownTimer, 1000, nullptr);
  return r;
}

void CSimpleWarningWithTimerDlg::ShowCountdown() {
  // The layout made the button wide enough for "&OK (99)" only if told; the count is short,
  // and "&OK" with a number still fits the smallest button.
  const std::string caption = "&OK (" + std::to_string(m_left) + ")";
  SetDlgItemTextW(m_hWnd, *CMB::GetButtonIDC(CMB::ButtonId::Ok), varion::text::Cp1250ToWide(caption).c_str());
}

bool CSimpleWarningWithTimerDlg::OnMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  if (msg != WM_TIMER || wp != kCountdownTimer) return CSimpleWarningDlg::OnMessage(msg, wp, lp, result);
  if (m_left > 0) --m_left;
  ShowCountdown();
  if (m_left == 0) {
    KillTimer(m_hWnd, kCountdownTimer);
    HandleBtnClick(CMB::ButtonId::Ok);
  }
  result = 0;
  return true;
}
