#include "params/zest_params.h"

#include <gtest/gtest.h>

#include <functional>

#include "db/rt_instance.h"
#include "tests/db_backends.h"

namespace {

using namespace ZestParams;
using varion::Variant;

TEST(ZestParams, PresetsStartEmptyVisibleStandardWithMinusOne) {
  struct Case {
    ZEST_PARAMS record;
    int type;
    std::uint32_t param;
  } cases[] = {
      {ZestParamsEmpty(), -1, 1},          {ZestParamsString(), 0, 1},
      {ZestParamsCurrency(), 1, 0xE000101F}, {ZestParamsDate(), 2, 1},
      {ZestParamsSelection(), 3, 1},       {ZestParamsSelectionIndex(), 4, 1},
      {ZestParamsSelectionData(), 5, 1},   {ZestParamsSelectionDbObject(), 6, 1},
      {ZestParamsInstynkt(), 7, 1},        {ZestParamsSelectionDbString(), 9, 1},
      {ZestParamsChecklist(), 10, 1},      {ZestParamsChecklistDb(), 11, 1},
      {ZestParamsDateEx(), 12, 1},         {ZestParamsDateEx2(), 13, 1},
      {ZestParamsSelectionDataBezSlowaTo(), 14, 1}, {ZestParamsLookupMultisel(), 15, 1},
      {ZestParamsChecklistDbSort(), 16, 1}, {ZestParamsLookup(), 17, 1},
      {ZestParamsMultiselectionDbObject(), 18, 1}, {ZestParamsDateHour(), 19, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    const ZEST_PARAMS& r = c.record;
    EXPECT_TRUE(r.Type == c.type && r.Param == c.param && r.Empty && r.Visible && r.Standard && r.Label.empty());
    for (const Variant* v : {&r.Value, &r.Value2, &r.Value3}) EXPECT_EQ(*v, Variant(std::int32_t{-1}));
  }
}

TEST(ZestParams, CopiedPresetEditsItsOwnRecordAndArrayGrowsOnWrite) {
  ZestParamsString a;
  ZestParamsString b = a;
  b.SetLabel("B");
  a = b;
  ZestParamsString c = std::move(b);
  c.SetLabel("C");
  a.SetDbField("kolumna");
  CArrZestParams arr;
  arr.SetAtGrow(2, a);
  arr.SetAtGrow(0, c);
  ASSERT_EQ(arr.GetSize(), 3);
  EXPECT_EQ(arr[2].Label + arr[2].DbField + "|" + arr[0].Label + arr[0].DbField + "|" + arr[1].Label, "Bkolumna|C|");
}

TEST(ZestParams, FlagSettersOrFixedPatterns) {
  using Set = std::function<void(ZestParamsWrapper&)>;
  struct Case {
    const char* name;
    std::uint32_t start;
    Set set;
    std::uint32_t expected;
  } cases[] = {
      {"allow any", 0x1, [](auto& w) { w.SetAllowAny(); }, 0x80000001},
      {"allow null", 0, [](auto& w) { w.SetAllowNull(); }, 0x08000000},
      {"any as IN", 0, [](auto& w) { w.SetAnyAsIn(); }, 0x800},
      {"any type 1", 0, [](auto& w) { w.SetAnyType(AnyTypeWithBit30); }, 0xC0000000},
      {"any type 2", 0x1, [](auto& w) { w.SetAnyType(AnyTypeWithBit29); }, 0xA0000001},
      {"any type 3 ignored", 0x1, [](auto& w) { w.SetAnyType(ZestParamsAnyType(3)); }, 0x1},
      {"text in list or null", 0x100, [](auto& w) { w.SetCompareOperatorString(CompareStringInListOrNull); }, 0x130},
      {"text 6 ignored", 0x100, [](auto& w) { w.SetCompareOperatorString(ZestParamsCompareOperatorString(6)); }, 0x100},
      {"amount between", 0, [](auto& w) { w.SetCompareOperatorCurrency(CompareCurrencyBetween); }, 0x1000},
      {"amount greater", 0x1, [](auto& w) { w.SetCompareOperatorCurrency(CompareCurrencyGreater); }, 0x9},
      {"amount -1 ignored", 0x5, [](auto& w) { w.SetCompareOperatorCurrency(ZestParamsCompareOperatorCurrency(-1)); }, 0x5},
      {"date equal", 0, [](auto& w) { w.SetCompareOperatorDate(CompareDateEqual); }, 0x100000},
      {"date period 3", 0x2, [](auto& w) { w.SetCompareOperatorDate(CompareDateNamedPeriod3); }, 0x81002},
      {"date period 12", 0, [](auto& w) { w.SetCompareOperatorDate(CompareDateNamedPeriod12); }, 0xB1000},
      {"date 19 ignored", 0x7, [](auto& w) { w.SetCompareOperatorDate(ZestParamsCompareOperatorDate(19)); }, 0x7},
      {"clear and set text", 0xFFFF, [](auto& w) { w.ClearAndSetCompareOperatorString(CompareStringContains); }, 0x200},
      {"clear and set amount", 0xFFFF, [](auto& w) { w.ClearAndSetCompareOperatorCurrency(CompareCurrencyLess); }, 0x2},
      {"clear and set date 19", 0xFFFF, [](auto& w) { w.ClearAndSetCompareOperatorDate(ZestParamsCompareOperatorDate(19)); }, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ZEST_PARAMS p;
    ZestParamsWrapper w(p);
    w.SetParam(c.start);
    c.set(w);
    EXPECT_EQ(p.Param, c.expected);
  }
}

// The any-as-IN initialisation on a real table, through the running instance's connection.
class AnyAsIn : public ::testing::TestWithParam<std::string> {
 protected:
  AnyAsIn() : m_db(GetParam()) {
    m_conn = m_db.Connect();
    m_conn.Execute("CREATE TABLE mg (id INT, aktywny INT)");
    m_conn.Execute("INSERT INTO mg VALUES (3, 1)");
    m_conn.Execute("INSERT INTO mg VALUES (1, 1)");
    m_conn.Execute("INSERT INTO mg VALUES (7, 0)");
    CRtInstance::Install({m_conn, 0, "", ""});
  }
  ~AnyAsIn() override { CRtInstance::Uninstall(); }

  varion::testing::TestDatabase m_db;
  varion::db::Connection m_conn;
};

TEST_P(AnyAsIn, TurnsTheAnyChoiceIntoTheListOfEveryIdentifier) {
  int initRuns = 0;
  const ZEST_PARAMS defs[] = {
      ZestParamsSelectionDbObject().SetAnyAsIn().SetParamStr("SELECT id FROM mg WHERE aktywny = 1 ORDER BY id"),
      ZestParamsSelectionDbObject().SetAnyAsIn().SetParamStr("SELECT id FROM mg WHERE aktywny = 2"),
      ZestParamsSelectionDbObject().SetAnyAsIn().SetEmpty(false).SetParamStr("SELECT nic FROM brak"),
      ZestParamsString().OnInit([&](ZestParamsWrapper& w) {
        ++initRuns;
        w.SetLabel("zainicjowany");
      }),
  };
  CArrZestParams arr;
  arr.SetSize(9);
  ZestParamsManager manager(arr, defs, 4);
  ASSERT_EQ(manager.get().GetSize(), 4);
  EXPECT_TRUE(arr[0].Value == Variant("1, 3") && arr[0].Param == 0x200801u && !arr[0].Empty);
  // No rows: the record stays as it was.
  EXPECT_TRUE(arr[1].Value == Variant(std::int32_t{-1}) && arr[1].Param == 0x801u && arr[1].Empty);
  // A chosen value is never replaced, so its query does not even run.
  EXPECT_EQ(arr[2].Value, Variant(std::int32_t{-1}));
  EXPECT_TRUE(initRuns == 1 && arr[3].Label == "zainicjowany");
}

TEST_P(AnyAsIn, AFailingQueryReachesTheCaller) {
  const ZEST_PARAMS defs[] = {ZestParamsSelectionDbObject().SetAnyAsIn().SetParamStr("SELECT nic FROM brak")};
  CArrZestParams arr;
  EXPECT_THROW(ZestParamsManager(arr, defs, 1), varion::ComError);
}

INSTANTIATE_TEST_SUITE_P(Backends, AnyAsIn, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
