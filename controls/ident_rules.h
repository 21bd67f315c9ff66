// The rule sets of the identifier edits ("vel_nipedit", "vel_rbedit", "vel_mailedit" and the
// rest): which characters a field takes while the user types (pasted text goes through the same
// filter), how its text is tidied when the field is left, and the check that decides whether the
// field marks itself faulty. An empty field is never faulty here: whether a value is required is
// the dialog's rule, not the field's.
//
// What the kinds whose names leave room for a choice hold:
//   "vel_adresedit"   one line of a postal address ("ul. Długa 5/7"): letters, digits, blanks and
//                     the punctuation of addresses; it needs a letter and a number to pass.
//   "vel_paramedit"   the value of a report parameter as text: any printable text, kept as typed
//                     and never marked here (the parameter's own type checks it when the report
//                     takes it), so forms also use it for names and notes.
//   "vel_timeeditex"  a time of day, "HH:MM" (or "HH:MM:SS" with IdentOptions::seconds), stepped
//                     field by field with the arrow keys.
//   "vel_numeredit"   an integer, or a decimal number with the locale's separator, within optional
//                     limits.
//   "vel_folderedit", "vel_fileedit"  a Windows path, checked for its form only (a file may be
//                     about to be made; a folder may be on a machine that is not connected).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/export.h"

namespace varion {

enum class IdentKind {
  Nip,           // Polish tax number: digits, hyphens, blanks; the checksum on its ten digits
  NipEx,         // the same or a foreign one behind a country prefix (no Polish checksum then)
  Pesel,
  Regon,         // the nine-digit form
  IdWewnetrzny,  // the internal identifier, "1010000001-00001"
  Rachunek,      // Polish bank account: 26 digits or "PL" and 26, IBAN check
  Email,
  Www,
  Gg,            // an instant-messenger number: digits
  Skype,         // a user name of the characters such names allow
  Number,
  Time,
  Folder,
  File,
  Adres,
  Param,
};

// Settings of the kinds that have some; the others ignore them.
struct IdentOptions {
  char decimal = ',';              // Number: the locale's decimal separator
  int decimals = 0;                // Number: digits allowed after the separator (0: integers)
  std::optional<double> min, max;  // Number: limits, both inclusive
  bool seconds = false;            // Time: "HH:MM:SS" instead of "HH:MM"
};

// The window class of a kind and the kind of a class name (without regard to case).
VARION_API const char* IdentClassName(IdentKind kind);
VARION_API std::optional<IdentKind> IdentKindOfClass(std::string_view className);

// The longest text the field takes from typing or pasting.
VARION_API std::size_t IdentMaxLength(IdentKind kind, const IdentOptions& options = {});
// Whether a typed printable character goes in (control characters are the edit's own keys).
VARION_API bool IdentAcceptsChar(IdentKind kind, char c, const IdentOptions& options = {});
// Pasted text: line breaks and tabs become nothing, every character the field refuses is left
// out, and what remains is cut to `room` characters.
VARION_API std::string IdentFilter(IdentKind kind, std::string_view text, std::size_t room,
                                   const IdentOptions& options = {});
// The text as the field shows it once left: blanks trimmed, separators and case made uniform,
// account numbers in groups of four, times with two digits a field. Text that does not have the
// kind's shape is only trimmed, so that the user sees what he typed next to the fault mark.
VARION_API std::string IdentNormalise(IdentKind kind, std::string_view text, const IdentOptions& options = {});
// Whether a (normalised) text is a correct value of the kind; an empty text passes.
VARION_API bool IdentCheck(IdentKind kind, std::string_view text, const IdentOptions& options = {});

// A Polish account number in electronic or print form (blanks between groups), with or without
// "PL", checked by the IBAN rule: check digits 02 to 98 and the rearranged number modulo 97
// equal to 1. 1 valid, 0 not.
VARION_API int PoprawnyNrRachunku(const char* text);

// What a Ctrl+click on a mail or web field may open: "mailto:" and a checked address, or an
// "http:"/"https:" address ("http://" put in front of an address without a scheme). Nothing for
// any other kind, any other scheme, or text that fails the field's check.
VARION_API std::optional<std::string> IdentAddressToOpen(IdentKind kind, std::string_view text);

// The time field's arrow keys: the field (hours, minutes, seconds) under the caret moves one step
// in `direction` (+1 or -1), wrapping within the field. A text that is no time starts from
// midnight. The caret stays where it was.
VARION_API std::string StepTimeField(std::string_view text, std::size_t caret, int direction,
                                     const IdentOptions& options = {});

}  // namespace varion
