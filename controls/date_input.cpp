#include "controls/date_input.h"

namespace varion {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSeparator(char c) { return c == '.' || c == '-' || c == '/' || c == ' '; }

struct Number {
  int value = 0;
  size_t digits = 0;
};

// Splits "31.12.2024" into its numbers; false when anything but single separators stands
// between them or there are more than three.
bool SplitNumbers(std::string_view s, Number (&out)[3], size_t& count) {
  count = 0;
  size_t i = 0;
  while (i < s.size()) {
    if (count == 3 || !IsDigit(s[i])) return false;
    Number n;
    for (; i < s.size() && IsDigit(s[i]); ++i) {
      if (++n.digits > 4) return false;
      n.value = n.value * 10 + (s[i] - '0');
    }
    out[count++] = n;
    if (i == s.size()) break;
    if (!IsSeparator(s[i]) || i + 1 == s.size()) return false;
    ++i;
  }
  return count > 0;
}

}  // namespace

DateTime ParseDateInput(std::string_view text, std::string_view fieldOrder) {
  size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return DateTime::Null();
  text = text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);

  DateTime iso = DateTime::ParseIso(text);
  if (iso.IsValid()) return iso.DateOnly();

  Number numbers[3];
  size_t count = 0;
  if (!SplitNumbers(text, numbers, count)) return DateTime::Invalid();
  int year = 0, month = 1, day = 1;
  const size_t yearAt = fieldOrder.find('r');
  if (yearAt == std::string_view::npos) return DateTime::Invalid();
  if (count == 3 && (fieldOrder.size() != 3 || numbers[yearAt].digits != 4)) {
    // The four digits of the year tell the order where the field's own order does not fit.
    if (numbers[0].digits == 4) fieldOrder = "rmd";
    if (numbers[2].digits == 4) fieldOrder = "dmr";
  }
  if (count != fieldOrder.size()) return DateTime::Invalid();
  for (size_t i = 0; i < count; ++i) {
    const Number& n = numbers[i];
    switch (fieldOrder[i]) {
      case 'r':
        if (n.digits != 4) return DateTime::Invalid();
        year = n.value;
        break;
      case 'm':
        if (n.digits > 2) return DateTime::Invalid();
        month = n.value;
        break;
      case 'd':
        if (n.digits > 2) return DateTime::Invalid();
        day = n.value;
        break;
      default: return DateTime::Invalid();
    }
  }
  return DateTime(year, month, day);
}

}  // namespace varion
