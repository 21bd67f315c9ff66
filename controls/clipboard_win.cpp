#include "controls/clipboard_win.h"

#include <cstring>

#include "base/handles_win.h"
#include "base/text.h"

namespace varion {
namespace {

// GlobalLock ... GlobalUnlock for a scope.
class GlobalLockScope {
 public:
  explicit GlobalLockScope(HGLOBAL memory) noexcept : m_memory(memory), m_data(memory ? GlobalLock(memory) : nullptr) {}
  ~GlobalLockScope() {
    if (m_data) GlobalUnlock(m_memory);
  }
  GlobalLockScope(const GlobalLockScope&) = delete;
  GlobalLockScope& operator=(const GlobalLockScope&) = delete;
  void* get() const noexcept { return m_data; }

 private:
  HGLOBAL m_memory;
  void* m_data;
};

}  // namespace

bool SetClipboardText(HWND owner, const std::string& text) {
  const std::wstring wide = text::Cp1250ToWide(text);
  const size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
  unique_global memory(GlobalAlloc(GMEM_MOVEABLE, bytes));
  if (!memory) return false;
  {
    const GlobalLockScope lock(memory.get());
    if (!lock.get()) return false;
    std::memcpy(lock.get(), wide.c_str(), bytes);
  }
  const ClipboardOpen clipboard(owner);
  if (!clipboard || !EmptyClipboard()) return false;
  if (!SetClipboardData(CF_UNICODETEXT, memory.get())) return false;
  (void)memory.release();  // the clipboard owns it now
  return true;
}

bool GetClipboardText(HWND owner, std::string& text) {
  text.clear();
  if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return false;
  const ClipboardOpen clipboard(owner);
  if (!clipboard) return false;
  HGLOBAL memory = GetClipboardData(CF_UNICODETEXT);
  const GlobalLockScope lock(memory);
  if (!lock.get()) return false;
  // The clipboard's text ends at its first NUL, but never read past the block.
  const auto* chars = static_cast<const wchar_t*>(lock.get());
  const size_t limit = GlobalSize(memory) / sizeof(wchar_t);
  size_t n = 0;
  while (n < limit && chars[n]) ++n;
  text = text::WideToCp1250(std::wstring_view(chars, n));
  return true;
}

}  // namespace varion
