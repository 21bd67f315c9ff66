#include "diagnostics/message_box_seam_win.h"

#include <mutex>

#include "base/text.h"

namespace varion {
namespace {

std::mutex g_mutex;
FrameworkMessageBoxFn g_fn;

}  // namespace

FrameworkMessageBoxFn SetFrameworkMessageBox(FrameworkMessageBoxFn fn) {
  std::lock_guard lock(g_mutex);
  std::swap(g_fn, fn);
  return fn;
}

int FrameworkMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT type) {
  FrameworkMessageBoxFn fn;
  {
    std::lock_guard lock(g_mutex);
    fn = g_fn;
  }
  if (fn) return fn(owner, text, caption, type);
  return SystemMessageBox(owner, text, caption, type);
}

int SystemMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT type) {
  return MessageBoxW(owner, text::Cp1250ToWide(text).c_str(), text::Cp1250ToWide(caption).c_str(), type);
}

}  // namespace varion
