#include "base/sql_literal.h"

#include <gtest/gtest.h>

#include "base/sql_dialect.h"

namespace varion {
namespace {

TEST(SqlOkString, DoublesApostrophesAndDropsNulBytesWithoutCutting) {
  struct Case {
    std::string in;
    std::string out;
  } cases[] = {
      {"abc", "abc"},
      {"O'Brien", "O''Brien"},
      {"''", "''''"},
      {"x' OR '1'='1", "x'' OR ''1''=''1"},
      {std::string("a\0' b", 5), "a'' b"},
      {"Łódź 'Ż'", "Łódź ''Ż''"},
      {"", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.out);
    EXPECT_EQ(SqlOkString(std::string_view(c.in)), c.out);
  }
  EXPECT_EQ(SqlOkString(static_cast<const char*>(nullptr)), "");
  EXPECT_EQ(SqlOkString("it's"), "it''s");
}

TEST(SqlOkDate, DateOrConvertFormAndNullForNoDate) {
  struct Case {
    DateTime d;
    std::string out;
  } cases[] = {
      {DateTime(2024, 5, 31), "'20240531'"},
      {DateTime(2024, 5, 31, 23, 59, 59), "CONVERT(DATETIME, '2024-05-31T23:59:59', 126)"},
      {DateTime(45443.0 + 0.4 / 86400), "'20240531'"},  // under half a second is no time of day
      {DateTime(100, 1, 1), "'01000101'"},
      {DateTime::Null(), "NULL"},
      {DateTime::Invalid(), "NULL"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.out);
    EXPECT_EQ(SqlOkDate(c.d), c.out);
  }
  EXPECT_EQ(SqlOkDate(45443.0), "'20240531'");
  EXPECT_EQ(SqlOkDate(1e12), "NULL");
}

TEST(SqlOkCurrency, PlainNumbersWithoutTrailingZeros) {
  struct Case {
    std::int64_t raw;
    std::string out;
  } cases[] = {
      {100000, "10"},       {-125000, "-12.5"}, {1, "0.0001"}, {0, "0"},
      {-1, "-0.0001"},      {12345678, "1234.5678"},
      {std::numeric_limits<std::int64_t>::min(), "-922337203685477.5808"},
  };
  for (const auto& c : cases) EXPECT_EQ(SqlOkCurrency(c.raw), c.out);
  EXPECT_EQ(SqlOkCurrency(Amount::Null()), "NULL");
}

TEST(SqlDialect, ServerSpecificTexts) {
  const DateTime day(2024, 5, 31), moment(2024, 5, 31, 7, 5, 9);
  struct Case {
    const SqlDialect* d;
    std::string top, limit, date, dateTime, timeOfDay;
  } cases[] = {
      {&SqlServerDialect(), "TOP 5 ", "", "'20240531'", "CONVERT(DATETIME, '2024-05-31T07:05:09', 126)",
       "DATEADD(DAY, -DATEDIFF(day, 0, k), k)"},
      {&SqliteDialect(), "", " LIMIT 5", "'2024-05-31 00:00:00'", "'2024-05-31 07:05:09'",
       "strftime('%H:%M:%f', k)"},
      {&PostgresDialect(), "", " LIMIT 5", "DATE '2024-05-31'", "TIMESTAMP '2024-05-31 07:05:09'",
       "CAST(k AS TIME)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.d->Name());
    EXPECT_EQ(c.d->TopClause(5), c.top);
    EXPECT_EQ(c.d->LimitClause(5), c.limit);
    EXPECT_EQ(c.d->DateLiteral(day), c.date);
    EXPECT_EQ(c.d->DateLiteral(moment), c.dateTime);
    EXPECT_EQ(c.d->TimeOfDay("k"), c.timeOfDay);
    EXPECT_EQ(c.d->DateLiteral(DateTime::Null()), "NULL");
    EXPECT_EQ(&DialectFor(c.d->Kind()), c.d);
  }
}

}  // namespace
}  // namespace varion
