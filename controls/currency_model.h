// The editing rules of the amount field: every keystroke, deletion, sign change, paste and setting
// applied to the value, and what the field's window must then do (text, selection, beep, notify).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/amount.h"
#include "base/export.h"
#include "controls/locale_info.h"

namespace varion {

// Virtual-key codes the keys table names; the same numbers as the Windows headers.
inline constexpr unsigned kVkInsert = 0x2D, kVkDelete = 0x2E, kVkLeft = 0x25, kVkRight = 0x27, kVkF4 = 0x73;

// Style bits the field reads: the edit's read-only bit, the window's disabled bit, and our bit
// that removes the calculator button.
inline constexpr std::uint32_t kStyleReadOnly = 0x800, kStyleDisabled = 0x08000000, kStyleNoCalculator = 0x8000;

// Commands of OnSetSettings carried in the decimals argument.
inline constexpr unsigned kSetBalloonPending = 0xFFFC, kSetShowCopyButton = 0xFFFD, kSetForbidMinus = 0xFFFE,
                          kSetAllowMinus = 0xFFFF;

// A selection in positions of the displayed text, as the edit window reports it (start <= end).
struct CurrencySelection {
  int start = 0;
  int end = 0;
  friend bool operator==(const CurrencySelection&, const CurrencySelection&) = default;
};

// What a key does once the keys table has been consulted.
enum class CurrencyKeyAction {
  Default,     // the edit window's own handling
  Ignore,      // swallowed
  SelectLeft,  // Shift+Left: collapse to one caret left of the selection
  SelectRight,
  DeleteForward,
  Cut,  // post the clipboard message to itself
  Copy,
  Paste,
  ToggleCalculator,
};

// The canonical text is CLocaleInfo::CurrencyToText of the value with "." and a forced "-" for a
// negative zero: "-1234.5600". With L its length the point stands at L-5 and the fraction at
// L-4..L-1; every editing rule works on this text and on positions in it.
//
// Positions of the display text ("-1 234,56 zł") translate by counting: a display position maps to
// the canonical position with the same number of digits before it, on the same side of the
// decimal separator. The sign is a position of its own in both texts: display 0 is canonical 0
// (before the "-") and display 1 is canonical 1 (behind it), so that Backspace behind the sign and
// Delete before it remove the sign, as the rules say. What follows from that is settled here:
//  - a digit typed before the "-" goes behind it (the text parser negates only what follows a "-",
//    so a digit in front of it would turn -5 into 25);
//  - when a deletion leaves the value at zero the caret goes just behind the single "0" (position
//    1, or 2 when a negative zero keeps its "-");
//  - a range deletion that removes the "-" clears the negative-zero flag with it, and one across
//    the point with no digit left before it writes "0." there.
// A "0" typed in front of the integer digits would vanish as a leading zero: it changes nothing
// and, like a thirteenth integer digit, is dropped without a beep.
// Canonical positions behind the shown decimals map to the end of the shown number; positions in
// the thousands separators, inside a separator of several characters, or in the currency symbol
// map to the nearest canonical position on the left.
//
// The negative-zero flag means something only while the value is zero: an edit that leaves a
// value other than zero clears it, so a later return to zero does not bring back a stale "-".
class VARION_API CurrencyEditModel {
 public:
  enum class Command { None, Cut, Copy, Paste, ToggleCalculator };

  // What the window does after a call. `display` and `sel` are always filled with the text and the
  // selection to show; the window sets its text only when it differs.
  struct Result {
    std::string display;
    CurrencySelection sel;
    bool handled = true;              // false: let the edit window handle the key itself
    bool beep = false;                // MessageBeep with the exclamation sound (0x30)
    bool modified = false;            // set the edit control's modified flag
    bool valueChanged = false;        // the value or its sign changed: notify the parent
    bool failed = false;              // a set text was refused: the value is kept, the whole text selected
    bool frameChanged = false;        // the non-client frame must be recomputed (copy button shown)
    bool calculatorSettings = false;  // send decimals and symbol to the calculator, if it exists
    Command command = Command::None;  // a message to post to itself, or the calculator to toggle
  };

  // Uses the process-wide CLocaleInfo; the other constructor takes a locale of its own, which must
  // outlive the model.
  CurrencyEditModel();
  explicit CurrencyEditModel(const CLocaleInfo& locale);

  // --- state ---
  Amount Value() const { return m_value; }
  bool IsNegativeZero() const { return m_negativeZero; }
  // Whether the value counts as negative: the flag while it is zero, its sign otherwise.
  bool IsDigitMinus() const { return m_value.Raw() == 0 ? m_negativeZero : m_value.Raw() < 0; }
  int Decimals() const { return m_decimals; }
  const std::string& Symbol() const { return m_symbol; }
  bool AllowMinus() const { return m_allowMinus; }
  bool IsEdited() const { return m_edited; }
  void SetEdited(bool edited) { m_edited = edited; }
  bool ShowCopyButton() const { return m_showCopyButton; }
  bool NoCalculatorTooltip() const { return m_noCalcTooltip; }
  void SetNoCalculatorTooltip(bool on) { m_noCalcTooltip = on; }
  bool BalloonPending() const { return m_balloonPending; }
  // The two bytes behind the balloon-pending byte: set with it and by a copy-button click.
  bool BalloonByte(int index) const { return m_balloonAfter[index & 1]; }

