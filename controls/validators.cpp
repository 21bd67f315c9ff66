#include "controls/validators.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "controls/regex_patterns.h"

namespace {

using varion::CompilePattern;
using varion::MatchWhole;
using varion::Regex;

std::string_view View(const char* text) { return text ? std::string_view(text) : std::string_view(); }

bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

// The checksums read each character on its own: "0" or any character with a non-zero numeric
// value is a digit, which for single bytes means exactly '0'..'9'.
template <size_t N>
bool WeightedSum(std::string_view text, const std::array<int, N>& weights, int& sum) {
  sum = 0;
  for (size_t i = 0; i < N; ++i) {
    if (!IsAsciiDigit(text[i])) return false;
    sum += (text[i] - '0') * weights[i];
  }
  return true;
}

bool NipChecksum(std::string_view text) {
  static constexpr std::array<int, 9> kWeights{6, 5, 7, 2, 3, 4, 5, 6, 7};
  int sum;
  if (text.size() != 10 || !WeightedSum(text, kWeights, sum) || !IsAsciiDigit(text[9])) return false;
  return sum % 11 == text[9] - '0';
}

constexpr std::array<bool, 256> MakeAlnumTable() {
  std::array<bool, 256> t{};
  for (int c = '0'; c <= '9'; ++c) t[c] = true;
  for (int c = 'A'; c <= 'Z'; ++c) t[c] = t[c + 32] = true;
  // Letters of code page 1250 (S, T, Z with carons, Polish letters, Latin-1 style letters).
  for (int c : {0x8A, 0x8C, 0x8D, 0x8E, 0x8F, 0x9A, 0x9C, 0x9D, 0x9E, 0x9F, 0xA3, 0xA5, 0xAA, 0xAF, 0xB3, 0xB5, 0xB9,
                0xBA, 0xBC, 0xBE, 0xBF})
    t[c] = true;
  for (int c = 0xC0; c <= 0xFE; ++c) t[c] = c != 0xD7 && c != 0xF7;  // not the signs × and ÷
  return t;
}

constexpr std::array<bool, 256> kAlnum = MakeAlnumTable();

// As ECMAScript's ".", which refuses exactly the line terminators; of those only line feed and
// carriage return exist in a single-byte text (Boost's own "." would also refuse a form feed and
// the byte 0x85, which in code page 1250 is the ellipsis).
bool IsLineTerminator(char c) { return c == '\n' || c == '\r'; }

bool IsWordChar(char c) {
  return IsAsciiDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

// Rewrites the digits of a CN code found in the text; false when the text holds none. The rule of
// "\D*(\d\W*\d\W*\d\W*\d(\W*\d\W*\d){0,2}).*" matched against the whole text, written out
// so that it takes linear time and never gives up on a long text: the code starts at the first
// digit, its digits are separated only by non-word characters, it takes four digits and then up
// to two more pairs, and what follows it holds no line terminator.
bool ReformatCn(std::string& text) {
  const std::string_view s = text;
  std::size_t at = 0;
  while (at < s.size() && !IsAsciiDigit(s[at])) ++at;
  // The next digit after blanks and punctuation, or npos when a word character or the end comes first.
  auto nextDigit = [&s](std::size_t from) {
    while (from < s.size() && !IsWordChar(s[from])) ++from;
    return from < s.size() && IsAsciiDigit(s[from]) ? from : std::string_view::npos;
  };
  std::string digits;
  std::size_t end = at;
  for (int i = 0; i < 4; ++i) {
    const std::size_t d = i == 0 ? (at < s.size() ? at : std::string_view::npos) : nextDigit(end);
    if (d == std::string_view::npos) return false;
    digits += s[d];
    end = d + 1;
  }
  for (int pair = 0; pair < 2; ++pair) {
    const std::size_t first = nextDigit(end);
    const std::size_t second = first == std::string_view::npos ? first : nextDigit(first + 1);
    if (second == std::string_view::npos) break;
    digits += s[first];
    digits += s[second];
    end = second + 1;
  }
  if (std::any_of(s.begin() + static_cast<std::ptrdiff_t>(end), s.end(), IsLineTerminator)) return false;
  std::string out = digits.substr(0, 4);
  for (size_t i = 4; i < digits.size(); i += 2) {
    out += ' ';
    out.append(digits, i, 2);
  }
  text = std::move(out);
  return true;
}

// Whether a text has the shape of the tax number pattern: letters, blanks, hyphens, then word
// characters with at most three hyphens among them. The greedy split is the only one worth
// trying (a shorter prefix only moves characters into the number), so this is exact and linear.
// Texts that fail it never reach the engine, whose backtracking over the nested optional runs
// takes seconds on long texts that do not match.
bool HasNipShape(std::string_view s) {
  auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  auto blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  size_t i = 0;
  while (i < s.size() && letter(s[i])) ++i;
  while (i < s.size() && blank(s[i])) ++i;
  while (i < s.size() && s[i] == '-') ++i;
  int hyphens = 0;
  for (; i < s.size(); ++i) {
    char c = s[i];
    if (c == '-') {
      if (++hyphens > 3) return false;
    } else if (!letter(c) && !IsAsciiDigit(c) && c != '_') {
      return false;
    }
  }
  return true;
}

}  // namespace

int PoprawnyPESEL(const char* text) {
  static constexpr std::array<int, 10> kWeights{1, 3, 7, 9, 1, 3, 7, 9, 1, 3};
  std::string_view s = View(text);
  int sum;
  if (s.size() != 11 || !WeightedSum(s, kWeights, sum) || !IsAsciiDigit(s[10])) return 0;
  int r = sum % 10;
  int check = r == 0 ? 0 : 10 - r;
  return s[10] - '0' == check ? 1 : 0;
}

int PoprawnyREGON(const char* text) {
  static constexpr std::array<int, 8> kWeights{8, 9, 2, 3, 4, 5, 6, 7};
  std::string_view s = View(text);
  int sum;
  if (s.size() != 9 || !WeightedSum(s, kWeights, sum) || !IsAsciiDigit(s[8])) return 0;
  int r = sum % 11;
  if (r == 10) r = 0;
  return s[8] - '0' == r ? 1 : 0;
}

bool NipChecksumOk(const char* text) { return NipChecksum(View(text)); }

int PoprawnyNIP(const char* text, bool checkSum) {
  static const Regex kForms = CompilePattern(R"(\d{10}|\d{3}-\d{3}-\d{2}-\d{2}|\d{3}-\d{2}-\d{2}-\d{3})");
  std::string_view s = View(text);
  if (s.starts_with("PL")) {
    // Trims the letters P and L and blanks, in any order, as a left trim by that set does.
    size_t k = s.find_first_not_of("PL ");
    s.remove_prefix(k == std::string_view::npos ? s.size() : k);
  }
  if (!MatchWhole(kForms, s)) return 0;
  if (!checkSum) return 1;
  return NipChecksum(s) ? 1 : 0;
}

bool PoprawnyNrEORI(const char* text) {
  static const Regex kEori = CompilePattern(R"(PL\d{14}[Z\d])");
  return MatchWhole(kEori, View(text));
}

bool PoprawnyEmail(const char* text) {
  // ".+[@].+[.].+" on the whole text, written out: it takes linear time whatever the text holds
  // (the pattern's backtracking grows with the square of the length on texts full of "@"), and
  // "." refuses exactly the line terminators, as in ECMAScript. No line terminator, an "@" after
  // the first character, then a "." with a character on each side of it.
  const std::string_view s = View(text);
  if (std::any_of(s.begin(), s.end(), IsLineTerminator)) return false;
  const size_t at = s.find('@', 1);
  if (at == std::string_view::npos || at + 2 >= s.size()) return false;
  const size_t dot = s.rfind('.', s.size() - 2);
  return dot != std::string_view::npos && dot >= at + 2;
}

bool PoprawnyIdWew(const char* text) {
  static const Regex kId = CompilePattern(R"([1-9]((\d[1-9])|([1-9]\d))\d{7}-\d{5})");
  return MatchWhole(kId, View(text));
}

bool PoprawnyKodCN(const char* text) {
  static const Regex kCn = CompilePattern(R"((\d\d\d\d( \d\d)*( \d\d)*))");
  return MatchWhole(kCn, View(text));
}

int PoprawnyKodPocztowy(const char* text, int flags) {
  std::string_view s = View(text);
  if (s.empty()) return (flags & kKodPocztowyPusty) ? 1 : 0;
  static const Regex kCode = CompilePattern(R"(\d{2}-\d{3})");
  static const Regex kDigits = CompilePattern(R"(\d{5})");
  if (MatchWhole(kCode, s)) return 1;
  return (flags & kKodPocztowyBezKreski) && MatchWhole(kDigits, s) ? 1 : 0;
}

bool ContainsOnlyDigits(const char* text) {
  for (char c : View(text))
    if (!IsAsciiDigit(c)) return false;
  return true;
}

void UsunZnakiPozaCyframi(std::string& text) { std::erase_if(text, [](char c) { return !IsAsciiDigit(c); }); }

void UsunZnakiPozaAlfanumerycznymi(std::string& text) {
  std::erase_if(text, [](char c) { return !kAlnum[static_cast<unsigned char>(c)]; });
}

void FormatujKodCN(std::string& text) {
  if (!ReformatCn(text)) text.clear();
}

void FormatujNiepustyKodCN(std::string& text) { ReformatCn(text); }

bool NipDivided::CzyPrefiksZagraniczny() const {
  if (prefiks.empty()) return false;
  if (prefiks.size() != 2) return true;
  auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; };
  return !(upper(prefiks[0]) == 'P' && upper(prefiks[1]) == 'L');
}

std::string NipDivided::PodajNumerBezZnakowSpecjalnych() const {
  std::string out = numer;
  std::erase_if(out, [](char c) { return c == '-' || c == '_'; });
  return out;
}

std::string NipDivided::PodajNumerZPrefiksemBezZnakowSpecjalnych() const {
  std::string out = prefiks;
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return out + PodajNumerBezZnakowSpecjalnych();
}

std::optional<NipDivided> ParsujNip(const char* text) {
  static const Regex kNip = CompilePattern(R"(^([A-Za-z]*)(\s*-*)(\w*-?\w*-?\w*-?\w*)$)");
  std::string_view s = View(text);
  if (!HasNipShape(s)) return std::nullopt;
  varion::RegexMatch m;
  if (!MatchWhole(kNip, s, m)) return std::nullopt;
  return NipDivided{m.str(1), m.str(2), m.str(3)};
}
