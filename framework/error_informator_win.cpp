#include "framework/error_informator_win.h"

#include <oleauto.h>

#include <cstdio>
#include <memory>

#include "base/text.h"

namespace {

std::mutex g_informatorMutex;
std::unique_ptr<CVelErrorInformator> g_informator;

// Takes ownership of a BSTR and frees it.
struct BstrDeleter {
  void operator()(wchar_t* s) const { SysFreeString(s); }
};
using unique_bstr = std::unique_ptr<wchar_t, BstrDeleter>;

std::string TrimEnd(std::string s) {
  while (!s.empty() && (s.back() == '\r' || s.back() == '\n' || s.back() == ' ' || s.back() == '.')) s.pop_back();
  return s;
}

}  // namespace

CVelErrorInformator& CVelErrorInformator::Get() {
  std::lock_guard lock(g_informatorMutex);
  if (!g_informator) g_informator = std::make_unique<CVelErrorInformator>();
  return *g_informator;
}

void CVelErrorInformator::Free() {
  std::lock_guard lock(g_informatorMutex);
  g_informator.reset();
}

std::string CVelErrorInformator::DescribeFailure(HRESULT hr, IUnknown* failing, REFIID iid) {
  std::string text;
  if (failing) {
    ISupportErrorInfo* support = nullptr;
    if (SUCCEEDED(failing->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&support))) && support) {
      if (support->InterfaceSupportsErrorInfo(iid) == S_OK) {
        IErrorInfo* info = nullptr;
        if (GetErrorInfo(0, &info) == S_OK && info) {
          BSTR description = nullptr;
          if (SUCCEEDED(info->GetDescription(&description)) && description) {
            unique_bstr owner(description);
            text = TrimEnd(varion::text::WideToCp1250(description));
          }
          info->Release();
        }
      }
      support->Release();
    }
  }
  if (text.empty()) text = SystemText(hr);
  char code[24];
  std::snprintf(code, sizeof code, "(0x%08lX)", static_cast<unsigned long>(hr));
  return text.empty() ? std::string("Błąd ") + code : text + ". " + code;
}

std::string CVelErrorInformator::SystemText(HRESULT hr) {
  std::lock_guard lock(m_mutex);
  auto it = m_systemTexts.find(hr);
  if (it != m_systemTexts.end()) return it->second;
  wchar_t buf[512];
  DWORD n = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(hr),
                           0, buf, static_cast<DWORD>(std::size(buf)), nullptr);
  std::string text = n ? TrimEnd(varion::text::WideToCp1250(std::wstring_view(buf, n))) : std::string();
  m_systemTexts.emplace(hr, text);
  return text;
}
