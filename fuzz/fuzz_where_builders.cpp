// The WHERE text of report parameters built from hostile values: whatever the user typed, every
// character of a condition outside its apostrophes belongs to the statement's own words, the
// column, the condition that selects nothing, or a checked list of numbers.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "params/params_html_ctrl.h"
#include "params/where_builders.h"

namespace {

// The text with every '...' literal removed (a doubled apostrophe stays inside); aborts on an
// unclosed literal.
std::string OutsideLiterals(std::string_view where) {
  std::string out;
  for (std::size_t i = 0; i < where.size(); ++i) {
    if (where[i] != '\'') {
      out += where[i];
      continue;
    }
    for (++i;; ++i) {
      if (i >= where.size()) std::abort();
      if (where[i] == '\'') {
        if (i + 1 < where.size() && where[i + 1] == '\'') {
          ++i;
          continue;
        }
        break;
      }
    }
  }
  return out;
}

void CheckStructure(const std::string& where) {
  std::string rest = OutsideLiterals(where);
  for (std::size_t at; (at = rest.find("(1=0)")) != std::string::npos;) rest.replace(at, 5, "()");
  // Every IN list is a checked list of numbers; what is left holds no number at all.
  for (std::size_t at = 0; (at = rest.find("IN (", at)) != std::string::npos;) {
    const std::size_t open = at + 4, close = rest.find(')', open);
    if (close == std::string::npos || !varion::params::IsNumberList(std::string_view(rest).substr(open, close - open)))
      std::abort();
    rest.erase(open, close - open);
    at = open;
  }
  for (std::string_view word : {"LIKE", "NULL", "AND", "IN", "OR", "IS", "kol"}) {
    for (std::size_t at; (at = rest.find(word)) != std::string::npos;) rest.replace(at, word.size(), " ");
  }
  for (char c : rest)
    if (std::string_view(" ()=").find(c) == std::string_view::npos) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size < 2) return 0;
  static constexpr int kTypes[] = {0, 3, 4, 5, 6, 7, 9, 10, 14, 17, 18};
  static constexpr std::int32_t kOperators[] = {0x1, 0x20, 0x30, 0x40, 0x100, 0x200, 0x800, 0x10, 0x50};
  const int type = kTypes[data[0] % std::size(kTypes)];
  const std::int32_t op = kOperators[data[1] % std::size(kOperators)];
  const std::string value(reinterpret_cast<const char*>(data) + 2, size - 2);

  CParamsHtmlCtrl view;
  ZEST_PARAMS p = ZestParams::ZestParamsString().SetType(static_cast<ZestParamsType>(type)).SetDbField("kol");
  ZestParams::ZestParamsWrapper(p).SetValue(_variant_t(value)).SetValue2(_variant_t(op)).SetParam(
      static_cast<std::uint32_t>(op)).SetEmpty(false);
  view.GetParams().Add(p);
  ZEST_PARAMS in = ZestParams::ZestParamsEmpty().SetValue(_variant_t(value)).SetEmpty(false);
  view.GetParams().Add(ZestParams::ZestParamsWrapper(in).SetSqlInColumn("kol"));
  CheckStructure(view.GetWhereString(0));
  CheckStructure(view.GetWhereString());
  return 0;
}
