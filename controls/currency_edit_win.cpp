#include "controls/currency_edit_win.h"

#include <algorithm>
#include <atomic>

#include "base/text.h"
#include "controls/clipboard_win.h"

namespace varion {
namespace {

constexpr UINT kRefusedBeep = MB_ICONEXCLAMATION;  // 0x30

std::atomic<CurrencyBeepHook> g_beepHook{nullptr};

void Beep() {
  if (CurrencyBeepHook hook = g_beepHook.load(std::memory_order_relaxed))
    hook(kRefusedBeep);
  else
    MessageBeep(kRefusedBeep);
}

// A typed character as the code page 1250 byte the model reads; 0 for one that has none.
char TypedChar(WPARAM ch) {
  if (ch < 0x80) return static_cast<char>(ch);
  const std::string narrow = text::WideToCp1250(std::wstring(1, static_cast<wchar_t>(ch)));
  return narrow.size() == 1 ? narrow[0] : '\0';
}

bool KeyDown(int vk) { return GetKeyState(vk) < 0; }

}  // namespace

CurrencyBeepHook SetCurrencyBeepHook(CurrencyBeepHook hook) { return g_beepHook.exchange(hook); }

}  // namespace varion

using varion::CurrencyEditModel;
using varion::CurrencySelection;

// Attaching ---------------------------------------------------------------------------------------

CVelCurrencyEdit* CVelCurrencyEdit::Attach(HWND edit) {
  if (auto* existing = FromHandle(edit)) return existing;
  auto* field = AttachNew<CVelCurrencyEdit>(edit);
  if (field) field->Initialize();
  return field;
}

CVelCurrencyEdit* CVelCurrencyEdit::FromHandle(HWND window) {
  return dynamic_cast<CVelCurrencyEdit*>(CVelControlBase::FromHandle(window));
}

BOOL CVelCurrencyEdit::AttachCreating(HWND edit, CREATESTRUCTW* create) {
  if (!create) return Attach(edit) != nullptr;  // called for a window that already exists
  return AttachNew<CVelCurrencyEdit>(edit) != nullptr;
}

CVelCurrencyEnterEdit* CVelCurrencyEnterEdit::Attach(HWND edit) {
  if (auto* existing = dynamic_cast<CVelCurrencyEnterEdit*>(CVelControlBase::FromHandle(edit))) return existing;
  if (CVelControlBase::FromHandle(edit)) return nullptr;  // another kind of field is attached
  auto* field = AttachNew<CVelCurrencyEnterEdit>(edit);
  if (field) field->Initialize();
  return field;
}

BOOL CVelCurrencyEnterEdit::AttachCreating(HWND edit, CREATESTRUCTW* create) {
  if (!create) return Attach(edit) != nullptr;
  return AttachNew<CVelCurrencyEnterEdit>(edit) != nullptr;
}

// The edit's own text at attaching becomes the value; text that is no amount gives zero.
void CVelCurrencyEdit::Initialize() {
  m_initialized = true;
  SyncStyle();
  std::wstring current(static_cast<size_t>(Default(WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  current.resize(static_cast<size_t>(
      Default(WM_GETTEXT, current.size(), reinterpret_cast<LPARAM>(current.data()))));
  const std::string text = varion::text::WideToCp1250(current);
  CurrencyEditModel::Result r = m_model.OnSetText(text.c_str());
  if (r.failed) r = m_model.OnSetText("");
  r.modified = false;
  Apply(r);
}

// Settings ----------------------------------------------------------------------------------------

void CVelCurrencyEdit::OnSetSettings(const std::string& symbol, unsigned decimals) {
  SyncStyle();
  Apply(m_model.OnSetSettings(symbol, decimals, ReadSelection()));
}

// Messages ----------------------------------------------------------------------------------------

LRESULT CVelCurrencyEdit::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      if (r != -1 && !m_initialized) Initialize();
      return r;
    }
    case WM_CHAR:
      HideBalloon();
      return OnChar(wp);
    case WM_KEYDOWN:
      return OnKeyDown(wp, lp);
    case WM_GETDLGCODE:
      return OnGetDlgCode(wp, lp);
    case WM_GETTEXT:
      return OnGetText(wp, lp);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(varion::text::Cp1250ToWide(m_model.PlainText()).size());
    case WM_SETTEXT:
      return OnSetText(lp);
    case WM_COPY:
      varion::SetClipboardText(m_hWnd, GetCopyText());
      return 0;
    case WM_CUT:
      OnCut();
      return 0;
    case WM_PASTE:
      OnPaste();
      return 0;
    case WM_CLEAR: {
      SyncStyle();
      const CurrencySelection sel = ReadSelection();
      if (!m_model.IsReadOnly() && sel.start != sel.end) Apply(m_model.DigitDelete(false, sel));
      return 0;
    }
    case EM_REPLACESEL:
      OnReplaceSel(lp);
      return 0;
    // The edit's undo buffer holds texts the field never showed: there is nothing to undo.
    case WM_UNDO:
    case EM_UNDO:
    case EM_CANUNDO:
      return FALSE;
    case WM_KILLFOCUS:
      Apply(m_model.OnKillFocus(ReadSelection()));
      break;
  }
  return CVelEditBase::WindowProc(msg, wp, lp);
}

