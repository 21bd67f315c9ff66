#include "controls/window_base_win.h"

#include <mutex>
#include <shared_mutex>
#include <unordered_map>
#include <utility>

#include "base/library_module_win.h"
#include "diagnostics/failure_boundary_win.h"

namespace varion {
namespace {

// The object of each window and the procedure it replaced. A window whose object has gone while
// our procedure stays in its chain keeps an entry with a null object: it passes messages on.
struct Entry {
  Window* object;
  WNDPROC previous;
};
std::shared_mutex g_mutex;
std::unordered_map<HWND, Entry> g_table;

// The object being created on this thread, attached at the window's first message.
thread_local Window* t_creating = nullptr;

Entry Lookup(HWND h) {
  std::shared_lock lock(g_mutex);
  auto it = g_table.find(h);
  return it == g_table.end() ? Entry{nullptr, nullptr} : it->second;
}

struct CreatingScope {
  Window* saved;
  explicit CreatingScope(Window* w) : saved(std::exchange(t_creating, w)) {}
  ~CreatingScope() { t_creating = saved; }
};

}  // namespace

Window::~Window() {
  HWND h = m_hWnd;
  const bool created = m_created;
  DetachWindow();
  // A window we made goes with us; it is detached first, so no message reaches a half-destroyed
  // object. Derived windows destroy theirs in their own destructor to see WM_DESTROY themselves.
  if (created && IsWindow(h)) DestroyWindow(h);
}

Window* Window::FromHandle(HWND window) { return window ? Lookup(window).object : nullptr; }

bool Window::RegisterWindowClass(const wchar_t* className, UINT style, HBRUSH background, LPCWSTR cursor) {
  HINSTANCE module = LibraryModule();
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  if (GetClassInfoExW(module, className, &wc)) return true;
  wc = WNDCLASSEXW{};
  wc.cbSize = sizeof wc;
  wc.style = style;
  wc.lpfnWndProc = StaticProc;
  wc.hInstance = module;
  wc.hCursor = cursor ? LoadCursorW(nullptr, cursor) : nullptr;
  wc.hbrBackground = background;
  wc.lpszClassName = className;
  return RegisterClassExW(&wc) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool Window::Bind(HWND window, WNDPROC previous, Ownership ownership) {
  std::unique_lock lock(g_mutex);
  auto [it, fresh] = g_table.try_emplace(window, Entry{this, previous});
  if (!fresh) {
    if (it->second.object && it->second.object != this) return false;
    it->second.object = this;  // our procedure is still in the chain from an earlier object
  }
  m_oldProc = it->second.previous;
  m_hWnd = window;
  m_ownership = ownership;
  return true;
}

bool Window::AttachWindow(HWND window, Ownership ownership) {
  if (m_hWnd || !IsWindow(window)) return false;
  {
    std::shared_lock lock(g_mutex);
    auto it = g_table.find(window);
    if (it != g_table.end()) {
      if (it->second.object) return false;
      lock.unlock();
      return Bind(window, nullptr, ownership);
    }
  }
  // A window of one of our own classes already runs our procedure: nothing to put in front
  // (doing so would make it call itself); its default is DefWindowProc.
  if (reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) == StaticProc)
    return Bind(window, nullptr, ownership);
  // Claim the table entry first, so a message sent while the procedure is swapped finds us.
  if (!Bind(window, nullptr, ownership)) return false;
  const auto previous =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(StaticProc)));
  std::unique_lock lock(g_mutex);
  g_table[window].previous = previous;
  m_oldProc = previous;
  return true;
}

HWND Window::CreateWindowOf(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style,
                            const RECT& rect, HWND parent, UINT_PTR idOrMenu, HINSTANCE instance) {
  if (m_hWnd) return nullptr;
  CreatingScope scope(this);
  HWND h = CreateWindowExW(exStyle, className, title, style, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, parent, reinterpret_cast<HMENU>(idOrMenu), instance, this);
  if (h && m_hWnd == h) m_created = true;
  return h && m_hWnd == h ? h : nullptr;
}

HWND Window::CreateDialogOf(HINSTANCE module, const DLGTEMPLATE* dialogTemplate, HWND parent) {
  if (m_hWnd) return nullptr;
  CreatingScope scope(this);
  HWND h = CreateDialogIndirectParamW(module, dialogTemplate, parent, StaticDialogProc, reinterpret_cast<LPARAM>(this));
  if (h && m_hWnd == h) m_created = true;
  return h && m_hWnd == h ? h : nullptr;
}

