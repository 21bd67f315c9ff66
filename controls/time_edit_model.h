// The segmented time field without its window: hour, minute and (optionally) second tokens,
// digit entry one field at a time, the caret, the keys, and the texts shown and exchanged. The
// window paints GetText, selects GetFieldSpan and forwards characters and keys, as the date
// field's window does with its model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"
#include "controls/date_edit_model.h"
#include "controls/date_tokens.h"
#include "controls/key_codes.h"

namespace varion {

// What the fields show as a whole.
enum class TimeEntry {
  Empty,    // no field holds a digit
  Partial,  // some field is empty or incomplete
  Time,     // every field complete: a time of day
};

// Unlike the date field, the time field keeps no separate value: what the fields show is the
// time, and an unfinished entry stays as typed when the field is left, so that the window can
// mark it faulty next to what the user typed.
//
// Keys:
//   digits            the field under the caret, with the completion rules of its token; a
//                     complete field moves the caret to the next one
//   ":", ".", blank   completes the field as typed ("9" becomes "09") and moves on
//   Up, "+"           the field under the caret one step forward, wrapping inside the field
//   Down, "-"         one step back
//   Left, Right       the previous / next field; Home, End the first / last field
//   Delete, Backspace clear the field under the caret (Backspace on an empty field clears the
//                     one before); Ctrl with either clears all fields
// Tab and Enter are the dialog's.
class VARION_API TimeEditModel {
 public:
  explicit TimeEditModel(bool seconds = false);
  TimeEditModel(const TimeEditModel&) = delete;
  TimeEditModel& operator=(const TimeEditModel&) = delete;

  // Switches between "HH:MM" and "HH:MM:SS"; a shown time keeps its hour and minute (and gets
  // 00 seconds), the caret goes to the first field.
  void SetSeconds(bool seconds);
  bool HasSeconds() const { return m_seconds; }
  const CDtTokenList& GetTokens() const { return m_tokens; }

  // The text as shown: "09:3m", "gg:mm" for empty fields.
  std::string GetText() const;
  // "HH:MM" or "HH:MM:SS" of a complete time; "" for empty or unfinished fields.
  std::string GetCanonicalText() const;
  TimeEntry GetEntry() const;

  // A program's text (WM_SETTEXT): a time in the field's form ("9:30", "0930", "09:30:15" with
  // seconds; "12:30" also fills a field with seconds with 00), or an empty text (or the empty
  // pattern) to clear the fields. False, and nothing changes, for anything else.
  bool SetText(std::string_view text);
  // A user's paste: a time as SetText takes it, with a beep on refusal; an empty text is refused
  // too (there is nothing to paste).
  DateEditResult Paste(std::string_view text);

  int GetField() const { return m_field; }  // index into GetTokens()
  // The caret: at the field's start, or after the digits typed so far.
  int GetCaret() const;
  void GetFieldSpan(int& start, int& length) const;
  // A click at a character position: the field there (a separator belongs to the field after it).
  void SetCaretPos(int pos);

  DateEditResult OnChar(char c);
  DateEditResult OnKeyDown(int key, keys::Modifiers mods = {});

 private:
  CDtTokenActive* Field(int tokenIndex) const;
  CDtTokenActive* Current() const { return Field(m_field); }
  void MoveField(int direction);
  DateEditResult Step(int direction);
  DateEditResult FinishField();
  DateEditResult Clear(bool all, bool back);
  // Marks the result changed when the canonical text differs from `before`.
  void Changed(const std::string& before, DateEditResult& r) const;

  bool m_seconds = false;
  CDtTokenList m_tokens;
  std::vector<int> m_fields;  // indices of the active tokens, in order
  int m_field = 0;            // the token under the caret; always an active one
  bool m_advanced = false;    // the last digit completed a field and moved the caret on
};

}  // namespace varion
