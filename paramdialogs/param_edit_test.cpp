// The parameter dialogs' rules without a window: which operators a record offers, the checks of
// the values (all failures together), the record written back, and the WHERE text it then gives.
#include "paramdialogs/param_edit.h"

#include <gtest/gtest.h>

#include <set>

#include "params/params_html_ctrl.h"
#include "tests/db_backends.h"

namespace {

using namespace varion::paramdlg;
using varion::Amount;
using varion::DateTime;
using varion::Variant;

ZEST_PARAMS Record(int type, std::uint32_t param) {
  ZEST_PARAMS p;
  ZestParams::ZestParamsWrapper(p)
      .SetType(static_cast<ZestParamsType>(type))
      .SetDbField("k")
      .SetValueAll(std::int32_t{-1})
      .SetVisible(true)
      .SetEmpty(true)
      .SetParam(param);
  return p;
}

std::string WhereOf(const ZEST_PARAMS& p) {
  CParamsHtmlCtrl view;
  view.GetParams().Add(p);
  return view.GetWhereString();
}

const DateTools::FixedClock kClock(DateTime(2024, 5, 15, 10, 30));

TEST(ParamEditOperators, OfferWhatTheFlagWordAllows) {
  struct Case {
    int type;
    std::uint32_t param;
    std::vector<std::uint32_t> offered;
  } cases[] = {
      {0, 1, {0x1}},
      {0, 0x31, {0x1, 0x20, 0x30}},                 // 0x30 holds 0x20: both offered
      {0, 0x340, {0x100, 0x200, 0x40}},
      {1, 0xE000101F, {0x1, 0x8, 0x10, 0x2, 0x4, 0x1000}},
      {1, 0x80000000, {0x1}},                       // none named: equality
      {2, 1, {0x100000}},                           // the date builder reads 0x1 as equal
      {2, 0x40C, {0x8, 0x4}},                       // 0x400 means what 0x4 means: offered once
      {2, 0x400, {0x400}},
      {2, 0x31000, {0x1000, 0x11000, 0x21000, 0x31000}},
      {20, 0x91000, {0x1000, 0x11000, 0x81000, 0x91000}},
      {3, 0xFFFFFFFF, {}},                          // no dialog of this kind
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "type " << c.type << " param 0x" << std::hex << c.param);
    std::vector<std::uint32_t> got;
    for (const OperatorChoice& o : AllowedOperators(Record(c.type, c.param))) got.push_back(o.bits);
    EXPECT_EQ(got, c.offered);
  }
  // The named periods carry their period code and the text the date tags show.
  const auto periods = AllowedOperators(Record(2, 0xFFFFF));
  ASSERT_EQ(periods.size(), 14u);
  EXPECT_EQ(periods[0].bits, 0x100000u);
  EXPECT_EQ(periods[8].periodCode, 13);
  EXPECT_EQ(periods[8].bits, 0x81000u);
  EXPECT_STREQ(periods[8].text, "bieżący miesiąc");
  EXPECT_EQ(periods[13].periodCode, 19);
  EXPECT_EQ(periods[13].bits, 0x61000u);
}

struct StoreCase {
  const char* name;
  int type;
  std::uint32_t param;
  ParamEditValues values;
  Variant value, value2, value3;
  bool empty;
  const char* display;
  const char* where;
};

struct RefuseCase {
  const char* name;
  int type;
  std::uint32_t param;
  ParamEditValues values;
  std::vector<EditError> errors;
};

ParamEditValues Text(std::uint32_t op, std::string text) {
  ParamEditValues v;
  v.op = op;
  v.text = std::move(text);
  return v;
}
ParamEditValues Money(std::uint32_t op, Amount a, Amount b = Amount()) {
  ParamEditValues v;
  v.op = op;
  v.amount = a;
  v.amount2 = b;
  return v;
}
ParamEditValues Days(std::uint32_t op, DateTime a, DateTime b = DateTime::Null()) {
  ParamEditValues v;
  v.op = op;
  v.date = a;
  v.date2 = b;
  return v;
}
ParamEditValues Any() {
  ParamEditValues v;
  v.any = true;
  return v;
}

Amount U(std::int64_t units, std::int64_t frac = 0) { return Amount::FromUnits(units, frac); }
const Variant kNull = Variant::MakeNull();
const Variant kUnset = Variant(std::int32_t{-1});

