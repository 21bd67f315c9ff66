// Amount in words on any text: never crashes, and every result is "E" or ends with the pennies.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "controls/amount_words.h"
#include "controls/locale_info.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  if (size == 0) return 0;
  // The first byte picks the language and the locale's numeric decimal separator.
  static const char* kSeparators[] = {",", ".", "<>", ""};
  const int language = data[0] & 1 ? 21 : 9;
  varion::LocaleValues values;
  values.numDecimal = kSeparators[(data[0] >> 1) & 3];
  static int lastSeparator = -1;
  if (lastSeparator != ((data[0] >> 1) & 3)) {
    lastSeparator = (data[0] >> 1) & 3;
    varion::SetLocaleSource([values] { return values; });
  }
  std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  std::string words = KwotaSlownie(text.c_str(), "PLN", language);
  const bool plain = words == "E" && text.c_str() == std::string("E");
  if (!plain && (words.size() < 5 || words.compare(words.size() - 4, 4, "/100") != 0)) std::abort();
  CLocaleInfo::GetTheLocaleInfo().TextToDispText(text.c_str(), '.');
  return 0;
}
