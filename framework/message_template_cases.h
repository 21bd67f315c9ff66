// The template table both formatters are held to: the native test runs the portable formatter
// over it, the Windows test runs FormatMessageW and the portable formatter side by side.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace varion::testing {

struct MessageTemplateCase {
  const char* tmpl;
  std::vector<std::string> args;
  std::optional<std::string> expected;  // nullopt: the template is refused
};

inline const std::vector<MessageTemplateCase>& MessageTemplateCases() {
  static const std::vector<MessageTemplateCase> cases = {
      // The fillers' four templates.
      {"%1!ls!", {"Centrala"}, "Centrala"},
      {"%1!ls! %2!ls!", {"Jan", "Kowalski"}, "Jan Kowalski"},
      {"%1!ls! (%2!ls!)", {"Kasa 1", "KOMP-01"}, "Kasa 1 (KOMP-01)"},
      {"%1!ls!, %2!ls! %%", {"Nadgodziny", "1.5"}, "Nadgodziny, 1.5 %"},
      // Code page 1250 letters survive the trip through the wide formatter.
      {"%1!ls! %2!ls!", {"Łucja", "Żółć-Ąęśń"}, "Łucja Żółć-Ąęśń"},
      // Empty fields leave their separators; an argument's own '%' is not read again.
      {"%1!ls! (%2!ls!)", {"", ""}, " ()"},
      {"%1!ls!", {"100%1%%"}, "100%1%%"},
      // Order, repetition and unused arguments.
      {"%2!ls!, %1!ls! %2!ls!", {"a", "b", "c"}, "b, a b"},
      {"bez wstawek", {"x"}, "bez wstawek"},
      {"%1", {"domyślny"}, "domyślny"},
      {"%1!s!|%1!ws!", {"s"}, "s|s"},
      // Width, left alignment, precision.
      {"[%1!6ls!]", {"ab"}, "[    ab]"},
      {"[%1!-6ls!]", {"ab"}, "[ab    ]"},
      {"[%1!.3ls!]", {"abcdef"}, "[abc]"},
      {"[%1!-5.2ls!]", {"abcdef"}, "[ab   ]"},
      // Escapes; %0 ends the text.
      {"a%nb%tc", {}, "a\r\nb\tc"},
      {"%. %! % x", {}, ". !  x"},
      {"przed%0po", {}, "przed"},
      {"%10!ls!", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "dziesiąty"}, "dziesiąty"},
      // Refused: an argument not given, a number format, malformed inserts.
      {"%1!ls! %3!ls!", {"a", "b"}, std::nullopt},
      {"%1!d!", {"7"}, std::nullopt},
      {"%1!ls", {"a"}, std::nullopt},
      {"50%", {}, std::nullopt},
      {"%q", {}, std::nullopt},
  };
  return cases;
}

}  // namespace varion::testing