TEST(ParamEditStore, WritesTheRecordAndTheWhereTextFollows) {
  const DateTime may1(2024, 5, 1), may31(2024, 5, 31);
  const StoreCase cases[] = {
      {"text equal", 0, 1, Text(0x1, "Kowal"), Variant("Kowal"), Variant(std::int32_t{1}), kUnset, false, "Kowal",
       "((k='Kowal'))"},
      {"text begins, apostrophe kept as data", 0, 0x101, Text(0x100, "O'Brien"), Variant("O'Brien"),
       Variant(std::int32_t{0x100}), kUnset, false, "zaczyna się od O'Brien", "((k LIKE 'O''Brien%'))"},
      {"text any operator restricts nothing", 0, 0x41, Text(0x40, "x"), Variant(""), Variant(std::int32_t{0x40}),
       kUnset, true, "dowolna", ""},
      {"text list of numbers", 0, 0x21, Text(0x20, "1, 2"), Variant("1, 2"), Variant(std::int32_t{0x20}), kUnset,
       false, "na liście 1, 2", "((k IN (1, 2)))"},
      {"any allowed", 1, 0xE000101F, Any(), kUnset, kUnset, kUnset, true, "dowolna", ""},
      {"amount greater", 1, 0xE000101F, Money(0x8, U(1250, 5000)), Variant(U(1250, 5000)), kNull,
       Variant(std::int32_t{0x8}), false, "większa od 1\xA0" "250,50", "((k>1250.5))"},
      {"amount range", 1, 0xE000101F, Money(0x1000, U(10), U(20)), Variant(U(10)), Variant(U(20)),
       Variant(std::int32_t{0x1000}), false, "od 10,00 do 20,00", "(( (k>=10) AND (k<=20) ))"},
      {"date equal", 2, 1, Days(0x100000, may1), Variant(may1), kNull, Variant(std::int32_t{0x100000}), false,
       "2024-05-01", "((k='20240501'))"},
      {"date range", 2, 0x1000, Days(0x1000, may1, may31), Variant(may1), Variant(may31),
       Variant(std::int32_t{0x1000}), false, "od 2024-05-01 do 2024-05-31",
       "(( (k>='20240501') AND (k<='20240531') ))"},
      {"named period from today", 2, 0x21000, Days(0x21000, DateTime::Null()), Variant(DateTime(2024, 5, 13)),
       Variant(DateTime(2024, 5, 19)), Variant(std::int32_t{0x21000}), false, "bieżący tydzień",
       "(( (k>='20240513') AND (k<='20240519') ))"},
      {"whole-day date on a date-time column", 20, 0x4, Days(0x4, may31), Variant(may31), kNull,
       Variant(std::int32_t{0x4}), false, "do 2024-05-31", "((k<'20240601'))"},
  };
  for (const StoreCase& c : cases) {
    SCOPED_TRACE(c.name);
    ZEST_PARAMS p = Record(c.type, c.param);
    EXPECT_TRUE(StoreEditValues(p, c.values, kClock).empty());
    EXPECT_EQ(p.Value, c.value);
    EXPECT_EQ(p.Value2, c.value2);
    EXPECT_EQ(p.Value3, c.value3);
    EXPECT_EQ(p.Empty != 0, c.empty);
    EXPECT_EQ(p.DisplayValue, c.display);
    EXPECT_EQ(WhereOf(p), c.where);
    // Opened again, the dialog shows what was stored.
    const ParamEditValues back = LoadEditValues(p);
    EXPECT_EQ(back.any, c.empty && AllowsAny(p));
    if (!c.values.any) {
      EXPECT_EQ(back.op, c.values.op);
    }
  }
}

TEST(ParamEditStore, RefusesWithEveryFailureAndLeavesTheRecord) {
  const DateTime may1(2024, 5, 1), may31(2024, 5, 31);
  const RefuseCase cases[] = {
      {"text list that is not numbers", 0, 0x21, Text(0x20, "1); DROP"), {{EditField::Value, kMsgNumberList}}},
      {"text empty", 0, 1, Text(0x1, ""), {{EditField::Value, kMsgValueRequired}}},
      {"text operator not allowed", 0, 1, Text(0x200, "a"), {{EditField::Operator, kMsgOperatorNotAllowed}}},
      {"any not allowed", 0, 1, Any(), {{EditField::Operator, kMsgAnyNotAllowed}}},
      {"amount invalid", 1, 0xE000101F, Money(0x1000, Amount::Invalid(), U(5)), {{EditField::Value, kMsgAmountRequired}}},
      {"amount range reversed", 1, 0xE000101F, Money(0x1000, U(20), U(10)), {{EditField::Value2, kMsgAmountOrder}}},
      {"date range with both dates missing", 2, 0x1000, Days(0x1000, DateTime::Null()),
       {{EditField::Value, kMsgDateRequired}, {EditField::Value2, kMsgDateRequired}}},
      {"date range reversed", 2, 0x1000, Days(0x1000, may31, may1), {{EditField::Value2, kMsgDateOrder}}},
  };
  for (const RefuseCase& c : cases) {
    SCOPED_TRACE(c.name);
    ZEST_PARAMS p = Record(c.type, c.param);
    p.DisplayValue = "przed";
    const auto errors = StoreEditValues(p, c.values, kClock);
    ASSERT_EQ(errors.size(), c.errors.size());
    for (std::size_t i = 0; i < errors.size(); ++i) {
      EXPECT_EQ(errors[i].field, c.errors[i].field);
      EXPECT_EQ(errors[i].message, c.errors[i].message);
    }
    EXPECT_EQ(p.Value, kUnset);
    EXPECT_EQ(p.Value2, kUnset);
    EXPECT_EQ(p.Value3, kUnset);
    EXPECT_TRUE(p.Empty);
    EXPECT_EQ(p.DisplayValue, "przed");
  }
}

