// The log's operating-system services on Windows: the application-data folder, the registry
// switch, the user's locale and the module's string table.
#include <windows.h>
#include <shlobj.h>

#include <memory>
#include <string>

#include "base/text.h"
#include "diagnostics/log_platform.h"

namespace varion::logplatform {
namespace {

struct KeyCloser {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using unique_hkey = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

struct LocalFreer {
  void operator()(wchar_t* p) const { LocalFree(p); }
};

HMODULE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModule), &module);
  return module;
}

}  // namespace

std::filesystem::path DefaultDirectory() {
  wchar_t folder[MAX_PATH] = {};
  // 0x1A: the roaming application-data folder of the current user.
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder))) return {};
  std::wstring path = folder;
  while (!path.empty() && (path.back() == L'\\' || path.back() == L'/')) path.pop_back();
  return std::filesystem::path(path + L"\\Orvant VX");
}

std::uint32_t CurrentProcessId() { return GetCurrentProcessId(); }
std::uint32_t CurrentThreadId() { return GetCurrentThreadId(); }

bool UserKeyExists(std::string_view key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, text::Cp1250ToWide(key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
    return false;
  unique_hkey owner(opened);
  return true;
}

std::string LocaleDateTimeText(const varion::DateTime& when) {
  DateParts p;
  if (!when.GetParts(p)) return {};
  SYSTEMTIME st{};
  st.wYear = static_cast<WORD>(p.year);
  st.wMonth = static_cast<WORD>(p.month);
  st.wDay = static_cast<WORD>(p.day);
  st.wDayOfWeek = static_cast<WORD>(p.dayOfWeek - 1);
  st.wHour = static_cast<WORD>(p.hour);
  st.wMinute = static_cast<WORD>(p.minute);
  st.wSecond = static_cast<WORD>(p.second);
  wchar_t date[128] = {}, time[128] = {};
  if (GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &st, nullptr, date, 128) == 0) return {};
  if (GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &st, nullptr, time, 128) == 0) return {};
  return text::WideToCp1250(std::wstring(date) + L" " + time);
}

std::string LibraryString(unsigned id) {
  const wchar_t* resource = nullptr;
  // A length of zero asks for a read-only pointer into the resource itself.
  int length = LoadStringW(OwnModule(), id, reinterpret_cast<LPWSTR>(&resource), 0);
  if (length <= 0 || !resource) return {};
  return text::WideToCp1250(std::wstring_view(resource, static_cast<std::size_t>(length)));
}

std::string SystemMessage(varion::Status32 code) {
  wchar_t* buffer = nullptr;
  DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<LPWSTR>(&buffer), 0, nullptr);
  std::unique_ptr<wchar_t, LocalFreer> owner(buffer);
  if (length == 0 || !buffer) return {};
  std::wstring message(buffer, length);
  while (!message.empty() && (message.back() == L'\r' || message.back() == L'\n' || message.back() == L' '))
    message.pop_back();
  return text::WideToCp1250(message);
}

}  // namespace varion::logplatform