HWND Window::DetachWindow() {
  HWND h = std::exchange(m_hWnd, nullptr);
  if (!h) return nullptr;
  std::unique_lock lock(g_mutex);
  auto it = g_table.find(h);
  if (it != g_table.end() && it->second.object == this) {
    const bool ours = IsWindow(h) && reinterpret_cast<WNDPROC>(GetWindowLongPtrW(h, GWLP_WNDPROC)) == StaticProc;
    if (ours && it->second.previous) {
      SetWindowLongPtrW(h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(it->second.previous));
      g_table.erase(it);
    } else {
      it->second.object = nullptr;
    }
  }
  m_created = false;
  return h;
}

LRESULT Window::WindowProc(UINT msg, WPARAM wp, LPARAM lp) { return Default(msg, wp, lp); }

INT_PTR Window::DialogProc(UINT, WPARAM, LPARAM) { return FALSE; }

LRESULT Window::Default(UINT msg, WPARAM wp, LPARAM lp) {
  return m_oldProc ? CallWindowProcW(m_oldProc, m_hWnd, msg, wp, lp) : DefWindowProcW(m_hWnd, msg, wp, lp);
}

std::string Window::FailureArea() const {
  wchar_t name[128];
  const int n = m_hWnd ? GetClassNameW(m_hWnd, name, static_cast<int>(std::size(name))) : 0;
  std::string area = "window";
  if (n > 0) {
    area += ' ';
    for (int i = 0; i < n; ++i) area += name[i] < 0x80 ? static_cast<char>(name[i]) : '?';
  }
  return area;
}

void Window::Report(HWND window, const Failure& failure) noexcept {
  std::string area = "window", caption;
  try {
    // The object may have gone with its window while the handler ran: look it up again.
    if (Window* self = FromHandle(window)) {
      area = self->FailureArea();
      caption = self->FailureCaption();
    }
  } catch (...) {
  }
  ReportFailure(window, area, failure, caption);
}

LRESULT CALLBACK Window::StaticProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  Entry e = Lookup(h);
  if (msg == WM_NCCREATE && !e.object && t_creating &&
      reinterpret_cast<const CREATESTRUCTW*>(lp)->lpCreateParams == t_creating) {
    // A window made by CreateWindowOf: bound before anything but WM_GETMINMAXINFO (which
    // DefWindowProc answers) reaches it.
    Window* self = std::exchange(t_creating, nullptr);
    self->Bind(h, nullptr, kOwnedByHolder);
    e = Lookup(h);
  }
  if (msg == WM_NCDESTROY) {
    {
      std::unique_lock lock(g_mutex);
      g_table.erase(h);
    }
    LRESULT r = 0;
    try {
      r = e.previous ? CallWindowProcW(e.previous, h, msg, wp, lp) : DefWindowProcW(h, msg, wp, lp);
    } catch (...) {
      Report(h, DescribeFailure(std::current_exception()));
    }
    if (Window* self = e.object) {
      self->m_hWnd = nullptr;
      self->m_created = false;
      try {
        self->OnFinalMessage();
      } catch (...) {
        ReportFailure(nullptr, "window", DescribeFailure(std::current_exception()));
      }
      if (self->m_ownership == kOwnedByWindow) delete self;
    }
    return r;
  }
  if (!e.object) return e.previous ? CallWindowProcW(e.previous, h, msg, wp, lp) : DefWindowProcW(h, msg, wp, lp);
  try {
    return e.object->WindowProc(msg, wp, lp);
  } catch (...) {
    const Failure failure = DescribeFailure(std::current_exception());
    Report(h, failure);
    Window* still = FromHandle(h);
    return still ? still->FailureResult(msg) : 0;
  }
}

INT_PTR CALLBACK Window::StaticDialogProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  Window* self = FromHandle(h);
  if (!self && t_creating) {
    // The dialog manager's first message (WM_SETFONT or WM_INITDIALOG): put our procedure in
    // front of the dialog's own, so that the object sees every message of its window too.
    self = std::exchange(t_creating, nullptr);
    if (!self->AttachWindow(h, kOwnedByHolder)) return FALSE;
  }
  if (!self) return FALSE;
  try {
    return self->DialogProc(msg, wp, lp);
  } catch (...) {
    Report(h, DescribeFailure(std::current_exception()));
    // The message counts as handled: a half-run handler must not be followed by the default.
    return TRUE;
  }
}

}  // namespace varion
