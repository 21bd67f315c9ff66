// The dictionaries behind the named fillers (CB_Fill<Name>, LB_Fill<Name>) and the filter
// initialisers (DLX_Init<Name>Filter), and the fixed lists: one table row each, walked by one
// loader, so that the combo form, the list form and the tests read the same definition.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/export.h"
#include "db/connection.h"
#include "framework/fill_items.h"

namespace varion::fill {

struct ExtraItem {
  const char* text;
  std::int32_t data;
};

struct Dictionary {
  const char* name;           // the filler's name without its CB_Fill / LB_Fill / DLX_Init prefix
  const char* source;         // table or query (SourceSql decides); "%ld" slots take the filler's numbers
  const char* tmpl;           // message-style template over the text fields
  const char* textFields[2];  // the second may be null
  const char* idField;
  ExtraItem extras[2];        // put before the rows, in this order; a null text ends the list
};

// The named fillers' dictionaries ("CrmBranza", "Division"...) and the filter dictionaries
// ("KasaFilter", "PanstwoFilter"...). nullptr for an unknown name (names compare exactly).
VARION_API std::span<const Dictionary> Dictionaries();
VARION_API const Dictionary* FindDictionary(std::string_view name);

// The statement of a dictionary, its "%ld" slots filled with the numbers in order (a missing
// number reads as 0). Numbers only: no text ever reaches these statements.
VARION_API std::string DictionarySql(const Dictionary& d, std::span<const long> numbers = {});

// Which extra items to put before the rows: bit 0 the first, bit 1 the second.
inline constexpr unsigned kAllExtras = 3;
inline constexpr unsigned kNoExtras = 0;

// The dictionary's items: the extra items the mask asks for and then its rows. Raises ComError
// when the query fails; nothing is returned half-read.
VARION_API Items LoadDictionary(const db::Connection& connection, const Dictionary& d, unsigned extras = kAllExtras,
                                std::span<const long> numbers = {}, Formatter formatter = FormatMessageTemplate);

// Fixed lists ------------------------------------------------------------------------------------

struct FixedList {
  const char* name;  // "CzestotliwoscOdpisuAM", "DataDomyslna"...
  std::span<const LBEntry> entries;
};
VARION_API std::span<const FixedList> FixedLists();
VARION_API const FixedList* FindFixedList(std::string_view name);

// "CzestotliwoscOdpisuAM" and the others as items; "DataDomyslna" writes the day into its
// "%d. dzień miesiąca" entry (days outside 1..31 read as 1).
VARION_API Items FixedListItems(const FixedList& list, int day = 1);

// The day and month lists: days 1..31 as "1".."31", weekdays "poniedziałek".."niedziela" as
// 1..7 (Monday first, as the Polish week runs), months "styczeń".."grudzień" as 1..12.
VARION_API Items DaysOfMonth();
VARION_API Items DaysOfWeek();
VARION_API Items Months();

}  // namespace varion::fill
