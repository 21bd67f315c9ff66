// One owner type per kind of Windows handle the library holds: each releases its handle exactly
// once, is move-only, and is the only place where that kind's release function is called.
// (ODBC and SQLite handles have their owners in db/.)
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace varion {

namespace detail {
template <class H, auto Release>
struct HandleReleaser {
  void operator()(H h) const noexcept {
    if (h) Release(h);
  }
};
inline void DestroyWindowIfAlive(HWND h) noexcept {
  if (IsWindow(h)) DestroyWindow(h);
}
inline void DeleteGdiObject(HGDIOBJ h) noexcept { DeleteObject(h); }
}  // namespace detail

template <class H, auto Release>
using unique_handle_of = std::unique_ptr<std::remove_pointer_t<H>, detail::HandleReleaser<H, Release>>;

// A window we created. A window already destroyed (by its parent, say) is left alone.
using unique_window = unique_handle_of<HWND, detail::DestroyWindowIfAlive>;
// GDI objects: fonts, brushes, pens, bitmaps, regions.
template <class H>
using unique_gdi_of = unique_handle_of<H, detail::DeleteGdiObject>;
using unique_gdi = unique_gdi_of<HGDIOBJ>;
using unique_font = unique_gdi_of<HFONT>;
using unique_brush = unique_gdi_of<HBRUSH>;
using unique_bitmap = unique_gdi_of<HBITMAP>;
using unique_icon = unique_handle_of<HICON, DestroyIcon>;
using unique_menu = unique_handle_of<HMENU, DestroyMenu>;
using unique_accel = unique_handle_of<HACCEL, DestroyAcceleratorTable>;
using unique_hook = unique_handle_of<HHOOK, UnhookWindowsHookEx>;
using unique_module = unique_handle_of<HMODULE, FreeLibrary>;
using unique_file = unique_handle_of<HANDLE, CloseHandle>;
// A memory DC from CreateCompatibleDC.
using unique_dc = unique_handle_of<HDC, DeleteDC>;
// Memory from GlobalAlloc, until the clipboard takes it over (release() then).
using unique_global = unique_handle_of<HGLOBAL, GlobalFree>;

// A device context from GetDC or GetWindowDC, released to its window.
class WindowDc {
 public:
  // `wholeWindow`: the window's DC including its frame (GetWindowDC).
  explicit WindowDc(HWND window, bool wholeWindow = false) noexcept
      : m_window(window), m_dc(wholeWindow ? GetWindowDC(window) : GetDC(window)) {}
  ~WindowDc() {
    if (m_dc) ReleaseDC(m_window, m_dc);
  }
  WindowDc(WindowDc&& o) noexcept : m_window(o.m_window), m_dc(std::exchange(o.m_dc, nullptr)) {}
  WindowDc& operator=(WindowDc&&) = delete;
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC get() const noexcept { return m_dc; }
  explicit operator bool() const noexcept { return m_dc != nullptr; }

 private:
  HWND m_window;
  HDC m_dc;
};

// BeginPaint ... EndPaint.
class PaintDc {
 public:
  explicit PaintDc(HWND window) noexcept : m_window(window), m_dc(BeginPaint(window, &m_ps)) {}
  ~PaintDc() { EndPaint(m_window, &m_ps); }
  PaintDc(const PaintDc&) = delete;
  PaintDc& operator=(const PaintDc&) = delete;
  HDC get() const noexcept { return m_dc; }
  const PAINTSTRUCT& Info() const noexcept { return m_ps; }

 private:
  HWND m_window;
  PAINTSTRUCT m_ps{};
  HDC m_dc;
};

// An object selected into a DC for a scope; the previous one is selected back.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ object) noexcept : m_dc(dc), m_old(object ? SelectObject(dc, object) : nullptr) {}
  ~SelectedObject() {
    if (m_old) SelectObject(m_dc, m_old);
  }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC m_dc;
  HGDIOBJ m_old;
};

// A timer of a window (or a thread timer when the window is null); killed with its owner.
class WindowTimer {
 public:
  WindowTimer() = default;
  ~WindowTimer() { Kill(); }
  WindowTimer(WindowTimer&& o) noexcept : m_window(o.m_window), m_id(std::exchange(o.m_id, 0)) {}
  WindowTimer& operator=(WindowTimer&& o) noexcept {
    if (this != &o) {
      Kill();
      m_window = o.m_window;
      m_id = std::exchange(o.m_id, 0);
    }
    return *this;
  }
  WindowTimer(const WindowTimer&) = delete;
  WindowTimer& operator=(const WindowTimer&) = delete;

  // Starts (or restarts) the timer; with a null window `id` is ignored and the system picks one.
  bool Set(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC proc = nullptr) noexcept {
    if (m_id && m_window != window) Kill();
    const UINT_PTR got = SetTimer(window, window ? id : m_id, milliseconds, proc);
    if (!got) return false;
    m_window = window;
    m_id = window ? id : got;
    return true;
  }
  void Kill() noexcept {
    if (m_id) KillTimer(m_window, m_id);
    m_id = 0;
  }
  bool IsSet() const noexcept { return m_id != 0; }
  UINT_PTR Id() const noexcept { return m_id; }

 private:
  HWND m_window = nullptr;
  UINT_PTR m_id = 0;
};

// The clipboard, opened for a scope. Another program may hold it for a moment, so opening is
// retried briefly before it gives up.
class ClipboardOpen {
 public:
  explicit ClipboardOpen(HWND owner, int attempts = 10) noexcept {
    for (int i = 0; i < attempts && !m_open; ++i) {
      m_open = OpenClipboard(owner) != FALSE;
      if (!m_open) Sleep(5);
    }
  }
  ~ClipboardOpen() {
    if (m_open) CloseClipboard();
  }
  ClipboardOpen(const ClipboardOpen&) = delete;
  ClipboardOpen& operator=(const ClipboardOpen&) = delete;
  explicit operator bool() const noexcept { return m_open; }

 private:
  bool m_open = false;
};

// An accelerator table that is ours to destroy, or one we only use (loaded from a resource, or
// the host's): one member instead of a handle and an "owned" flag.
class AcceleratorTable {
 public:
  void Own(HACCEL table) noexcept {
    m_owned.reset(table);
    m_used = table;
  }
  void Borrow(HACCEL table) noexcept {
    m_owned.reset();
    m_used = table;
  }
  void Reset() noexcept { Own(nullptr); }
  HACCEL get() const noexcept { return m_used; }
  bool IsOwned() const noexcept { return m_owned != nullptr; }

 private:
  unique_accel m_owned;
  HACCEL m_used = nullptr;
};

}  // namespace varion
