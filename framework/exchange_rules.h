// The rules of the exchange functions that need no window: the user texts they record, integer
// text in both directions, range and length messages, check-box states, the date texts the edits
// show, and how an error record becomes a line of the errors window. The window functions of
// data_exchange_win.h call these; the portable build tests them directly.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/amount.h"
#include "base/date_time.h"
#include "base/export.h"
#include "framework/error_info.h"

namespace varion::msg {

// User texts, code page 1250, byte for byte as the forms show them.
inline constexpr char kMaxChars[] = "Proszę wprowadzić najwyżej %ld znaków.";
inline constexpr char kChooseButton[] = "Proszę wybrać przycisk.";
inline constexpr char kFieldEmpty[] = "Pole nie może być puste.";
inline constexpr char kInteger[] = "Proszę wprowadzić liczbę całkowitą.";
inline constexpr char kPositiveInteger[] = "Proszę wprowadzić dodatnią liczbę całkowitą.";
inline constexpr char kByte[] = "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 255.";
inline constexpr char kAmount[] = "Proszę wprowadzić kwotę.";
inline constexpr char kDate[] = "Proszę wprowadzić datę.";
inline constexpr char kRange[] = "Proszę wprowadzić liczbę całkowitą z przedziału %s i %s.";
inline constexpr char kMinLong[] = "Proszę wprowadzić liczbę całkowitą większą lub równą %ld.";
inline constexpr char kMinChars[] = "Proszę wprowadzić przynajmniej %ld znaki(ów).";
inline constexpr char kRequired[] = "Proszę wprowadzić wartość.";
inline constexpr char kChooseItem[] = "Proszę wybrać element.";
inline constexpr char kBadEmail[] = "Nieprawidłowy adres e-mail";
inline constexpr char kBadNip[] = "Nieprawidłowy NIP";
// Our own, for the value kinds that have no text of their own.
inline constexpr char kTime[] = "Proszę wprowadzić godzinę.";
inline constexpr char kNumber[] = "Proszę wprowadzić liczbę.";
// The dialog base.
inline constexpr char kSavePrompt[] = "Dane zostały zmienione. Czy zapisać wykonane zmiany?";
inline constexpr char kNoHelp[] = "Brak pomocy";
inline constexpr char kErrorsWindowTitle[] = "Lista błędów";

}  // namespace varion::msg

namespace varion {

// The integer types the exchange functions take. On Windows long is 32 bits wide, so Long and
// ULong are 32-bit kinds on every build.
enum class IntKind : std::uint8_t { UChar, Short, Int, UInt, Long, ULong };

VARION_API std::int64_t IntKindMin(IntKind kind);
VARION_API std::int64_t IntKindMax(IntKind kind);

// The text a control shows for a value: "%u", "%hd", "%d", "%u", "%ld", "%lu" by kind.
VARION_API std::string FormatExchangeInt(IntKind kind, std::int64_t value);

// The whole text must be one integer of the kind: blanks around it are allowed, a sign only
// for the signed kinds ("+" too), digits only otherwise, and the value must fit the kind.
// A refused text still leaves in `value` what the conversion read: the leading integer when the
// text begins with one that fits the kind ("12a" gives 12), else `value` is not touched.
VARION_API bool ParseExchangeInt(std::string_view text, IntKind kind, std::int64_t& value);

// The message recorded when ParseExchangeInt refuses a text of this kind.
VARION_API const char* IntKindMessage(IntKind kind);

// A message holding one "%ld" filled with n (the length and lower-bound messages).
VARION_API std::string FormatLongMessage(const char* format, long long n);

// How DV_MinMax* writes its bounds into msg::kRange.
enum class BoundFormat : std::uint8_t { Unsigned, UnsignedLong, SignedLong };
VARION_API std::string RangeMessage(BoundFormat format, std::int64_t min, std::int64_t max);
inline bool InRange(std::int64_t value, std::int64_t min, std::int64_t max) { return value >= min && value <= max; }

// Blank characters removed at both ends of a required text.
VARION_API std::string TrimBlanks(std::string_view text);

// Loading an integer into a check box: 0, 1 and 2 are states, everything else is unchecked.
constexpr int CheckStateFromValue(long long value) { return value >= 0 && value <= 2 ? static_cast<int>(value) : 0; }

// The date text edits show and the date parser reads back: "YYYY-MM-DD", with " HH:MM:SS"
// when there is a time of day. Null and invalid values show as an empty text.
VARION_API std::string DateDisplayText(const DateTime& value);
// Day, month and four-digit year: "DD.MM.YYYY".
VARION_API std::string DateTextDDMMYYYY(const DateTime& value);
// The portable reading of a date text: empty gives null, an ISO form its value, anything else
// an invalid date. (On Windows the exchange uses the system's parser instead.)
VARION_API DateTime ParseExchangeDate(std::string_view text);

// A time of day typed as "H:MM", "HH:MM" or "HH:MM:SS" (blanks around allowed), in seconds after
// midnight; false for anything else or a part out of range.
VARION_API bool ParseTimeOfDay(std::string_view text, int& seconds);

// How many fraction digits an amount shows in an edit: two, or as many as it needs up to four,
// so that loading and saving an unchanged form never loses a digit.
VARION_API int AmountDisplayDecimals(const Amount& value);

// A line of the errors window: the message without its "\r\n" and then without its "\n".
VARION_API std::string ErrorListLine(std::string_view message);

// A record belongs to the dialog itself (not to a nested page) when its source is empty or the
// dialog's template name; with control identifier 0 it is a dialog-level error.
VARION_API bool IsOwnSource(const FLG_OBJECT_ERROR_INFO& record, std::string_view templateName);
VARION_API bool IsDialogLevelError(const FLG_OBJECT_ERROR_INFO& record, std::string_view templateName);

}  // namespace varion
