#include "framework/fill_items.h"

#include <gtest/gtest.h>

#include <set>

#include "base/status.h"
#include "framework/business_fill.h"
#include "framework/fill_dictionaries.h"

namespace varion::fill {
namespace {

TEST(FillSource, SeventhCharacterBlankMakesAQuery) {
  struct Case {
    const char* given;
    const char* sql;
  } cases[] = {
      {"SELECT x", "SELECT x"},                              // eight characters, blank seventh: a query
      {"select * from t", "select * from t"},                // case does not matter
      {"Kontrahent", "SELECT * FROM Kontrahent"},            // a table
      {"SELECT ", "SELECT * FROM SELECT "},                  // seven characters: not longer than 7
      {"sl_Kasa", "SELECT * FROM sl_Kasa"},                  // seven characters
      {"abcdef g", "abcdef g"},                              // any blank seventh character, deliberately
      {"WITH abc AS (SELECT 1)", "SELECT * FROM WITH abc AS (SELECT 1)"},  // blanks elsewhere: a table
      {"SELECT\tx", "SELECT * FROM SELECT\tx"},              // only a blank counts
      {"", "SELECT * FROM "},
  };
  for (const auto& c : cases) EXPECT_EQ(SourceSql(c.given), c.sql) << '"' << c.given << '"';
}

TEST(FillSource, DistinctStatementKeepsItsFormat) {
  EXPECT_EQ(DistinctSql("1 AS ID", "adr_Miejscowosc", "adr__Ewid", ""),
            "SELECT DISTINCT 1 AS ID, adr_Miejscowosc AS TEXT_FIELD FROM adr__Ewid   ORDER BY TEXT_FIELD");
  EXPECT_EQ(DistinctSql("adr_IdPanstwo", "adr_Miejscowosc", "adr__Ewid", "adr_TypAdresu = 1"),
            "SELECT DISTINCT adr_IdPanstwo, adr_Miejscowosc AS TEXT_FIELD FROM adr__Ewid WHERE adr_TypAdresu = 1 ORDER "
            "BY TEXT_FIELD");
}

TEST(FillEntries, ExclusionsNullsAndCounts) {
  const LBEntry entries[] = {{10, "dziesięć"}, {-1, "minus"}, {20, nullptr}, {10, "znowu dziesięć"}};
  const std::int32_t skip10[] = {10};
  const std::int32_t skipAll[] = {10, -1, 20};
  struct Case {
    const char* what;
    const LBEntry* entries;
    int count;
    const std::int32_t* excluded;
    int excludedCount;
    Items expected;
  } cases[] = {
      {"all, in order", entries, 4, nullptr, 0, {{"dziesięć", 10}, {"minus", -1}, {"", 20}, {"znowu dziesięć", 10}}},
      {"a value excluded wherever it stands", entries, 4, skip10, 1, {{"minus", -1}, {"", 20}}},
      {"every value excluded", entries, 4, skipAll, 3, {}},
      {"exclusion count 0 ignores the list", entries, 2, skip10, 0, {{"dziesięć", 10}, {"minus", -1}}},
      {"count limits the array", entries, 1, nullptr, 0, {{"dziesięć", 10}}},
      {"count 0", entries, 0, nullptr, 0, {}},
      {"negative count", entries, -3, nullptr, 0, {}},
      {"no array", nullptr, 4, nullptr, 0, {}},
  };
  for (const auto& c : cases) EXPECT_EQ(SelectEntries(c.entries, c.count, c.excluded, c.excludedCount), c.expected) << c.what;
}

TEST(FillEntries, LinesAndTextsNumberTheirItems) {
  EXPECT_EQ(ItemsFromLines("tak\r\nnie\nbrak\n"), (Items{{"tak", 0}, {"nie", 1}, {"brak", 2}}));
  EXPECT_EQ(ItemsFromLines("\n\njeden"), (Items{{"", 0}, {"", 1}, {"jeden", 2}}));
  EXPECT_EQ(ItemsFromLines(""), Items{});
  const std::vector<std::string> texts{"a", "", "c"};
  EXPECT_EQ(ItemsFromTexts(texts), (Items{{"a", 0}, {"", 1}, {"c", 2}}));
}

db::Recordset Rows() {
  using db::FieldType;
  return db::Recordset({"ID", "Imie", "Nazwisko", "Kod"},
                       {FieldType::Integer, FieldType::Text, FieldType::Text, FieldType::Text},
                       std::vector<Variant>{std::int32_t{7}, "Jan", "Nowak", "7", Variant::MakeNull(), "Ewa",
                                            Variant::MakeNull(), "x", std::int64_t{2147483647}, "", "Ząb", "9"});
}

TEST(FillRows, TemplateOverFieldsAndIdentifierAsData) {
  db::Recordset rs = Rows();
  rs.MoveNext();  // reading starts from the first row wherever the recordset stands
  EXPECT_EQ(ReadItems(rs, {"%2!ls! %1!ls!", {"imie", "NAZWISKO"}, "id"}),
            (Items{{"Nowak Jan", 7}, {" Ewa", 0}, {"Ząb ", 2147483647}}));
}

TEST(FillRows, BrokenDefinitionsRaiseInsteadOfHalfFilling) {
  struct Case {
    RowFormat format;
    Status32 code;
  } cases[] = {
      {{"%1!ls!", {"nie_ma"}, "ID"}, kPointer},
      {{"%1!ls!", {"Imie"}, "nie_ma"}, kPointer},
      {{"%1!ls! %2!ls!", {"Imie"}, "ID"}, kTypeMismatch},  // a field missing from the template's arguments
      {{"%1!ls!", {"Imie"}, "Kod"}, kTypeMismatch},       // "x" is no identifier
  };
  for (const auto& c : cases) {
    db::Recordset rs = Rows();
    try {
      ReadItems(rs, c.format);
      ADD_FAILURE() << c.format.tmpl << " read";
    } catch (const ComError& e) {
      EXPECT_EQ(e.Code(), c.code) << e.Message();
    }
  }
}

TEST(FixedLists, TextsCodesAndTheDayOfTheMonth) {
  struct Case {
    const char* name;
    int day;
    Items expected;
  } cases[] = {
      {"CzestotliwoscOdpisuAM", 1,
       {{"jednorazowy", 0}, {"miesięczny", 1}, {"kwartalny", 2}, {"roczny", 3}, {"sezonowa", 4}, {"inna", 5}}},
      {"DataDomyslna", 15, {{"bieżący dzień", 0}, {"15. dzień miesiąca", 1}, {"ostatni dzień miesiąca", 2}}},
      {"DataDomyslna", 40, {{"bieżący dzień", 0}, {"1. dzień miesiąca", 1}, {"ostatni dzień miesiąca", 2}}},
      {"FVDateType", 1, {{"bieżący dzień", 0}, {"data sprzedaży", 1}, {"ostatni dzień z miesiąca sprzedaży", 2}}},
      {"DokumentVatRodzaje", 1, {{"sprzedaż", 0}, {"zakup", 1}}},
  };
  for (const auto& c : cases) {
    const FixedList* list = FindFixedList(c.name);
    ASSERT_NE(list, nullptr) << c.name;
    EXPECT_EQ(FixedListItems(*list, c.day), c.expected) << c.name;
  }
  EXPECT_EQ(FindFixedList("NieMa"), nullptr);
}

TEST(FixedLists, DaysWeekdaysAndMonths) {
  const Items days = DaysOfMonth(), week = DaysOfWeek(), months = Months();
  ASSERT_EQ(days.size(), 31u);
  ASSERT_EQ(week.size(), 7u);
  ASSERT_EQ(months.size(), 12u);
  for (std::size_t i = 0; i < days.size(); ++i) EXPECT_EQ(days[i], (Item{std::to_string(i + 1), static_cast<int>(i + 1)}));
  EXPECT_EQ(week.front(), (Item{"poniedziałek", 1}));
  EXPECT_EQ(week[2], (Item{"środa", 3}));
  EXPECT_EQ(week.back(), (Item{"niedziela", 7}));
  EXPECT_EQ(months.front(), (Item{"styczeń", 1}));
  EXPECT_EQ(months[8], (Item{"wrzesień", 9}));
  EXPECT_EQ(months.back(), (Item{"grudzień", 12}));
}

TEST(DictionaryTable, NamesUniqueSourcesUsableTemplatesMatchFields) {
  std::set<std::string> names;
  for (const Dictionary& d : Dictionaries()) {
    SCOPED_TRACE(d.name);
    EXPECT_TRUE(names.insert(d.name).second);
    EXPECT_EQ(FindDictionary(d.name), &d);
    const int fields = d.textFields[1] ? 2 : 1;
    EXPECT_EQ(MessageTemplateArgCount(d.tmpl), fields);
    EXPECT_NE(d.idField, nullptr);
  }
  EXPECT_EQ(FindDictionary("crmbranza"), nullptr);  // names are exact
  // The numbers of a typed dictionary go into its slots in order; missing ones read as 0.
  const Dictionary* typed = FindDictionary("DokumentyDefiniowalneDlaTypu");
  ASSERT_NE(typed, nullptr);
  const long both[] = {2, -1};
  EXPECT_EQ(DictionarySql(*typed, both),
            "select * from dok_DokumentDefiniowalny where dd_DokTyp = 2 and dd_DokPodtyp = -1");
  const long one[] = {5};
  EXPECT_EQ(DictionarySql(*typed, one), "select * from dok_DokumentDefiniowalny where dd_DokTyp = 5 and dd_DokPodtyp = 0");
  EXPECT_EQ(DictionarySql(*FindDictionary("AtrybutyDnia")), "SELECT * FROM sl_GratAtrybutGodzinDni ");
  EXPECT_EQ(DictionarySql(*FindDictionary("CrmBranza")), "SELECT * FROM sl_Branza");
}

TEST(BusinessRules, ZusCodesAndRegistrationNumbers) {
  struct Code {
    long number;
    const char* text;
  } codes[] = {{110, "0110"}, {411, "0411"}, {12345, "12345"}, {0, ""}, {-110, ""}};
  for (const auto& c : codes) EXPECT_EQ(ZusCodeText(c.number), c.text) << c.number;

  const Items items{{"01100 inny", 1}, {"0110 Umowa o pracę", 2}, {"0411", 3}, {"0411 zlecenie", 4}};
  struct Find {
    const char* code;
    int at;
  } finds[] = {{"0110", 1}, {"0411", 2}, {"011", -1}, {"01100", 0}, {"", -1}, {"9999", -1}};
  for (const auto& f : finds) EXPECT_EQ(FindCodeItem(items, f.code), f.at) << f.code;

  struct Reg {
    const char* given;
    const char* shown;
  } regs[] = {{" kr 12345 ", "KR 12345"}, {"wa9z9z", "WA9Z9Z"}, {"łódź-ąęść", "ŁÓDŹ-ĄĘŚĆ"}, {"   ", ""}, {"", ""}};
  for (const auto& r : regs) EXPECT_EQ(RegistrationNumberText(r.given), r.shown) << r.given;
}

}  // namespace
}  // namespace varion::fill
