#include "controls/ident_edit_win.h"

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <memory>
#include <mutex>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/clipboard_win.h"
#include "controls/locale_info.h"
#include "controls/private_messages.h"

namespace varion {
namespace {

std::mutex g_hooksMutex;
ShellOpenHook g_openHook;
PathChooserHook g_chooserHook;
std::atomic<IdentBeepHook> g_beepHook{nullptr};

void Beep() {
  if (IdentBeepHook hook = g_beepHook.load(std::memory_order_relaxed))
    hook();
  else
    MessageBeep(MB_ICONEXCLAMATION);
}

// Frees what SHBrowseForFolderW returns.
struct ItemIdListDeleter {
  void operator()(ITEMIDLIST* p) const { CoTaskMemFree(p); }
};

bool ShellChoosePath(HWND owner, IdentKind kind, std::string& path) {
  if (kind == IdentKind::Folder) {
    BROWSEINFOW bi{};
    bi.hwndOwner = owner;
    bi.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    const std::unique_ptr<ITEMIDLIST, ItemIdListDeleter> list(SHBrowseForFolderW(&bi));
    wchar_t chosen[MAX_PATH] = {};
    if (!list || !SHGetPathFromIDListW(list.get(), chosen)) return false;
    path = text::WideToCp1250(chosen);
    return true;
  }
  wchar_t chosen[MAX_PATH] = {};
  const std::wstring current = text::Cp1250ToWide(path);
  if (current.size() < MAX_PATH) current.copy(chosen, current.size());
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = owner;
  ofn.lpstrFile = chosen;
  ofn.nMaxFile = MAX_PATH;
  ofn.Flags = OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
  if (!GetOpenFileNameW(&ofn)) return false;
  path = text::WideToCp1250(chosen);
  return true;
}

bool ChoosePath(HWND owner, IdentKind kind, std::string& path) {
  PathChooserHook hook;
  {
    std::lock_guard lock(g_hooksMutex);
    hook = g_chooserHook;
  }
  return hook ? hook(owner, kind, path) : ShellChoosePath(owner, kind, path);
}

bool KeyDown(int vk) { return (GetKeyState(vk) & 0x8000) != 0; }

}  // namespace

void SetShellOpenHook(ShellOpenHook hook) {
  std::lock_guard lock(g_hooksMutex);
  g_openHook = std::move(hook);
}

void SetPathChooserHook(PathChooserHook hook) {
  std::lock_guard lock(g_hooksMutex);
  g_chooserHook = std::move(hook);
}

IdentBeepHook SetIdentBeepHook(IdentBeepHook hook) { return g_beepHook.exchange(hook); }

void OpenShellAddress(HWND owner, const std::string& address) {
  ShellOpenHook hook;
  {
    std::lock_guard lock(g_hooksMutex);
    hook = g_openHook;
  }
  if (hook) return hook(owner, address);
  ShellExecuteW(owner, L"open", text::Cp1250ToWide(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace varion

using varion::IdentKind;

CVelIdentEdit* CVelIdentEdit::Attach(HWND edit, IdentKind kind) {
  if (auto* existing = FromHandle(edit)) return existing->m_kind == kind ? existing : nullptr;
  if (CVelControlBase::FromHandle(edit)) return nullptr;
  auto* field = AttachNew<CVelIdentEdit>(edit);
  if (!field) return nullptr;
  field->m_kind = kind;
  field->Initialize();
  return field;
}

BOOL CVelIdentEdit::AttachCreating(HWND edit, CREATESTRUCTW* create) {
  wchar_t name[100] = {};
  const int n = GetClassNameW(edit, name, static_cast<int>(std::size(name)));
  const auto kind = varion::IdentKindOfClass(varion::text::WideToCp1250(std::wstring_view(name, n > 0 ? n : 0)));
  if (!kind) return FALSE;
  if (!create) return Attach(edit, *kind) != nullptr;  // a window that exists already
  // From the creation hook the window has had no message yet: WM_CREATE finishes the set-up.
  auto* field = AttachNew<CVelIdentEdit>(edit);
  if (!field) return FALSE;
  field->m_kind = *kind;
  return TRUE;
}

CVelIdentEdit* CVelIdentEdit::FromHandle(HWND window) {
  return dynamic_cast<CVelIdentEdit*>(CVelControlBase::FromHandle(window));
}

void CVelIdentEdit::Initialize() {
  if (m_initialized) return;
  m_initialized = true;
  m_options.decimal = CLocaleInfo::GetTheLocaleInfo().GetCharDec();
  Default(EM_SETLIMITTEXT, varion::IdentMaxLength(m_kind, m_options), 0);
  if (HasBrowseButton()) {
    // A child of the edit, so it moves and hides with it; its clicks come to the edit as WM_COMMAND.
    // The edit destroys it with itself.
    m_button = CreateWindowExW(0, L"BUTTON", L"...", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 0, 0, 0, 0, m_hWnd,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(kBrowseButtonId)),
                               varion::LibraryModule(), nullptr);
    SendMessageW(m_button, WM_SETFONT, Default(WM_GETFONT, 0, 0), FALSE);
    PlaceButton();
  }
}

void CVelIdentEdit::SetOptions(const varion::IdentOptions& options) {
  m_options = options;
  m_options.decimal = CLocaleInfo::GetTheLocaleInfo().GetCharDec();
  Default(EM_SETLIMITTEXT, varion::IdentMaxLength(m_kind, m_options), 0);
  Settle();
}

std::string CVelIdentEdit::Text() const {
  auto* self = const_cast<CVelIdentEdit*>(this);
  std::wstring current(static_cast<size_t>(self->Default(WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  current.resize(static_cast<size_t>(self->Default(WM_GETTEXT, current.size(), reinterpret_cast<LPARAM>(current.data()))));
  return varion::text::WideToCp1250(current);
}

void CVelIdentEdit::SetText(const std::string& text) {
  const std::wstring wide = varion::text::Cp1250ToWide(text);
  SendMessageW(m_hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

bool CVelIdentEdit::Settle() {
  const std::string text = Text();
  const std::string normalised = varion::IdentNormalise(m_kind, text, m_options);
  if (normalised != text) SetText(normalised);
  const bool ok = varion::IdentCheck(m_kind, normalised, m_options);
  // A corrected text clears a mark, whoever set it: the dialog checks again when it saves.
  if (!ok || IsFaulty()) SendMessageW(m_hWnd, varion::MsgMarkFaulty(), ok ? 0 : 1, 0);
  return ok;
}

// A printable character goes in when the kind takes it; account and foreign tax numbers show
// their letters in upper case, a number its locale's separator whichever one was typed.
bool CVelIdentEdit::OnChar(WPARAM ch, LPARAM lp) {
  // A character outside code page 1250 comes back as "?" and is never part of an identifier.
  const std::string narrow = varion::text::WideToCp1250(std::wstring(1, static_cast<wchar_t>(ch)));
  if (narrow.size() != 1 || (narrow[0] == '?' && ch != '?') || !varion::IdentAcceptsChar(m_kind, narrow[0], m_options))
    return varion::Beep(), true;
  char c = narrow[0];
  if ((m_kind == IdentKind::Rachunek || m_kind == IdentKind::NipEx) && c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  if (m_kind == IdentKind::Number && (c == '.' || c == ',')) c = m_options.decimal;
  Default(WM_CHAR, static_cast<WPARAM>(varion::text::Cp1250ToWide(std::string(1, c))[0]), lp);
  // Typing the value right again takes the mark away at once; a new fault waits for leaving.
  if (IsFaulty() && varion::IdentCheck(m_kind, varion::IdentNormalise(m_kind, Text(), m_options), m_options))
    SendMessageW(m_hWnd, varion::MsgMarkFaulty(), 0, 0);
  return true;
}

// Pasted text keeps what typing would let in, cut to the room the selection leaves.
void CVelIdentEdit::OnPaste() {
  if (GetWindowLongW(m_hWnd, GWL_STYLE) & ES_READONLY) return;
  std::string clip;
  if (!varion::GetClipboardText(m_hWnd, clip)) return;
  DWORD start = 0, end = 0;
  Default(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  const std::size_t length = static_cast<std::size_t>(Default(WM_GETTEXTLENGTH, 0, 0));
  const std::size_t limit = varion::IdentMaxLength(m_kind, m_options);
  const std::size_t kept = length - std::min<std::size_t>(length, end - start);
  const std::size_t room = limit > kept ? limit - kept : 0;
  std::string pasted = varion::IdentFilter(m_kind, clip, room, m_options);
  if (m_kind == IdentKind::Rachunek || m_kind == IdentKind::NipEx)
    for (char& c : pasted)
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  if (pasted.empty()) {
    if (!clip.empty()) varion::Beep();
    return;
  }
  const std::wstring wide = varion::text::Cp1250ToWide(pasted);
  Default(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

bool CVelIdentEdit::OnKeyDown(WPARAM key) {
  if (key == VK_INSERT && varion::KeyDown(VK_SHIFT) && !varion::KeyDown(VK_CONTROL)) return OnPaste(), true;
  if (m_kind == IdentKind::Time && (key == VK_UP || key == VK_DOWN)) {
    DWORD start = 0, end = 0;
    Default(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    SetText(varion::StepTimeField(Text(), start, key == VK_UP ? 1 : -1, m_options));
    Default(EM_SETSEL, start, start);
    return true;
  }
  if (HasBrowseButton() && key == VK_F4) return Browse(), true;
  return false;
}

bool CVelIdentEdit::OnCtrlClick() {
  if (m_kind != IdentKind::Email && m_kind != IdentKind::Www) return false;
  if (const auto address = varion::IdentAddressToOpen(m_kind, Text()))
    varion::OpenShellAddress(GetParent(m_hWnd), *address);
  else
    varion::Beep();
  return true;
}

void CVelIdentEdit::Browse() {
  std::string path = Text();
  if (!varion::ChoosePath(GetParent(m_hWnd), m_kind, path)) return;
  SetText(path);
  SetFocus(m_hWnd);
  Settle();
}

void CVelIdentEdit::PlaceButton() {
  if (!m_button) return;
  RECT r;
  GetClientRect(m_hWnd, &r);
  const int height = r.bottom - r.top;
  const int width = std::max(16, height);
  MoveWindow(m_button, r.right - width, 0, width, height, TRUE);
  Default(EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(0, width + 2));
}

LRESULT CVelIdentEdit::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      if (r != -1) Initialize();
      return r;
    }
    case WM_CHAR:
      if (wp == 0x16) return OnPaste(), 0;  // Ctrl+V
      if (wp >= 0x20 && wp != 0x7F && OnChar(wp, lp)) return 0;
      break;
    case WM_PASTE:
      OnPaste();
      return 0;
    case WM_KEYDOWN:
      if (OnKeyDown(wp)) return 0;
      break;
    case WM_KILLFOCUS: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      // The browse button is part of the field: moving to it is not leaving.
      if (!m_button || reinterpret_cast<HWND>(wp) != m_button) Settle();
      return r;
    }
    case WM_LBUTTONDOWN:
      if ((wp & MK_CONTROL) && OnCtrlClick()) return 0;
      break;
    case WM_COMMAND:
      if (LOWORD(wp) == kBrowseButtonId && HIWORD(wp) == BN_CLICKED && reinterpret_cast<HWND>(lp) == m_button) {
        Browse();
        return 0;
      }
      break;
    case WM_SIZE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      PlaceButton();
      return r;
    }
    case WM_PAINT: {
      // The edit class paints with its parent's clipping (CS_PARENTDC), over its children: the
      // button paints itself again on top.
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      if (m_button) RedrawWindow(m_button, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
      return r;
    }
    case WM_SETFONT:
      if (m_button) SendMessageW(m_button, WM_SETFONT, wp, lp);
      {
        const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
        PlaceButton();
        return r;
      }
  }
  return CVelEditBase::WindowProc(msg, wp, lp);
}
