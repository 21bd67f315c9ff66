// The user's monetary and numeric separators and grouping, and the plain and display texts of
// amounts built from them. One process-wide object made on first use; its values come from a
// locale source (the user default locale on Windows, settable values in the portable build).
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/amount.h"
#include "base/export.h"

#if defined(_WIN32)
struct HDC__;
struct tagRECT;
#endif

namespace varion {

// Locale values as the source gives them, before the no-break-space rule. The defaults are the
// Polish ones.
struct LocaleValues {
  std::string monDecimal = ",";          // monetary decimal separator
  std::string negativeSign = "-";
  std::string monThousands = "\xA0";     // monetary thousands separator: a no-break space
  std::string numDecimal = ",";          // numeric decimal separator
  std::string monGrouping = "3;0";       // monetary grouping
  std::string shortDate = "dd.MM.yyyy";  // short date format
};

using LocaleSource = std::function<LocaleValues()>;

// The values of the user default locale: those of the user-locale source the platform installed
// (GetLocaleInfoA, installed by the Windows library at start), else the Polish defaults.
VARION_API LocaleValues UserLocaleValues();
// Installs where the user default locale comes from. Platform code calls it once at start, so
// that this portable part needs nothing of the platform; an empty function means the defaults.
VARION_API void SetUserLocaleSource(LocaleSource source);
// Replaces the source of the process-wide CLocaleInfo and re-reads it; an empty function goes
// back to UserLocaleValues. Meant for tests and for hosts that pin a locale.
VARION_API void SetLocaleSource(LocaleSource source);

// Width in pixels (or any unit) of a text drawn in some font; CurrencyToTextCalc fits to it.
using TextWidth = std::function<int(std::string_view)>;

}  // namespace varion

class VARION_API CLocaleInfo {
 public:
  static constexpr char m_chDot = '.';
  static constexpr char m_chMinus = '-';

  // Display flags of CurrencyToDispText and CurrencyToTextCalc.
  static constexpr unsigned kDispNoGrouping = 0x1;  // no thousands separators
  static constexpr unsigned kDispBlankZero = 0x2;   // zero (as shown) gives an empty text

  // A locale object of its own, for code that formats for a locale other than the user's.
  explicit CLocaleInfo(const varion::LocaleValues& values);

  static CLocaleInfo& GetTheLocaleInfo();
  // Re-reads the values from the current locale source.
  void UpdateLocaleInfo();

  // First character of the monetary decimal separator; "," when that has more than one.
  char GetCharDec() const { return m_charDec; }
  const std::string& GetSymNeg() const { return m_symNeg; }
  const std::string& GetSymTho() const { return m_symTho; }
  const std::string& GetSymDec() const { return m_symDec; }
  const std::string& GetSymNumSep() const { return m_symNumSep; }
  const std::string& GetSymThoGroup() const { return m_symThoGroup; }
  const std::string& GetShortDateFormat() const { return m_shortDate; }

  // "-1234.5000": sign, integer digits (at least one), the separator (the locale's or "."), and
  // always four fraction digits, no grouping. forceMinus writes "-" whatever the sign (for a
  // negative zero being typed) and then writes the magnitude. Null or invalid gives "".
  std::string CurrencyToText(varion::Amount value, bool useLocaleSeparator, bool forceMinus) const;

  // Plain number text to display text: thousands separators every three digits of the integer
  // part (none when the grouping starts with "0"), and the locale decimal separator in place of
  // the last decimalChar. In the integer part only digits survive, except the text's first
  // character (a leading "-"). A null text gives "".
  std::string TextToDispText(const char* text, char decimalChar) const;

  // Display text with `decimals` fraction digits (0..4; further digits are cut, not rounded, as
  // the field shows what was typed) and, when given, the symbol after one space: "1 234,50 zł".
  // A value cut to zero loses its sign. Null or invalid gives "".
  std::string CurrencyToDispText(varion::Amount value, int decimals, const char* symbol, unsigned flags) const;

  // The display text fitted to a width: the full text if it fits; else without thousands
  // separators; else with one fraction digit fewer at a time (now rounded half away from zero,
  // since a digit that is no longer shown should still count); else
  // as many "#" as fit (at least one), so a cell never shows a wrong number cut short.
  std::string CurrencyToTextCalc(const varion::TextWidth& measure, int width, varion::Amount value, int decimals,
                                 unsigned flags) const;
#if defined(_WIN32)
  // The same measured with the font selected into the device context, fitted to the rectangle.
  std::string CurrencyToTextCalc(HDC__* dc, const tagRECT& rect, varion::Amount value, int decimals,
                                 unsigned flags) const;
#endif

 private:
  void Apply(const varion::LocaleValues& values);
  std::string DispText(std::string_view text, char decimalChar, bool grouping) const;

  char m_charDec = ',';
  std::string m_symNeg;
  std::string m_symTho;
  std::string m_symDec;
  std::string m_symNumSep;
  std::string m_symThoGroup;
  std::string m_shortDate;
};
