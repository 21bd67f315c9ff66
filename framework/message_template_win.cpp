#include "framework/message_template_win.h"

#include <windows.h>

#include <memory>
#include <vector>

#include "base/text.h"
#include "framework/message_template.h"

namespace varion {
namespace {

struct LocalFreeDeleter {
  void operator()(wchar_t* p) const { LocalFree(p); }
};

}  // namespace

bool PlatformFormatMessage(std::string_view tmpl, std::span<const std::string> args, std::string& out) {
  // FormatMessageW trusts the template: an insert beyond the array or a number format would read
  // memory as whatever the template says, so the portable parser vets the template first.
  std::string vetted;
  if (!FormatMessageTemplate(tmpl, args, vetted)) return false;

  const std::wstring wideTemplate = text::Cp1250ToWide(tmpl);
  std::vector<std::wstring> wideArgs;
  wideArgs.reserve(args.size());
  for (const std::string& a : args) wideArgs.push_back(text::Cp1250ToWide(a));
  std::vector<DWORD_PTR> pointers;
  for (const std::wstring& a : wideArgs) pointers.push_back(reinterpret_cast<DWORD_PTR>(a.c_str()));
  pointers.push_back(0);

  wchar_t* buffer = nullptr;
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY | FORMAT_MESSAGE_ALLOCATE_BUFFER,
                     wideTemplate.c_str(), 0, 0, reinterpret_cast<LPWSTR>(&buffer), 0,
                     reinterpret_cast<va_list*>(pointers.data()));
  std::unique_ptr<wchar_t, LocalFreeDeleter> owned(buffer);
  if (length == 0) {
    // FormatMessageW gives 0 for an empty result too (a template of "%0" alone).
    if (!vetted.empty()) return false;
    out.clear();
    return true;
  }
  out = text::WideToCp1250(std::wstring_view(buffer, length));
  return true;
}

}  // namespace varion
