// What a parameter dialog edits, without a window: the operators a record allows with the text
// the dialog shows for each, the values read from the record, their checks (every failure at
// once) and the record written back. The dialogs (param_dlg_*_win.h) only move these values
// between the record and their controls.
//
// Where the values sit in the record: a text parameter keeps its text in Value and its operator
// in Value2; an amount or date parameter keeps the lower bound (or the only value) in Value, the
// upper bound of a range in Value2 and the operator in Value3. The operator is the whole bit
// pattern the builders of the WHERE text compare, never a single bit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/amount.h"
#include "base/export.h"
#include "base/variant.h"
#include "controls/date_tools.h"
#include "params/zest_params.h"

namespace varion::paramdlg {

enum class ValueKind { Text, Amount, Date };

// The kind of value a parameter type is edited as: text (0), amount (1), date (2 and 20); none
// for every other type.
VARION_API std::optional<ValueKind> KindOfType(int type);

struct OperatorChoice {
  std::uint32_t bits;  // stored in the operator slot
  const char* text;    // as the operator list shows it
  bool range;          // takes a second value, the upper bound
  int periodCode;      // a named period (its dates follow from today), else 0
};

// The operators of a kind in the order the list offers them.
VARION_API const std::vector<OperatorChoice>& OperatorTable(ValueKind kind);

// The operators the record's flag word allows: those whose whole pattern is in Param (the equal
// date also by the bit 0x1, which the date builder reads as equal too). Two patterns with the
// same meaning (the date "less or equal" 0x4 and 0x400) are offered once. A record that allows
// none of them compares for equality, the one operator every preset starts with.
VARION_API std::vector<OperatorChoice> AllowedOperators(const ZEST_PARAMS& p);
VARION_API std::optional<OperatorChoice> FindAllowedOperator(const ZEST_PARAMS& p, std::uint32_t bits);
inline bool AllowsAny(const ZEST_PARAMS& p) { return (p.Param & ZestParams::kParamAllowAny) != 0; }

// The values a dialog shows and gives back.
struct ParamEditValues {
  bool any = false;       // "any value": the parameter does not restrict the report
  std::uint32_t op = 0;   // bit pattern of the chosen operator
  std::string text;       // ValueKind::Text
  Amount amount, amount2; // ValueKind::Amount
  DateTime date = DateTime::Null(), date2 = DateTime::Null();  // ValueKind::Date, day precision
};

// The record's values as a dialog opens with them: its operator when the record allows it,
// else the first one allowed; values that are not of the kind give empty fields (zero amount,
// null date). `any` is the record's Empty when it allows any.
VARION_API ParamEditValues LoadEditValues(const ZEST_PARAMS& p);

// Which field a failure belongs to: the operator list (with the any choice), the first value
// and the second value.
enum class EditField { Operator, Value, Value2 };
struct EditError {
  EditField field;
  std::string message;
};

// Every failure of the values for the record, in field order; empty when they can be stored.
VARION_API std::vector<EditError> CheckEditValues(const ZEST_PARAMS& p, const ParamEditValues& v);

// Writes the values into the record (Value, Value2, Value3, Empty, DisplayValue) when they pass
// the checks; otherwise returns the failures and leaves the record untouched. A named period
// takes its dates from the clock's today. The any choice only sets Empty and the shown text, so
// the values last chosen are there when the dialog opens again.
VARION_API std::vector<EditError> StoreEditValues(ZEST_PARAMS& p, const ParamEditValues& v,
                                                  const DateTools::IClock& clock);

// The value as the parameter page shows it: "zaczyna się od Kow", "od 10,00 do 20,00",
// "bieżący miesiąc", "dowolna".
VARION_API std::string DisplayText(ValueKind kind, const ParamEditValues& v);

// Texts the dialogs show.
inline constexpr const char* kAnyText = "dowolna";
inline constexpr const char* kMsgValueRequired = "Proszę wprowadzić wartość.";
inline constexpr const char* kMsgNumberList = "Proszę wprowadzić listę liczb oddzielonych przecinkami.";
inline constexpr const char* kMsgAmountRequired = "Proszę wprowadzić kwotę.";
inline constexpr const char* kMsgDateRequired = "Proszę wprowadzić datę.";
inline constexpr const char* kMsgAmountOrder = "Kwota końcowa nie może być mniejsza od początkowej.";
inline constexpr const char* kMsgDateOrder = "Data końcowa nie może być wcześniejsza od początkowej.";
inline constexpr const char* kMsgOperatorNotAllowed = "Wybrany warunek nie jest dozwolony dla tego parametru.";
inline constexpr const char* kMsgAnyNotAllowed = "Ten parametr wymaga podania wartości.";

}  // namespace varion::paramdlg
