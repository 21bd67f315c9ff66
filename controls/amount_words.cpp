#include "controls/amount_words.h"

#include <cstring>
#include <string_view>

#include "controls/locale_info.h"

namespace {

// Every word of the Polish and English tables ends with one space.
struct WordTables {
  std::string_view units[20];     // 0..19, index 0 unused
  std::string_view tens[10];      // 2..9 used
  std::string_view hundreds[10];  // 1..9 used
};

constexpr WordTables kPolish = {
    {"", "jeden ", "dwa ", "trzy ", "cztery ", "pięć ", "sześć ", "siedem ", "osiem ", "dziewięć ", "dziesięć ",
     "jedenaście ", "dwanaście ", "trzynaście ", "czternaście ", "piętnaście ", "szesnaście ", "siedemnaście ",
     "osiemnaście ", "dziewiętnaście "},
    {"", "", "dwadzieścia ", "trzydzieści ", "czterdzieści ", "pięćdziesiąt ", "sześćdziesiąt ", "siedemdziesiąt ",
     "osiemdziesiąt ", "dziewięćdziesiąt "},
    {"", "sto ", "dwieście ", "trzysta ", "czterysta ", "pięćset ", "sześćset ", "siedemset ", "osiemset ",
     "dziewięćset "},
};

constexpr WordTables kEnglish = {
    {"", "one ", "two ", "three ", "four ", "five ", "six ", "seven ", "eight ", "nine ", "ten ", "eleven ", "twelve ",
     "thirteen ", "fourteen ", "fifteen ", "sixteen ", "seventeen ", "eighteen ", "nineteen "},
    {"", "", "twenty ", "thirty ", "forty ", "fifty ", "sixty ", "seventy ", "eighty ", "ninety "},
    {"", "one hundred ", "two hundred ", "three hundred ", "four hundred ", "five hundred ", "six hundred ",
     "seven hundred ", "eight hundred ", "nine hundred "},
};

// Polish group nouns: stem plus the ending the number asks for (few = 2..4 without a teen,
// one = exactly 1 in the group). Index 0 is the units group, which has none.
struct GroupNoun {
  std::string_view stem;
  std::string_view one;
  std::string_view few;
  std::string_view many;
};
constexpr GroupNoun kPolishGroups[5] = {{"", "", "", ""},
                                        {"tysi", "ąc ", "ące ", "ęcy "},
                                        {"milion", " ", "y ", "ów "},
                                        {"miliard", " ", "y ", "ów "},
                                        {"bilion", " ", "y ", "ów "}};
// "tryllion" is the spelling the printed forms have always carried.
constexpr std::string_view kEnglishGroups[5] = {"", "thousand ", "million ", "billion ", "tryllion "};

// The tables packed for copying: each word in a fixed block, so that a copy is a constant-size
// move the compiler inlines (the amount in words runs for every line of a payment printout).
struct Word {
  char text[24];
  unsigned char size;
};

constexpr Word Pack(std::string_view a, std::string_view b = {}) {
  Word w{};
  for (char c : a) w.text[w.size++] = c;
  for (char c : b) w.text[w.size++] = c;
  return w;
}

struct PackedTables {
  Word units[20];
  Word tens[10];
  Word hundreds[10];
  Word nouns[5][3];  // group noun for the one, few and many forms
};

constexpr PackedTables PackPolish() {
  PackedTables p{};
  for (int i = 0; i < 20; ++i) p.units[i] = Pack(kPolish.units[i]);
  for (int i = 0; i < 10; ++i) p.tens[i] = Pack(kPolish.tens[i]);
  for (int i = 0; i < 10; ++i) p.hundreds[i] = Pack(kPolish.hundreds[i]);
  for (int g = 0; g < 5; ++g) {
    p.nouns[g][0] = Pack(kPolishGroups[g].stem, kPolishGroups[g].one);
    p.nouns[g][1] = Pack(kPolishGroups[g].stem, kPolishGroups[g].few);
    p.nouns[g][2] = Pack(kPolishGroups[g].stem, kPolishGroups[g].many);
  }
  return p;
}

constexpr PackedTables PackEnglish() {
  PackedTables p{};
  for (int i = 0; i < 20; ++i) p.units[i] = Pack(kEnglish.units[i]);
  for (int i = 0; i < 10; ++i) p.tens[i] = Pack(kEnglish.tens[i]);
  for (int i = 0; i < 10; ++i) p.hundreds[i] = Pack(kEnglish.hundreds[i]);
  for (int g = 0; g < 5; ++g) p.nouns[g][0] = p.nouns[g][1] = p.nouns[g][2] = Pack(kEnglishGroups[g]);
  return p;
}

constexpr PackedTables kPolishPacked = PackPolish();
constexpr PackedTables kEnglishPacked = PackEnglish();

// The words of an amount on the stack: five groups of at most about sixty characters, and room
// for the last block copied whole.
class WordBuffer {
 public:
  void Put(const Word& w) {
    std::memcpy(m_buf + m_len, w.text, sizeof w.text);
    m_len += w.size;
  }
  bool empty() const { return m_len == 0; }
  std::string_view view() const { return std::string_view(m_buf, m_len); }

