#include "framework/help_plugin_win.h"

#include <mutex>

#include "base/text.h"
#include "diagnostics/message_box_seam_win.h"

namespace varion {
namespace {
std::mutex g_mutex;
std::wstring g_helpFile;
}  // namespace

void SetDefaultHelpFile(std::wstring path) {
  std::lock_guard lock(g_mutex);
  g_helpFile = std::move(path);
}

std::wstring GetDefaultHelpFile() {
  std::lock_guard lock(g_mutex);
  return g_helpFile;
}

bool CVelHelpPlugin::Init(const std::wstring& helpFile, const std::string& templateName) {
  m_text.clear();
  if (helpFile.empty() || GetFileAttributesW(helpFile.c_str()) == INVALID_FILE_ATTRIBUTES) return false;
  wchar_t buf[4096];
  const DWORD n = GetPrivateProfileStringW(text::Cp1250ToWide(templateName).c_str(), L"Text", L"", buf,
                                           static_cast<DWORD>(std::size(buf)), helpFile.c_str());
  std::string t = text::WideToCp1250(std::wstring_view(buf, n));
  for (std::size_t p; (p = t.find("\\n")) != std::string::npos;) t.replace(p, 2, "\n");
  m_text = std::move(t);
  return IsInitialized();
}

void CVelHelpPlugin::Show(HWND owner, const std::string& caption) const {
  if (IsInitialized()) FrameworkMessageBox(owner, m_text, caption, MB_OK | MB_ICONINFORMATION);
}

}  // namespace varion
