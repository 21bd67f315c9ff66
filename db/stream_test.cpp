#include "db/stream.h"

#include <gtest/gtest.h>

#include <cstring>

namespace varion::db {
namespace {

TEST(MemoryStreamTest, WritesSeeksAndReads) {
  MemoryStream s;
  ASSERT_EQ(s.Write("abcdef", 6), kOk);
  std::uint64_t pos = 99;
  ASSERT_EQ(s.Seek(2, SeekOrigin::Begin, &pos), kOk);
  EXPECT_EQ(pos, 2u);
  ASSERT_EQ(s.Write("XY", 2), kOk);  // overwrites in place
  EXPECT_EQ(s.Size(), 6u);
  ASSERT_EQ(s.Seek(-1, SeekOrigin::End, &pos), kOk);
  EXPECT_EQ(pos, 5u);
  char buf[8] = {};
  std::size_t read = 0;
  ASSERT_EQ(s.Read(buf, sizeof buf, &read), kOk);
  EXPECT_EQ(read, 1u);  // a short read at the end is not a failure
  EXPECT_EQ(buf[0], 'f');
  ASSERT_EQ(s.Read(buf, sizeof buf, &read), kOk);
  EXPECT_EQ(read, 0u);
  ASSERT_EQ(s.Seek(0, SeekOrigin::Begin, nullptr), kOk);
  ASSERT_EQ(s.Read(buf, 6, &read), kOk);
  EXPECT_EQ(std::string(buf, read), "abXYef");
}

TEST(MemoryStreamTest, SeekRules) {
  struct Case {
    std::int64_t offset;
    SeekOrigin origin;
    Status32 status;
    std::uint64_t position;  // after the call
  };
  const Case cases[] = {
      {-1, SeekOrigin::Begin, kInvalidArg, 4},
      {-5, SeekOrigin::End, kInvalidArg, 4},
      {-4, SeekOrigin::End, kOk, 0},
      {3, SeekOrigin::Current, kOk, 7},  // past the end is allowed
      {INT64_MAX, SeekOrigin::Current, kInvalidArg, 4},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.offset);
    MemoryStream s({1, 2, 3, 4});
    ASSERT_EQ(s.Seek(0, SeekOrigin::End, nullptr), kOk);
    EXPECT_EQ(s.Seek(c.offset, c.origin, nullptr), c.status);
    EXPECT_EQ(s.Position(), c.position);
  }
}

TEST(MemoryStreamTest, WritingPastTheEndFillsWithZeros) {
  MemoryStream s({7});
  ASSERT_EQ(s.Seek(3, SeekOrigin::Begin, nullptr), kOk);
  ASSERT_EQ(s.Write("\x09", 1), kOk);
  EXPECT_EQ(s.Bytes(), (std::vector<std::uint8_t>{7, 0, 0, 9}));
  EXPECT_EQ(s.TakeBytes().size(), 4u);
  EXPECT_EQ(s.Size(), 0u);
  EXPECT_EQ(s.Position(), 0u);
}

}  // namespace
}  // namespace varion::db
