#include "framework/hook_supp_win.h"

#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>

#include "base/text.h"
#include "base/handles_win.h"
#include "diagnostics/failure_boundary_win.h"
#include "diagnostics/framework_log.h"
#include "base/library_module_win.h"
#include "controls/calendar_win.h"
#include "controls/currency_edit_win.h"
#include "controls/date_edit_win.h"
#include "controls/ident_edit_win.h"
#include "controls/small_controls_win.h"
#include "controls/vel_controls_win.h"

std::atomic<int> CHookSupp::m_bInitialized{0};
std::atomic<int> CHookSupp::m_nHookGuard{0};
void* CHookSupp::m_pVXAXState = nullptr;

namespace {

BOOL AttachCombo(HWND h, CREATESTRUCTW*) { return CVelComboBox::Attach(h) != nullptr; }
BOOL AttachAnalityka(HWND h, CREATESTRUCTW*) { return CVelAnalitykaEdit::Attach(h) != nullptr; }
BOOL AttachCalendar(HWND h, CREATESTRUCTW*) { return CVelCalendar::Attach(h) != nullptr; }
BOOL AttachDateEdit(HWND h, CREATESTRUCTW*) { return CVelDateEdit::Attach(h) != nullptr; }

constexpr UINT kOwnClassStyle = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;  // 11
constexpr std::size_t kClassNameLimit = 100;

// The classes left without an object ("vel_htmlctrl", "vel_eyes" and the others) and why:
// controls/small_controls_win.h.
// Registration order matters to hosts that look classes up by position in old tools; keep it.
const varion::VelClassEntry kClasses[] = {
    {"vel_addbtn", nullptr, CVelActionButton::AttachCreating},
    {"vel_editbtn", nullptr, CVelActionButton::AttachCreating},
    {"vel_listbtn", nullptr, CVelActionButton::AttachCreating},
    {"vel_deletebtn", nullptr, CVelActionButton::AttachCreating},
    {"vel_bkgnd", nullptr, CVelBkgnd::AttachCreating},
    {"vel_bmpbutton", nullptr, CVelBmpButton::AttachCreating},
    {"vel_hyperlink", nullptr, CVelHyperlink::AttachCreating},
    {"vel_combohyperlink", nullptr, CVelComboHyperlink::AttachCreating},
    {"vel_combohyperlinkex", nullptr, CVelComboHyperlink::AttachCreating},
    {"vel_htmlctrl", nullptr, nullptr},
    {"vel_htmlcnt", nullptr, nullptr},
    {"vel_infoframe", nullptr, CVelInfoFrame::AttachCreating},
    {"vel_calculator", nullptr, nullptr},
    {"vel_calendar", nullptr, AttachCalendar},
    {"vel_colorpicker", nullptr, nullptr},
    {"vel_colorpopup", nullptr, nullptr},
    {"vel_gridcnt", nullptr, nullptr},
    {"vel_eyes", nullptr, nullptr},
    {"vel_piepercent", nullptr, CVelPiePercent::AttachCreating},
    {"vel_planner", nullptr, nullptr},
    {"vel_numeredit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_paramedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_dateedit", "Edit", AttachDateEdit},
    {"vel_curredit", "Edit", CVelCurrencyEdit::AttachCreating},
    {"vel_wwwedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_mailedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_folderedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_fileedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_ggedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_skypeedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_nipedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_nipeditex", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_rbedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_peseledit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_regonedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_analitykaedit", "Edit", AttachAnalityka},
    {"DropdownCombobox", "ComboBox", AttachCombo},
    {"vel_adresedit", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_timeeditex", "Edit", CVelIdentEdit::AttachCreating},
    {"vel_currenteredit", "Edit", CVelCurrencyEnterEdit::AttachCreating},
    {"vel_idwewnetrznyedit", "Edit", CVelIdentEdit::AttachCreating},
};

const char* const kVxaxClasses[][2] = {
    {"VXAX_Edit", "Edit"}, {"VXAX_ListBox", "ListBox"}, {"VXAX_ComboBox", "ComboBox"}};

// Window class names compare without regard to case, as the system compares them.
struct NoCase {
  bool operator()(const std::string& a, const std::string& b) const { return _stricmp(a.c_str(), b.c_str()) < 0; }
};

std::mutex g_mapMutex;
std::map<std::string, VelSubclassProc, NoCase> g_map;
std::atomic<bool> g_subclassing{true};
GridLibraryBinding g_grid;

// Every thread's creation hook, owned in one process-wide table rather than by thread-local
// state, so that unloading the library can remove the hooks of threads that are still running:
// a hook left behind would call into an unloaded image at the thread's next window creation.
std::mutex g_hooksMutex;
std::map<DWORD, varion::unique_hook> g_hooks;
// The calling thread's hook, for CallNextHookEx without a lock (the system ignores the handle
// there anyway).
thread_local HHOOK t_hook = nullptr;

// Raises CHookSupp::m_nHookGuard for the life of a dispatch, also when it throws.
struct HookGuardScope {
  HookGuardScope() { ++CHookSupp::m_nHookGuard; }
  ~HookGuardScope() { --CHookSupp::m_nHookGuard; }
  HookGuardScope(const HookGuardScope&) = delete;
  HookGuardScope& operator=(const HookGuardScope&) = delete;
};

const wchar_t kVisualStyleProp[] = L"VarionVisualStyle";

}  // namespace

namespace varion {
const VelClassEntry* VelClassTable(std::size_t* count) {
  if (count) *count = std::size(kClasses);
  return kClasses;
}
}  // namespace varion

void CHookSupp::RegisterVelClass(const char* className, WNDPROC proc, const char* baseClass, HBRUSH brush, UINT style) {
  const std::wstring name = varion::text::Cp1250ToWide(className);
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  if (baseClass) {
    if (!GetClassInfoExW(nullptr, varion::text::Cp1250ToWide(baseClass).c_str(), &wc)) return;
    wc.cbSize = sizeof wc;
  } else {
    wc.lpfnWndProc = proc;
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.hbrBackground = brush;
    wc.style = style;
  }
  wc.style |= CS_GLOBALCLASS;
  wc.hInstance = varion::LibraryModule();
  wc.lpszClassName = name.c_str();
  wc.lpszMenuName = nullptr;
  RegisterClassExW(&wc);
}

void CHookSupp::InitVXAXVelControls(void* moduleState) {
  for (const auto& c : kVxaxClasses) RegisterVelClass(c[0], nullptr, c[1], nullptr, 0);
  if (m_bInitialized) return;
  InitVelControls();
  m_pVXAXState = moduleState;
}

void CHookSupp::InitVelControls() {
  // The library's own classes answer as DefWindowProc does until an object of ours is attached.
  for (const auto& c : kClasses)
    RegisterVelClass(c.name, varion::Window::ClassProcedure(), c.baseClass, nullptr, kOwnClassStyle);
  InitDefSubProcMap();
  m_bInitialized = 1;
}

void CHookSupp::InitDefSubProcMap() {
  for (const auto& c : kClasses)
    if (c.subclass) AddSubclassProc(c.name, c.subclass);
}

void CHookSupp::TermVelControls() {
  {
    std::lock_guard lock(g_mapMutex);
    g_map.clear();
  }
  for (const auto& c : kClasses) UnregisterClassW(varion::text::Cp1250ToWide(c.name).c_str(), varion::LibraryModule());
  for (const auto& c : kVxaxClasses)
    UnregisterClassW(varion::text::Cp1250ToWide(c[0]).c_str(), varion::LibraryModule());
  m_bInitialized = 0;
  m_pVXAXState = nullptr;
}

void CHookSupp::AddSubclassProc(const char* className, VelSubclassProc proc) {
  if (!className || !proc) return;
  std::lock_guard lock(g_mapMutex);
  g_map[className] = proc;
}

void CHookSupp::RemoveSubclassProc(const char* className) {
  if (!className) return;
  std::lock_guard lock(g_mapMutex);
  g_map.erase(className);
}

void CHookSupp::RemoveSubclassProc(VelSubclassProc proc) {
  std::lock_guard lock(g_mapMutex);
  std::erase_if(g_map, [proc](const auto& entry) { return entry.second == proc; });
}

VelSubclassProc CHookSupp::FindSubclassProc(const char* className) {
  if (!className) return nullptr;
  std::lock_guard lock(g_mapMutex);
  auto it = g_map.find(className);
  return it == g_map.end() ? nullptr : it->second;
}

void CHookSupp::InstallUIHook() {
  if (m_bInitialized) SetCbtFilter();
}

void CHookSupp::RemoveUIHook() { RemoveCbtFilter(); }

void CHookSupp::SetCbtFilter() {
  if (!m_bInitialized) return;
  std::lock_guard lock(g_hooksMutex);
  auto& slot = g_hooks[GetCurrentThreadId()];
  if (!slot) slot.reset(SetWindowsHookExW(WH_CBT, CbtProc, nullptr, GetCurrentThreadId()));
  t_hook = slot.get();
  if (!slot) g_hooks.erase(GetCurrentThreadId());
}

void CHookSupp::RemoveCbtFilter() {
  t_hook = nullptr;
  std::lock_guard lock(g_hooksMutex);
  g_hooks.erase(GetCurrentThreadId());
}

void CHookSupp::RemoveAllUIHooks() {
  t_hook = nullptr;
  std::lock_guard lock(g_hooksMutex);
  g_hooks.clear();
}

bool CHookSupp::IsUIHookInstalled() {
  std::lock_guard lock(g_hooksMutex);
  return g_hooks.count(GetCurrentThreadId()) != 0;
}

std::size_t CHookSupp::InstalledUIHookCount() {
  std::lock_guard lock(g_hooksMutex);
  return g_hooks.size();
}

LRESULT CALLBACK CHookSupp::CbtProc(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HCBT_CREATEWND && g_subclassing.load(std::memory_order_relaxed)) {
    auto* cw = reinterpret_cast<CBT_CREATEWNDW*>(lParam);
    HWND window = reinterpret_cast<HWND>(wParam);
    // A subclass procedure is host code as often as ours: whatever it throws stops here, and
    // the window is still created.
    varion::CallGuarded(window, "creation hook", [&] {
      HookGuardScope guard;
      Dispatch(window, cw ? cw->lpcs : nullptr);
    });
  }
  return CallNextHookEx(t_hook, code, wParam, lParam);
}

BOOL CHookSupp::Dispatch(HWND window, CREATESTRUCTW* create) {
  wchar_t name[257];
  const int n = GetClassNameW(window, name, static_cast<int>(std::size(name)));
  if (n <= 0) return FALSE;
  if (static_cast<std::size_t>(n) >= kClassNameLimit) {
    varion::FrameworkLog("hook", "window class name of 100 characters or more; stopping the process");
    TerminateProcess(GetCurrentProcess(), 3);
  }
  char narrow[kClassNameLimit];
  for (int i = 0; i <= n; ++i) narrow[i] = name[i] < 0x80 ? static_cast<char>(name[i]) : '?';
  VelSubclassProc proc = FindSubclassProc(narrow);
  return proc ? proc(window, create) : FALSE;
}

void CHookSupp::SetSubclassingEnabled(bool enabled) { g_subclassing = enabled; }
bool CHookSupp::IsSubclassingEnabled() { return g_subclassing; }

VEL_VISUAL_STYLE CHookSupp::GetVisualStyle(HWND window) {
  for (HWND h = window; h; h = GetAncestor(h, GA_PARENT)) {
    // Stored one above its value, so that an absent property (0) reads apart from VVS_DEFAULT.
    const auto stored = reinterpret_cast<INT_PTR>(GetPropW(h, kVisualStyleProp));
    if (stored > 1) return static_cast<VEL_VISUAL_STYLE>(stored - 1);
  }
  return VVS_DEFAULT;
}

void CHookSupp::SetVisualStyle(HWND window, VEL_VISUAL_STYLE style) {
  if (!IsWindow(window)) return;
  if (style == VVS_DEFAULT)
    RemovePropW(window, kVisualStyleProp);
  else
    SetPropW(window, kVisualStyleProp, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(style) + 1));
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

void CHookSupp::SetGridBinding(const GridLibraryBinding& binding) { g_grid = binding; }

bool CHookSupp::InitGrid(unsigned int flags) {
  if (!g_grid.GXInit || !g_grid.GXSetNewGridLineMode) return false;
  g_grid.GXInit(3584);
  g_grid.GXSetNewGridLineMode(TRUE, flags);
  return true;
}

void CHookSupp::TerminateGrid() {
  if (g_grid.GXTerminate) g_grid.GXTerminate();
}
