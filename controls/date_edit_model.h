// The segmented date field without its window: the pattern's tokens, digit entry one field at a
// time, the caret, the keys, the range, and the texts shown and exchanged. The window paints
// GetText, places the caret at GetCaret, and forwards characters and keys.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/export.h"
#include "controls/date_tokens.h"
#include "controls/date_tools.h"
#include "controls/key_codes.h"

namespace varion {

// What the window does after a call.
struct DateEditResult {
  bool handled = false;       // the field's own key; false: the window passes it on
  bool beep = false;          // refused: a character that does not fit, a step that cannot be
  bool textChanged = false;   // repaint the text and move the caret
  bool valueChanged = false;  // the value is another one now; tell the parent
  bool dropDown = false;      // open the calendar under the field
};

// What the fields show as a whole.
enum class DateEntry {
  Empty,       // no field holds a digit; the value is null
  Partial,     // some field is incomplete
  NotADate,    // complete fields without such a day (31-02-2024)
  OutOfRange,  // a real day outside the range
  Date,        // the value itself
};

// The value is always null or a day inside the range, at midnight. Typing changes it as soon as
// the fields show a day in range (or nothing at all); while they show anything else the entry is
// unfinished, the value stays the last day taken, and Settle, which the window calls when the
// field loses the focus and before it answers for its text, puts that day back.
//
// Keys, as date fields usually take them:
//   digits            the field under the caret, with the completion rules of its token; a
//                     complete field moves the caret to the next one
//   a separator       (".", "/", ",", a blank or any character of the pattern's separators other
//                     than "-") completes the field as typed ("1" becomes "01") and moves on
//   Up, "+"           the field under the caret one step forward: a day (across month ends), a
//                     month (a day the new month lacks becomes its last day), a year
//   Down, "-"         one step back; both only on a shown day, and never out of the range
//   Page Up/Down      the day a month later / earlier
//   Left, Right       the previous / next field; Home, End the first / last field
//   Ctrl+Home/End     the lower / upper limit of the range
//   "T"               today (from the clock)
//   Delete, Backspace clear the field under the caret (Backspace on an empty field clears the
//                     one before); Ctrl with either clears all fields
//   F4, Alt+Down/Up   drop the calendar down
// A step that leaves the range or starts from no day is ignored with a beep.
class VARION_API DateEditModel : private CDtTokenOwner {
 public:
  static constexpr const char* kDefaultPattern = "dd-mm-rrrr";

  // The clock gives "today" (the system clock when null) and must outlive the model.
  explicit DateEditModel(const DateTools::IClock* clock = nullptr);
  DateEditModel(const DateEditModel&) = delete;
  DateEditModel& operator=(const DateEditModel&) = delete;

  // Rebuilds the tokens (an empty pattern takes the locale's short date format) and shows the
  // value in them; the caret goes to the first field.
  void SetPattern(std::string pattern);
  const std::string& GetPattern() const { return m_pattern; }
  const CDtTokenList& GetTokens() const { return m_tokens; }

  const COleDateTime& GetValue() const { return m_value; }
  // Shows a day (its time of day is dropped) or, for null, empty fields. False, and nothing
  // changes, for an invalid date-time or a day outside the range.
  bool SetValue(const COleDateTime& value);
  // Null leaves a limit unset. Set limits must be valid and, both set, the upper strictly after
  // the lower; else false and nothing changes. A value outside the new range moves to the
  // nearest limit. The field starts with 1900-01-01 to 2100-12-31.
  bool SetRange(const COleDateTime& lower, const COleDateTime& upper);
  const COleDateTime& GetLower() const { return m_lower; }  // null when unset
  const COleDateTime& GetUpper() const { return m_upper; }
  bool IsInRange(const COleDateTime& date) const;  // by the day; an invalid date never is

  // The text as shown: fields in the pattern's order, incomplete ones with their letters.
  std::string GetText() const;
  // The value for the data exchange, "2024-03-31", which the system's date parser reads the same
  // with the fixed locale 0x001D on every machine; "" for null.
  std::string GetCanonicalText() const;
  // The day a text gives this field: the shown form of its pattern, or anything ParseDateInput
  // reads in the pattern's field order. Null for an empty text and for the text of empty fields
  // ("dd-mm-rrrr"); Invalid for a text that is not a day inside the range.
  COleDateTime ParseText(std::string_view text) const;
  // A program's text (WM_SETTEXT): a day becomes the value, an empty text clears it; false, and
  // nothing changes, for anything else.
  bool SetText(std::string_view text);
  // A user's paste: a day as SetText takes it, with a beep on refusal; an empty text is refused
  // too (there is nothing to paste).
  DateEditResult Paste(std::string_view text);

  DateEntry GetEntry() const;
  bool IsUnfinished() const;  // Partial, NotADate or OutOfRange

  // The caret is always on a field (when the pattern has one): at its start, or after the digits
  // typed so far. The window may select GetFieldSpan.
  int GetField() const { return m_field; }  // index into GetTokens(), -1 without fields
  int GetCaret() const;
  void GetFieldSpan(int& start, int& length) const;
  // A click at a character position: the field there, or the nearest one after (before) it.
  void SetCaretPos(int pos);

  DateEditResult OnChar(char c);
  DateEditResult OnKeyDown(int key, keys::Modifiers mods = {});
  // An unfinished entry goes back to the value; a beep says so.
  DateEditResult Settle();
  // The day the drop-down calendar reports: taken (time zero) when inside the range, ignored
  // otherwise.
  DateEditResult OnCalendarSelect(const COleDateTime& date);

 private:
  COleDateTime GetDateValue() const override;
  bool OfferDateValue(const COleDateTime& value) override;

  CDtTokenActive* Field(int tokenIndex) const;
  CDtTokenActive* Current() const { return m_field >= 0 ? Field(m_field) : nullptr; }
  // The day the fields show, with fields the pattern lacks taken from the value (else the first
  // of the month, of January, of this year).
  DateEntry Evaluate(COleDateTime* date) const;
  // A day from parts (day, month, year; -1 where the pattern has no field).
  COleDateTime Compose(const int (&parts)[3]) const;
  void Show(const COleDateTime& value);
  // Takes what the fields show after an edit: a day in range, or nothing, becomes the value.
  void Sync(DateEditResult& r);
  void MoveField(int direction);
  bool ApplyValue(const COleDateTime& value, DateEditResult& r);
  DateEditResult Step(int direction);
  DateEditResult FinishField();
  DateEditResult Clear(bool all, bool back);
  std::string FieldOrder() const;
  std::string EmptyText() const;  // what empty fields show: "dd-mm-rrrr"
  void CheckInvariants() const;

  const DateTools::IClock* m_clock;
  std::string m_pattern = kDefaultPattern;
  COleDateTime m_value = COleDateTime::Null();
  COleDateTime m_lower;
  COleDateTime m_upper;
  CDtTokenList m_tokens;
  std::vector<int> m_fields;  // indices of the active tokens, in order
  int m_field = -1;           // the token under the caret
  bool m_advanced = false;    // the last digit completed a field and moved the caret on
};

}  // namespace varion
