// Report parameters: the record ZEST_PARAMS that one parameter of a report or a list filter is
// kept in, its typed presets, the fluent wrapper that fills it, and the manager that copies a
// report's defaults into the array the dialogs edit and initialises them once.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/variant.h"

// The type index of a parameter. 8 is unused and must stay so; 20 and 21 have no preset and are
// made with SetType. The type is a plain 32-bit number: values outside the list are carried and
// give neither a condition nor a dialog.
enum ZestParamsType : std::int32_t {
  ZestParamsTypeEmpty = -1,
  ZestParamsTypeString = 0,
  ZestParamsTypeCurrency = 1,
  ZestParamsTypeDate = 2,
  ZestParamsTypeSelection = 3,
  ZestParamsTypeSelectionIndex = 4,
  ZestParamsTypeSelectionData = 5,
  ZestParamsTypeSelectionDbObject = 6,
  ZestParamsTypeInstynkt = 7,
  ZestParamsTypeSelectionDbString = 9,
  ZestParamsTypeChecklist = 10,
  ZestParamsTypeChecklistDb = 11,
  ZestParamsTypeDateEx = 12,
  ZestParamsTypeDateEx2 = 13,
  ZestParamsTypeSelectionDataBezSlowaTo = 14,
  ZestParamsTypeLookupMultisel = 15,
  ZestParamsTypeChecklistDbSort = 16,
  ZestParamsTypeLookup = 17,
  ZestParamsTypeMultiselectionDbObject = 18,
  ZestParamsTypeDateHour = 19,
  ZestParamsTypeDateTime = 20,     // a date on a column holding date and time: whole-day conditions
  ZestParamsTypeKlasyfikator = 21  // a classifier choice; its condition comes from its handler
};

// Edition rights a parameter may require; the licence checks own their meaning, the parameter
// only carries the value to the access check.
enum UprawnieniaDoWersji : std::int32_t { UprawnieniaDoWersjiBrak = 0 };

namespace ZestParams {
class ZestParamsWrapper;
class ZestParamsManager;
}  // namespace ZestParams

struct VARION_API ZEST_PARAMS {
  using InitHandlerFn = std::function<void(ZestParams::ZestParamsWrapper&)>;
  using GetWhereHandlerFn = std::function<void(const ZestParams::ZestParamsManager&,
                                               const ZestParams::ZestParamsWrapper&, std::string& where)>;
  using ParamHandlerFn =
      std::function<bool(const ZestParams::ZestParamsManager&, const ZestParams::ZestParamsWrapper&)>;

  std::string DbField;       // column or expression the parameter filters on
  std::string Label;         // caption shown to the user
  std::string ValuePrefix;   // text shown before the value
  std::string ValueStr;      // the value as text
  _variant_t Value;          // the value; the lower bound of a range
  _variant_t Value2;         // the upper bound, or the operator of a text parameter
  _variant_t Value3;         // the operator of an amount or date parameter, or a period code
  std::int32_t Standard;     // its link uses "std://" rather than "self://"
  std::int32_t Visible;
  std::int32_t Empty;        // nothing chosen: the parameter does not restrict the report
  ZestParamsType Type;
  std::string Prompt;
  std::string ParamStr;      // type-dependent; for any-as-IN the query listing every admissible id
  std::uint32_t Param;       // flag word: operators offered, handling of the any choice
  std::string ListFilterSql;
  std::string ListFilterWhere;
  std::string ListFilterSort;
  std::int32_t ListFilterAllowVx;
  std::string SavedValue;
  std::string TypeStr;       // type-dependent, e.g. a lookup as "search#lookup[#n#m]"
  std::string DisplayValue;  // the value as shown; ValueStr is shown when this is empty
  std::uint32_t Aux1, Aux2;  // untouched by the record itself
  InitHandlerFn InitHandler;
  GetWhereHandlerFn GetWhereHandler;
  ParamHandlerFn ParamHandler;
  bool AuxFlag;
  std::string AuxText;       // the parameter's name, by which report SQL tags and history find it
  UprawnieniaDoWersji Paywalled;

