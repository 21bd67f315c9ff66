// CMB::CustomizableMessageBox: the window over the portable button rules and layout.
#include "dialogs/customizable_message_box_win.h"

#include <shellapi.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

#include "base/handles_win.h"
#include "base/text.h"
#include "diagnostics/failure.h"

namespace CMB {
namespace {

constexpr const char* kTemplate = "IDD_CMB_MESSAGEBOX";
constexpr const char* kFailureArea = "message box";
// The check box's caption; Alt+W toggles it ('N' belongs to "&Nie").
constexpr const char* kDontShowAgain = "Nie pokazuj &więcej tego komunikatu";

struct TitleOfType {
  MessageBoxType type;
  const char* title;
};
constexpr TitleOfType kTitles[] = {
    {MessageBoxType::None, "Komunikat"},       {MessageBoxType::Information, "Informacja"},
    {MessageBoxType::Warning, "Ostrzeżenie"},  {MessageBoxType::Error, "Błąd"},
    {MessageBoxType::Question, "Pytanie"},
};

std::mutex g_openerMutex;
LinkOpener g_opener;

void OpenWithShell(HWND owner, const std::string& verb, const std::string& url) {
  ShellExecuteW(owner, varion::text::Cp1250ToWide(verb).c_str(), varion::text::Cp1250ToWide(url).c_str(), nullptr,
                nullptr, SW_SHOWNORMAL);
}

// An edit shows line breaks only as CR LF.
std::wstring EditText(const std::string& text) {
  std::wstring out;
  const std::wstring w = varion::text::Cp1250ToWide(text);
  out.reserve(w.size() + w.size() / 16);
  for (std::size_t i = 0; i < w.size(); ++i) {
    if (w[i] == L'\n' && (i == 0 || w[i - 1] != L'\r')) out += L'\r';
    out += w[i];
  }
  return out;
}

void SetText(HWND dialog, int id, const std::wstring& text) { SetDlgItemTextW(dialog, id, text.c_str()); }

// Measures with the dialog's font on a screen DC. Wrapped texts are measured a few pixels
// narrower than their rectangle: an edit control breaks lines a little earlier than DrawText,
// and a line measured too few would be cut off.
class GdiMeasure : public ITextMeasure {
 public:
  static constexpr int kEditSlack = 6;
  explicit GdiMeasure(HWND dialog)
      : m_dc(dialog), m_font(m_dc.get(), reinterpret_cast<HGDIOBJ>(SendMessageW(dialog, WM_GETFONT, 0, 0))) {}

  LayoutSize MeasureWrapped(std::string_view text, int maxWidth) const override {
    // The layout asks for the same text at the same width several times.
    auto key = std::make_pair(maxWidth, std::string(text));
    if (auto it = m_wrapped.find(key); it != m_wrapped.end()) return it->second;
    const std::wstring w = EditText(key.second);
    RECT r{0, 0, std::max(1, maxWidth - kEditSlack), 0};
    DrawTextW(m_dc.get(), w.c_str(), static_cast<int>(w.size()), &r,
              DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS);
    const LayoutSize size{r.right - r.left + kEditSlack, r.bottom - r.top};
    m_wrapped.emplace(std::move(key), size);
    return size;
  }

  LayoutSize MeasureLine(std::string_view text) const override {
    const std::wstring w = varion::text::Cp1250ToWide(text);
    RECT r{0, 0, 0, 0};
    DrawTextW(m_dc.get(), w.empty() ? L" " : w.c_str(), w.empty() ? 1 : static_cast<int>(w.size()), &r,
              DT_CALCRECT | DT_SINGLELINE);
    return {r.right - r.left, r.bottom - r.top};
  }

