#include "db/updatable_recordset.h"

#include <gtest/gtest.h>

namespace varion::db {
namespace {

TEST(SingleTableOfTest, FindsTheOneTableOrNone) {
  struct Case {
    const char* sql;
    const char* table;
  };
  const Case cases[] = {
      {"SELECT * FROM log_Logowanie WHERE 1 = 0", "log_Logowanie"},
      {"select * from pd_Ostrzezenia", "pd_Ostrzezenia"},
      {"SELECT a, b FROM dbo.gr__KonfiguracjaEx AS k WHERE k.a = 'x FROM y'", "dbo.gr__KonfiguracjaEx"},
      {"SELECT * FROM [gr_GridWlasny] ORDER BY grg_Id", "[gr_GridWlasny]"},
      {"SELECT (SELECT MAX(x) FROM b) AS m FROM a", "a"},
      {"SELECT * FROM a, b", ""},
      {"SELECT * FROM a LEFT JOIN b ON a.x = b.x", ""},
      {"SELECT * FROM (SELECT * FROM a) AS s", ""},
      {"SELECT * FROM a UNION SELECT * FROM b", ""},
      {"SELECT 1", ""},
      {"SELECT * FROM", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sql);
    EXPECT_EQ(SingleTableOf(c.sql), c.table);
  }
}

}  // namespace
}  // namespace varion::db