  // Texts and values start empty, AuxFlag false, Paywalled 0. The flags, the type and the two
  // words have no meaningful default (every preset sets them); they start at zero only so that
  // copying a half-filled record never reads indeterminate memory.
  ZEST_PARAMS()
      : Standard(0), Visible(0), Empty(0), Type(ZestParamsTypeString), Param(0), ListFilterAllowVx(0), Aux1(0),
        Aux2(0), AuxFlag(false), Paywalled(UprawnieniaDoWersjiBrak) {}
};

// The parameters of a report in their order; a link of the parameter page names its record by
// position, so the order must not change while the page is shown.
class VARION_API CArrZestParams {
 public:
  int GetSize() const { return static_cast<int>(m_items.size()); }
  bool IsEmpty() const { return m_items.empty(); }
  void SetSize(int size) { m_items.resize(size < 0 ? 0 : static_cast<std::size_t>(size)); }
  int Add(const ZEST_PARAMS& p) {
    m_items.push_back(p);
    return GetSize() - 1;
  }
  // Writing at or past the end first grows the array to index + 1.
  void SetAtGrow(int index, const ZEST_PARAMS& p);
  void RemoveAll() { m_items.clear(); }
  ZEST_PARAMS& operator[](int index) { return m_items.at(static_cast<std::size_t>(index)); }
  const ZEST_PARAMS& operator[](int index) const { return m_items.at(static_cast<std::size_t>(index)); }
  ZEST_PARAMS& GetAt(int index) { return (*this)[index]; }
  const ZEST_PARAMS& GetAt(int index) const { return (*this)[index]; }
  auto begin() { return m_items.begin(); }
  auto end() { return m_items.end(); }
  auto begin() const { return m_items.begin(); }
  auto end() const { return m_items.end(); }

 private:
  std::vector<ZEST_PARAMS> m_items;
};

namespace ZestParams {

// Bits of the flag word Param.
constexpr std::uint32_t kParamAllowAny = 0x80000000u;
constexpr std::uint32_t kParamAllowNull = 0x08000000u;
constexpr std::uint32_t kParamAnyAsIn = 0x00000800u;
constexpr std::uint32_t kParamAnyResolvedToIn = 0x00200000u;  // Init turned the any choice into a list
constexpr std::uint32_t kParamNeverInWhere = 0x01000000u;     // callers set it with SetParam
// A parameter with one of these bits reaches its builder even when empty or hidden.
constexpr std::uint32_t kParamBuildWhenEmpty = 0x00400850u;
constexpr std::uint32_t kParamAnyOnly = 0x40u;         // the whole word equal to this: any value
constexpr std::uint32_t kParamNullForZero = 0x50u;     // identifier 0 in a list also matches NULL

// Operators of a text parameter, in the order the dialogs offer them.
enum ZestParamsCompareOperatorString {
  CompareStringEqual,
  CompareStringBeginsWith,
  CompareStringContains,
  CompareStringInList,
  CompareStringInListOrNull,
  CompareStringAny
};
// Operators of an amount parameter.
enum ZestParamsCompareOperatorCurrency {
  CompareCurrencyEqual,
  CompareCurrencyGreater,
  CompareCurrencyGreaterOrEqual,
  CompareCurrencyLess,
  CompareCurrencyLessOrEqual,
  CompareCurrencyBetween
};
// Operators of a date parameter. The twelve named periods are chosen in the date dialog, which
// fills the from and to dates; for the SQL condition every one of them is a from/to range.
enum ZestParamsCompareOperatorDate {
  CompareDateEqual,
  CompareDateGreater,
  CompareDateGreaterOrEqual,
  CompareDateLess,
  CompareDateLessOrEqual,
  CompareDateLessOrEqualTo,
  CompareDateBetween,
  CompareDateNamedPeriod1,
  CompareDateNamedPeriod2,
  CompareDateNamedPeriod3,
  CompareDateNamedPeriod4,
  CompareDateNamedPeriod5,
  CompareDateNamedPeriod6,
  CompareDateNamedPeriod7,
  CompareDateNamedPeriod8,
  CompareDateNamedPeriod9,
  CompareDateNamedPeriod10,
  CompareDateNamedPeriod11,
  CompareDateNamedPeriod12
};
// How the any choice is offered: the any bit alone, or with one of the two variant bits.
enum ZestParamsAnyType { AnyTypePlain, AnyTypeWithBit30, AnyTypeWithBit29 };

// The bit pattern of an operator, or 0 for a value outside its table.
VARION_API std::uint32_t OperatorBitsString(int op);
VARION_API std::uint32_t OperatorBitsCurrency(int op);
VARION_API std::uint32_t OperatorBitsDate(int op);

// Fills one record in place; every setter returns the wrapper so that calls chain.
class VARION_API ZestParamsWrapper {
 public:
  explicit ZestParamsWrapper(ZEST_PARAMS& record) : m_record(&record) {}

