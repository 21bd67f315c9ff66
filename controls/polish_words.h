// Polish grammar and names: the noun form after a number, month and quarter names.
#pragma once

#include <string>

#include "base/export.h"

// A caller's own noun in its three forms: for 1, for 2..4 (22, 103, ...), for the rest.
struct ODMIANA_SLOWA {
  const char* forma1;
  const char* forma2;
  const char* forma5;
};
struct ODMIANA_SLOWA_W {
  const wchar_t* forma1;
  const wchar_t* forma2;
  const wchar_t* forma5;
};

// The form of built-in word `word` (0 "dzień" .. 11 "zawieszone") after `number`: the first for
// 1 and -1, the second for 2..4 and for numbers ending in 2..4 but not in 12..14, the third for
// the rest (0 included). An unknown word gives "błąd".
VARION_API std::string OdmianaSlowa(int word, long long number);
VARION_API std::wstring OdmianaSlowaW(int word, long long number);
// The same rule on the caller's record; a null form reads as an empty text.
VARION_API std::string OdmianaSlowa(const ODMIANA_SLOWA& word, long long number);
VARION_API std::wstring OdmianaSlowaW(const ODMIANA_SLOWA_W& word, long long number);

// "Styczeń" .. "Grudzień" and "Sty" .. "Gru" for 1..12, "" otherwise. Every language reads Polish.
VARION_API std::string NazwaMiesiaca(int month, int language = 21);
VARION_API std::string NazwaMiesiacaKrotka(int month, int language = 21);
// "I kwartał" .. "IV kwartał" for 1..4, "" otherwise.
VARION_API std::string NazwaKwartalu(int quarter);

namespace varion {

// The month tables themselves, by month 1..12; nullptr outside.
VARION_API const char* PolishMonthName(int month);       // "Styczeń"
VARION_API const char* PolishMonthShortName(int month);  // "Sty"
VARION_API const char* PolishMonthLower(int month);      // "styczeń"
VARION_API const char* PolishMonthGenitive(int month);   // "stycznia"

}  // namespace varion