 private:
  char m_buf[5 * 4 * sizeof(Word::text) + sizeof(Word::text)];
  size_t m_len = 0;
};

void WriteGroup(WordBuffer& out, const PackedTables& w, int n, int g) {
  int h = n / 100, t = n % 100 / 10, u = n % 10;
  if (h > 0) out.Put(w.hundreds[h]);
  if (t >= 2) {
    out.Put(w.tens[t]);
    if (u >= 1) out.Put(w.units[u]);
  } else if (t == 1 || u >= 1) {
    out.Put(w.units[10 * t + u]);
  }
  if (g == 0) return;
  // Few form: 2..4 units without a teen; one form: exactly 1 in the group.
  if (u >= 2 && u <= 4 && t != 1)
    out.Put(w.nouns[g][1]);
  else if (h == 0 && t == 0 && u == 1)
    out.Put(w.nouns[g][0]);
  else
    out.Put(w.nouns[g][2]);
}

char WordsDecimalChar() {
  const std::string& sep = CLocaleInfo::GetTheLocaleInfo().GetSymNumSep();
  return sep.size() < 2 ? (sep.empty() ? '\0' : sep[0]) : '.';
}

std::string ZeroText(const char* currency) {
  std::string out = "zero ";
  if (currency && *currency) {
    out += currency;
    out += ' ';
  }
  out += "0/100";
  return out;
}

// Words of an amount given as fifteen digits (0..9 each, right-aligned in five groups of three),
// the currency and the penny count.
std::string Compose(const char (&digits)[15], int pennies, const char* currency, int language) {
  const bool hasCurrency = currency && *currency;
  WordBuffer words;
  const PackedTables& tables = language == kJezykPolski ? kPolishPacked : kEnglishPacked;
  for (int g = 4; g >= 0; --g) {
    const char* d = digits + (4 - g) * 3;
    int n = d[0] * 100 + d[1] * 10 + d[2];
    if (n != 0) WriteGroup(words, tables, n, g);
  }
  std::string_view body = words.empty() ? std::string_view("zero") : words.view();
  const size_t currencyLength = hasCurrency ? std::strlen(currency) : 0;
  // One allocation of the exact size: words, " currency ", and "%2d/100" (a one-digit count
  // keeps its leading space).
  std::string out(body.size() + (hasCurrency ? currencyLength + 2 : 0) + 6, ' ');
  char* p = out.data();
  std::memcpy(p, body.data(), body.size());
  p += body.size();
  if (hasCurrency) {
    std::memcpy(p + 1, currency, currencyLength);
    p += currencyLength + 2;
  }
  if (pennies >= 10) p[0] = static_cast<char>('0' + pennies / 10);
  p[1] = static_cast<char>('0' + pennies % 10);
  std::memcpy(p + 2, "/100", 4);
  return out;
}

std::string Words(std::string_view text, const char* currency, int language, char dec) {
  if (text.empty() || text == "0" || text == "-0") return ZeroText(currency);
  if (text == "E") return std::string(text);

  size_t split = std::string_view::npos;
  if (dec != '\0') {
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == dec) {
        split = i;
        break;
      }
    }
  }
  int pennies = 0;
  std::string_view whole = text;
  if (split != std::string_view::npos) {
    whole = text.substr(0, split);
    std::string_view penny = text.substr(split + 1, 2);
    int value = 0;
    for (char c : penny) {
      if (c < '0' || c > '9') break;  // read as a number: the digits up to the first other character
      value = value * 10 + (c - '0');
    }
    pennies = value * (penny.size() == 2 ? 1 : 10);
  }

  // The last fifteen digits of the integer part.
  char digits[15] = {};
  int count = 0;
  for (size_t i = whole.size(); i-- > 0 && count < 15;) {
    char c = whole[i];
    if (c >= '0' && c <= '9') digits[14 - count++] = static_cast<char>(c - '0');
  }
  return Compose(digits, pennies, currency, language);
}