  ZestParamsWrapper& SetDbField(const std::string& v);
  ZestParamsWrapper& SetLabel(const std::string& v);
  ZestParamsWrapper& SetValuePrefix(const std::string& v);
  ZestParamsWrapper& SetValueStr(const std::string& v);
  ZestParamsWrapper& SetPrompt(const std::string& v);
  ZestParamsWrapper& SetParamStr(const std::string& v);
  ZestParamsWrapper& SetListFilterSql(const std::string& v);
  ZestParamsWrapper& SetListFilterWhere(const std::string& v);
  ZestParamsWrapper& SetListFilterSort(const std::string& v);
  ZestParamsWrapper& SetSavedValue(const std::string& v);
  ZestParamsWrapper& SetTypeStr(const std::string& v);
  ZestParamsWrapper& SetDisplayValue(const std::string& v);
  ZestParamsWrapper& SetValue(const _variant_t& v);
  ZestParamsWrapper& SetValue2(const _variant_t& v);
  ZestParamsWrapper& SetValue3(const _variant_t& v);
  ZestParamsWrapper& SetValueAll(const _variant_t& v);
  ZestParamsWrapper& SetStandard(bool v);
  ZestParamsWrapper& SetVisible(bool v);
  ZestParamsWrapper& SetEmpty(bool v);
  ZestParamsWrapper& SetListFilterAllowVx(bool v);
  ZestParamsWrapper& SetType(ZestParamsType v);
  ZestParamsWrapper& SetParam(unsigned long v);  // replaces the whole flag word
  ZestParamsWrapper& SetPaywalled(UprawnieniaDoWersji v);

  // Flag setters: each ORs its pattern into Param; a value outside its table changes nothing.
  ZestParamsWrapper& SetAllowAny();
  ZestParamsWrapper& SetAllowNull();
  ZestParamsWrapper& SetAnyAsIn();
  ZestParamsWrapper& SetAnyType(ZestParamsAnyType type);
  ZestParamsWrapper& SetCompareOperatorString(ZestParamsCompareOperatorString op);
  ZestParamsWrapper& SetCompareOperatorCurrency(ZestParamsCompareOperatorCurrency op);
  ZestParamsWrapper& SetCompareOperatorDate(ZestParamsCompareOperatorDate op);
  // The same after clearing Param to 0.
  ZestParamsWrapper& ClearAndSetCompareOperatorString(ZestParamsCompareOperatorString op);
  ZestParamsWrapper& ClearAndSetCompareOperatorCurrency(ZestParamsCompareOperatorCurrency op);
  ZestParamsWrapper& ClearAndSetCompareOperatorDate(ZestParamsCompareOperatorDate op);

  ZestParamsWrapper& OnInit(ZEST_PARAMS::InitHandlerFn handler);
  ZestParamsWrapper& OnGetWhere(ZEST_PARAMS::GetWhereHandlerFn handler);
  ZestParamsWrapper& OnParam(ZEST_PARAMS::ParamHandlerFn handler);
  // A WHERE handler that adds "column IN (list)" for the parameter's list (UwzglednijFiltrSqlIn).
  ZestParamsWrapper& SetSqlInColumn(const std::string& column);

  const std::string& GetDbField() const { return m_record->DbField; }
  const std::string& GetValueStr() const { return m_record->ValueStr; }
  const _variant_t& GetValue() const { return m_record->Value; }
  const _variant_t& GetValue2() const { return m_record->Value2; }
  const _variant_t& GetValue3() const { return m_record->Value3; }
  ZEST_PARAMS& get_ref() const { return *m_record; }
  ZEST_PARAMS* get_ptr() const { return m_record; }
  operator ZEST_PARAMS() const { return *m_record; }

