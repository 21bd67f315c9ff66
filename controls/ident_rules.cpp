#include "controls/ident_rules.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "controls/regex_patterns.h"
#include "controls/validators.h"

namespace varion {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Letters of code page 1250 above ASCII (Polish and the other Latin ones); 0xD7 and 0xF7 are the
// multiplication and division signs.
bool IsLetter1250(char ch) {
  const auto c = static_cast<unsigned char>(ch);
  if (c < 0x80) return IsAsciiLetter(ch);
  if (c >= 0xC0) return c != 0xD7 && c != 0xF7;
  switch (c) {
    case 0x8A: case 0x8C: case 0x8D: case 0x8E: case 0x8F: case 0x9A: case 0x9C: case 0x9D: case 0x9E:
    case 0x9F: case 0xA3: case 0xA5: case 0xAA: case 0xAF: case 0xB3: case 0xB9: case 0xBA: case 0xBC:
    case 0xBE: case 0xBF:
      return true;
    default:
      return false;
  }
}

bool IsPrintableAscii(char c) { return c > ' ' && c < 0x7F; }
bool IsTextChar(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F; }

// Characters Windows refuses in a path, besides the control characters.
bool IsPathChar(char c) {
  return static_cast<unsigned char>(c) >= 0x20 && !std::strchr("<>\"|?*", c);
}

struct KindRow {
  IdentKind kind;
  const char* className;
  std::size_t maxLength;
  const char* extra;  // characters taken besides the class test of the kind
  bool (*accepts)(char);
};

bool Digits(char c) { return IsDigit(c); }
bool DigitsLetters(char c) { return IsDigit(c) || IsAsciiLetter(c); }
bool None(char) { return false; }
bool AddressChars(char c) { return IsDigit(c) || IsLetter1250(c); }

// Lengths: a hyphenated NIP is 13 characters; an account in print form with "PL" is 28 signs and
// 6 blanks; an e-mail address is at most 254 characters; MAX_PATH less the terminator.
const KindRow kKinds[] = {
    {IdentKind::Nip, "vel_nipedit", 13, "- ", Digits},
    {IdentKind::NipEx, "vel_nipeditex", 30, "- ", DigitsLetters},
    {IdentKind::Pesel, "vel_peseledit", 11, "", Digits},
    {IdentKind::Regon, "vel_regonedit", 9, "", Digits},
    {IdentKind::IdWewnetrzny, "vel_idwewnetrznyedit", 16, "-", Digits},
    {IdentKind::Rachunek, "vel_rbedit", 34, " PLpl", Digits},
    {IdentKind::Email, "vel_mailedit", 254, "", IsPrintableAscii},
    {IdentKind::Www, "vel_wwwedit", 2048, "", IsPrintableAscii},
    {IdentKind::Gg, "vel_ggedit", 10, "", Digits},
    {IdentKind::Skype, "vel_skypeedit", 64, ".,-_:", DigitsLetters},
    {IdentKind::Number, "vel_numeredit", 32, "", None},  // its own rule, by the options
    {IdentKind::Time, "vel_timeeditex", 8, ":", Digits},
    {IdentKind::Folder, "vel_folderedit", 259, "", IsPathChar},
    {IdentKind::File, "vel_fileedit", 259, "", IsPathChar},
    {IdentKind::Adres, "vel_adresedit", 200, " .,-/'()", AddressChars},
    {IdentKind::Param, "vel_paramedit", 4000, "", IsTextChar},
};

const KindRow& Row(IdentKind kind) {
  for (const KindRow& r : kKinds)
    if (r.kind == kind) return r;
  return kKinds[0];
}

std::string Trim(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\xA0'; };
  std::size_t b = 0, e = text.size();
  while (b < e && isBlank(text[b])) ++b;
  while (e > b && isBlank(text[e - 1])) --e;
  return std::string(text.substr(b, e - b));
}

std::string Without(std::string_view text, const char* drop) {
  std::string out;
  for (char c : text)
    if (!std::strchr(drop, c) || c == '\0') out += c;
  return out;
}

bool AllDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), IsDigit); }

// The rearranged IBAN (country and check digits moved to the end, letters as 10 to 35) modulo 97,
// nine digits at a time so that nothing overflows.
int IbanRemainder(std::string_view iban) {
  const std::string moved = std::string(iban.substr(4)) + std::string(iban.substr(0, 4));
  unsigned long long r = 0;
  for (char c : moved) {
    if (IsDigit(c)) {
      r = (r * 10 + static_cast<unsigned>(c - '0')) % 97;
    } else {
      const unsigned v = static_cast<unsigned>(Upper(c) - 'A') + 10;
      r = (r * 100 + v) % 97;
    }
  }
  return static_cast<int>(r);
}

