// The base of every window the library creates or attaches to: control objects, the dialog base,
// the errors window, the list view over a grid configuration, the parameter view, the calculator
// and the calendar. It routes the window's messages to one virtual message switch, finds its
// object from a handle with one table lookup (no window property, no common-controls subclass
// chain: both cost a round trip to the window server per message on Wine), runs every message
// inside the library's one failure boundary, and lets go of the window on WM_NCDESTROY.
//
//   class CMyLabel : public varion::Window {
//    public:
//     static CMyLabel* Attach(HWND h) {            // an existing window, e.g. from a template
//       auto* self = new CMyLabel;
//       if (self->AttachWindow(h, varion::Window::kOwnedByWindow)) return self;
//       delete self;
//       return nullptr;
//     }
//    protected:
//     LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
//       switch (msg) {
//         case WM_LBUTTONUP: return OnClick(), 0;   // the Wine shape: one switch, OnXxx calls
//       }
//       return Default(msg, wp, lp);              // the window's own procedure
//     }
//   };
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/export.h"
#include "diagnostics/failure.h"

namespace varion {

class VARION_API Window {
 public:
  // Who ends the object: its holder (a member, a smart pointer), or the window itself, whose
  // WM_NCDESTROY deletes the object (controls attached by the creation hook).
  enum Ownership { kOwnedByHolder, kOwnedByWindow };

  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // The window, or nullptr before creation and after destruction. Public for hosts, as in the
  // host framework's window classes: read it, never write it.
  HWND m_hWnd = nullptr;
  HWND GetHwnd() const { return m_hWnd; }

  // The object attached to a window, or nullptr.
  static Window* FromHandle(HWND window);
  template <class T>
  static T* FromHandleAs(HWND window) {
    return dynamic_cast<T*>(FromHandle(window));
  }

  // Registers a window class of the library's module whose procedure is the base's own, so that
  // CreateWindowOf can attach before the first message. Registering twice is harmless.
  static bool RegisterWindowClass(const wchar_t* className, UINT style, HBRUSH background = nullptr,
                                  LPCWSTR cursor = MAKEINTRESOURCEW(32512) /* IDC_ARROW */);
  // The procedure of the classes RegisterWindowClass registers. A window of such a class without
  // an object gets DefWindowProc's answers, so a class registered elsewhere with this procedure
  // (the library's own classes, by the creation hook) serves CreateWindowOf as well.
  static WNDPROC ClassProcedure() { return StaticProc; }

 protected:
  Window() = default;

  // Replaces the procedure of an existing window. False when it is no window or when another
  // object of the library is attached to it.
  bool AttachWindow(HWND window, Ownership ownership = kOwnedByHolder);
  // Creates a window of a class registered by RegisterWindowClass; the object is attached
  // before the window's first message. The object owns the window (it is destroyed with it).
  HWND CreateWindowOf(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style, const RECT& rect,
                      HWND parent, UINT_PTR idOrMenu, HINSTANCE instance);
  // Creates a modeless dialog from a template in memory. The object is attached before the
  // dialog's first message; the dialog manager's messages then reach DialogProc. The object owns
  // the window.
  HWND CreateDialogOf(HINSTANCE module, const DLGTEMPLATE* dialogTemplate, HWND parent);
  // Lets go of the window: its own procedure comes back when nobody subclassed it after us,
  // else ours stays in its chain and passes everything on.
  HWND DetachWindow();

  // The message switch. The default passes everything on.
  virtual LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam);
  // The dialog manager's messages of a dialog made by CreateDialogOf, with its conventions:
  // TRUE when handled (a result then goes through DWLP_MSGRESULT).
  virtual INT_PTR DialogProc(UINT msg, WPARAM wParam, LPARAM lParam);
  // The window's own procedure (the one we replaced, or DefWindowProc).
  LRESULT Default(UINT msg, WPARAM wParam, LPARAM lParam);
  // Runs after WM_NCDESTROY went through and the object let go of the window.
  virtual void OnFinalMessage() {}

  // How a failure inside this window's handlers is reported: the log area and the box's title.
  virtual std::string FailureArea() const;
  virtual std::string FailureCaption() const { return {}; }
  // What a message answers when its handler failed (0 unless a window knows better).
  virtual LRESULT FailureResult(UINT /*msg*/) const { return 0; }

 private:
  static LRESULT CALLBACK StaticProc(HWND, UINT, WPARAM, LPARAM);
  static INT_PTR CALLBACK StaticDialogProc(HWND, UINT, WPARAM, LPARAM);
  static void Report(HWND window, const Failure& failure) noexcept;
  bool Bind(HWND window, WNDPROC previous, Ownership ownership);

  WNDPROC m_oldProc = nullptr;
  Ownership m_ownership = kOwnedByHolder;
  bool m_created = false;
};

}  // namespace varion
