#include "params/param_hist_tools.h"

#include <algorithm>
#include <iterator>

namespace ParamHistTools {
namespace {

constexpr const wchar_t* kNotUpdatable[] = {L"DATA_WYDRUKU", L"UZYTKOWNIK", L"STANOWISKO"};

}  // namespace

std::wstring GetNotUpdatableParametersList() {
  std::wstring list;
  for (const wchar_t* name : kNotUpdatable) {
    list += L'\'';
    list += name;
    list += L"',";
  }
  if (!list.empty()) list.pop_back();
  return list;
}

bool IsParameterUpdatable(const std::wstring& name) {
  return std::none_of(std::begin(kNotUpdatable), std::end(kNotUpdatable),
                      [&](const wchar_t* n) { return name == n; });
}

}  // namespace ParamHistTools
