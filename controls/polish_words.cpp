#include "controls/polish_words.h"

#include "base/text.h"
#include "controls/holidays.h"

namespace {

struct Forms {
  const char* one;
  const char* few;
  const char* many;
};

constexpr Forms kWords[] = {
    {"dzień", "dni", "dni"},
    {"stanowisko", "stanowiska", "stanowisk"},
    {"wiadomość", "wiadomości", "wiadomości"},
    {"nowa wiadomość", "nowe wiadomości", "nowych wiadomości"},
    {"VelWiadomość", "VelWiadomości", "VelWiadomości"},
    {"nowa VelWiadomość", "nowe VelWiadomości", "nowych VelWiadomości"},
    {"minuta", "minuty", "minut"},
    {"rok", "lata", "lat"},
    {"miesiąc", "miesiące", "miesięcy"},
    {"oczekująca sprzedaż", "oczekujące sprzedaże", "oczekujących sprzedaży"},
    {"zarejestrowane", "zarejestrowane", "zarejestrowanych"},
    {"zawieszone", "zawieszone", "zawieszonych"},
};
constexpr int kWordCount = sizeof kWords / sizeof kWords[0];

// 1, 2 or 3: which of the three forms a number takes.
int FormOf(long long number) {
  unsigned long long m = number < 0 ? 0ull - static_cast<unsigned long long>(number) : static_cast<unsigned long long>(number);
  if (m == 1) return 1;
  unsigned long long units = m % 10, lastTwo = m % 100;
  if ((m >= 2 && m <= 4) || (units >= 2 && units <= 4 && !(lastTwo >= 10 && lastTwo <= 19))) return 2;
  return 3;
}

template <typename Char>
const Char* Pick(const Char* one, const Char* few, const Char* many, long long number) {
  switch (FormOf(number)) {
    case 1: return one;
    case 2: return few;
    default: return many;
  }
}

constexpr const char* kMonthsGenitive[12] = {"stycznia", "lutego",   "marca",     "kwietnia",    "maja",     "czerwca",
                                             "lipca",    "sierpnia", "września", "października", "listopada", "grudnia"};

// The nominative and short names live with the calendar tables.
const auto& kMonths = CCalendarUtils::m_PolishMonthsNames;
const auto& kMonthsShort = CCalendarUtils::m_PolishShortMohtsNames;
const auto& kMonthsLower = CCalendarUtils::m_PolishMonthsNamesLower;

const char* Month(const char* const (&table)[12], int month) {
  return month >= 1 && month <= 12 ? table[month - 1] : nullptr;
}

}  // namespace

std::string OdmianaSlowa(int word, long long number) {
  if (word < 0 || word >= kWordCount) return "błąd";
  const Forms& f = kWords[word];
  return Pick(f.one, f.few, f.many, number);
}

std::wstring OdmianaSlowaW(int word, long long number) { return varion::text::Cp1250ToWide(OdmianaSlowa(word, number)); }

std::string OdmianaSlowa(const ODMIANA_SLOWA& word, long long number) {
  const char* form = Pick(word.forma1, word.forma2, word.forma5, number);
  return form ? form : "";
}

std::wstring OdmianaSlowaW(const ODMIANA_SLOWA_W& word, long long number) {
  const wchar_t* form = Pick(word.forma1, word.forma2, word.forma5, number);
  return form ? form : L"";
}

std::string NazwaMiesiaca(int month, int /*language*/) {
  const char* name = Month(kMonths, month);
  return name ? name : "";
}

std::string NazwaMiesiacaKrotka(int month, int /*language*/) {
  const char* name = Month(kMonthsShort, month);
  return name ? name : "";
}

std::string NazwaKwartalu(int quarter) {
  static constexpr const char* kRoman[4] = {"I", "II", "III", "IV"};
  if (quarter < 1 || quarter > 4) return {};
  return std::string(kRoman[quarter - 1]) + " kwartał";
}

namespace varion {

const char* PolishMonthName(int month) { return Month(kMonths, month); }
const char* PolishMonthShortName(int month) { return Month(kMonthsShort, month); }
const char* PolishMonthLower(int month) { return Month(kMonthsLower, month); }
const char* PolishMonthGenitive(int month) { return Month(kMonthsGenitive, month); }

}  // namespace varion
