// The date field's pattern cut into tokens, and the digit entry of each field. The date edit
// window owns a token list and forwards typed characters and stepping keys to the token under
// the caret; everything a keystroke decides is here.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/export.h"

// What tokens ask of the field that owns them: its value and a way to offer a new one (the field
// checks it against its range and answers whether it took it).
class VARION_API CDtTokenOwner {
 public:
  virtual ~CDtTokenOwner() = default;
  virtual COleDateTime GetDateValue() const = 0;
  virtual bool OfferDateValue(const COleDateTime& value) = 0;
};

class VARION_API CDtToken {
 public:
  CDtToken(CDtTokenOwner* owner, int width) : m_owner(owner), m_width(width) {}
  virtual ~CDtToken() = default;

  int GetWidth() const { return m_width; }
  virtual bool IsActive() const { return false; }
  // The token's text as the field shows it.
  virtual std::string GetText() const = 0;

 protected:
  CDtTokenOwner* m_owner;  // may be null: a token then only edits its own buffer
  int m_width;
};

// Fixed text between fields.
class VARION_API CDtTokenSep : public CDtToken {
 public:
  CDtTokenSep(CDtTokenOwner* owner, std::string text)
      : CDtToken(owner, static_cast<int>(text.size())), m_text(std::move(text)) {}
  std::string GetText() const override { return m_text; }

 private:
  std::string m_text;
};

// A field that takes digits.
class VARION_API CDtTokenActive : public CDtToken {
 public:
  enum class Input { Refused, Waiting, Complete };

  using CDtToken::CDtToken;
  bool IsActive() const override { return true; }

  // Appends a typed character (a complete field starts over with it). Refused: not a digit or no
  // possible value (the buffer stays as it was); Waiting: a further digit may follow; Complete:
  // the caret moves to the next field.
  Input AddChar(char c);
  void Clear() {
    m_buffer.clear();
    m_complete = false;
  }
  bool IsComplete() const { return m_complete; }
  const std::string& GetBuffer() const { return m_buffer; }
  // The typed number, or -1 while nothing has been typed.
  int GetValue() const;
  // Shows a value of the field ("%02d" for day and month, "%04d" for the year): fills the buffer.
  void SetValue(int value);
  // A complete field shows its buffer; an incomplete one shows what was typed followed by its
  // pattern letters up to the field's width, and at least one ("dd", "3d", "20rr"), so an empty
  // field reads as the pattern the user knows ("dd-mm-rrrr") and a partly typed one never reads
  // as a number.
  std::string GetText() const override;
  // The field's pattern letter, which also names its kind: 'd', 'm' or 'r'.
  virtual char GetLetter() const = 0;

  // Moves the owner's value one step (a day, a month, a year) forward or back and offers it.
  // False when there is no owner or value, or the owner refuses the result.
  virtual bool Step(int direction) = 0;

 protected:
  // Whether the buffer after a new character is complete, needs more, or cannot be a value; it
  // may drop characters that cannot start the value.
  virtual Input Judge(std::string& buffer) const = 0;
  virtual size_t MaxDigits() const { return 2; }
  bool OfferShifted(int days, int months);

  std::string m_buffer;
  bool m_complete = false;  // the next digit starts the field over
};

// Day of month: 0..3 wait for a second digit, 4..9 are a day at once; 1..31.
class VARION_API CDtTokenDay : public CDtTokenActive {
 public:
  CDtTokenDay(CDtTokenOwner* owner, int width) : CDtTokenActive(owner, width) {}
  bool Step(int direction) override;  // one day
  char GetLetter() const override { return 'd'; }

 protected:
  Input Judge(std::string& buffer) const override;
};

// Month: 0 and 1 wait for a second digit, 2..9 are a month at once; 1..12.
class VARION_API CDtTokenMonth : public CDtTokenActive {
 public:
  CDtTokenMonth(CDtTokenOwner* owner, int width) : CDtTokenActive(owner, width) {}
  // One month; a day past the end of the new month becomes its last day (31 January + 1 month
  // is the end of February).
  bool Step(int direction) override;
  char GetLetter() const override { return 'm'; }

 protected:
  Input Judge(std::string& buffer) const override;
};

// Year: four digits; a leading zero is dropped, so a year never starts with 0 (0, 2, 0, 2, 4
// gives 2024).
class VARION_API CDtTokenYear : public CDtTokenActive {
 public:
  CDtTokenYear(CDtTokenOwner* owner, int width) : CDtTokenActive(owner, width) {}
  bool Step(int direction) override;  // one year; 29 February becomes 28 February
  char GetLetter() const override { return 'r'; }

 protected:
  Input Judge(std::string& buffer) const override;
  size_t MaxDigits() const override { return 4; }
};

// The fields of a time of day. Unlike the date's, they need no owner: each steps its own number
// and wraps inside its field (23 up is 00, minute 00 down is 59), because a time field that carried a
// step into the hour would surprise a user setting only the minutes. An empty field steps from
// nothing: up gives 00, down the field's largest value.
class VARION_API CDtTokenTimeField : public CDtTokenActive {
 public:
  using CDtTokenActive::CDtTokenActive;
  bool Step(int direction) override;
  // The largest value of the field: 23 or 59.
  virtual int GetMax() const = 0;

 protected:
  Input Judge(std::string& buffer) const override;
};

// Hour: 0..2 wait for a second digit, 3..9 are an hour at once; 00..23.
class VARION_API CDtTokenHour : public CDtTokenTimeField {
 public:
  CDtTokenHour(CDtTokenOwner* owner, int width) : CDtTokenTimeField(owner, width) {}
  char GetLetter() const override { return 'g'; }
  int GetMax() const override { return 23; }
};

// Minute: 0..5 wait for a second digit, 6..9 are a minute at once; 00..59.
class VARION_API CDtTokenMinute : public CDtTokenTimeField {
 public:
  CDtTokenMinute(CDtTokenOwner* owner, int width) : CDtTokenTimeField(owner, width) {}
  char GetLetter() const override { return 'm'; }
  int GetMax() const override { return 59; }
};

// Second: as the minute.
class VARION_API CDtTokenSecond : public CDtTokenTimeField {
 public:
  CDtTokenSecond(CDtTokenOwner* owner, int width) : CDtTokenTimeField(owner, width) {}
  char GetLetter() const override { return 's'; }
  int GetMax() const override { return 59; }
};

using CDtTokenList = std::vector<std::unique_ptr<CDtToken>>;

// Cuts a pattern into tokens: an empty pattern is replaced by the locale's short date format;
// the pattern is lower-cased and "y" read as "r"; each run of one character becomes a day ("d"),
// month ("m"), year ("r") or separator token as wide as the run.
VARION_API CDtTokenList BuildDateTokens(std::string pattern, CDtTokenOwner* owner);

// The time field's tokens: "gg:mm", or "gg:mm:ss" with seconds (an empty field reads as the
// Polish pattern: g for godzina).
VARION_API CDtTokenList BuildTimeTokens(bool seconds);
