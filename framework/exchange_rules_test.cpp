#include "framework/exchange_rules.h"

#include <gtest/gtest.h>

#include "framework/data_exchange.h"

namespace varion {
namespace {

TEST(ExchangeInt, WholeTextMustBeOneIntegerThatFitsTheKind) {
  // `after` is what the variable holds afterwards; kUntouched means the call left it alone.
  constexpr std::int64_t kUntouched = -99;
  struct Case {
    const char* text;
    IntKind kind;
    bool ok;
    std::int64_t after;
  } cases[] = {
      {"255", IntKind::UChar, true, 255},
      {"256", IntKind::UChar, false, kUntouched},
      {"-1", IntKind::UChar, false, kUntouched},
      {"32767", IntKind::Short, true, 32767},
      {"-32768", IntKind::Short, true, -32768},
      {"32768", IntKind::Short, false, kUntouched},
      {"-32769", IntKind::Short, false, kUntouched},
      {"  42 ", IntKind::Int, true, 42},
      {"+7", IntKind::Int, true, 7},
      {"+7", IntKind::UInt, false, kUntouched},
      {"2147483648", IntKind::Long, false, kUntouched},  // long is 32 bits wide on Windows
      {"4294967296", IntKind::UInt, false, kUntouched},
      {"-0", IntKind::Int, true, 0},
      {"-5", IntKind::ULong, false, kUntouched},
      {"12a", IntKind::Int, false, 12},
      {"-3x", IntKind::Short, false, -3},
      {"1 2", IntKind::Int, false, 1},
      {"1.0", IntKind::Int, false, 1},
      {"", IntKind::Int, false, kUntouched},
      {"   ", IntKind::Int, false, kUntouched},
      {"-", IntKind::Int, false, kUntouched},
      {"x12", IntKind::Int, false, kUntouched},
      {"99999999999999999999999", IntKind::Long, false, kUntouched},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    std::int64_t v = kUntouched;
    EXPECT_EQ(ParseExchangeInt(c.text, c.kind, v), c.ok);
    EXPECT_EQ(v, c.after);
  }
}

TEST(ExchangeInt, LoadedTextReadsBackAsTheSameValueAtEveryBound) {
  for (IntKind kind : {IntKind::UChar, IntKind::Short, IntKind::Int, IntKind::UInt, IntKind::Long, IntKind::ULong}) {
    for (std::int64_t v : {IntKindMin(kind), IntKindMax(kind), std::int64_t{0}, std::int64_t{1}}) {
      SCOPED_TRACE(::testing::Message() << static_cast<int>(kind) << " " << v);
      std::int64_t back = -1;
      ASSERT_TRUE(ParseExchangeInt(FormatExchangeInt(kind, v), kind, back)) << FormatExchangeInt(kind, v);
      EXPECT_EQ(back, v);
    }
  }
  EXPECT_EQ(FormatExchangeInt(IntKind::Short, -32768), "-32768");
  EXPECT_EQ(FormatExchangeInt(IntKind::ULong, 4294967295LL), "4294967295");
}

TEST(ExchangeInt, EachKindHasItsMessage) {
  EXPECT_STREQ(IntKindMessage(IntKind::UChar), "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 255.");
  EXPECT_STREQ(IntKindMessage(IntKind::UInt), "Proszę wprowadzić dodatnią liczbę całkowitą.");
  EXPECT_STREQ(IntKindMessage(IntKind::ULong), "Proszę wprowadzić dodatnią liczbę całkowitą.");
  for (IntKind k : {IntKind::Short, IntKind::Int, IntKind::Long})
    EXPECT_STREQ(IntKindMessage(k), "Proszę wprowadzić liczbę całkowitą.");
}

TEST(ExchangeMessages, BoundsAndCountsAreWrittenInto) {
  EXPECT_EQ(RangeMessage(BoundFormat::SignedLong, -5, 10), "Proszę wprowadzić liczbę całkowitą z przedziału -5 i 10.");
  EXPECT_EQ(RangeMessage(BoundFormat::UnsignedLong, 0, 4294967295LL),
            "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 4294967295.");
  EXPECT_EQ(RangeMessage(BoundFormat::Unsigned, 1, 255), "Proszę wprowadzić liczbę całkowitą z przedziału 1 i 255.");
  EXPECT_EQ(FormatLongMessage(msg::kMaxChars, 40), "Proszę wprowadzić najwyżej 40 znaków.");
  EXPECT_EQ(FormatLongMessage(msg::kMinChars, 3), "Proszę wprowadzić przynajmniej 3 znaki(ów).");
  EXPECT_EQ(FormatLongMessage(msg::kMinLong, -2), "Proszę wprowadzić liczbę całkowitą większą lub równą -2.");
  EXPECT_TRUE(InRange(5, 5, 9));
  EXPECT_TRUE(InRange(9, 5, 9));
  EXPECT_FALSE(InRange(4, 5, 9));
  EXPECT_FALSE(InRange(10, 5, 9));
}

TEST(ExchangeRules, CheckStatesBlanksAndErrorLines) {
  struct Case {
    long long value;
    int state;
  } states[] = {{0, 0}, {1, 1}, {2, 2}, {3, 0}, {-1, 0}, {256, 0}};
  for (const auto& s : states) EXPECT_EQ(CheckStateFromValue(s.value), s.state) << s.value;

  EXPECT_EQ(TrimBlanks(" \t ab c \r\n"), "ab c");
  EXPECT_EQ(TrimBlanks(" \t "), "");
  EXPECT_EQ(ErrorListLine("Linia 1\r\nLinia 2\nkoniec\r"), "Linia 1Linia 2koniec\r");
  EXPECT_EQ(ErrorListLine("\n\r\n"), "");
}

TEST(ExchangeDates, DisplayTextAndThePortableParserAgree) {
  struct Case {
    DateTime value;
    const char* iso;
    const char* dmy;
  } cases[] = {
      {DateTime(2024, 2, 29), "2024-02-29", "29.02.2024"},
      {DateTime(1999, 12, 31, 23, 59, 59), "1999-12-31 23:59:59", "31.12.1999"},
      {DateTime(100, 1, 1), "0100-01-01", "01.01.0100"},
      {DateTime::Null(), "", ""},
      {DateTime::Invalid(), "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.iso);
    EXPECT_EQ(DateDisplayText(c.value), c.iso);
    EXPECT_EQ(DateTextDDMMYYYY(c.value), c.dmy);
    if (c.value.IsValid()) {
      EXPECT_EQ(ParseExchangeDate(c.iso), c.value);
    }
  }
  EXPECT_TRUE(ParseExchangeDate("").IsNull());
  EXPECT_TRUE(ParseExchangeDate("  ").IsNull());
  EXPECT_EQ(ParseExchangeDate("2024-13-01").GetStatus(), ValueStatus::Invalid);
  EXPECT_EQ(ParseExchangeDate("10000-01-01").GetStatus(), ValueStatus::Invalid);
  EXPECT_EQ(ParseExchangeDate("jutro").GetStatus(), ValueStatus::Invalid);
}

TEST(ExchangeTimes, HoursAndMinutesWithOptionalSeconds) {
  struct Case {
    const char* text;
    int seconds;  // -1: refused
  } cases[] = {
      {"7:05", 7 * 3600 + 5 * 60},
      {"07:05", 7 * 3600 + 5 * 60},
      {" 23:59:59 ", 86399},
      {"00:00", 0},
      {"24:00", -1},
      {"12:60", -1},
      {"12:30:60", -1},
      {"12:5", -1},
      {"123:00", -1},
      {"12", -1},
      {"12:30:", -1},
      {"12:30:15:01", -1},
      {"", -1},
      {"12.30", -1},
      {"-1:00", -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    int s = -1;
    EXPECT_EQ(ParseTimeOfDay(c.text, s), c.seconds >= 0);
    if (c.seconds >= 0) {
      EXPECT_EQ(s, c.seconds);
    }
  }
}

TEST(ExchangeAmounts, EditsShowTwoDecimalsOrAsManyAsTheAmountNeeds) {
  struct Case {
    std::int64_t raw;
    int decimals;
  } cases[] = {{0, 2}, {15000, 2}, {-12345600, 2}, {12345670, 3}, {-12345678, 4}, {1, 4}, {-10, 3}};
  for (const auto& c : cases) EXPECT_EQ(AmountDisplayDecimals(Amount::FromRaw(c.raw)), c.decimals) << c.raw;
}

TEST(ErrorRecords, SourceDecidesBetweenDialogAndNestedPage) {
  FLG_OBJECT_ERROR_INFO r;
  struct Case {
    const char* source;
    std::uint32_t ctrlId;
    bool own, dialogLevel;
  } cases[] = {
      {nullptr, 0, true, true}, {"", 0, true, true},       {"#200", 0, true, true},
      {"#200", 5, true, false}, {"#201", 0, false, false}, {"#201", 5, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << (c.source ? c.source : "null") << " " << c.ctrlId);
    r.source = c.source;
    r.ctrlId = c.ctrlId;
    EXPECT_EQ(IsOwnSource(r, "#200"), c.own);
    EXPECT_EQ(IsDialogLevelError(r, "#200"), c.dialogLevel);
  }
}

TEST(CFlgDataExchange, RecordsAreKeptInOrderAndFoundAndRemovedFirstFirst) {
  CObjErrorInfoArray list;
  CFlgDataExchange dx(&list, reinterpret_cast<HWND>(0x1234), "#300");
  dx.AddError(7, "pierwszy");
  dx.AddError(9, "inny", "Tytuł", 17);
  dx.AddError(7, "drugi");
  ASSERT_EQ(dx.GetCount(), 3u);
  EXPECT_EQ(list[1].secondText, "Tytuł");
  EXPECT_EQ(list[1].code, 17u);
  EXPECT_EQ(list[0].secondText, "");
  EXPECT_EQ(list[0].code, 0u);
  EXPECT_EQ(list[0].extra, 0u);
  EXPECT_TRUE(list[0].value.IsEmpty());
  EXPECT_STREQ(list[2].source, "#300");
  EXPECT_EQ(list[2].dialog, reinterpret_cast<HWND>(0x1234));

  auto first = dx.GetError(7);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->message, "pierwszy");
  EXPECT_FALSE(dx.GetError(8));

  dx.RemoveError(7);
  ASSERT_EQ(dx.GetCount(), 2u);
  EXPECT_EQ(list[0].message, "inny");
  EXPECT_EQ(list[1].message, "drugi");
  dx.RemoveError(8);  // no record: nothing happens
  EXPECT_EQ(dx.GetCount(), 2u);
}

TEST(CFlgDataExchange, NullListDropsEverythingQuietly) {
  CFlgDataExchange dx(nullptr, nullptr, "x");
  dx.AddError(1, "a");
  dx.AddError(1, "a", "b", 2);
  dx.RemoveError(1);
  EXPECT_EQ(dx.GetCount(), 0u);
  EXPECT_FALSE(dx.GetError(1));

  // Member-wise assignment: the copy writes into the same list.
  CObjErrorInfoArray list;
  CFlgDataExchange other(&list, nullptr, "y");
  dx = other;
  dx.AddError(3, nullptr);
  ASSERT_EQ(list.GetCount(), 1u);
  EXPECT_EQ(list[0].message, "");
}

}  // namespace
}  // namespace varion