// German words.
constexpr const char* kDeUnits[20] = {"null",     "ein",      "zwei",      "drei",     "vier",
                                      "fünf",     "sechs",    "sieben",    "acht",     "neun",
                                      "zehn",     "elf",      "zwölf",     "dreizehn", "vierzehn",
                                      "fünfzehn", "sechzehn", "siebzehn",  "achtzehn", "neunzehn"};
constexpr const char* kDeTens[10] = {"",        "zehn",    "zwanzig", "dreißig", "vierzig",
                                     "fünfzig", "sechzig", "siebzig", "achtzig", "neunzig"};
constexpr const char* kDeGroups[12] = {"",         "tausend",    "million",       "milliarde",
                                       "billion",  "billiarde",  "trillion",      "trilliarde",
                                       "quadrillion", "quadrilliarde", "quintillion", "quintilliarde"};

void WriteGermanHundreds(std::string& out, int n) {
  int h = n / 100, r = n % 100;
  if (h > 0) {
    out += kDeUnits[h];
    out += "hundert";
  }
  if (r >= 1 && r <= 19) {
    out += kDeUnits[r];
  } else if (r >= 20) {
    int u = r % 10;
    if (u != 0) {
      out += kDeUnits[u];
      out += "und";
    }
    out += kDeTens[r / 10];
  }
}

}  // namespace

std::string KwotaSlownie(const char* text, int language) { return KwotaSlownie(text, "PLN", language); }

std::string KwotaSlownie(const char* text, const char* currency, int language) {
  return Words(text ? std::string_view(text) : std::string_view(), currency, language, WordsDecimalChar());
}

std::string KwotaSlownie(const std::string& text, int language) { return KwotaSlownie(text, "PLN", language); }

std::string KwotaSlownie(const std::string& text, const char* currency, int language) {
  return Words(text, currency, language, WordsDecimalChar());
}

std::string KwotaSlownie(varion::Amount value, int language) { return KwotaSlownie(value, "PLN", language); }

std::string KwotaSlownie(varion::Amount value, const char* currency, int language) {
  if (!value.IsValid()) return {};
  if (language == kJezykNiemiecki) return InWorten(value, currency);
  // What the text overload reads from the currency type's own text of the value (no grouping,
  // fraction without trailing zeros): the integer digits and the first two fraction digits. A
  // value of exactly zero is the text "0".
  std::int64_t raw = value.Raw();
  unsigned long long mag = raw < 0 ? 0ull - static_cast<unsigned long long>(raw) : static_cast<unsigned long long>(raw);
  if (mag == 0) return ZeroText(currency);
  char digits[15] = {};
  unsigned long long units = mag / 10000;  // below 10^15, so every digit fits
  for (int i = 14; i >= 0 && units != 0; --i, units /= 10) digits[i] = static_cast<char>(units % 10);
  return Compose(digits, static_cast<int>(mag % 10000 / 100), currency, language);
}

std::string InWorten(varion::Amount value, const char* currency) {
  if (!value.IsValid()) return {};
  std::int64_t raw = value.Raw();
  unsigned long long mag = raw < 0 ? 0ull - static_cast<unsigned long long>(raw) : static_cast<unsigned long long>(raw);
  unsigned long long units = mag / 10000;
  int pennies = static_cast<int>(mag % 10000 / 100);  // cut, as the Polish text reads two digits

  int groups[7] = {};
  int count = 0;
  for (unsigned long long u = units; u != 0; u /= 1000) groups[count++] = static_cast<int>(u % 1000);

  std::string out;
  bool afterNoun = false;  // a million-sized noun was written last: the rest stands apart
  for (int g = count - 1; g >= 0; --g) {
    int n = groups[g];
    if (n == 0) continue;
    if (!out.empty() && (g >= 2 || afterNoun)) out += ' ';
    if (g >= 2) {
      // Million-sized nouns stand apart and take the plural: eine million, zwei millionen.
      if (n == 1)
        out += "eine";
      else
        WriteGermanHundreds(out, n);
      out += ' ';
      std::string_view noun = kDeGroups[g];
      out += noun;
      if (n != 1) out += noun.back() == 'e' ? "n" : "en";
      afterNoun = true;
    } else {
      WriteGermanHundreds(out, n);
      if (g == 1) out += kDeGroups[1];
      afterNoun = false;
    }
  }
  if (out.empty()) out = kDeUnits[0];
  if (currency && *currency) {
    out += ' ';
    out += currency;
  }
  out += ' ';
  out += static_cast<char>('0' + pennies / 10);
  out += static_cast<char>('0' + pennies % 10);
  out += "/100";
  return out;
}