LRESULT CVelCurrencyEdit::OnChar(WPARAM ch) {
  SyncStyle();
  Apply(m_model.OnChar(varion::TypedChar(ch), ReadSelection()));
  return 0;
}

LRESULT CVelCurrencyEdit::OnKeyDown(WPARAM vk, LPARAM flags) {
  SyncStyle();
  const CurrencyEditModel::Result r =
      m_model.OnKeyDown(static_cast<unsigned>(vk), varion::KeyDown(VK_SHIFT), varion::KeyDown(VK_CONTROL), ReadSelection());
  if (!r.handled) return Default(WM_KEYDOWN, vk, flags);
  Apply(r);
  return 0;
}

LRESULT CVelCurrencyEdit::OnGetDlgCode(WPARAM vk, LPARAM msg) { return Default(WM_GETDLGCODE, vk, msg); }

LRESULT CVelCurrencyEdit::OnGetText(WPARAM size, LPARAM buffer) const {
  auto* out = reinterpret_cast<wchar_t*>(buffer);
  if (!out || size == 0) return 0;
  const std::wstring plain = varion::text::Cp1250ToWide(m_model.PlainText());
  const size_t n = std::min(plain.size(), static_cast<size_t>(size) - 1);
  std::copy_n(plain.c_str(), n, out);
  out[n] = L'\0';
  return static_cast<LRESULT>(n);
}

LRESULT CVelCurrencyEdit::OnSetText(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  const std::string narrow = wide ? varion::text::WideToCp1250(wide) : std::string();
  const CurrencyEditModel::Result r = m_model.OnSetText(wide ? narrow.c_str() : nullptr);
  Apply(r);
  return r.failed ? FALSE : TRUE;
}

void CVelCurrencyEdit::OnCut() {
  SyncStyle();
  const CurrencySelection sel = ReadSelection();
  varion::SetClipboardText(m_hWnd, GetCopyText());
  Apply(m_model.Cut(sel, nullptr));
}

void CVelCurrencyEdit::OnPaste() {
  std::string text;
  if (varion::GetClipboardText(m_hWnd, text)) PasteText(text);
}

// A program replacing the selection: the edited text is read as if pasted whole.
void CVelCurrencyEdit::OnReplaceSel(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  const CurrencySelection sel = ReadSelection();
  std::wstring edited = m_shown;
  const size_t start = std::min(static_cast<size_t>(sel.start), edited.size());
  const size_t end = std::clamp(static_cast<size_t>(sel.end), start, edited.size());
  edited.replace(start, end - start, wide ? wide : L"");
  PasteText(varion::text::WideToCp1250(edited));
}

std::string CVelCurrencyEdit::GetCopyText() { return m_model.GetCopyText(ReadSelection()); }

void CVelCurrencyEdit::PasteText(const std::string& text) {
  SyncStyle();
  Apply(m_model.PasteText(text, ReadSelection()));
}

// Showing what the model says ---------------------------------------------------------------------

void CVelCurrencyEdit::SyncStyle() { m_model.SetStyle(static_cast<std::uint32_t>(GetWindowLongW(m_hWnd, GWL_STYLE))); }

CurrencySelection CVelCurrencyEdit::ReadSelection() {
  DWORD start = 0, end = 0;
  Default(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return {static_cast<int>(start), static_cast<int>(end)};
}

void CVelCurrencyEdit::ShowDisplay(const std::string& display) {
  std::wstring wide = varion::text::Cp1250ToWide(display);
  if (wide == m_shown) return;
  m_shown = std::move(wide);
  Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(m_shown.c_str()));
}

void CVelCurrencyEdit::Apply(const CurrencyEditModel::Result& r) {
  if (r.beep) varion::Beep();
  ShowDisplay(r.display);
  Default(EM_SETSEL, static_cast<WPARAM>(r.sel.start), r.sel.end);
  if (r.modified) Default(EM_SETMODIFY, TRUE, 0);
  if (r.frameChanged)
    SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  switch (r.command) {
    case CurrencyEditModel::Command::Cut:
      PostMessageW(m_hWnd, WM_CUT, 0, 0);
      break;
    case CurrencyEditModel::Command::Copy:
      PostMessageW(m_hWnd, WM_COPY, 0, 0);
      break;
    case CurrencyEditModel::Command::Paste:
      PostMessageW(m_hWnd, WM_PASTE, 0, 0);
      break;
    case CurrencyEditModel::Command::ToggleCalculator:
    case CurrencyEditModel::Command::None:
      break;
  }
}

// The Enter variant -------------------------------------------------------------------------------

LRESULT CVelCurrencyEnterEdit::OnKeyDown(WPARAM vk, LPARAM flags) {
  if (vk != VK_RETURN) return CVelCurrencyEdit::OnKeyDown(vk, flags);
  SendMessageW(GetParent(m_hWnd), varion::kMsgCurrencyEnter, static_cast<WPARAM>(GetDlgCtrlID(m_hWnd)), 0);
  return 0;
}

// Enter must reach the field rather than press the dialog's default button.
LRESULT CVelCurrencyEnterEdit::OnGetDlgCode(WPARAM vk, LPARAM msg) {
  LRESULT code = CVelCurrencyEdit::OnGetDlgCode(vk, msg);
  const auto* m = reinterpret_cast<const MSG*>(msg);
  if (m && m->message == WM_KEYDOWN && m->wParam == VK_RETURN) code |= DLGC_WANTALLKEYS;
  return code;
}