 private:
  ZEST_PARAMS* m_record;
};

namespace detail {
// Holds the record ahead of the wrapper base, so that the wrapper binds to a constructed record.
struct RecordHolder {
  ZEST_PARAMS m_own;
};
}  // namespace detail

// A parameter of type N: empty, visible, standard, -1 in all three value slots, Param 1. It is a
// wrapper over its own record, so a report writes ZestParamsDate().SetLabel(...).SetDbField(...).
template <int N>
class ZestParamsBase : private detail::RecordHolder, public ZestParamsWrapper {
 public:
  ZestParamsBase() : ZestParamsWrapper(m_own) {
    SetType(static_cast<ZestParamsType>(N));
    SetLabel("").SetValueStr("");
    SetValue(std::int32_t{-1}).SetValue2(std::int32_t{-1}).SetValue3(std::int32_t{-1});
    SetStandard(true).SetVisible(true).SetEmpty(true).SetParam(1);
  }
  ZestParamsBase(const ZestParamsBase& o) : detail::RecordHolder(o), ZestParamsWrapper(m_own) {}
  ZestParamsBase(ZestParamsBase&& o) noexcept : detail::RecordHolder(std::move(o)), ZestParamsWrapper(m_own) {}
  ZestParamsBase& operator=(const ZestParamsBase& o) {
    m_own = o.m_own;
    return *this;
  }
  ZestParamsBase& operator=(ZestParamsBase&& o) noexcept {
    m_own = std::move(o.m_own);
    return *this;
  }
};

#define VARION_ZEST_PRESET(Name, N)          \
  class Name : public ZestParamsBase<N> {    \
   public:                                   \
    using ZestParamsBase<N>::ZestParamsBase; \
  }
VARION_ZEST_PRESET(ZestParamsEmpty, -1);
VARION_ZEST_PRESET(ZestParamsString, 0);
VARION_ZEST_PRESET(ZestParamsDate, 2);
VARION_ZEST_PRESET(ZestParamsSelection, 3);
VARION_ZEST_PRESET(ZestParamsSelectionIndex, 4);
VARION_ZEST_PRESET(ZestParamsSelectionData, 5);
VARION_ZEST_PRESET(ZestParamsSelectionDbObject, 6);
VARION_ZEST_PRESET(ZestParamsInstynkt, 7);
VARION_ZEST_PRESET(ZestParamsSelectionDbString, 9);
VARION_ZEST_PRESET(ZestParamsChecklist, 10);
VARION_ZEST_PRESET(ZestParamsChecklistDb, 11);
VARION_ZEST_PRESET(ZestParamsDateEx, 12);
VARION_ZEST_PRESET(ZestParamsDateEx2, 13);
VARION_ZEST_PRESET(ZestParamsSelectionDataBezSlowaTo, 14);
VARION_ZEST_PRESET(ZestParamsLookupMultisel, 15);
VARION_ZEST_PRESET(ZestParamsChecklistDbSort, 16);
VARION_ZEST_PRESET(ZestParamsLookup, 17);
VARION_ZEST_PRESET(ZestParamsMultiselectionDbObject, 18);
VARION_ZEST_PRESET(ZestParamsDateHour, 19);
#undef VARION_ZEST_PRESET

// An amount parameter offers every amount operator and the any choice in both variants.
class ZestParamsCurrency : public ZestParamsBase<1> {
 public:
  ZestParamsCurrency() { SetParam(0xE000101Fu); }
};

// Owns nothing: binds to the array that the dialogs edit.
class VARION_API ZestParamsManager {
 public:
  explicit ZestParamsManager(CArrZestParams& params) : m_params(&params) {}
  // Copies the report's defaults into the array and initialises them. Errors of an any-as-IN
  // query (ComError) reach the caller.
  ZestParamsManager(CArrZestParams& params, const ZEST_PARAMS* defs, unsigned count);

  CArrZestParams& get() const { return *m_params; }

 private:
  void CopyDefParams(const ZEST_PARAMS* defs, unsigned count);
  // Turns the any choice of any-as-IN parameters into the explicit list of every admissible
  // identifier (read on the running instance's connection), then runs each InitHandler.
  void Init();

  CArrZestParams* m_params;
};

}  // namespace ZestParams

// Appends "AND" and the pattern formatted with the parameter's list (the pattern holds one %s)
// when the parameter is not empty and its Value is a non-empty text.
VARION_API void UwzglednijFiltrSqlIn(const ZEST_PARAMS& p, const char* pattern, std::string& where);
