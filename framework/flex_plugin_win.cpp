#include "framework/flex_plugin_win.h"

#include <algorithm>

#include "diagnostics/framework_log.h"

namespace {

varion::FlexRect ToFlex(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

RECT ChildRect(HWND dialog, HWND control) {
  RECT r;
  GetWindowRect(control, &r);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

bool IsNestedDialog(HWND h) {
  wchar_t cls[16];
  return GetClassNameW(h, cls, 16) > 0 && wcscmp(cls, L"#32770") == 0;
}

BOOL CALLBACK AddWorkArea(HMONITOR monitor, HDC, LPRECT, LPARAM out) {
  MONITORINFO mi{};
  mi.cbSize = sizeof mi;
  if (GetMonitorInfoW(monitor, &mi))
    reinterpret_cast<std::vector<varion::FlexRect>*>(out)->push_back(ToFlex(mi.rcWork));
  return TRUE;
}

// Offset of a monitor's work area from its full area: window placements of top-level windows
// count from the work area, the profile keeps screen coordinates.
POINT WorkAreaOffset(const RECT& rect) {
  MONITORINFO mi{};
  mi.cbSize = sizeof mi;
  GetMonitorInfoW(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &mi);
  return {mi.rcWork.left - mi.rcMonitor.left, mi.rcWork.top - mi.rcMonitor.top};
}

}  // namespace

void CVelFlexPlugin::Attach(HWND dialog) {
  m_dialog = dialog;
  RECT rc;
  GetClientRect(dialog, &rc);
  m_baseClient = {rc.right - rc.left, rc.bottom - rc.top};
  GetWindowRect(dialog, &m_baseWindow);
}

bool CVelFlexPlugin::AddIfNotPresentFlexConstraint(UINT id, double left, double right, double top, double bottom) {
  if (!m_constraints.AddIfNotPresent(id, left, right, top, bottom)) return false;
  if (HWND h = GetDlgItem(m_dialog, static_cast<int>(id)))
    m_constraints.SetBaseRect(id, ToFlex(ChildRect(m_dialog, h)));
  return true;
}

void CVelFlexPlugin::ReplaceFlexConstraint(UINT id, double left, double right, double top, double bottom,
                                           bool keepBase) {
  ReplaceFlexConstraint(id, {left, right}, {top, bottom}, keepBase);
}

void CVelFlexPlugin::ReplaceFlexConstraint(UINT id, const CVelFlexHorizontalConstraint& h,
                                           const CVelFlexVerticalConstraint& v, bool keepBase) {
  m_constraints.Replace(id, h, v, keepBase);
  const CVelFlexConstraint* c = m_constraints.Find(id);
  if (!c->base)
    if (HWND ctrl = GetDlgItem(m_dialog, static_cast<int>(id)))
      m_constraints.SetBaseRect(id, ToFlex(ChildRect(m_dialog, ctrl)));
}

bool CVelFlexPlugin::SetFlexConstraintBaseRect(UINT id, const RECT& rect) {
  return m_constraints.SetBaseRect(id, ToFlex(rect));
}

void CVelFlexPlugin::PositionControls(int cx, int cy) {
  if (!m_dialog || m_constraints.IsEmpty()) return;
  constexpr UINT kFlags = SWP_NOZORDER | SWP_NOACTIVATE;
  struct Move {
    HWND window;
    varion::FlexRect rect;
  };
  std::vector<Move> batch, direct;
  for (const auto& c : m_constraints.Items()) {
    HWND h = GetDlgItem(m_dialog, static_cast<int>(c.ctrlId));
    if (!h || !c.base) continue;
    const varion::FlexRect r = CVelFlexConstraintList::Position(c, *c.base, m_baseClient.cx, m_baseClient.cy, cx, cy);
    (IsNestedDialog(h) ? direct : batch).push_back({h, r});
  }
  if (HDWP dwp = BeginDeferWindowPos(static_cast<int>(batch.size()))) {
    for (const auto& m : batch) {
      dwp = DeferWindowPos(dwp, m.window, nullptr, m.rect.left, m.rect.top, m.rect.right - m.rect.left,
                           m.rect.bottom - m.rect.top, kFlags);
      if (!dwp) break;
    }
    if (dwp) EndDeferWindowPos(dwp);
  }
  for (const auto& m : direct)
    SetWindowPos(m.window, nullptr, m.rect.left, m.rect.top, m.rect.right - m.rect.left, m.rect.bottom - m.rect.top,
                 kFlags);
}

void CVelFlexPlugin::OnRedoFlexLayout() {
  if (!m_dialog) return;
  RECT rc;
  GetClientRect(m_dialog, &rc);
  SendMessageW(m_dialog, WM_SIZE, SIZE_RESTORED, MAKELPARAM(rc.right - rc.left, rc.bottom - rc.top));
}

void CVelFlexPlugin::SetMinTracking(int cx, int cy) { m_minTrack = {cx, cy}; }

SIZE CVelFlexPlugin::MinTrackSize() const {
  if (m_minTrack.cx > 0 || m_minTrack.cy > 0) return m_minTrack;
  return {m_baseWindow.right - m_baseWindow.left, m_baseWindow.bottom - m_baseWindow.top};
}

void CVelFlexPlugin::OnGetMinMaxInfo(MINMAXINFO* info) const {
  if (!m_dialog || !info) return;
  const SIZE min = MinTrackSize();
  if (min.cx > 0) info->ptMinTrackSize.x = min.cx;
  if (min.cy > 0) info->ptMinTrackSize.y = min.cy;
  if (m_noHResize) {
    RECT r;
    GetWindowRect(m_dialog, &r);
    info->ptMinTrackSize.x = info->ptMaxTrackSize.x = r.right - r.left;
  }
}

std::vector<varion::FlexRect> CVelFlexPlugin::WorkAreas() {
  std::vector<varion::FlexRect> areas;
  EnumDisplayMonitors(nullptr, nullptr, AddWorkArea, reinterpret_cast<LPARAM>(&areas));
  return areas;
}

bool CVelFlexPlugin::IsValidWindowRect(const RECT& rect) const {
  return varion::IsValidWindowRect(ToFlex(rect), WorkAreas());
}

bool CVelFlexPlugin::IsValidWindowPos(int left, int top) const { return varion::IsValidWindowPos(left, top); }

bool CVelFlexPlugin::IsValidWindowSize(int cx, int cy) const {
  const SIZE min = MinTrackSize();
  return varion::IsValidWindowSize(cx, cy, WorkAreas(), min.cx, min.cy);
}

void CVelFlexPlugin::SetDefaultSize(int cx, int cy) { m_defaultSize = {cx, cy}; }

void CVelFlexPlugin::SaveToReg() const {
  auto profile = varion::GetApplicationProfile();
  if (!profile || m_section.empty() || !IsWindow(m_dialog)) return;
  WINDOWPLACEMENT wp{};
  wp.length = sizeof wp;
  if (!GetWindowPlacement(m_dialog, &wp)) return;
  RECT r = wp.rcNormalPosition;
  if (!(GetWindowLongW(m_dialog, GWL_EXSTYLE) & WS_EX_TOOLWINDOW)) {
    const POINT offset = WorkAreaOffset(r);
    OffsetRect(&r, offset.x, offset.y);
  }
  varion::WritePlacement(*profile, m_section,
                         {IsZoomed(m_dialog) != FALSE, r.right - r.left, r.bottom - r.top, r.left, r.top});
}

bool CVelFlexPlugin::LoadFromReg() {
  m_showMaximized = false;
  auto profile = varion::GetApplicationProfile();
  std::optional<varion::StoredPlacement> stored;
  if (profile && !m_section.empty()) stored = varion::ReadPlacement(*profile, m_section);
  if (stored) {
    const SIZE min = MinTrackSize();
    if (auto rect = varion::RestoredRect(*stored, WorkAreas(), min.cx, min.cy)) {
      SetWindowPos(m_dialog, nullptr, rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
      m_showMaximized = stored->maximized;
      return true;
    }
    varion::FrameworkLog("placement",
                         "stored placement of " + m_section + " is off-screen or absurd; default size used");
  }
  ApplyDefaultSize();
  return false;
}

void CVelFlexPlugin::ApplyDefaultSize() {
  if (m_defaultSize.cx <= 0 || m_defaultSize.cy <= 0 || !m_dialog) return;
  RECT r;
  GetWindowRect(m_dialog, &r);
  // The default size keeps the dialog's centre and stays on the monitor the dialog is on.
  const int cx = (r.left + r.right) / 2, cy = (r.top + r.bottom) / 2;
  varion::FlexRect want{cx - m_defaultSize.cx / 2, cy - m_defaultSize.cy / 2,
                        cx - m_defaultSize.cx / 2 + m_defaultSize.cx, cy - m_defaultSize.cy / 2 + m_defaultSize.cy};
  want = varion::PullOntoWorkArea(want, WorkAreas());
  SetWindowPos(m_dialog, nullptr, want.left, want.top, want.right - want.left, want.bottom - want.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}