 private:
  varion::WindowDc m_dc;
  varion::SelectedObject m_font;
  mutable std::map<std::pair<int, std::string>, LayoutSize> m_wrapped;
};

void Place(HWND dialog, int id, const LayoutRect& r) {
  HWND h = GetDlgItem(dialog, id);
  if (!h) return;
  if (r.IsEmpty()) {
    ShowWindow(h, SW_HIDE);
    return;
  }
  SetWindowPos(h, nullptr, r.left, r.top, r.Width(), r.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
  ShowWindow(h, SW_SHOWNA);
}

void SetScrollBar(HWND edit, bool scrolls) {
  if (!edit) return;
  const LONG_PTR style = GetWindowLongPtrW(edit, GWL_STYLE);
  const LONG_PTR wanted = scrolls ? (style | WS_VSCROLL) : (style & ~static_cast<LONG_PTR>(WS_VSCROLL));
  if (wanted == style) return;
  SetWindowLongPtrW(edit, GWL_STYLE, wanted);
  SetWindowPos(edit, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace

LinkOpener SetLinkOpener(LinkOpener opener) {
  std::lock_guard lock(g_openerMutex);
  std::swap(g_opener, opener);
  return opener;
}

CustomizableMessageBox::CustomizableMessageBox(MessageBoxType type, std::string description, std::string question,
                                               ButtonsSetting buttons, HWND parent)
    : CFlgDialog(kTemplate, parent),
      m_type(type),
      m_description(std::move(description)),
      m_question(std::move(question)),
      m_buttons(std::move(buttons)) {
  SetNoSavePrompt(true);
  // The texts are read-only edits and stay so: the dialog base would make every edit of an
  // editable dialog writable when it opens.
  AddCtrlNoDisable(kIdcInfo);
  AddCtrlNoDisable(kIdcQuestion);
}

CustomizableMessageBox::~CustomizableMessageBox() = default;

CustomizableMessageBox& CustomizableMessageBox::SetButtonSetting(ButtonId id, ButtonSetting setting) {
  m_buttons[id] = std::move(setting);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetButtonsSetting(ButtonsSetting buttons) {
  m_buttons = std::move(buttons);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetButtonWidth(int pixels) {
  m_buttonWidth = std::max(0, pixels);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetDescription(std::string text) {
  m_description = std::move(text);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetQuestion(std::string text) {
  m_question = std::move(text);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetInfoTextHeight(int pixels) {
  m_infoHeight = std::max(0, pixels);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetQuestionTextHeight(int pixels) {
  m_questionHeight = std::max(0, pixels);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetURL(std::string url, bool visible) {
  m_url = std::move(url);
  m_urlVisible = visible;
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetVisualStyle(bool themed) {
  m_themed = themed;
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetWindowWidth(int pixels) {
  m_windowWidth = std::max(0, pixels);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetDataSavingSettings(std::unique_ptr<DataSavingSettings> settings) {
  m_settings = std::move(settings);
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetDisableCloseButton(bool disable) {
  m_noClose = disable;
  return *this;
}
CustomizableMessageBox& CustomizableMessageBox::SetTitle(std::string title) {
  m_title = std::move(title);
  return *this;
}

std::optional<ButtonId> CustomizableMessageBox::Show() {
  if (m_settings) {
    try {
      if (!m_settings->CanShow()) return std::nullopt;
    } catch (...) {
      varion::LogFailure(kFailureArea, varion::DescribeFailure(std::current_exception()));
    }
  }
  m_chosen.reset();
  m_opened = false;
  DoModal();
  if (!m_opened) varion::LogFailure(kFailureArea, {"the message box window could not be opened", varion::kFail});
  return m_chosen;
}

LayoutInput CustomizableMessageBox::MakeLayoutInput() const {
  LayoutInput in;
  in.description = m_description;
  in.question = m_question;
  if (m_urlVisible) in.url = m_url;
  if (m_settings) in.dontShowAgain = kDontShowAgain;
  in.buttons = m_buttons;
  in.hasIcon = m_icon != nullptr;
  in.windowWidth = m_windowWidth;
  in.buttonWidth = m_buttonWidth;
  in.infoTextHeight = m_infoHeight;
  in.questionTextHeight = m_questionHeight;
  // The work area of the owner's monitor (the primary one without an owner), less the frame.
  HWND owner = GetParentWindow();
  HMONITOR monitor = owner ? MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY)
                           : MonitorFromPoint(POINT{0, 0}, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO mi{sizeof mi, {}, {}, 0};
  RECT work{0, 0, 1024, 768};
  if (GetMonitorInfoW(monitor, &mi)) work = mi.rcWork;
  RECT frame{0, 0, 0, 0};
  AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)));
  in.maxClient = {std::max(200, static_cast<int>((work.right - work.left) - (frame.right - frame.left))),
                  std::max(150, static_cast<int>((work.bottom - work.top) - (frame.bottom - frame.top)))};
  return in;
}

void CustomizableMessageBox::ApplyTexts() {
  std::string title = m_title;
  if (title.empty())
    for (const auto& t : kTitles)
      if (t.type == m_type) title = t.title;
  SetWindowTextW(m_hWnd, varion::text::Cp1250ToWide(title).c_str());
  SetText(m_hWnd, kIdcLink, varion::text::Cp1250ToWide(m_url));
  SetText(m_hWnd, kIdcDontShowAgain, varion::text::Cp1250ToWide(kDontShowAgain));
  for (int id : {kIdcInfo, kIdcQuestion})
    SendDlgItemMessageW(m_hWnd, id, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  if (auto icon = GetIconType(m_type)) m_icon = LoadIconW(nullptr, MAKEINTRESOURCEW(*icon));
  SendDlgItemMessageW(m_hWnd, kIdcIcon, STM_SETICON, reinterpret_cast<WPARAM>(m_icon), 0);

  std::optional<int> defaultIdc;
  for (int n = 0; n < 3; ++n) {
    const ButtonId id = static_cast<ButtonId>(n);
    HWND button = GetDlgItem(m_hWnd, *GetButtonIDC(id));
    const auto it = m_buttons.find(id);
    if (!button || it == m_buttons.end()) continue;
    SetWindowTextW(button, varion::text::Cp1250ToWide(it->second.caption).c_str());
    if (it->second.visible && it->second.isDefault && !defaultIdc) defaultIdc = *GetButtonIDC(id);
  }
  for (int n = 0; n < 3; ++n) {
    const int idc = *GetButtonIDC(static_cast<ButtonId>(n));
    SendDlgItemMessageW(m_hWnd, idc, BM_SETSTYLE, idc == defaultIdc ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, FALSE);
  }
  if (defaultIdc) SendMessageW(m_hWnd, DM_SETDEFID, static_cast<WPARAM>(*defaultIdc), 0);
  if (m_noClose)
    if (HMENU menu = GetSystemMenu(m_hWnd, FALSE)) EnableMenuItem(menu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
  SetColorWindowBkgnd(m_themed);
}

void CustomizableMessageBox::ApplyLayout() {
  const LayoutInput in = MakeLayoutInput();
  {
    const GdiMeasure measure(m_hWnd);
    m_layout = UpdateCtrlsPos(in, measure);
  }
  Place(m_hWnd, kIdcIcon, m_layout.icon);
  Place(m_hWnd, kIdcInfo, m_layout.info);
  Place(m_hWnd, kIdcQuestion, m_layout.question);
  Place(m_hWnd, kIdcLink, m_layout.link);
  Place(m_hWnd, kIdcDontShowAgain, m_layout.checkBox);
  for (int n = 0; n < 3; ++n) Place(m_hWnd, *GetButtonIDC(static_cast<ButtonId>(n)), m_layout.buttons[n]);
  SetScrollBar(GetDlgItem(m_hWnd, kIdcInfo), m_layout.infoScrolls);
  SetScrollBar(GetDlgItem(m_hWnd, kIdcQuestion), m_layout.questionScrolls);
  // The texts go in once their edits have their final size: an edit breaks its whole text into
  // lines again on every resize, and the template's tiny edits would make a long text into
  // thousands of lines first.
  SetText(m_hWnd, kIdcInfo, EditText(m_description));
  SetText(m_hWnd, kIdcQuestion, EditText(m_question));

  // The window around the client size, centred on the owner (or the monitor) and kept on it.
  RECT r{0, 0, m_layout.client.cx, m_layout.client.cy};
  AdjustWindowRectEx(&r, static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)));
  const int cx = r.right - r.left, cy = r.bottom - r.top;
  HWND owner = GetParentWindow();
  HMONITOR monitor = owner ? MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY)
                           : MonitorFromPoint(POINT{0, 0}, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO mi{sizeof mi, {}, {}, 0};
  RECT work{0, 0, 1024, 768};
  if (GetMonitorInfoW(monitor, &mi)) work = mi.rcWork;
  RECT around = work;
  if (owner && IsWindowVisible(owner)) GetWindowRect(GetAncestor(owner, GA_ROOT), &around);
  int x = (around.left + around.right - cx) / 2, y = (around.top + around.bottom - cy) / 2;
  x = std::max<int>(work.left, std::min<int>(x, work.right - cx));
  y = std::max<int>(work.top, std::min<int>(y, work.bottom - cy));
  SetWindowPos(m_hWnd, nullptr, x, y, cx, cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CustomizableMessageBox::OnInitDialog() {
  m_opened = true;
  CFlgDialog::OnInitDialog();
  ApplyTexts();
  ApplyLayout();
  // The default button takes the focus, so that Enter answers at once.
  for (const auto& [id, setting] : m_buttons)
    if (setting.visible && setting.isDefault) {
      if (HWND b = GetDlgItem(m_hWnd, *GetButtonIDC(id))) SetFocus(b);
      return FALSE;
    }
  return TRUE;
}

void CustomizableMessageBox::HandleBtnClick(ButtonId id) {
  const ClickOutcome outcome = DecideButtonClick(m_buttons, id);
  if (outcome.openHelp) {
    ShowHelp();
    return;
  }
  if (outcome.saveData && m_settings) SaveData();
  if (outcome.endDialog) {
    m_chosen = outcome.result;
    EndDialog(static_cast<int>(outcome.result));
  }
}

void CustomizableMessageBox::OnSaveData(CFlgDataExchange&) {
  // The answer counts for more than remembering it: a database that refuses the choice is
  // logged, and the box still ends with the button.
  try {
    m_settings->SaveData();
  } catch (...) {
    varion::LogFailure(kFailureArea, varion::DescribeFailure(std::current_exception()));
  }
}

void CustomizableMessageBox::OnWWW() {
  if (m_url.empty()) return;
  LinkOpener opener;
  {
    std::lock_guard lock(g_openerMutex);
    opener = g_opener;
  }
  if (opener)
    opener(m_hWnd, "open", m_url);
  else
    OpenWithShell(m_hWnd, "open", m_url);
}

void CustomizableMessageBox::OnOK() {
  // Enter with the focus away from the buttons: the default button, if there is one.
  for (const auto& [id, setting] : m_buttons)
    if (setting.visible && setting.isDefault) return HandleBtnClick(id);
}

void CustomizableMessageBox::OnCancel() {
  if (m_noClose) return;
  if (auto cancel = EscapeButton(m_buttons)) return HandleBtnClick(*cancel);
  m_chosen.reset();
  EndDialog(IDCANCEL);
}

bool CustomizableMessageBox::OnCommand(UINT id, UINT code, HWND) {
  if (auto button = ButtonFromIDC(static_cast<int>(id)); button && code == BN_CLICKED) {
    HandleBtnClick(*button);
    return true;
  }
  if (id == kIdcDontShowAgain && code == BN_CLICKED) {
    if (m_settings)
      m_settings->HandleBtnClickDontShowAgain(IsDlgButtonChecked(m_hWnd, kIdcDontShowAgain) == BST_CHECKED);
    return true;
  }
  if (id == kIdcLink && code == STN_CLICKED) {
    OnWWW();
    return true;
  }
  return false;
}

INT_PTR CustomizableMessageBox::DialogProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_CTLCOLORSTATIC) {
    // The texts (read-only edits) and the link lie on the box's own background, the link in
    // the colour links have in the system's own dialogs.
    const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
    if (id == kIdcInfo || id == kIdcQuestion || id == kIdcLink) {
      HDC dc = reinterpret_cast<HDC>(wp);
      const int background = m_themed ? COLOR_WINDOW : COLOR_BTNFACE;
      SetBkColor(dc, GetSysColor(background));
      if (id == kIdcLink) SetTextColor(dc, RGB(0, 102, 204));
      return reinterpret_cast<INT_PTR>(GetSysColorBrush(background));
    }
  }
  if (msg == WM_SETCURSOR && GetDlgCtrlID(reinterpret_cast<HWND>(wp)) == kIdcLink) {
    SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649)));  // IDC_HAND
    SetWindowLongPtrW(m_hWnd, DWLP_MSGRESULT, TRUE);
    return TRUE;
  }
  if (msg == WM_SYSCOMMAND && (wp & 0xFFF0) == SC_CLOSE && m_noClose) return TRUE;
  return CFlgDialog::DialogProc(msg, wp, lp);
}

// The framework's boxes ----------------------------------------------------------------------------

varion::FrameworkMessageBoxFn InstallAsFrameworkMessageBox() {
  return varion::SetFrameworkMessageBox([](HWND owner, const std::string& text, const std::string& caption,
                                           UINT type) -> int {
    const UINT kind = type & MB_TYPEMASK;
    if (kind != MB_OK && kind != MB_OKCANCEL && kind != MB_YESNO && kind != MB_YESNOCANCEL)
      return varion::SystemMessageBox(owner, text, caption, type);
    const bool yesNo = kind == MB_YESNO || kind == MB_YESNOCANCEL;
    ButtonsSetting buttons = InitButtonsSetting();
    buttons[ButtonId::Ok].caption = yesNo ? "&Tak" : "&OK";
    buttons[ButtonId::No].visible = IsVisible(yesNo);
    buttons[ButtonId::Cancel].visible = IsVisible(kind == MB_OKCANCEL || kind == MB_YESNOCANCEL);
    MessageBoxType boxType = MessageBoxType::None;
    switch (type & MB_ICONMASK) {
      case MB_ICONERROR: boxType = MessageBoxType::Error; break;
      case MB_ICONWARNING: boxType = MessageBoxType::Warning; break;
      case MB_ICONQUESTION: boxType = MessageBoxType::Question; break;
      case MB_ICONINFORMATION: boxType = MessageBoxType::Information; break;
    }
    CustomizableMessageBox box(boxType, text, {}, std::move(buttons), owner);
    box.SetTitle(caption);
    // A yes-or-no question has no way out but its answers.
    box.SetDisableCloseButton(kind == MB_YESNO);
    const auto answer = box.Show();
    // A box that could not open (its template missing from a host's copy of the library) must
    // not swallow the question or the failure report: the system box takes over.
    if (!box.WasOpened())
      return varion::SystemMessageBox(owner, text, caption, type);
    if (!answer) return kind == MB_OK ? IDOK : IDCANCEL;
    switch (*answer) {
      case ButtonId::Ok: return yesNo ? IDYES : IDOK;
      case ButtonId::No: return IDNO;
      case ButtonId::Cancel: return IDCANCEL;
    }
    return IDCANCEL;
  });
}

}  // namespace CMB
