// The amount written in words for payment documents: Polish (language 21), English (any other
// language) and German (language 7, through InWorten, for the overloads on a value).
#pragma once

#include <string>

#include "base/amount.h"
#include "base/export.h"

constexpr int kJezykPolski = 21;
constexpr int kJezykNiemiecki = 7;

// Text overloads: digits with the locale's numeric decimal character (or "." where that has two
// or more characters); at most two penny digits and the last fifteen integer digits count. Any
// other character of the integer part is skipped, so a leading "-" reads as the absolute value,
// as the overloads on a value write it. A null or empty text, "0" and "-0" read "zero PLN 0/100";
// "E" comes back unchanged. Output: words, two spaces, currency, then the pennies as "%2d/100".
VARION_API std::string KwotaSlownie(const char* text, int language = kJezykPolski);  // currency "PLN"
VARION_API std::string KwotaSlownie(const char* text, const char* currency, int language = kJezykPolski);
VARION_API std::string KwotaSlownie(const std::string& text, int language = kJezykPolski);
VARION_API std::string KwotaSlownie(const std::string& text, const char* currency, int language = kJezykPolski);
// Value overloads: the absolute value; null or invalid gives "".
VARION_API std::string KwotaSlownie(varion::Amount value, int language = kJezykPolski);  // currency "PLN"
VARION_API std::string KwotaSlownie(varion::Amount value, const char* currency, int language = kJezykPolski);

// German: the number as one word up to the thousands ("zweitausenddreihundertvierunddreißig"),
// million-sized groups apart ("eine million", "zwei millionen"), then the currency and the
// pennies as "%02d/100": "einhundert EUR 05/100". The absolute value; null or invalid gives "".
VARION_API std::string InWorten(varion::Amount value, const char* currency);