TEST(ParamEditLoad, AFreshPresetOpensOnItsFirstOperatorWithEmptyFields) {
  struct Case {
    ZEST_PARAMS record;
    std::uint32_t op;
    bool any;
  } cases[] = {
      {ZestParams::ZestParamsString(), 0x1, false},
      {ZestParams::ZestParamsCurrency(), 0x1, true},  // the preset allows any and starts empty
      {ZestParams::ZestParamsDate(), 0x100000, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.record.Type);
    const ParamEditValues v = LoadEditValues(c.record);
    EXPECT_EQ(v.op, c.op);
    EXPECT_EQ(v.any, c.any);
    EXPECT_TRUE(v.text.empty());          // -1 is no text
    EXPECT_EQ(v.amount, Amount());        // nor an amount
    EXPECT_TRUE(v.date.IsNull());         // nor a date
  }
  // An operator the record does not allow (left by an older report definition) is not shown.
  ZEST_PARAMS p = Record(1, 0x1 | 0x8);
  p.Value3 = std::int32_t{0x1000};
  EXPECT_EQ(LoadEditValues(p).op, 0x1u);
}

// What the dialogs store selects the rows meant on every backend: the text with an apostrophe,
// the amount range with both ends, and a named period on a column holding times (whole days).
class StoredValuesOnServer : public ::testing::TestWithParam<std::string> {
 protected:
  StoredValuesOnServer() : m_db(GetParam()), m_conn(m_db.Connect()) {
    const varion::SqlDialect& d = m_conn.Dialect();
    m_conn.Execute(std::string("CREATE TABLE doc (id INT, opis ") + d.TextType(50) + ", wartosc " + d.AmountType() +
                   ", data " + d.DateTimeType() + ")");
    for (const char* row : {"1, 'O''Brien i syn', 10.00, '2024-05-13 08:00:00'", "2, 'Kowalski', 15.50, '2024-05-19 23:30:00'",
                            "3, 'OBrien', 20.01, '2024-05-20 00:00:00'", "4, 'Nowak', 5.00, '2024-05-12 23:59:00'"})
      m_conn.Execute(std::string("INSERT INTO doc VALUES (") + row + ")");
  }

  std::set<int> Select(const std::vector<ZEST_PARAMS>& params) const {
    CParamsHtmlCtrl view;
    view.SetConnection(m_conn);
    for (const ZEST_PARAMS& p : params) view.GetParams().Add(p);
    const std::string where = view.GetWhereString();
    std::set<int> ids;
    for (auto rs = m_conn.OpenRS("SELECT id FROM doc" + (where.empty() ? "" : " WHERE " + where)); !rs.IsEOF(); rs.MoveNext())
      ids.insert(rs.GetCollect(0).AsInt32());
    return ids;
  }

  static ZEST_PARAMS Stored(int type, std::uint32_t param, const char* column, const ParamEditValues& v) {
    ZEST_PARAMS p = Record(type, param);
    p.DbField = column;
    EXPECT_TRUE(StoreEditValues(p, v, kClock).empty());
    return p;
  }

  varion::testing::TestDatabase m_db;
  varion::db::Connection m_conn;
};

TEST_P(StoredValuesOnServer, SelectTheRowsMeant) {
  const ZEST_PARAMS text = Stored(0, 0x101, "opis", Text(0x100, "O'Brien"));
  const ZEST_PARAMS amount = Stored(1, 0xE000101F, "wartosc", Money(0x1000, U(10), U(20)));
  const ZEST_PARAMS week = Stored(20, 0x21000, "data", Days(0x21000, DateTime::Null()));
  const ZEST_PARAMS any = Stored(1, 0xE000101F, "wartosc", Any());
  struct Case {
    const char* name;
    std::vector<ZEST_PARAMS> params;
    std::set<int> rows;
  } cases[] = {
      {"text begins with", {text}, {1}},
      {"amount range", {amount}, {1, 2}},
      {"current week on date and time", {week}, {1, 2}},
      {"any restricts nothing", {any}, {1, 2, 3, 4}},
      {"all together", {week, amount, text, any}, {1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(Select(c.params), c.rows);
  }
}

INSTANTIATE_TEST_SUITE_P(Backends, StoredValuesOnServer, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