// "PL" and 26 digits (blanks removed, letters in upper case), or nothing.
std::optional<std::string> ElectronicIban(std::string_view text) {
  std::string s;
  for (char c : text)
    if (c != ' ') s += Upper(c);
  if (s.size() == 26 && AllDigits(s)) s = "PL" + s;
  if (s.size() != 28 || s.compare(0, 2, "PL") != 0 || !AllDigits(std::string_view(s).substr(2))) return std::nullopt;
  return s;
}

// Hours, minutes and seconds of "H", "HH", "HMM", "HHMM", "HHMMSS" or "H:M[:S]" forms, or nothing.
struct Hms {
  int h = 0, m = 0, s = 0;
};
std::optional<Hms> ParseTime(std::string_view text, bool allowSeconds) {
  int parts[3] = {0, 0, 0};
  int count = 0;
  if (text.find(':') != std::string_view::npos) {
    std::size_t start = 0;
    while (count < 3) {
      const std::size_t end = std::min(text.find(':', start), text.size());
      const std::string_view part = text.substr(start, end - start);
      if (part.empty() || part.size() > 2 || !AllDigits(part)) return std::nullopt;
      parts[count++] = std::atoi(std::string(part).c_str());
      if (end == text.size()) break;
      start = end + 1;
    }
    if (count < 2 || (count == 3 && !allowSeconds) || text.find(':', 0) == std::string_view::npos) return std::nullopt;
    // A fourth field ("1:2:3:4") leaves text behind the third.
    std::size_t colons = static_cast<std::size_t>(std::count(text.begin(), text.end(), ':'));
    if (colons != static_cast<std::size_t>(count - 1)) return std::nullopt;
  } else {
    if (text.empty() || !AllDigits(text)) return std::nullopt;
    const std::string s(text);
    switch (s.size()) {
      case 1: case 2: parts[0] = std::atoi(s.c_str()); break;
      case 3: parts[0] = s[0] - '0'; parts[1] = std::atoi(s.c_str() + 1); break;
      case 4: parts[0] = std::atoi(s.substr(0, 2).c_str()); parts[1] = std::atoi(s.c_str() + 2); break;
      case 6:
        if (!allowSeconds) return std::nullopt;
        parts[0] = std::atoi(s.substr(0, 2).c_str());
        parts[1] = std::atoi(s.substr(2, 2).c_str());
        parts[2] = std::atoi(s.c_str() + 4);
        break;
      default: return std::nullopt;
    }
  }
  if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return std::nullopt;
  return Hms{parts[0], parts[1], parts[2]};
}

std::string FormatTime(const Hms& t, bool seconds) {
  char buf[16];
  if (seconds)
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", t.h, t.m, t.s);
  else
    std::snprintf(buf, sizeof buf, "%02d:%02d", t.h, t.m);
  return buf;
}

// A number as the field shows it: optional minus, digits, the decimal separator and digits.
// Either "." or "," counts as the separator while typing; Normalise writes the locale's.
struct NumberParts {
  bool negative = false;
  std::string whole, fraction;
  bool separator = false;
};
std::optional<NumberParts> ParseNumber(std::string_view text, char decimal) {
  NumberParts n;
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) n.negative = text[i++] == '-';
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (IsDigit(c)) {
      (n.separator ? n.fraction : n.whole) += c;
    } else if ((c == decimal || c == '.' || c == ',') && !n.separator) {
      n.separator = true;
    } else if (c == ' ' || c == '\xA0') {
      if (n.separator) return std::nullopt;  // grouping only in the whole part
    } else {
      return std::nullopt;
    }
  }
  if (n.whole.empty() && n.fraction.empty()) return std::nullopt;
  return n;
}

const Regex& WwwPattern() {
  // An optional http(s) scheme, a host of at least two labels, an optional port, and a path,
  // query or fragment of printable characters.
  static const Regex re = CompilePattern(
      "(?:[Hh][Tt][Tt][Pp][Ss]?://)?[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?"
      "(?:\\.[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?)+(?::\\d{1,5})?(?:[/?#][\\x21-\\x7E]*)?");
  return re;
}

const Regex& SkypePattern() {
  static const Regex re = CompilePattern("[A-Za-z][A-Za-z0-9.,_-]{5,31}|live:[A-Za-z0-9._-]{1,58}");
  return re;
}

