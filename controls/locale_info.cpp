#include "controls/locale_info.h"

#include <algorithm>

namespace varion {
namespace {

// The source a host or test pinned; empty means the user's own.
LocaleSource& CurrentSource() {
  static LocaleSource source;
  return source;
}

// Where the user's own values come from, installed by the platform; empty means the defaults.
LocaleSource& UserSource() {
  static LocaleSource source;
  return source;
}

// Values are read into buffers with room for 10 characters (the short date format 255); the
// no-break space of the Polish locale becomes an ordinary space.
std::string Clean(std::string value, size_t room = 10) {
  if (value.size() > room - 1) value.resize(room - 1);
  std::replace(value.begin(), value.end(), '\xA0', ' ');
  return value;
}

}  // namespace

LocaleValues UserLocaleValues() {
  const LocaleSource& source = UserSource();
  return source ? source() : LocaleValues{};
}

void SetUserLocaleSource(LocaleSource source) {
  UserSource() = std::move(source);
  CLocaleInfo::GetTheLocaleInfo().UpdateLocaleInfo();
}

void SetLocaleSource(LocaleSource source) {
  CurrentSource() = std::move(source);
  CLocaleInfo::GetTheLocaleInfo().UpdateLocaleInfo();
}

}  // namespace varion

using varion::Amount;

CLocaleInfo::CLocaleInfo(const varion::LocaleValues& values) { Apply(values); }

CLocaleInfo& CLocaleInfo::GetTheLocaleInfo() {
  static CLocaleInfo info(varion::UserLocaleValues());
  return info;
}

void CLocaleInfo::UpdateLocaleInfo() {
  const varion::LocaleSource& source = varion::CurrentSource();
  Apply(source ? source() : varion::UserLocaleValues());
}

void CLocaleInfo::Apply(const varion::LocaleValues& v) {
  m_symNeg = varion::Clean(v.negativeSign);
  m_symTho = varion::Clean(v.monThousands);
  m_symDec = varion::Clean(v.monDecimal);
  m_symNumSep = varion::Clean(v.numDecimal);
  m_symThoGroup = varion::Clean(v.monGrouping);
  m_shortDate = varion::Clean(v.shortDate, 256);
  m_charDec = m_symDec.size() == 1 ? m_symDec[0] : ',';
}

std::string CLocaleInfo::CurrencyToText(Amount value, bool useLocaleSeparator, bool forceMinus) const {
  if (!value.IsValid()) return {};
  std::int64_t raw = value.Raw();
  // The magnitude as unsigned, so that the most negative amount has one too.
  unsigned long long mag = raw < 0 ? 0ull - static_cast<unsigned long long>(raw) : static_cast<unsigned long long>(raw);
  char digits[24];
  int n = 0;
  do {
    digits[n++] = static_cast<char>('0' + mag % 10);
    mag /= 10;
  } while (mag != 0);
  while (n < 5) digits[n++] = '0';  // four fraction digits and at least one integer digit

  std::string out;
  out.reserve(static_cast<size_t>(n) + 8);
  if (forceMinus || raw < 0) out += m_chMinus;
  for (int i = n - 1; i >= 4; --i) out += digits[i];
  if (useLocaleSeparator)
    out += m_symDec;
  else
    out += m_chDot;
  for (int i = 3; i >= 0; --i) out += digits[i];
  return out;
}

std::string CLocaleInfo::TextToDispText(const char* text, char decimalChar) const {
  if (!text) return {};
  return DispText(text, decimalChar, m_symThoGroup.empty() || m_symThoGroup[0] != '0');
}

std::string CLocaleInfo::DispText(std::string_view s, char decimalChar, bool grouping) const {
  size_t split = s.rfind(decimalChar);
  std::string_view whole = split == std::string_view::npos ? s : s.substr(0, split);

  // Kept characters of the integer part: its digits, and the first character of the text.
  std::string kept;
  kept.reserve(whole.size());
  size_t digitCount = 0;
  for (size_t i = 0; i < whole.size(); ++i) {
    bool digit = whole[i] >= '0' && whole[i] <= '9';
    if (digit || i == 0) kept += whole[i];
    if (digit) ++digitCount;
  }

  std::string out;
  out.reserve(kept.size() + kept.size() / 3 * m_symTho.size() + s.size() - whole.size() + m_symDec.size());
  size_t digitsAfter = digitCount;  // digits from the current character to the end
  for (char c : kept) {
    bool digit = c >= '0' && c <= '9';
    if (digit) {
      if (grouping && digitsAfter != digitCount && digitsAfter % 3 == 0) out += m_symTho;
      --digitsAfter;
    }
    out += c;
  }
  if (split != std::string_view::npos) {
    out += m_symDec;
    out.append(s.substr(split + 1));
  }
  return out;
}

std::string CLocaleInfo::CurrencyToDispText(Amount value, int decimals, const char* symbol, unsigned flags) const {
  if (!value.IsValid()) return {};
  decimals = std::clamp(decimals, 0, 4);
  std::string plain = CurrencyToText(value, false, false);
  size_t point = plain.size() - 5;
  plain.resize(decimals == 0 ? point : point + 1 + static_cast<size_t>(decimals));

  bool allZero = plain.find_first_of("123456789") == std::string::npos;
  if (allZero) {
    if (flags & kDispBlankZero) return {};
    if (plain[0] == m_chMinus) plain.erase(0, 1);
  }
  bool grouping = !(flags & kDispNoGrouping) && (m_symThoGroup.empty() || m_symThoGroup[0] != '0');
  plain = DispText(plain, m_chDot, grouping);
  if (symbol && *symbol) {
    plain += ' ';
    plain += symbol;
  }
  return plain;
}

std::string CLocaleInfo::CurrencyToTextCalc(const varion::TextWidth& measure, int width, Amount value, int decimals,
                                            unsigned flags) const {
  if (!value.IsValid()) return {};
  decimals = std::clamp(decimals, 0, 4);
  auto fits = [&](const std::string& t) { return !measure || measure(t) <= width; };

  std::string text = CurrencyToDispText(value, decimals, nullptr, flags);
  if (fits(text)) return text;
  flags |= kDispNoGrouping;
  for (int d = decimals; d >= 0; --d) {
    text = CurrencyToDispText(d == decimals ? value : varion::VelRound64C(value, d), d, nullptr, flags);
    if (fits(text)) return text;
  }
  std::string hashes = "#";
  while (hashes.size() < 64 && fits(hashes + '#')) hashes += '#';
  return hashes;
}
