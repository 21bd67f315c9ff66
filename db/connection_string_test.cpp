#include "db/connection_string.h"

#include <gtest/gtest.h>

#include "db/connection.h"

namespace varion::db {
namespace {

TEST(ConnectionStringTest, ParsesPairsAndBracedValues) {
  struct Case {
    const char* text;
    const char* key;
    const char* value;  // nullptr: key absent
  };
  const Case cases[] = {
      {"Driver={SQLite3};Database=/tmp/a.db", "driver", "SQLite3"},
      {"Driver={SQLite3};Database=/tmp/a.db", "DATABASE", "/tmp/a.db"},
      {" Server = 127.0.0.1 ; Port=5432;", "server", "127.0.0.1"},
      {"Pwd={a;b}}c};Uid=x", "pwd", "a;b}c"},
      {"Uid=a;Uid=b", "uid", "b"},  // the last one wins
      {"Uid=;Pwd=x", "uid", ""},
      {";;Uid=a;;", "uid", "a"},
      {"Uid=a", "pwd", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    ConnectionString cs;
    ASSERT_EQ(ConnectionString::Parse(c.text, cs), kOk);
    auto got = cs.Get(c.key);
    if (!c.value) {
      EXPECT_FALSE(got.has_value());
    } else {
      ASSERT_TRUE(got.has_value());
      EXPECT_EQ(*got, c.value);
    }
  }
}

TEST(ConnectionStringTest, RefusesMalformedText) {
  for (const char* text : {"Driver", "=x", "Pwd={abc", "Pwd={a}b;Uid=c", "Uid=a;garbage"}) {
    SCOPED_TRACE(text);
    ConnectionString cs;
    EXPECT_EQ(ConnectionString::Parse(text, cs), kInvalidArg);
    EXPECT_THROW(Connection::Open(text), ComError);
  }
}

TEST(ConnectionStringTest, WritesBackWhatItRead) {
  for (const char* text : {"Driver={SQLite3};Database=/x y/a.db", "Pwd={a;b}}c};Uid=x", "Server=h;ConnSettings={ set x }"}) {
    SCOPED_TRACE(text);
    ConnectionString first, second;
    ASSERT_EQ(ConnectionString::Parse(text, first), kOk);
    ASSERT_EQ(ConnectionString::Parse(first.ToString(), second), kOk);
    EXPECT_EQ(first.Pairs(), second.Pairs());
  }
}

TEST(ConnectionStringTest, OpenSaysWhyEachBackendRefused) {
  struct Case {
    const char* text;
    Status32 code;
  };
  const Case cases[] = {
      {"", kInvalidArg},
      {"Provider=SQLite", kInvalidArg},  // no data source
#if defined(_WIN32)
      // Windows hosts reach SQLite through its ODBC driver only.
      {"Provider=SQLite;Data Source=/nonexistent-folder/x/y.db", kNotImpl},
#else
      {"Provider=SQLite;Data Source=/nonexistent-folder/x/y.db", kDbConnection},
#endif
      {"Driver={No Such Driver};Database=x", kDbConnection},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    try {
      Connection::Open(c.text);
      ADD_FAILURE() << "opened";
    } catch (const ComError& e) {
      EXPECT_EQ(e.Code(), c.code);
      EXPECT_FALSE(e.Message().empty());
    }
  }
}

}  // namespace
}  // namespace varion::db