bool CheckNip(std::string_view text, bool foreignAllowed) {
  const auto parsed = ParsujNip(std::string(text).c_str());
  if (!parsed) return false;
  const std::string number = parsed->PodajNumerBezZnakowSpecjalnych();
  if (parsed->CzyPrefiksZagraniczny()) return foreignAllowed && number.size() >= 2;
  return number.size() == 10 && AllDigits(number) && NipChecksumOk(number.c_str());
}

bool CheckPath(std::string_view text, bool file) {
  if (!std::all_of(text.begin(), text.end(), IsPathChar)) return false;
  // A colon only after a drive letter.
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == ':' && (i != 1 || !IsAsciiLetter(text[0]))) return false;
  if (text == "\\" || text == "/" ) return !file;
  if (file && (text.back() == '\\' || text.back() == '/' || text.back() == ':')) return false;
  // Windows drops trailing dots and blanks of a name, so "raport." would not be the name typed.
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find_first_of("\\/", start);
    if (end == std::string_view::npos) end = text.size();
    const std::string_view part = text.substr(start, end - start);
    if (!part.empty() && part != "." && part != ".." && (part.back() == '.' || part.back() == ' ')) return false;
    start = end + 1;
  }
  return true;
}

bool CheckNumber(std::string_view text, const IdentOptions& o) {
  const auto n = ParseNumber(text, o.decimal);
  if (!n || n->whole.empty() || (n->separator && n->fraction.empty())) return false;
  if (static_cast<int>(n->fraction.size()) > o.decimals) return false;
  if (n->whole.size() > 18) return false;  // beyond what a double holds exactly
  const double v = std::strtod((std::string(n->negative ? "-" : "") + n->whole + "." + n->fraction + "0").c_str(), nullptr);
  if (o.min && v < *o.min) return false;
  if (o.max && v > *o.max) return false;
  return true;
}

}  // namespace

const char* IdentClassName(IdentKind kind) { return Row(kind).className; }

std::optional<IdentKind> IdentKindOfClass(std::string_view className) {
  for (const KindRow& r : kKinds) {
    const std::string_view name = r.className;
    if (name.size() == className.size() &&
        std::equal(name.begin(), name.end(), className.begin(), [](char a, char b) { return Upper(a) == Upper(b); }))
      return r.kind;
  }
  return std::nullopt;
}

std::size_t IdentMaxLength(IdentKind kind, const IdentOptions& options) {
  if (kind == IdentKind::Time) return options.seconds ? 8 : 5;
  return Row(kind).maxLength;
}

bool IdentAcceptsChar(IdentKind kind, char c, const IdentOptions& options) {
  if (c == '\0') return false;
  if (kind == IdentKind::Number)
    return IsDigit(c) || c == '-' || (options.decimals > 0 && (c == options.decimal || c == '.' || c == ','));
  const KindRow& r = Row(kind);
  return r.accepts(c) || std::strchr(r.extra, c) != nullptr;
}

std::string IdentFilter(IdentKind kind, std::string_view text, std::size_t room, const IdentOptions& options) {
  std::string out;
  for (char c : text) {
    if (out.size() >= room) break;
    if (IdentAcceptsChar(kind, c, options)) out += c;
  }
  return out;
}

std::string IdentNormalise(IdentKind kind, std::string_view text, const IdentOptions& options) {
  if (kind == IdentKind::Param) return std::string(text);  // kept as typed, blanks and all
  std::string t = Trim(text);
  switch (kind) {
    case IdentKind::Nip:
    case IdentKind::Pesel:
    case IdentKind::Regon:
    case IdentKind::Gg:
      return Without(t, " \xA0");
    case IdentKind::NipEx: {
      std::string s = Without(t, " \xA0");
      std::transform(s.begin(), s.end(), s.begin(), Upper);
      return s;
    }
    case IdentKind::Rachunek: {
      const auto iban = ElectronicIban(t);
      if (!iban) return t;
      // Print form: groups of four from the start of the IBAN; without "PL" the two check digits
      // stand alone in front, as Polish forms print the number.
      const bool withPrefix = Without(t, " ").size() == 28;
      std::string out;
      for (std::size_t i = 0; i < iban->size(); ++i) {
        if (i && i % 4 == 0) out += ' ';
        out += (*iban)[i];
      }
      return withPrefix ? out : out.substr(2);
    }
    case IdentKind::Number: {
      const auto n = ParseNumber(t, options.decimal);
      if (!n || n->whole.size() > 18) return t;
      std::string whole = n->whole;
      whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
      if (whole.empty()) whole = "0";
      std::string out = (n->negative ? "-" : "") + whole;
      if (!n->fraction.empty()) out += options.decimal + n->fraction;
      if (out == "-0") out = "0";
      return out;
    }
    case IdentKind::Time: {
      const auto hms = ParseTime(t, options.seconds);
      return hms ? FormatTime(*hms, options.seconds) : t;
    }
    case IdentKind::Adres: {
      std::string out;
      for (char c : t)
        if (!(c == ' ' && !out.empty() && out.back() == ' ')) out += c;
      return out;
    }
    default:
      return t;
  }
}

