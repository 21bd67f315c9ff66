// Helpers shared by the exchange functions' Windows files: finding a control, reading and
// writing its text as code page 1250, the system's parsers and the user's money format.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "base/amount.h"
#include "base/date_time.h"
#include "framework/data_exchange.h"

namespace varion::exchange {

inline HWND Control(const CFlgDataExchange& dx, int ctrlId) {
  return dx.GetDialog() ? GetDlgItem(dx.GetDialog(), ctrlId) : nullptr;
}

// The control's text, at most `max` characters when max >= 0; empty without a control.
std::string ReadText(const CFlgDataExchange& dx, int ctrlId, int max = -1);
void WriteText(HWND control, std::string_view text);
void WriteText(const CFlgDataExchange& dx, int ctrlId, std::string_view text);

// The system's parsers the exchange relies on: currency with the user's default locale and
// flags 0, dates with the fixed locale 0x001D and flags 0. False when the text is refused or
// the value lies outside the supported range.
bool ParseCurrencyText(const std::string& text, Amount& value);
bool ParseDateText(const std::string& text, DateTime& value);

// An amount as an edit shows it: the display text of the currency edits with the fraction
// digits AmountDisplayDecimals gives.
std::string AmountText(const Amount& value);
// The user's numeric decimal separator.
std::string UserDecimalSeparator();

std::wstring ClassName(HWND window);

}  // namespace varion::exchange
