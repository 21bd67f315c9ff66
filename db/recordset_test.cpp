#include "db/recordset.h"

#include <gtest/gtest.h>

#include "db/rt_instance.h"

namespace varion::db {
namespace {

Recordset TwoByTwo() {
  return Recordset({"Id", "Dane"}, {FieldType::Integer, FieldType::Binary},
                   {Variant(1), Variant(Variant::Bytes{1, 2}), Variant(2), Variant("tekst")});
}

TEST(RecordsetTest, CellsLieRowByRow) {
  Recordset rs = TwoByTwo();
  ASSERT_EQ(rs.GetRecordCount(), 2u);
  EXPECT_EQ(rs.GetFieldType(1), FieldType::Binary);
  EXPECT_EQ(rs.GetBytes("dane"), (std::vector<std::uint8_t>{1, 2}));
  rs.MoveNext();
  EXPECT_EQ(rs.GetCollect("ID"), Variant(2));
  // Text in an image field comes as its code page 1250 bytes.
  EXPECT_EQ(rs.GetBytes("Dane"), (std::vector<std::uint8_t>{'t', 'e', 'k', 's', 't'}));
  rs.MoveNext();
  EXPECT_TRUE(rs.IsEOF());
  EXPECT_EQ(rs.GetAbsolutePosition(), 2u);
}

TEST(RecordsetTest, BytesOfOtherValues) {
  Recordset rs({"a", "b"}, {}, {Variant::MakeNull(), Variant(3.5)});
  EXPECT_TRUE(rs.GetBytes("a").empty());
  try {
    rs.GetBytes("b");
    ADD_FAILURE() << "a number read as bytes";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kTypeMismatch);
  }
  EXPECT_EQ(rs.GetFieldType(0), FieldType::Unknown);  // types not given are unknown
}

TEST(RecordsetTest, RefusesCellsThatDoNotFillRows) {
  EXPECT_THROW(Recordset({"a", "b"}, {}, {Variant(1), Variant(2), Variant(3)}), ComError);
  Recordset none({}, {}, {Variant(1)});
  EXPECT_TRUE(none.IsEOF());
  EXPECT_EQ(none.GetFieldCount(), 0);
}

TEST(RecordsetTest, ManyRowsKeepTheirOrder) {
  std::vector<Variant> cells;
  for (int i = 0; i < 10000; ++i) cells.emplace_back(i);
  Recordset rs({"n"}, {FieldType::Integer}, std::move(cells));
  int expected = 0;
  for (; !rs.IsEOF(); rs.MoveNext()) ASSERT_EQ(rs.GetCollect(0), Variant(expected++));
  EXPECT_EQ(expected, 10000);
}

TEST(RtInstanceTest, WithoutAnInstance) {
  CRtInstance::Uninstall();
  EXPECT_FALSE(CRtInstance::IsInstalled());
  EXPECT_EQ(CRtInstance::GetUserId(), 0);
  EXPECT_EQ(CRtInstance::GetUserIdentifier(), "");
  EXPECT_EQ(CRtInstance::GetWorkstationName(), CRtInstance::ComputerName());
  EXPECT_FALSE(CRtInstance::ComputerName().empty());
  try {
    CRtInstance::OpenRS("SELECT 1");
    ADD_FAILURE() << "opened without a connection";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kDbNotOpen);
  }
}

}  // namespace
}  // namespace varion::db
