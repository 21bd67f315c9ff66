#include "controls/calendar_tools.h"

#include <cstring>
#include <string_view>

#include "base/text.h"
#include "controls/holidays.h"
#include "controls/polish_words.h"

namespace CalendarTools {

int GetWeekOfYear(const COleDateTime& date) {
  varion::DateParts p;
  if (!date.GetParts(p)) return 0;
  // Julian day number of the civil date.
  long long a = (14 - p.month) / 12;
  long long y = p.year + 4800 - a;
  long long m = p.month + 12 * a - 3;
  long long jd = p.day + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
  // Day of the ISO week-numbering year, counted from the Monday on or before the date.
  long long d4 = (jd + 31741 - jd % 7) % 146097 % 36524 % 1461;
  long long l = d4 / 1460;
  long long d1 = (d4 - l) % 365 + l;
  return static_cast<int>(d1 / 7 + 1);
}

int WeekdayFromDayNumber(int dayNumber) {
  switch (dayNumber) {
    case 1: return 64;  // Sunday
    case 3: return 2;
    case 4: return 4;
    case 5: return 8;
    case 6: return 16;
    case 7: return 32;
    default: return 1;  // Monday, and every number that is no day
  }
}

std::wstring GetMonthDescr(int month, bool genitive) {
  const char* name = genitive ? varion::PolishMonthGenitive(month) : varion::PolishMonthLower(month);
  return name ? varion::text::Cp1250ToWide(name) : std::wstring();
}

std::string GetHolidayName(const COleDateTime& date) { return CVelHolidayInfo::GetHolidayName(date); }

bool IsHoliday(const COleDateTime& date) { return CVelHolidayInfo::IsHoliday(date); }

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

void SkipBlanks(std::string_view& s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
}

// A decimal 0..255 at the front of s, blanks before it allowed.
bool TakeByte(std::string_view& s, unsigned& out) {
  SkipBlanks(s);
  unsigned v = 0;
  size_t n = 0;
  while (n < s.size() && n < 4 && s[n] >= '0' && s[n] <= '9') v = v * 10 + static_cast<unsigned>(s[n++] - '0');
  if (n == 0 || n == 4 || v > 255) return false;
  s.remove_prefix(n);
  out = v;
  return true;
}

bool Take(std::string_view& s, char c) {
  SkipBlanks(s);
  if (s.empty() || s.front() != c) return false;
  s.remove_prefix(1);
  return true;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::uint32_t ParseColor(const char* text) {
  if (!text) return kInvalidColor;
  std::string_view s(text);
  SkipBlanks(s);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  if (s.size() == 7 && s[0] == '#') {
    std::uint32_t rgb = 0;
    for (size_t i = 1; i < 7; ++i) {
      int h = HexDigit(s[i]);
      if (h < 0) return kInvalidColor;
      rgb = rgb << 4 | static_cast<std::uint32_t>(h);
    }
    // RRGGBB to the 0x00BBGGRR layout.
    return (rgb >> 16 & 0xFF) | (rgb & 0xFF00) | (rgb & 0xFF) << 16;
  }
  bool call = s.size() >= 3 && (s.substr(0, 3) == "RGB" || s.substr(0, 3) == "rgb");
  if (call) {
    s.remove_prefix(3);
    if (!Take(s, '(')) return kInvalidColor;
  }
  unsigned r, g, b;
  if (!TakeByte(s, r) || !Take(s, ',') || !TakeByte(s, g) || !Take(s, ',') || !TakeByte(s, b)) return kInvalidColor;
  if (call && !Take(s, ')')) return kInvalidColor;
  SkipBlanks(s);
  if (!s.empty()) return kInvalidColor;
  return r | g << 8 | b << 16;
}

int BreakString(const char* text, int width, std::vector<std::string>& parts) {
  parts.clear();
  std::string_view s = text ? std::string_view(text) : std::string_view();
  if (width < 1) {
    if (!s.empty()) parts.emplace_back(s);
    return static_cast<int>(parts.size());
  }
  const size_t w = static_cast<size_t>(width);
  SkipBlanks(s);
  while (!s.empty()) {
    size_t cut;
    if (s.size() <= w) {
      cut = s.size();
    } else {
      // The last blank within the line (or right after it); none: cut the word.
      size_t blank = s.substr(0, w + 1).find_last_of(" \t");
      cut = blank == std::string_view::npos || blank == 0 ? w : blank;
    }
    std::string_view line = s.substr(0, cut);
    while (!line.empty() && IsBlank(line.back())) line.remove_suffix(1);
    parts.emplace_back(line);
    s.remove_prefix(cut);
    SkipBlanks(s);
  }
  return static_cast<int>(parts.size());
}

}  // namespace CalendarTools
