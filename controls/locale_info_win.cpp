// The Windows locale source (the user default locale) and the fitting of a display text to a
// rectangle measured in the device context's font.
#include "controls/locale_info_win.h"

#include <windows.h>

#include "controls/locale_info.h"

namespace varion {
namespace {

std::string ReadLocale(LCTYPE type, int room) {
  std::string buffer(static_cast<size_t>(room), '\0');
  int n = GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer.data(), room);
  if (n <= 0) return {};
  buffer.resize(static_cast<size_t>(n - 1));  // n counts the terminating zero
  return buffer;
}

LocaleValues ReadUserLocale() {
  LocaleValues v;
  v.monDecimal = ReadLocale(LOCALE_SMONDECIMALSEP, 10);
  v.negativeSign = ReadLocale(LOCALE_SNEGATIVESIGN, 10);
  v.monThousands = ReadLocale(LOCALE_SMONTHOUSANDSEP, 10);
  v.numDecimal = ReadLocale(LOCALE_SDECIMAL, 10);
  v.monGrouping = ReadLocale(LOCALE_SMONGROUPING, 10);
  v.shortDate = ReadLocale(LOCALE_SSHORTDATE, 255);
  return v;
}

}  // namespace

void InstallUserLocaleSource() { SetUserLocaleSource(ReadUserLocale); }

}  // namespace varion

std::string CLocaleInfo::CurrencyToTextCalc(HDC__* dc, const tagRECT& rect, varion::Amount value, int decimals,
                                            unsigned flags) const {
  varion::TextWidth measure = [dc](std::string_view text) {
    SIZE size{};
    if (!GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size)) return 0;
    return static_cast<int>(size.cx);
  };
  return CurrencyToTextCalc(dc ? measure : varion::TextWidth(), static_cast<int>(rect.right - rect.left), value,
                            decimals, flags);
}
