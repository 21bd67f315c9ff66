// The portable rules of the business fillers: how an insurance-title code is written and found
// among a combo's items, and how a vehicle registration number is shown.
#pragma once

#include <string>
#include <string_view>

#include "base/export.h"
#include "framework/fill_items.h"

namespace varion::fill {

// A code held as a number, written as the dictionary writes it: four digits with leading zeros
// (110 is "0110"); 0 and negative numbers are no code ("").
VARION_API std::string ZusCodeText(long code);

// The position of the first item that shows the code: its text is the code alone or the code
// followed by a blank ("0110 Umowa o pracę"), so "011" never finds "0110". -1 when none does or
// the code is empty.
VARION_API int FindCodeItem(const Items& items, std::string_view code);

// A registration number as shown: blanks at both ends dropped, letters in upper case (Polish
// letters included, in code page 1250).
VARION_API std::string RegistrationNumberText(std::string_view number);

}  // namespace varion::fill
