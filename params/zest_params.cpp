#include "params/zest_params.h"

#include <iterator>

#include "db/rt_instance.h"
#include "params/where_builders.h"

void CArrZestParams::SetAtGrow(int index, const ZEST_PARAMS& p) {
  if (index < 0) return;
  if (index >= GetSize()) SetSize(index + 1);
  m_items[static_cast<std::size_t>(index)] = p;
}

namespace ZestParams {
namespace {

// Operator bit patterns by operator index. Text operator 4 includes operator 3's bit and every
// date operator from 6 on includes 0x1000: readers compare whole patterns, never single bits.
constexpr std::uint32_t kStringBits[] = {0x1, 0x100, 0x200, 0x20, 0x30, 0x40};
constexpr std::uint32_t kCurrencyBits[] = {0x1, 0x8, 0x10, 0x2, 0x4, 0x1000};
constexpr std::uint32_t kDateBits[] = {0x100000, 0x8,     0x10,    0x2,     0x4,     0x400,   0x1000,
                                       0x11000,  0x21000, 0x81000, 0x31000, 0x41000, 0x91000, 0x51000,
                                       0x61000,  0x71000, 0xA1000, 0xC1000, 0xB1000};
constexpr std::uint32_t kAnyTypeBits[] = {0x80000000u, 0xC0000000u, 0xA0000000u};

template <std::size_t N>
std::uint32_t Lookup(const std::uint32_t (&table)[N], int index) {
  return index >= 0 && static_cast<std::size_t>(index) < N ? table[index] : 0;
}

}  // namespace

std::uint32_t OperatorBitsString(int op) { return Lookup(kStringBits, op); }
std::uint32_t OperatorBitsCurrency(int op) { return Lookup(kCurrencyBits, op); }
std::uint32_t OperatorBitsDate(int op) { return Lookup(kDateBits, op); }

// Setters that store their argument in the field of the same name.
#define VARION_SETTER(Name, Field, Type, Stored)               \
  ZestParamsWrapper& ZestParamsWrapper::Name(Type v) {        \
    m_record->Field = Stored;                                  \
    return *this;                                              \
  }
VARION_SETTER(SetDbField, DbField, const std::string&, v)
VARION_SETTER(SetLabel, Label, const std::string&, v)
VARION_SETTER(SetValuePrefix, ValuePrefix, const std::string&, v)
VARION_SETTER(SetValueStr, ValueStr, const std::string&, v)
VARION_SETTER(SetPrompt, Prompt, const std::string&, v)
VARION_SETTER(SetParamStr, ParamStr, const std::string&, v)
VARION_SETTER(SetListFilterSql, ListFilterSql, const std::string&, v)
VARION_SETTER(SetListFilterWhere, ListFilterWhere, const std::string&, v)
VARION_SETTER(SetListFilterSort, ListFilterSort, const std::string&, v)
VARION_SETTER(SetSavedValue, SavedValue, const std::string&, v)
VARION_SETTER(SetTypeStr, TypeStr, const std::string&, v)
VARION_SETTER(SetDisplayValue, DisplayValue, const std::string&, v)
VARION_SETTER(SetValue, Value, const _variant_t&, v)
VARION_SETTER(SetValue2, Value2, const _variant_t&, v)
VARION_SETTER(SetValue3, Value3, const _variant_t&, v)
VARION_SETTER(SetStandard, Standard, bool, v)
VARION_SETTER(SetVisible, Visible, bool, v)
VARION_SETTER(SetEmpty, Empty, bool, v)
VARION_SETTER(SetListFilterAllowVx, ListFilterAllowVx, bool, v)
VARION_SETTER(SetType, Type, ZestParamsType, v)
VARION_SETTER(SetParam, Param, unsigned long, static_cast<std::uint32_t>(v))
VARION_SETTER(SetPaywalled, Paywalled, UprawnieniaDoWersji, v)
#undef VARION_SETTER

ZestParamsWrapper& ZestParamsWrapper::SetValueAll(const _variant_t& v) { return SetValue(v).SetValue2(v).SetValue3(v); }

ZestParamsWrapper& ZestParamsWrapper::SetAllowAny() {
  m_record->Param |= kParamAllowAny;
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetAllowNull() {
  m_record->Param |= kParamAllowNull;
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetAnyAsIn() {
  m_record->Param |= kParamAnyAsIn;
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetAnyType(ZestParamsAnyType type) {
  m_record->Param |= Lookup(kAnyTypeBits, type);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetCompareOperatorString(ZestParamsCompareOperatorString op) {
  m_record->Param |= OperatorBitsString(op);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetCompareOperatorCurrency(ZestParamsCompareOperatorCurrency op) {
  m_record->Param |= OperatorBitsCurrency(op);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::SetCompareOperatorDate(ZestParamsCompareOperatorDate op) {
  m_record->Param |= OperatorBitsDate(op);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::ClearAndSetCompareOperatorString(ZestParamsCompareOperatorString op) {
  m_record->Param = 0;
  return SetCompareOperatorString(op);
}
ZestParamsWrapper& ZestParamsWrapper::ClearAndSetCompareOperatorCurrency(ZestParamsCompareOperatorCurrency op) {
  m_record->Param = 0;
  return SetCompareOperatorCurrency(op);
}
ZestParamsWrapper& ZestParamsWrapper::ClearAndSetCompareOperatorDate(ZestParamsCompareOperatorDate op) {
  m_record->Param = 0;
  return SetCompareOperatorDate(op);
}

ZestParamsWrapper& ZestParamsWrapper::OnInit(ZEST_PARAMS::InitHandlerFn handler) {
  m_record->InitHandler = std::move(handler);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::OnGetWhere(ZEST_PARAMS::GetWhereHandlerFn handler) {
  m_record->GetWhereHandler = std::move(handler);
  return *this;
}
ZestParamsWrapper& ZestParamsWrapper::OnParam(ZEST_PARAMS::ParamHandlerFn handler) {
  m_record->ParamHandler = std::move(handler);
  return *this;
}

ZestParamsWrapper& ZestParamsWrapper::SetSqlInColumn(const std::string& column) {
  // The column is pasted into the pattern here, once, rather than formatted with "%s IN (%%s)":
  // a column text holding "%" must not become a format directive.
  std::string pattern;
  for (char c : column) {
    if (c == '%') pattern += '%';
    pattern += c;
  }
  pattern += " IN (%s)";
  return OnGetWhere([pattern](const ZestParamsManager&, const ZestParamsWrapper& w, std::string& where) {
    UwzglednijFiltrSqlIn(w.get_ref(), pattern.c_str(), where);
  });
}

ZestParamsManager::ZestParamsManager(CArrZestParams& params, const ZEST_PARAMS* defs, unsigned count)
    : m_params(&params) {
  CopyDefParams(defs, count);
  Init();
}

void ZestParamsManager::CopyDefParams(const ZEST_PARAMS* defs, unsigned count) {
  m_params->SetSize(static_cast<int>(count));
  for (unsigned i = 0; i < count; ++i) (*m_params)[static_cast<int>(i)] = defs[i];
}

void ZestParamsManager::Init() {
  for (ZEST_PARAMS& p : *m_params) {
    if (p.Empty && (p.Param & kParamAnyAsIn)) {
      varion::db::Recordset rs = CRtInstance::OpenRS(p.ParamStr);
      std::string list;
      for (; !rs.IsEOF(); rs.MoveNext()) {
        std::int32_t id = 0;
        varion::Status32 s = rs.GetCollect(0).ToInt32(id);
        if (varion::Failed(s))
          throw varion::ComError(s, "Zapytanie listy dopuszczalnych identyfikatorów zwróciło wartość, która nie jest "
                                    "identyfikatorem: " + p.ParamStr);
        list += std::to_string(id);
        list += ", ";
      }
      if (!list.empty()) {
        list.resize(list.size() - 2);
        p.Value = _variant_t(std::move(list));
        p.Param |= kParamAnyResolvedToIn;
        p.Empty = false;
      }
    }
    if (p.InitHandler) {
      ZestParamsWrapper w(p);
      p.InitHandler(w);
    }
  }
}

}  // namespace ZestParams

void UwzglednijFiltrSqlIn(const ZEST_PARAMS& p, const char* pattern, std::string& where) {
  if (p.Empty || !pattern) return;
  const std::string* list = p.Value.GetText();
  if (!list || list->empty()) return;
  if (!where.empty()) where += " AND ";
  // The list stands outside apostrophes: anything but numbers selects nothing instead.
  if (!varion::params::IsNumberList(*list)) {
    varion::params::LogRejectedList(p, *list);
    where += varion::params::kSelectsNothing;
    return;
  }
  // The pattern holds one %s; "%%" stands for a percent sign.
  for (const char* c = pattern; *c; ++c) {
    if (c[0] == '%' && c[1] == 's') {
      where += *list;
      ++c;
    } else if (c[0] == '%' && c[1] == '%') {
      where += '%';
      ++c;
    } else {
      where += *c;
    }
  }
}
