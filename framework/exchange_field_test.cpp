#include "framework/exchange_field.h"

#include <gtest/gtest.h>

#include "base/status.h"
#include "db/schema/schema.h"
#include "tests/db_backends.h"

namespace varion {
namespace {

class ExchangeFieldTest : public ::testing::TestWithParam<std::string> {
 protected:
  ExchangeFieldTest() : m_db(GetParam()), m_conn(m_db.Connect()) {
    const SqlDialect& d = m_conn.Dialect();
    m_conn.Execute(std::string("CREATE TABLE xf (i INT, s ") + d.TextType(50) + ", a " + d.AmountType() + ", d " +
                   d.DateTimeType() + ")");
    m_conn.Prepare("INSERT INTO xf (i, s, a, d) VALUES (7, ?, 12.5, NULL)").Bind(1, Variant("Łódź")).Execute();
  }
  testing::TestDatabase m_db;
  db::Connection m_conn;
};

TEST_P(ExchangeFieldTest, FieldsOfBothRecordsetsKnowTheirTypeAndValue) {
  db::Recordset rs = m_conn.OpenRS("SELECT i, s, a, d FROM xf");
  struct Case {
    const char* name;
    std::uint16_t vt;
    Variant value;
  } cases[] = {{"i", 3, Variant(std::int32_t{7})},
               {"S", 8, Variant("Łódź")},
               {"a", 6, Variant(Amount::FromRaw(125000))},
               {"d", 7, Variant::MakeNull()}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ExchangeField f(rs, c.name);
    EXPECT_EQ(f.VariantType(), c.vt);
    EXPECT_EQ(f.Value(), c.value);
    EXPECT_FALSE(f.IsWritable());
  }
  try {
    ExchangeField missing(rs, "nie_ma");
    ADD_FAILURE() << "no error";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kPointer);
  }
  ExchangeField readOnly(rs, "i");
  EXPECT_THROW(readOnly.SetValue(Variant(std::int32_t{1})), ComError);

  db::UpdatableRecordset up = m_conn.OpenForUpdate("SELECT * FROM xf WHERE 1 = 0");
  up.AddNew();
  ExchangeField amount(up, "a");
  EXPECT_EQ(amount.VariantType(), 6);
  EXPECT_TRUE(amount.Value().IsEmpty());
  amount.SetValue(Variant(Amount::FromRaw(99900)));
  ExchangeField(up, "i").SetValue(Variant(std::int32_t{8}));
  up.Update();
  db::Recordset back = m_conn.OpenRS("SELECT a FROM xf WHERE i = 8");
  ASSERT_FALSE(back.IsEOF());
  EXPECT_EQ(back.GetCollect("a"), Variant(Amount::FromRaw(99900)));
}

INSTANTIATE_TEST_SUITE_P(Backends, ExchangeFieldTest, ::testing::ValuesIn(testing::DatabaseBackends()),
                         testing::BackendTestName);

}  // namespace
}  // namespace varion
