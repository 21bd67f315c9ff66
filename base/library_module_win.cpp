#include "base/library_module_win.h"

#include "base/text.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace varion {

HINSTANCE LibraryModule() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

HRSRC FindLibraryResource(LPCWSTR name, LPCWSTR type, HMODULE* module) {
  for (HMODULE m : {static_cast<HMODULE>(LibraryModule()), GetModuleHandleW(nullptr)}) {
    if (HRSRC r = FindResourceW(m, name, type)) {
      if (module) *module = m;
      return r;
    }
  }
  return nullptr;
}

std::string LoadResourceString(UINT id) {
  for (HMODULE m : {static_cast<HMODULE>(LibraryModule()), GetModuleHandleW(nullptr)}) {
    wchar_t buf[4096];
    int n = LoadStringW(m, id, buf, static_cast<int>(std::size(buf)));
    if (n > 0) return text::WideToCp1250(std::wstring_view(buf, static_cast<size_t>(n)));
  }
  return {};
}

}  // namespace varion
