// Checks and cleaners of the identifiers business forms hold: NIP, PESEL, REGON, EORI, e-mail,
// internal identifier, CN goods code and postal code. Single-byte texts in, yes or no out; they
// never show anything and never throw. A null pointer is an empty text.
#pragma once

#include <optional>
#include <string>

#include "base/export.h"

// 1 when the eleven characters are a PESEL with a correct check digit, else 0.
VARION_API int PoprawnyPESEL(const char* text);
// 1 for a nine-character REGON with a correct check digit, else 0. The fourteen-digit form of a
// local unit is refused on purpose: forms ask for the nine-digit number of the entity.
VARION_API int PoprawnyREGON(const char* text);
// 1 when the text (after an optional "PL" prefix) is ten digits or one of the two hyphenated
// forms, and, when checkSum is set, its check digit is correct. The checksum needs exactly ten
// characters, so a hyphenated number passes only without checkSum (kept: callers rely on it).
VARION_API int PoprawnyNIP(const char* text, bool checkSum);
// The NIP check digit alone on exactly ten characters; a weighted sum leaving 10 never passes.
VARION_API bool NipChecksumOk(const char* text);

VARION_API bool PoprawnyNrEORI(const char* text);  // whole text: "PL", 14 digits, a digit or Z
VARION_API bool PoprawnyEmail(const char* text);   // something, "@", something, ".", something
VARION_API bool PoprawnyIdWew(const char* text);   // whole text, e.g. 1010000001-00001
VARION_API bool PoprawnyKodCN(const char* text);   // "8471", "8471 30", "8471 30 00"

// Postal code "dd-ddd". Flags: kKodPocztowyPusty also accepts an empty text (an optional field),
// kKodPocztowyBezKreski also accepts the five digits written without the hyphen. 1 or 0.
constexpr int kKodPocztowyPusty = 1;
constexpr int kKodPocztowyBezKreski = 2;
VARION_API int PoprawnyKodPocztowy(const char* text, int flags);

// Every character is an ASCII digit (an empty text has no other character, so it passes).
VARION_API bool ContainsOnlyDigits(const char* text);
VARION_API void UsunZnakiPozaCyframi(std::string& text);
// Keeps ASCII letters and digits and the letters of code page 1250 (Polish and other Latin ones).
VARION_API void UsunZnakiPozaAlfanumerycznymi(std::string& text);

// Finds a CN code (four, six or eight digits, with anything but letters between them) and
// writes it as "dddd", "dddd dd" or "dddd dd dd". Without a code in it the text becomes empty.
VARION_API void FormatujKodCN(std::string& text);
// The same, but a text without a code is left as it was typed, so a field is never emptied.
VARION_API void FormatujNiepustyKodCN(std::string& text);

// A tax number cut into its country prefix, the separator after it and the number.
struct VARION_API NipDivided {
  std::string prefiks;
  std::string separator;
  std::string numer;

  // Any prefix other than "PL" (in either case) is foreign; no prefix is Polish.
  bool CzyPrefiksZagraniczny() const;
  // The number without hyphens and underscores.
  std::string PodajNumerBezZnakowSpecjalnych() const;
  // The same behind the prefix in upper case: "de 123-456" gives "DE123456".
  std::string PodajNumerZPrefiksemBezZnakowSpecjalnych() const;
};

// Letters, then blanks and hyphens, then at most four runs of word characters joined by single
// hyphens; nothing when the text has another shape.
VARION_API std::optional<NipDivided> ParsujNip(const char* text);