  // Window style and edit style bits together (kStyle*).
  void SetStyle(std::uint32_t style) { m_style = style; }
  bool IsReadOnly() const { return (m_style & kStyleReadOnly) != 0; }
  bool IsCtrlEnabled() const { return (m_style & (kStyleReadOnly | kStyleDisabled)) == 0; }
  bool HasCalculatorBtn() const { return (m_style & kStyleNoCalculator) == 0; }

  // --- texts ---
  const std::string& DisplayText() const { return m_display; }
  // What WM_GETTEXT answers: four decimals, the locale separator, no grouping, "-" for a negative
  // value and for a negative zero.
  std::string PlainText() const;
  const std::string& CanonicalText() const { return m_canon; }
  // The text the copy button puts on the clipboard: "%.2lf" of the value, whatever the decimals.
  std::string CopyButtonText() const;
  // A copy-button click: the text to copy; sets the two bytes behind a pending balloon.
  std::string CopyButtonClicked();

  // --- positions ---
  int ToCanonical(int displayPos) const;
  int ToDisplay(int canonicalPos) const;

  // --- input ---
  Result OnChar(char ch, CurrencySelection sel);
  Result OnKeyDown(unsigned vk, bool shift, bool ctrl, CurrencySelection sel);
  // The keys table (read-only control and calculator button taken into account).
  static CurrencyKeyAction KeyActionFor(unsigned vk, bool shift, bool ctrl, bool readOnly, bool calculatorBtn);

  Result DigitInsert(char ch, CurrencySelection sel);
  Result DigitDelete(bool back, CurrencySelection sel);
  Result DigitSwitch(bool toNegative, CurrencySelection sel);
  Result SetSelDec() const;

  // Null or empty: zero. "-": zero with the negative-zero flag. Anything else is an amount in the
  // locale's form (a trailing currency symbol is allowed), rounded to the decimals; unreadable text
  // and amounts of more than 12 integer digits are refused (`failed`).
  Result OnSetText(const char* text);
  // A pasted text replaces the whole text; "-" is removed from it while minus is forbidden. So
  // "--5" gives 5 then, and is refused while minus is allowed. A read-only field takes nothing.
  Result PasteText(std::string_view text, CurrencySelection sel);
  // The selected part of the display text without thousands separators and symbol; with nothing
  // selected, the whole amount so written.
  std::string GetCopyText(CurrencySelection sel) const;
  // The copy text, and the selection deleted (not in a read-only field).
  Result Cut(CurrencySelection sel, std::string* copied);
  Result OnKillFocus(CurrencySelection sel);
  // Decimals 0..4 (more is taken as 4) with the symbol, or one of the kSet* commands (these keep
  // the selection). New decimals round the value to them, as a set text would; a value that would
  // round past 12 integer digits becomes the largest the new decimals show.
  Result OnSetSettings(std::string_view symbol, unsigned decimals, CurrencySelection sel);

  // --- canonical rules, public so that they can be checked on canonical text directly ---
  // The digits of the text read as an integer are the ten-thousandths; a "-" negates the sum of
  // the digits behind it. Longer than 17 characters (18 with a leading "-"): `current`.
  static Amount TextToCurrency(std::string_view text, Amount current);
  static bool IsTextTooLong(std::string_view text);
  // Whether pos lies beyond the editable decimals (see the rule in the .cpp).
  static bool IsCarretOnEnd(std::string_view text, int pos, int decimals);
  // The deletions edit the text and the selection in it, and clear the negative-zero flag where
  // they remove the sign.
  static void DigitDeleteBack(std::string& text, int& start, int& end, bool& negativeZero);
  static void DigitDeleteForward(std::string& text, int& start, int& end, bool& negativeZero);
  // False when nothing was removed (the selection held only the point).
  static bool DigitDeleteRange(std::string& text, int& start, int& end, bool& negativeZero);

 private:
  struct Edit {
    std::string text;
    int start = 0;
    int end = 0;
  };
  Edit Begin(CurrencySelection sel) const;
  // Inserts at `pos` by the rules for a caret; the new caret, or a negative refusal code.
  int InsertDigit(std::string& text, int pos, char ch) const;
  // Takes the edited text as the new value and shows it with the caret at `caret`.
  Result Finish(const Edit& e, Amount oldValue, bool oldMinus);
  Result Unchanged(CurrencySelection sel) const;
  Result Show(int caretStart, int caretEnd) const;
  void Layout();
  int CanonLength() const { return static_cast<int>(m_canon.size()); }
  bool SetFromText(std::string_view text);
  Result PasteOrSet(std::string_view text, bool byUser);
  void CheckInvariants() const;

  const CLocaleInfo* m_locale;
  Amount m_value = Amount::FromRaw(0);
  bool m_edited = true;
  bool m_allowMinus = true;
  int m_decimals = 2;
  std::string m_symbol;
  bool m_negativeZero = false;
  bool m_showCopyButton = false;
  bool m_noCalcTooltip = false;
  bool m_balloonPending = false;
  bool m_balloonAfter[2] = {false, false};
  std::uint32_t m_style = 0;

  // The canonical and display texts of the current state and the position maps between it and the canonical
  // text, rebuilt whenever the state changes.
  std::string m_canon;
  std::string m_display;
  std::vector<int> m_dispToCanon;
  std::vector<int> m_canonToDisp;
  int m_decStart = 0;   // display index of the decimal separator (the number's end without one)
  int m_numberEnd = 0;  // display index where the currency symbol part begins
};

}  // namespace varion
