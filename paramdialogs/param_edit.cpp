#include "paramdialogs/param_edit.h"

#include <algorithm>
#include <cstring>

#include "params/named_periods.h"
#include "params/where_builders.h"

namespace varion::paramdlg {
namespace {

using ZestParams::OperatorBitsCurrency;
using ZestParams::OperatorBitsDate;
using ZestParams::OperatorBitsString;

constexpr std::uint32_t kDateEqual = 0x100000;
constexpr std::uint32_t kStringAny = 0x40;

// The text patterns whose value is pasted into "IN (...)": a list of numbers only.
bool IsListOperator(std::uint32_t op) { return op == 0x20 || op == 0x30; }

std::vector<OperatorChoice> MakeStringTable() {
  return {{OperatorBitsString(ZestParams::CompareStringEqual), "równa", false, 0},
          {OperatorBitsString(ZestParams::CompareStringBeginsWith), "zaczyna się od", false, 0},
          {OperatorBitsString(ZestParams::CompareStringContains), "zawiera", false, 0},
          {OperatorBitsString(ZestParams::CompareStringInList), "na liście", false, 0},
          {OperatorBitsString(ZestParams::CompareStringInListOrNull), "na liście lub brak", false, 0},
          {OperatorBitsString(ZestParams::CompareStringAny), "dowolna", false, 0}};
}

std::vector<OperatorChoice> MakeAmountTable() {
  return {{OperatorBitsCurrency(ZestParams::CompareCurrencyEqual), "równa", false, 0},
          {OperatorBitsCurrency(ZestParams::CompareCurrencyGreater), "większa od", false, 0},
          {OperatorBitsCurrency(ZestParams::CompareCurrencyGreaterOrEqual), "co najmniej", false, 0},
          {OperatorBitsCurrency(ZestParams::CompareCurrencyLess), "mniejsza od", false, 0},
          {OperatorBitsCurrency(ZestParams::CompareCurrencyLessOrEqual), "co najwyżej", false, 0},
          {OperatorBitsCurrency(ZestParams::CompareCurrencyBetween), "od - do", true, 0}};
}

// The named periods take the date operators 7 onwards in the order of their codes, so that the
// operator slot alone tells the dialog which period was chosen.
std::vector<OperatorChoice> MakeDateTable() {
  using namespace ZestParams;
  return {{OperatorBitsDate(CompareDateEqual), "w dniu", false, 0},
          {OperatorBitsDate(CompareDateGreater), "po", false, 0},
          {OperatorBitsDate(CompareDateGreaterOrEqual), "od", false, 0},
          {OperatorBitsDate(CompareDateLess), "przed", false, 0},
          {OperatorBitsDate(CompareDateLessOrEqual), "do", false, 0},
          {OperatorBitsDate(CompareDateLessOrEqualTo), "do", false, 0},
          {OperatorBitsDate(CompareDateBetween), "od - do", true, 0},
          {OperatorBitsDate(CompareDateNamedPeriod1), "bieżący dzień", true, kPeriodCurrentDay},
          {OperatorBitsDate(CompareDateNamedPeriod2), "bieżący tydzień", true, kPeriodCurrentWeek},
          {OperatorBitsDate(CompareDateNamedPeriod3), "bieżący miesiąc", true, kPeriodCurrentMonth},
          {OperatorBitsDate(CompareDateNamedPeriod4), "bieżący kwartał", true, kPeriodCurrentQuarter},
          {OperatorBitsDate(CompareDateNamedPeriod5), "bieżący rok", true, kPeriodCurrentYear},
          {OperatorBitsDate(CompareDateNamedPeriod6), "ostatnie 7 dni", true, kPeriodLast7Days},
          {OperatorBitsDate(CompareDateNamedPeriod7), "ostatnie 30 dni", true, kPeriodLast30Days},
          {OperatorBitsDate(CompareDateNamedPeriod8), "poprzedni miesiąc", true, kPeriodPreviousMonth}};
}

bool Allows(const ZEST_PARAMS& p, const OperatorChoice& c) {
  if ((p.Param & c.bits) == c.bits) return true;
  return c.bits == kDateEqual && (p.Param & 0x1) != 0;
}

std::string FormatAmount(const Amount& a) { return a.Format(NumberFormat{}, 2); }
std::string FormatDate(const DateTime& d) { return d.Format("%Y-%m-%d"); }

}  // namespace

std::optional<ValueKind> KindOfType(int type) {
  switch (type) {
    case ZestParamsTypeString: return ValueKind::Text;
    case ZestParamsTypeCurrency: return ValueKind::Amount;
    case ZestParamsTypeDate:
    case ZestParamsTypeDateTime: return ValueKind::Date;
    default: return std::nullopt;
  }
}

const std::vector<OperatorChoice>& OperatorTable(ValueKind kind) {
  static const std::vector<OperatorChoice> text = MakeStringTable();
  static const std::vector<OperatorChoice> amount = MakeAmountTable();
  static const std::vector<OperatorChoice> date = MakeDateTable();
  switch (kind) {
    case ValueKind::Text: return text;
    case ValueKind::Amount: return amount;
    default: return date;
  }
}

std::vector<OperatorChoice> AllowedOperators(const ZEST_PARAMS& p) {
  std::vector<OperatorChoice> out;
  const auto kind = KindOfType(p.Type);
  if (!kind) return out;
  const auto& table = OperatorTable(*kind);
  for (const OperatorChoice& c : table) {
    if (!Allows(p, c)) continue;
    const bool sameText = std::any_of(out.begin(), out.end(), [&](const OperatorChoice& o) {
      return std::strcmp(o.text, c.text) == 0 && o.range == c.range;
    });
    if (!sameText) out.push_back(c);
  }
  if (out.empty()) out.push_back(table.front());
  return out;
}

std::optional<OperatorChoice> FindAllowedOperator(const ZEST_PARAMS& p, std::uint32_t bits) {
  const auto kind = KindOfType(p.Type);
  if (!kind) return std::nullopt;
  const auto& table = OperatorTable(*kind);
  const auto it = std::find_if(table.begin(), table.end(), [&](const OperatorChoice& c) { return c.bits == bits; });
  if (it == table.end()) return std::nullopt;
  // A pattern left out as a duplicate of an offered one is still one the record allows.
  const auto allowed = AllowedOperators(p);
  const bool offered = std::any_of(allowed.begin(), allowed.end(), [&](const OperatorChoice& c) {
    return c.bits == bits || (std::strcmp(c.text, it->text) == 0 && c.range == it->range);
  });
  if (!offered) return std::nullopt;
  return *it;
}

ParamEditValues LoadEditValues(const ZEST_PARAMS& p) {
  ParamEditValues v;
  const auto kind = KindOfType(p.Type);
  if (!kind) return v;
  v.any = AllowsAny(p) && p.Empty;
  const _variant_t& opSlot = *kind == ValueKind::Text ? p.Value2 : p.Value3;
  std::int32_t op = 0;
  const auto allowed = AllowedOperators(p);
  const bool known = Succeeded(opSlot.ToInt32(op)) && FindAllowedOperator(p, static_cast<std::uint32_t>(op));
  v.op = known ? static_cast<std::uint32_t>(op) : allowed.front().bits;
  switch (*kind) {
    case ValueKind::Text:
      // A fresh preset holds -1 in every slot: that is no text yet.
      if (p.Value.GetText()) v.text = *p.Value.GetText();
      break;
    case ValueKind::Amount:
      if (p.Value.GetType() == Variant::Type::Amount || p.Value.GetType() == Variant::Type::Double) {
        if (Failed(p.Value.ToAmount(v.amount))) v.amount = Amount();
      }
      if (p.Value2.GetType() == Variant::Type::Amount || p.Value2.GetType() == Variant::Type::Double) {
        if (Failed(p.Value2.ToAmount(v.amount2))) v.amount2 = Amount();
      }
      break;
    case ValueKind::Date: {
      DateTime d;
      if (p.Value.GetType() == Variant::Type::Date && Succeeded(p.Value.ToDate(d))) v.date = d.DateOnly();
      if (p.Value2.GetType() == Variant::Type::Date && Succeeded(p.Value2.ToDate(d))) v.date2 = d.DateOnly();
      break;
    }
  }
  return v;
}

std::vector<EditError> CheckEditValues(const ZEST_PARAMS& p, const ParamEditValues& v) {
  std::vector<EditError> errors;
  const auto kind = KindOfType(p.Type);
  if (!kind) return {{EditField::Operator, kMsgOperatorNotAllowed}};
  if (v.any) {
    if (!AllowsAny(p)) errors.push_back({EditField::Operator, kMsgAnyNotAllowed});
    return errors;
  }
  const auto op = FindAllowedOperator(p, v.op);
  if (!op) return {{EditField::Operator, kMsgOperatorNotAllowed}};
  switch (*kind) {
    case ValueKind::Text:
      if (v.op == kStringAny) break;
      if (v.text.empty()) {
        errors.push_back({EditField::Value, kMsgValueRequired});
      } else if (IsListOperator(v.op) && !params::IsNumberList(v.text)) {
        errors.push_back({EditField::Value, kMsgNumberList});
      }
      break;
    case ValueKind::Amount:
      if (!v.amount.IsValid()) errors.push_back({EditField::Value, kMsgAmountRequired});
      if (op->range && !v.amount2.IsValid()) errors.push_back({EditField::Value2, kMsgAmountRequired});
      if (op->range && v.amount.IsValid() && v.amount2.IsValid() && v.amount2 < v.amount)
        errors.push_back({EditField::Value2, kMsgAmountOrder});
      break;
    case ValueKind::Date:
      if (op->periodCode) break;  // its dates come from today
      if (!v.date.IsValid()) errors.push_back({EditField::Value, kMsgDateRequired});
      if (op->range && !v.date2.IsValid()) errors.push_back({EditField::Value2, kMsgDateRequired});
      if (op->range && v.date.IsValid() && v.date2.IsValid() && v.date2.DateOnly() < v.date.DateOnly())
        errors.push_back({EditField::Value2, kMsgDateOrder});
      break;
  }
  return errors;
}

std::vector<EditError> StoreEditValues(ZEST_PARAMS& p, const ParamEditValues& in, const DateTools::IClock& clock) {
  auto errors = CheckEditValues(p, in);
  if (!errors.empty()) return errors;
  const ValueKind kind = *KindOfType(p.Type);
  ParamEditValues v = in;
  if (v.any) {
    p.Empty = 1;
    p.DisplayValue = kAnyText;
    return errors;
  }
  const OperatorChoice op = *FindAllowedOperator(p, v.op);
  const auto opValue = _variant_t(static_cast<std::int32_t>(v.op));
  switch (kind) {
    case ValueKind::Text:
      p.Value = v.op == kStringAny ? _variant_t(std::string()) : _variant_t(v.text);
      p.Value2 = opValue;
      // The any operator matches every row: the parameter restricts nothing.
      p.Empty = v.op == kStringAny ? 1 : 0;
      break;
    case ValueKind::Amount:
      p.Value = v.amount;
      p.Value2 = op.range ? _variant_t(v.amount2) : _variant_t::MakeNull();
      p.Value3 = opValue;
      p.Empty = 0;
      break;
    case ValueKind::Date:
      if (op.periodCode) {
        DateTools::Period period;
        NamedPeriod(op.periodCode, clock, period);
        v.date = period.GetStart();
        v.date2 = period.GetEnd();
      }
      p.Value = v.date.DateOnly();
      p.Value2 = op.range ? _variant_t(v.date2.DateOnly()) : _variant_t::MakeNull();
      p.Value3 = opValue;
      p.Empty = 0;
      break;
  }
  p.DisplayValue = DisplayText(kind, v);
  return errors;
}

std::string DisplayText(ValueKind kind, const ParamEditValues& v) {
  if (v.any) return kAnyText;
  const auto& table = OperatorTable(kind);
  const auto it = std::find_if(table.begin(), table.end(), [&](const OperatorChoice& c) { return c.bits == v.op; });
  if (it == table.end()) return {};
  const std::string opText = it->text;
  switch (kind) {
    case ValueKind::Text:
      if (v.op == kStringAny) return kAnyText;
      if (it == table.begin()) return v.text;
      return opText + " " + v.text;
    case ValueKind::Amount:
      if (it->range) return "od " + FormatAmount(v.amount) + " do " + FormatAmount(v.amount2);
      if (it == table.begin()) return FormatAmount(v.amount);
      return opText + " " + FormatAmount(v.amount);
    case ValueKind::Date:
      if (it->periodCode) return opText;
      if (it->range) return "od " + FormatDate(v.date) + " do " + FormatDate(v.date2);
      if (it == table.begin()) return FormatDate(v.date);
      return opText + " " + FormatDate(v.date);
  }
  return {};
}

}  // namespace varion::paramdlg
