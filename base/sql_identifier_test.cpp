#include <gtest/gtest.h>

#include "base/sql_dialect.h"

namespace varion {
namespace {

TEST(SqlDialect, QuotedIdentifiersKeepBlanksAndEscapeTheClosingMark) {
  struct Case {
    const SqlDialect* d;
    std::string in, out;
  } cases[] = {
      {&SqlServerDialect(), "Nazwa skrócona", "[Nazwa skrócona]"},
      {&SqlServerDialect(), "a]b", "[a]]b]"},
      {&SqlServerDialect(), "a\"b", "[a\"b]"},
      {&SqliteDialect(), "Nazwa\tpełna", "\"Nazwa\tpełna\""},
      {&SqliteDialect(), "a\"b", "\"a\"\"b\""},
      {&PostgresDialect(), "a]b", "\"a]b\""},
      {&PostgresDialect(), "", "\"\""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.d->Name()) + " " + c.in);
    EXPECT_EQ(c.d->QuoteIdentifier(c.in), c.out);
  }
}

}  // namespace
}  // namespace varion
