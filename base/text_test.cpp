#include "base/text.h"

#include <gtest/gtest.h>
#include <iconv.h>


#include "tests/seed.h"

namespace varion::text {
namespace {

// glibc's iconv is an independent oracle for the assigned bytes of code page 1250.
std::u16string IconvToUtf16(std::string_view in) {
  iconv_t cd = iconv_open("UTF-16LE", "CP1250");
  std::u16string out(in.size() * 2 + 4, u'\0');
  char* src = const_cast<char*>(in.data());
  size_t srcLeft = in.size();
  char* dst = reinterpret_cast<char*>(out.data());
  size_t dstLeft = out.size() * 2;
  size_t r = iconv(cd, &src, &srcLeft, &dst, &dstLeft);
  iconv_close(cd);
  if (r == static_cast<size_t>(-1)) return u"<error>";
  out.resize((out.size() * 2 - dstLeft) / 2);
  return out;
}

TEST(Cp1250, EveryAssignedByteMatchesIconvAndTheFiveUnassignedMapToC1) {
  int assigned = 0;
  for (int b = 1; b < 256; ++b) {
    SCOPED_TRACE(b);
    std::string one(1, static_cast<char>(b));
    std::u16string oracle = IconvToUtf16(one);
    if (b == 0x81 || b == 0x83 || b == 0x88 || b == 0x90 || b == 0x98) {
      EXPECT_EQ(oracle, u"<error>");
      EXPECT_EQ(Cp1250ToUtf16(one), std::u16string(1, static_cast<char16_t>(b)));
    } else {
      ++assigned;
      EXPECT_EQ(Cp1250ToUtf16(one), oracle);
    }
  }
  EXPECT_EQ(assigned, 250);
}

TEST(Cp1250, AllBytesRoundTripThroughUtf16AndUtf8) {
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(Utf16ToCp1250(Cp1250ToUtf16(all)), all);
  EXPECT_EQ(Utf8ToCp1250(Cp1250ToUtf8(all)), all);
  EXPECT_EQ(WideToCp1250(Cp1250ToWide(all)), all);
  EXPECT_EQ(Utf8ToUtf16(Cp1250ToUtf8(all)), Cp1250ToUtf16(all));
}

TEST(Cp1250, PolishLettersHaveTheirCodePoints) {
  // The literal is code page 1250 bytes (the sources are compiled with that execution charset).
  const std::string polish = "Zażółć gęślą jaźń ĄĆĘŁŃÓŚŹŻ";
  EXPECT_EQ(Cp1250ToUtf16(polish), u"Zażółć gęślą jaźń ĄĆĘŁŃÓŚŹŻ");
  EXPECT_EQ(Cp1250ToUtf8(polish), std::string(reinterpret_cast<const char*>(u8"Zażółć gęślą jaźń ĄĆĘŁŃÓŚŹŻ")));
}

TEST(Utf16ToCp1250, UnmappableAndLoneSurrogatesBecomeOneQuestionMarkEach) {
  struct Case {
    std::u16string in;
    std::string out;
  } cases[] = {
      {u"a\u4E2Db", "a?b"},                          // CJK
      {u"\U0001F600", "?"},                          // a pair is one character
      {std::u16string(1, char16_t(0xD800)) + u"x", "?x"},  // lone high surrogate
      {std::u16string(1, char16_t(0xDC00)), "?"},          // lone low surrogate
      {u"\u20AC\u00A0", "\x80\xA0"},
      {u"\u0080", "?"},  // a C1 control that code page 1250 does not carry
      {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(Utf16ToUtf8(c.in));
    EXPECT_EQ(Utf16ToCp1250(c.in), c.out);
  }
}

TEST(Utf8ToCp1250, InvalidSequencesGiveOneQuestionMarkPerMaximalSubpart) {
  struct Case {
    std::string in;
    std::string out;
  } cases[] = {
      {"\x80", "?"},                      // stray continuation
      {"\xC0\xAF", "??"},                 // overlong: C0 is never valid
      {"\xE0\x80\xAF", "???"},            // overlong three-byte
      {"\xED\xA0\x80", "???"},            // encoded surrogate
      {"\xE2\x82", "?"},                  // truncated euro sign at the end
      {"\xE2\x82" "a", "?a"},             // truncated in the middle
      {"\xF4\x90\x80\x80", "????"},       // above U+10FFFF
      {"\xF0\x9F\x98\x80", "?"},          // valid but outside code page 1250
      {"\xE2\x82\xAC", "\x80"},           // euro sign
      {"\xFF\xFE", "??"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.in));
    EXPECT_EQ(Utf8ToCp1250(c.in), c.out);
  }
}

TEST(Utf8ToCp1250, RandomBytesNeverCrashAndValidUtf8SurvivesUtf16) {
  varion::testing::SeededRng rng;
  for (int round = 0; round < 2000; ++round) {
    std::string s(rng() % 64, '\0');
    for (char& c : s) c = static_cast<char>(rng());
    std::string cp = Utf8ToCp1250(s);
    // Every output byte stands for at least one input byte.
    ASSERT_LE(cp.size(), s.size());
    std::u16string w = Utf8ToUtf16(s);
    ASSERT_EQ(Utf16ToUtf8(w), Utf16ToUtf8(Utf8ToUtf16(Utf16ToUtf8(w))));
  }
}

}  // namespace
}  // namespace varion::text
