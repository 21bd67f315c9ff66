#include "controls/balloon_tip_win.h"

#include <commctrl.h>

#include <map>
#include <memory>

#include "base/text.h"
#include "diagnostics/failure_boundary_win.h"
#include "base/library_module_win.h"

namespace varion {

void BalloonTip::Show(HWND anchor, const std::string& title, const std::string& text, int icon, const POINT* at) {
  if (!IsWindow(anchor)) return;
  // The tooltip belongs to the anchor's top-level window, so it never outlives it.
  HWND owner = GetAncestor(anchor, GA_ROOT);
  if (!IsWindow(m_tip.get()) || GetWindow(m_tip.get(), GW_OWNER) != owner) {
    m_tip.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                            WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | TTS_BALLOON | TTS_NOANIMATE | TTS_NOFADE,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, LibraryModule(),
                            nullptr));
    if (!m_tip) return;
    m_anchor = nullptr;
  }
  std::wstring wtext = text::Cp1250ToWide(text);
  TTTOOLINFOW ti{};
  ti.cbSize = TTTOOLINFOW_V2_SIZE;
  ti.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  ti.hwnd = anchor;
  ti.uId = 1;
  ti.lpszText = wtext.data();
  if (m_anchor != anchor) {
    if (m_anchor) {
      TTTOOLINFOW old = ti;
      old.hwnd = m_anchor;
      SendMessageW(m_tip.get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&old));
    }
    SendMessageW(m_tip.get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
    SendMessageW(m_tip.get(), TTM_SETMAXTIPWIDTH, 0, 320);
    m_anchor = anchor;
  } else {
    SendMessageW(m_tip.get(), TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&ti));
  }
  std::wstring wtitle = text::Cp1250ToWide(title);
  SendMessageW(m_tip.get(), TTM_SETTITLEW, title.empty() ? TTI_NONE : static_cast<WPARAM>(icon),
               reinterpret_cast<LPARAM>(wtitle.c_str()));
  m_text = text;
  m_title = title;
  m_icon = title.empty() ? TTI_NONE : icon;
  RECT r;
  GetWindowRect(anchor, &r);
  const POINT stem = at ? *at : POINT{(r.left + r.right) / 2, r.bottom - 2};
  SendMessageW(m_tip.get(), TTM_TRACKPOSITION, 0, MAKELPARAM(stem.x, stem.y));
  SendMessageW(m_tip.get(), TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&ti));
}

void BalloonTip::Hide() {
  if (!IsWindow(m_tip.get()) || !m_anchor) return;
  TTTOOLINFOW ti{};
  ti.cbSize = TTTOOLINFOW_V2_SIZE;
  ti.hwnd = m_anchor;
  ti.uId = 1;
  SendMessageW(m_tip.get(), TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&ti));
}

bool BalloonTip::IsVisible() const { return IsWindow(m_tip.get()) && IsWindowVisible(m_tip.get()); }

namespace {

struct ThreadTip {
  std::unique_ptr<BalloonTip> tip;
  WindowTimer timer;
};
thread_local std::map<HWND, ThreadTip> t_tips;

void CALLBACK TipTimer(HWND, UINT, UINT_PTR timer, DWORD) {
  CallGuarded(nullptr, "tip timer", [timer] {
    for (auto& [control, entry] : t_tips) {
      if (entry.timer.Id() == timer) {
        HideTipMsgBox(control);
        return;
      }
    }
    KillTimer(nullptr, timer);
  });
}

}  // namespace

int TipIconFromStyle(UINT style) {
  switch (style & MB_ICONMASK) {
    case MB_ICONERROR:
      return TTI_ERROR;
    case MB_ICONWARNING:
      return TTI_WARNING;
    case MB_ICONINFORMATION:
      return TTI_INFO;
    default:
      return TTI_NONE;
  }
}

namespace {

HWND ShowTip(HWND control, const POINT* at, const std::string& title, const std::string& text, UINT style,
             UINT milliseconds) {
  // Tips of controls that are gone go with them.
  std::erase_if(t_tips, [](auto& e) { return !IsWindow(e.first); });
  if (!IsWindow(control)) return nullptr;
  ThreadTip& entry = t_tips[control];
  if (!entry.tip) entry.tip = std::make_unique<BalloonTip>();
  entry.tip->Show(control, title, text, TipIconFromStyle(style), at);
  entry.timer.Set(nullptr, 0, milliseconds, TipTimer);
  return entry.tip->Window();
}

}  // namespace

HWND TipMsgBox(HWND control, const std::string& title, const std::string& text, UINT style, UINT milliseconds) {
  return ShowTip(control, nullptr, title, text, style, milliseconds);
}

HWND TipMsgBoxAt(HWND control, POINT at, const std::string& title, const std::string& text, UINT style,
                 UINT milliseconds) {
  return ShowTip(control, &at, title, text, style, milliseconds);
}

HWND CurrentTipWindow(HWND control) {
  auto it = t_tips.find(control);
  return it != t_tips.end() && it->second.tip && it->second.tip->IsVisible() ? it->second.tip->Window() : nullptr;
}

std::string CurrentTipText(HWND control) {
  auto it = t_tips.find(control);
  return CurrentTipWindow(control) ? it->second.tip->Text() : std::string();
}

int CurrentTipIcon(HWND control) {
  auto it = t_tips.find(control);
  return CurrentTipWindow(control) ? it->second.tip->Icon() : TTI_NONE;
}

void HideTipMsgBox(HWND control) {
  for (auto& [c, entry] : t_tips) {
    if (control && c != control) continue;
    entry.timer.Kill();
    if (entry.tip) entry.tip->Hide();
  }
}

}  // namespace varion
