#include "params/where_builders.h"

#include <cctype>
#include <string_view>

#include "base/sql_literal.h"
#include "controls/date_tools.h"
#include "diagnostics/framework_log.h"

namespace varion::params {
namespace {

bool Shown(const ZEST_PARAMS& p) { return p.Visible && !p.Empty; }

bool Operator(const Variant& v, std::int32_t& op) { return Succeeded(v.ToInt32(op)); }

bool Date(const Variant& v, DateTime& d) { return Succeeded(v.ToDate(d)) && d.IsValid(); }

// The date operators that mean a from/to range: "between" and the twelve named periods.
bool IsDateRange(std::int32_t op) {
  switch (op) {
    case 0x1000: case 0x11000: case 0x21000: case 0x31000: case 0x41000: case 0x51000: case 0x61000:
    case 0x71000: case 0x81000: case 0x91000: case 0xA1000: case 0xB1000: case 0xC1000:
      return true;
    default:
      return false;
  }
}

// Appends every part to `out`, which is cleared first; one allocation for the whole condition.
template <typename... Parts>
void Cat(std::string& out, const Parts&... parts) {
  out.clear();
  out.reserve((std::string_view(parts).size() + ...));
  (out.append(std::string_view(parts)), ...);
}

// "(c<op>v)".
void Compare(std::string& out, const std::string& c, const char* op, const std::string& v) { Cat(out, "(", c, op, v, ")"); }

// "( (c>=a) AND (c<op>b) )".
void Range(std::string& out, const std::string& c, const std::string& a, const char* upperOp, const std::string& b) {
  Cat(out, "( (", c, ">=", a, ") AND (", c, upperOp, b, ") )");
}

// The value as text without a copy when it already is one.
bool Text(const Variant& v, std::string& scratch, const std::string*& text) {
  if ((text = v.GetText())) return true;
  if (Failed(v.ToText(scratch))) return false;
  text = &scratch;
  return true;
}

// The list pasted into "IN (...)", or the condition that selects nothing when it is not a plain
// list of numbers.
bool CheckedList(const ZEST_PARAMS& p, const std::string& list, std::string& out) {
  if (IsNumberList(list)) return true;
  LogRejectedList(p, list);
  out = kSelectsNothing;
  return false;
}

}  // namespace

bool IsNumberList(std::string_view text) {
  auto blank = [](char c) { return c == ' ' || c == '\t'; };
  std::size_t at = 0;
  for (;;) {
    while (at < text.size() && blank(text[at])) ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    const std::size_t digits = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    if (at == digits) return false;
    while (at < text.size() && blank(text[at])) ++at;
    if (at == text.size()) return true;
    if (text[at++] != ',') return false;
  }
}

void LogRejectedList(const ZEST_PARAMS& p, std::string_view list) {
  // The rejected text itself is shortened: it is typed by a user and may be of any length.
  constexpr std::size_t kShown = 200;
  std::string text = "parameter \"" + p.Label + "\" (" + p.DbField + "): not a list of numbers, selects nothing: ";
  text.append(list.substr(0, kShown));
  if (list.size() > kShown) text += "...";
  for (char& c : text)
    if (c == '\0') c = ' ';
  FrameworkLog("params", text);
}

WhereBuilder BuilderForType(int type, bool wholeList) {
  switch (type) {
    case ZestParamsTypeString: return WhereBuilder::String;
    case ZestParamsTypeCurrency: return WhereBuilder::Currency;
    case ZestParamsTypeDate: return WhereBuilder::Date;
    case ZestParamsTypeDateTime: return WhereBuilder::DateWholeDay;
    case ZestParamsTypeDateHour: return WhereBuilder::Hour;
    case ZestParamsTypeSelection:
    case ZestParamsTypeSelectionDbString: return WhereBuilder::SingleText;
    case ZestParamsTypeSelectionIndex:
    case ZestParamsTypeSelectionData:
    case ZestParamsTypeSelectionDbObject:
    case ZestParamsTypeInstynkt:
    case ZestParamsTypeSelectionDataBezSlowaTo: return WhereBuilder::Identifiers;
    // Kept on purpose: these three take part in the whole list's WHERE text only.
    case ZestParamsTypeChecklist:
    case ZestParamsTypeLookup: return wholeList ? WhereBuilder::Identifiers : WhereBuilder::None;
    case ZestParamsTypeMultiselectionDbObject: return wholeList ? WhereBuilder::String : WhereBuilder::None;
    default: return WhereBuilder::None;
  }
}

bool BuildString(const ZEST_PARAMS& p, std::string& out) {
  std::string scratch;
  const std::string* text = nullptr;
  std::int32_t op = 0;
  if (!Shown(p) || !Text(p.Value, scratch, text) || !Operator(p.Value2, op)) return false;
  const std::string& c = p.DbField;
  // An IN operator pastes the text as a list, outside any apostrophes: only numbers may pass.
  if ((op == 0x20 || op == 0x30 || op == 0x800) && !CheckedList(p, *text, out)) return true;
  const std::string v = SqlOkString(*text);
  switch (op) {
    case 0x1: Cat(out, "(", c, "='", v, "')"); return true;
    case 0x100: Cat(out, "(", c, " LIKE '", v, "%')"); return true;
    case 0x200: Cat(out, "(", c, " LIKE '%", v, "%')"); return true;
    case 0x20:
    case 0x800: Cat(out, "(", c, " IN (", v, "))"); return true;
    case 0x30: Cat(out, "(", c, " IN (", v, ") OR ", c, " IS NULL)"); return true;
    case 0x40: out.clear(); return true;  // any value: no restriction
    default: return false;
  }
}

bool BuildCurrency(const ZEST_PARAMS& p, std::string& out) {
  Amount a;
  std::int32_t op = 0;
  if (!Shown(p) || Failed(p.Value.ToAmount(a)) || !a.IsValid() || !Operator(p.Value3, op)) return false;
  const std::string& c = p.DbField;
  const std::string lower = SqlOkCurrency(a);
  switch (op) {
    case 0x1: Compare(out, c, "=", lower); return true;
    case 0x2: Compare(out, c, "<", lower); return true;
    case 0x4: Compare(out, c, "<=", lower); return true;
    case 0x8: Compare(out, c, ">", lower); return true;
    case 0x10: Compare(out, c, ">=", lower); return true;
    case 0x1000: {
      Amount b;
      if (Failed(p.Value2.ToAmount(b)) || !b.IsValid()) return false;
      Range(out, c, lower, "<=", SqlOkCurrency(b));
      return true;
    }
    default: return false;
  }
}

bool BuildDate(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out) {
  DateTime d;
  std::int32_t op = 0;
  if (!Shown(p) || !Date(p.Value, d) || !Operator(p.Value3, op)) return false;
  const std::string& c = p.DbField;
  switch (op) {
    case 0x1:
    case 0x100000: Compare(out, c, "=", dialect.DateLiteral(d)); return true;
    case 0x2: Compare(out, c, "<", dialect.DateLiteral(d)); return true;
    case 0x4:
    case 0x400: Compare(out, c, "<=", dialect.DateLiteral(d)); return true;
    case 0x8: Compare(out, c, ">", dialect.DateLiteral(d)); return true;
    case 0x10: Compare(out, c, ">=", dialect.DateLiteral(d)); return true;
    default: break;
  }
  DateTime e;
  if (!IsDateRange(op) || !Date(p.Value2, e)) return false;
  Range(out, c, dialect.DateLiteral(d), "<=", dialect.DateLiteral(e));
  return true;
}

// The column holds times, so every bound is a half-open whole day: "on or before the 31st"
// becomes "before the 1st".
bool BuildDateWholeDay(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out) {
  CVelOleDateTime d;
  std::int32_t op = 0;
  if (!Shown(p) || !Date(p.Value, d) || !Operator(p.Value3, op)) return false;
  const CVelOleDateTime d1 = d.AddDays(1);
  const std::string& c = p.DbField;
  // A bound whose next day does not exist (after 9999-12-31) selects nothing rather than
  // dropping the restriction.
  auto overflow = [&out] {
    out = kSelectsNothing;
    return true;
  };
  switch (op) {
    case 0x1:
    case 0x100000:
      if (!d1.IsValid()) return overflow();
      Cat(out, "(", c, ">=", dialect.DateLiteral(d), ") AND (", c, "<", dialect.DateLiteral(d1), ")");
      return true;
    case 0x2: Compare(out, c, "<", dialect.DateLiteral(d)); return true;
    case 0x4:
    case 0x400:
      if (!d1.IsValid()) return overflow();
      Compare(out, c, "<", dialect.DateLiteral(d1));
      return true;
    case 0x8:
      if (!d1.IsValid()) return overflow();
      Compare(out, c, ">=", dialect.DateLiteral(d1));
      return true;
    case 0x10: Compare(out, c, ">=", dialect.DateLiteral(d)); return true;
    default: break;
  }
  CVelOleDateTime e;
  if (!IsDateRange(op) || !Date(p.Value2, e)) return false;
  const CVelOleDateTime e1 = e.AddDays(1);
  if (!e1.IsValid()) return overflow();
  Range(out, c, dialect.DateLiteral(d), "<", dialect.DateLiteral(e1));
  return true;
}

// Only the time of day of the column counts; the from minute starts at :00.000 and the to minute
// ends at :59.999 so that both whole minutes are included.
bool BuildHour(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out) {
  DateTime from, to;
  if (!Shown(p) || !p.Value3.IsNull() || !Date(p.Value, from) || !Date(p.Value2, to)) return false;
  const std::string t = dialect.TimeOfDay(p.DbField);
  Cat(out, "(", t, " >= ", dialect.TimeLiteral(from.Format("%H:%M:00.000")), ") AND (", t, " <= ",
      dialect.TimeLiteral(to.Format("%H:%M:59.999")), ")");
  return true;
}

bool BuildSingleText(const ZEST_PARAMS& p, std::string& out) {
  std::string scratch;
  const std::string* text = nullptr;
  if (!Shown(p) || !Text(p.Value, scratch, text)) return false;
  Cat(out, "(", p.DbField, "='", SqlOkString(*text), "')");
  return true;
}

bool BuildIdentifiers(const ZEST_PARAMS& p, std::string& out) {
  if (!Shown(p) && !(p.Param & ZestParams::kParamBuildWhenEmpty)) return false;
  out.clear();
  if (p.Param == ZestParams::kParamAnyOnly) return true;
  const std::string& c = p.DbField;
  if (const std::string* list = p.Value.GetText(); list && !list->empty()) {
    if (!CheckedList(p, *list, out)) return true;
    if (p.Param & ZestParams::kParamNullForZero) {
      // Identifier 0 stands for "no object" and is also matched by NULL. Only the first "0" of
      // the list is looked at, on purpose: in "10, 0" it is the 0 of 10, and no NULL test is added.
      const std::size_t zero = list->find('0');
      const bool hasZero =
          zero != std::string::npos && (zero == 0 || !std::isdigit(static_cast<unsigned char>((*list)[zero - 1])));
      if (hasZero) Cat(out, "(", c, " IN (", *list, ") OR ", c, " IS NULL)");
      else Cat(out, "(", c, " IN (", *list, ") )");
    } else {
      Cat(out, "(", c, " IN (", *list, "))");
    }
  } else if (const std::int32_t* n = p.Value.GetInt32()) {
    Cat(out, "(", c, "=", std::to_string(*n), ")");
  } else if (p.Value.IsNull()) {
    Cat(out, "(", c, " IS NULL)");
  }
  return true;
}

bool RunBuilder(WhereBuilder builder, const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out) {
  switch (builder) {
    case WhereBuilder::String: return BuildString(p, out);
    case WhereBuilder::Currency: return BuildCurrency(p, out);
    case WhereBuilder::Date: return BuildDate(p, dialect, out);
    case WhereBuilder::DateWholeDay: return BuildDateWholeDay(p, dialect, out);
    case WhereBuilder::Hour: return BuildHour(p, dialect, out);
    case WhereBuilder::SingleText: return BuildSingleText(p, out);
    case WhereBuilder::Identifiers: return BuildIdentifiers(p, out);
    default: return false;
  }
}

}  // namespace varion::params
