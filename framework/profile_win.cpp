#include "framework/profile_win.h"

#include <windows.h>

#include <cstdlib>

#include "base/text.h"

namespace varion {

std::optional<int> IniFileProfile::GetInt(std::string_view section, std::string_view entry) const {
  wchar_t buf[32];
  const DWORD n = GetPrivateProfileStringW(text::Cp1250ToWide(section).c_str(), text::Cp1250ToWide(entry).c_str(), L"",
                                           buf, static_cast<DWORD>(std::size(buf)), m_path.c_str());
  if (n == 0) return std::nullopt;
  wchar_t* end = nullptr;
  const long v = std::wcstol(buf, &end, 10);
  if (end == buf || *end != L'\0') return std::nullopt;
  return static_cast<int>(v);
}

bool IniFileProfile::WriteInt(std::string_view section, std::string_view entry, int value) {
  return WritePrivateProfileStringW(text::Cp1250ToWide(section).c_str(), text::Cp1250ToWide(entry).c_str(),
                                    std::to_wstring(value).c_str(), m_path.c_str()) != FALSE;
}

}  // namespace varion