bool IdentCheck(IdentKind kind, std::string_view text, const IdentOptions& options) {
  if (text.empty()) return true;
  const std::string s(text);
  switch (kind) {
    case IdentKind::Nip: return CheckNip(s, false);
    case IdentKind::NipEx: return CheckNip(s, true);
    case IdentKind::Pesel: return PoprawnyPESEL(s.c_str()) == 1;
    case IdentKind::Regon: return PoprawnyREGON(s.c_str()) == 1;
    case IdentKind::IdWewnetrzny: return PoprawnyIdWew(s.c_str());
    case IdentKind::Rachunek: return PoprawnyNrRachunku(s.c_str()) == 1;
    case IdentKind::Email:
      return std::all_of(s.begin(), s.end(), IsPrintableAscii) && PoprawnyEmail(s.c_str());
    case IdentKind::Www: return MatchWhole(WwwPattern(), s);
    case IdentKind::Gg: return s.size() <= 10 && AllDigits(s) && s[0] != '0' && std::strtoull(s.c_str(), nullptr, 10) <= 4294967295ULL;
    case IdentKind::Skype: return MatchWhole(SkypePattern(), s);
    case IdentKind::Number: return CheckNumber(s, options);
    case IdentKind::Time: {
      const std::size_t want = options.seconds ? 8 : 5;
      return s.size() == want && ParseTime(s, options.seconds).has_value();
    }
    case IdentKind::Folder: return CheckPath(s, false);
    case IdentKind::File: return CheckPath(s, true);
    case IdentKind::Adres:
      return std::any_of(s.begin(), s.end(), IsLetter1250) && std::any_of(s.begin(), s.end(), IsDigit) &&
             std::all_of(s.begin(), s.end(), [](char c) { return IdentAcceptsChar(IdentKind::Adres, c); });
    case IdentKind::Param:
      return true;
  }
  return false;
}

int PoprawnyNrRachunku(const char* text) {
  if (!text) return 0;
  const auto iban = ElectronicIban(text);
  if (!iban) return 0;
  // The check digits of a correctly made IBAN are 98 less a remainder, so 00, 01 and 99 never
  // occur even where the modulus would come out right.
  const int check = ((*iban)[2] - '0') * 10 + ((*iban)[3] - '0');
  if (check < 2 || check > 98) return 0;
  return IbanRemainder(*iban) == 1 ? 1 : 0;
}

std::optional<std::string> IdentAddressToOpen(IdentKind kind, std::string_view text) {
  const std::string t = Trim(text);
  const auto startsNoCase = [&t](std::string_view prefix) {
    return t.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), t.begin(),
                                                    [](char a, char b) { return Upper(a) == Upper(b); });
  };
  if (kind == IdentKind::Email) {
    const std::string address = startsNoCase("mailto:") ? t.substr(7) : t;
    // A query ("?subject=", "&body=") or a second address would make the mail program do more
    // than open a message to this one.
    if (address.find_first_of("?&,;%") != std::string::npos || !IdentCheck(kind, address)) return std::nullopt;
    return "mailto:" + address;
  }
  if (kind == IdentKind::Www) {
    if (t.empty() || !IdentCheck(kind, t)) return std::nullopt;
    if (startsNoCase("http://") || startsNoCase("https://")) return t;
    return "http://" + t;
  }
  return std::nullopt;
}

std::string StepTimeField(std::string_view text, std::size_t caret, int direction, const IdentOptions& options) {
  Hms t = ParseTime(Trim(text), options.seconds).value_or(Hms{});
  const int step = direction < 0 ? -1 : 1;
  const std::size_t field = std::min<std::size_t>(caret / 3, options.seconds ? 2 : 1);
  if (field == 0) t.h = (t.h + step + 24) % 24;
  if (field == 1) t.m = (t.m + step + 60) % 60;
  if (field == 2) t.s = (t.s + step + 60) % 60;
  return FormatTime(t, options.seconds);
}

}  // namespace varion
