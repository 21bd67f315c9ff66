#include "controls/currency_model.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

namespace varion {
namespace {

// 12 integer digits and four decimals: the most the field can show and TextToCurrency can read back.
constexpr std::int64_t kMaxRaw = 9999999999999999;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

enum class Need : unsigned char { Any, Yes, No };
constexpr unsigned kWritable = 1;    // ignored in a read-only field
constexpr unsigned kCalculator = 2;  // ignored without a calculator button

struct KeyRule {
  unsigned vk;
  Need shift;
  Need ctrl;
  CurrencyKeyAction action;
  unsigned needs;
};

// The first row that matches wins; a key with no row gets the edit window's own handling.
constexpr KeyRule kKeys[] = {
    {kVkLeft, Need::Yes, Need::Any, CurrencyKeyAction::SelectLeft, kWritable},
    {kVkRight, Need::Yes, Need::Any, CurrencyKeyAction::SelectRight, kWritable},
    {kVkDelete, Need::Yes, Need::Any, CurrencyKeyAction::Cut, kWritable},
    {kVkDelete, Need::No, Need::Any, CurrencyKeyAction::DeleteForward, kWritable},
    {kVkInsert, Need::Any, Need::Yes, CurrencyKeyAction::Copy, 0},
    {kVkInsert, Need::Yes, Need::Any, CurrencyKeyAction::Paste, 0},
    {'C', Need::Any, Need::Yes, CurrencyKeyAction::Copy, 0},
    {'V', Need::Any, Need::Yes, CurrencyKeyAction::Paste, 0},
    {'X', Need::Any, Need::Yes, CurrencyKeyAction::Cut, 0},
    {kVkF4, Need::Any, Need::Any, CurrencyKeyAction::ToggleCalculator, kWritable | kCalculator},
};

// What InsertDigit answers instead of a caret when the digit is refused.
constexpr int kBeep = -1, kSilent = -2;

bool Matches(Need need, bool down) { return need == Need::Any || (need == Need::Yes) == down; }

std::string_view Trim(std::string_view t) {
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\xA0'; };
  while (!t.empty() && blank(t.front())) t.remove_prefix(1);
  while (!t.empty() && blank(t.back())) t.remove_suffix(1);
  return t;
}

}  // namespace

CurrencyEditModel::CurrencyEditModel() : CurrencyEditModel(CLocaleInfo::GetTheLocaleInfo()) {}

CurrencyEditModel::CurrencyEditModel(const CLocaleInfo& locale) : m_locale(&locale) { Layout(); }

std::string CurrencyEditModel::PlainText() const { return m_locale->CurrencyToText(m_value, true, IsDigitMinus()); }

std::string CurrencyEditModel::CopyButtonText() const {
  char buf[48];
  std::snprintf(buf, sizeof buf, "%.2lf", m_value.ToDouble());
  return buf;
}

std::string CurrencyEditModel::CopyButtonClicked() {
  if (m_balloonPending) m_balloonAfter[0] = m_balloonAfter[1] = true;
  return CopyButtonText();
}

// The display text of the canonical text, and the position maps walked alongside the layout that
// TextToDispText gives it: sign, integer digits grouped by three, separator, shown decimals, symbol.
void CurrencyEditModel::Layout() {
  m_canon = m_locale->CurrencyToText(m_value, false, IsDigitMinus());
  const int len = static_cast<int>(m_canon.size());
  const int point = len - 5;
  const int sign = m_canon[0] == '-' ? 1 : 0;
  const int intDigits = point - sign;
  const int shown = m_decimals ? point + 1 + m_decimals : point;
  const char kept = m_canon[static_cast<size_t>(shown)];
  m_canon[static_cast<size_t>(shown)] = '\0';  // TextToDispText reads up to the shown decimals
  m_display = m_locale->TextToDispText(m_canon.c_str(), '.');
  m_canon[static_cast<size_t>(shown)] = kept;
  const int numberLen = static_cast<int>(m_display.size());
  if (!m_symbol.empty()) {
    m_display += ' ';
    m_display += m_symbol;
  }

  const std::string& grouping = m_locale->GetSymThoGroup();
  const bool grouped = grouping.empty() || grouping[0] != '0';
  const int thoLen = grouped ? static_cast<int>(m_locale->GetSymTho().size()) : 0;
  const int decLen = static_cast<int>(m_locale->GetSymDec().size());
  const int laidOut = sign + intDigits + thoLen * ((intDigits - 1) / 3) + (m_decimals ? decLen + m_decimals : 0);
  assert(laidOut == numberLen);
  (void)numberLen;

  // dispToCanon[d]: the canonical position of the display boundary d; canonToDisp the reverse.
  m_dispToCanon.resize(static_cast<size_t>(laidOut) + 1);
  m_canonToDisp.resize(static_cast<size_t>(len) + 1);
  int d = 0, c = 0;
  m_dispToCanon[0] = m_canonToDisp[0] = 0;
  auto both = [&] {  // one character in both texts
    m_dispToCanon[static_cast<size_t>(++d)] = ++c;
    m_canonToDisp[static_cast<size_t>(c)] = d;
  };
  auto displayOnly = [&] { m_dispToCanon[static_cast<size_t>(++d)] = c; };
  if (sign) both();
  for (int k = 0; k < intDigits; ++k) {
    if (k > 0 && (intDigits - k) % 3 == 0)
      for (int j = 0; j < thoLen; ++j) displayOnly();
    both();
  }
  m_decStart = d;
  if (m_decimals > 0) {
    for (int j = 1; j < decLen; ++j) displayOnly();  // inside a long separator: still the point
    if (decLen > 0) {
      both();
    } else {  // no separator character: the boundary stands behind the point
      m_dispToCanon[static_cast<size_t>(d)] = ++c;
      m_canonToDisp[static_cast<size_t>(c)] = d;
    }
    for (int f = 0; f < m_decimals; ++f) both();
  }
  m_numberEnd = d;
  std::fill(m_canonToDisp.begin() + c + 1, m_canonToDisp.end(), d);  // hidden decimals: the number's end
  m_dispToCanon.resize(m_display.size() + 1, c);                     // the symbol: the number's end
  m_numberEnd = std::min(m_numberEnd, static_cast<int>(m_display.size()));
  m_decStart = std::min(m_decStart, m_numberEnd);
}

int CurrencyEditModel::ToCanonical(int displayPos) const {
  displayPos = std::clamp(displayPos, 0, static_cast<int>(m_dispToCanon.size()) - 1);
  return m_dispToCanon[static_cast<size_t>(displayPos)];
}

int CurrencyEditModel::ToDisplay(int canonicalPos) const {
  canonicalPos = std::clamp(canonicalPos, 0, CanonLength());
  return m_canonToDisp[static_cast<size_t>(canonicalPos)];
}

CurrencyEditModel::Result CurrencyEditModel::Show(int caretStart, int caretEnd) const {
  assert(0 <= caretStart && caretStart <= caretEnd && caretEnd < static_cast<int>(m_canonToDisp.size()));
  Result r;
  r.display = m_display;
  r.sel = {ToDisplay(caretStart), ToDisplay(caretEnd)};
  return r;
}

CurrencyEditModel::Result CurrencyEditModel::Unchanged(CurrencySelection sel) const {
  const int size = static_cast<int>(m_display.size());
  Result r;
  r.display = m_display;
  r.sel = {std::clamp(std::min(sel.start, sel.end), 0, size), std::clamp(std::max(sel.start, sel.end), 0, size)};
  return r;
}

CurrencyEditModel::Edit CurrencyEditModel::Begin(CurrencySelection sel) const {
  Edit e;
  e.text = m_canon;
  e.start = ToCanonical(std::min(sel.start, sel.end));
  e.end = ToCanonical(std::max(sel.start, sel.end));
  return e;
}

CurrencyEditModel::Result CurrencyEditModel::Finish(const Edit& e, Amount oldValue, bool oldMinus) {
  m_value = TextToCurrency(e.text, m_value);
  if (m_value.Raw() != 0) m_negativeZero = false;
  Layout();
  const int len = CanonLength();
  const int start = std::clamp(e.start, 0, len);
  Result r = Show(start, std::clamp(e.end, start, len));
  r.modified = true;
  r.valueChanged = m_value != oldValue || IsDigitMinus() != oldMinus;
  CheckInvariants();
  return r;
}

void CurrencyEditModel::CheckInvariants() const {
#ifndef NDEBUG
  const std::string& canon = m_canon;
  assert(canon == m_locale->CurrencyToText(m_value, false, IsDigitMinus()));
  const size_t len = canon.size(), sign = canon[0] == '-' ? 1 : 0;
  assert(len >= 6 + sign && len <= 17 + sign && canon[len - 5] == '.');
  for (size_t i = sign; i < len; ++i) assert(i == len - 5 || IsDigit(canon[i]));
  assert(m_canonToDisp.size() == len + 1 && m_dispToCanon.size() == m_display.size() + 1);
  assert(!m_negativeZero || m_value.Raw() == 0);
#endif
}

// --- canonical rules ---

bool CurrencyEditModel::IsTextTooLong(std::string_view text) {
  return text.size() > (!text.empty() && text[0] == '-' ? 18u : 17u);
}

Amount CurrencyEditModel::TextToCurrency(std::string_view text, Amount current) {
  if (IsTextTooLong(text)) return current;
  std::int64_t sum = 0, place = 1;
  for (size_t i = text.size(); i-- > 0;) {
    if (IsDigit(text[i])) {
      sum += (text[i] - '0') * place;
      place *= 10;
    } else if (text[i] == '-') {
      sum = -sum;
    }
  }
  return Amount::FromRaw(sum);
}

// The fraction digits behind the editable decimals are looked at first: one that is not "0" means
// the caret is not at the end (the value still carries digits the field does not let one type).
// With no decimals a caret before the point counts as at the end; otherwise any position behind
// the last editable decimal does.
bool CurrencyEditModel::IsCarretOnEnd(std::string_view text, int pos, int decimals) {
  const int len = static_cast<int>(text.size());
  for (int i = std::max(0, len + decimals - 4); i < len; ++i)
    if (text[static_cast<size_t>(i)] != '0') return false;
  if (decimals == 0 && pos == len - 5) return true;
  return pos > len + decimals - 5;
}

void CurrencyEditModel::DigitDeleteBack(std::string& text, int& start, int& end, bool& negativeZero) {
  const int len = static_cast<int>(text.size());
  int p = start;
  if (p <= 0) {
    start = end = 0;
    return;
  }
  if (p > len - 4) {  // inside the fraction: it shifts left and keeps four digits
    text.erase(static_cast<size_t>(p - 1), 1);
    text += '0';
    start = end = p - 1;
    return;
  }
  if (text[static_cast<size_t>(p - 1)] == '.') --p;
  const int point = len - 5;
  if (p == point && len == 6) {
    // The only integer digit goes; the caret stays before the point, where "0" will show.
    text.erase(static_cast<size_t>(p - 1), 1);
  } else if (p == point && len == 7 && text[0] == '-') {
    if (text[1] != '0')
      text.erase(1, 1);
    else
      text.erase(0, 1);  // -0.xxxx loses its sign, not its zero
    --p;
    negativeZero = false;
  } else {
    if (p == 1 && text[0] == '-') negativeZero = false;
    text.erase(static_cast<size_t>(p - 1), 1);
    --p;
  }
  start = end = p;
}

void CurrencyEditModel::DigitDeleteForward(std::string& text, int& start, int& end, bool& negativeZero) {
  const int len = static_cast<int>(text.size());
  int p = start;
  if (p >= len) {
    start = end = len;
    return;
  }
  const int point = len - 5;
  if (p < point) {
    const int sign = text[0] == '-' ? 1 : 0;
    const bool oneDigit = point - sign == 1;
    if (p == 0 && sign) negativeZero = false;
    text.erase(static_cast<size_t>(p), 1);
    // The removed digit is replaced by the "0" an empty integer part shows: step behind it.
    if (p == len - 6 && oneDigit) ++p;
  } else {
    int q = p;
    if (text[static_cast<size_t>(q)] == '.') ++q;
    text.erase(static_cast<size_t>(q), 1);
    text += '0';
  }
  start = end = p;
}

bool CurrencyEditModel::DigitDeleteRange(std::string& text, int& start, int& end, bool& negativeZero) {
  const int len = static_cast<int>(text.size());
  const int point = len - 5;
  if (start > end) std::swap(start, end);
  start = std::clamp(start, 0, len);
  end = std::clamp(end, 0, len);
  if (start == point) ++start;
  if (start >= end) {
    end = start;
    return false;
  }
  if (start == 0 && text[0] == '-') negativeZero = false;
  if (end <= point) {
    text.erase(static_cast<size_t>(start), static_cast<size_t>(end - start));
  } else if (start > point) {
    text.erase(static_cast<size_t>(start), static_cast<size_t>(end - start));
    text.append(static_cast<size_t>(end - start), '0');
  } else {  // across the point: what stays before, the point, what stays of the fraction
    std::string before = text.substr(0, static_cast<size_t>(start));
    std::string rest = text.substr(static_cast<size_t>(end));
    const bool digitBefore = std::any_of(before.begin(), before.end(), IsDigit);
    text = before + (digitBefore ? "." : "0.") + rest;
    text.append(4 - rest.size(), '0');
    ++start;
  }
  end = start;
  return true;
}

int CurrencyEditModel::InsertDigit(std::string& text, int p, char ch) const {
  const int len = static_cast<int>(text.size());
  const int point = len - 5;
  const int sign = text[0] == '-' ? 1 : 0;
  p = std::max(p, sign);
  if (p == point && point - sign == 1 && text[static_cast<size_t>(sign)] == '0') {
    text[static_cast<size_t>(sign)] = ch;  // the lone zero is replaced; the caret stays behind it
    return p;
  }
  if (p >= len) return kBeep;
  if (p <= point) {
    if (ch == '0' && p == sign) return kSilent;  // a leading zero would vanish again
    text.insert(static_cast<size_t>(p), 1, ch);
    return p + 1;
  }
  if (IsCarretOnEnd(text, p, m_decimals)) return kBeep;
  text.insert(static_cast<size_t>(p), 1, ch);
  text.pop_back();
  if (m_decimals < 4) text[static_cast<size_t>(len + m_decimals - 4)] = '0';
  return p + 1;
}

// --- operations on the state ---

CurrencyEditModel::Result CurrencyEditModel::DigitInsert(char ch, CurrencySelection sel) {
  const Amount oldValue = m_value;
  const bool oldMinus = IsDigitMinus(), oldFlag = m_negativeZero;
  m_edited = true;
  Edit e = Begin(sel);
  if (e.start != e.end) DigitDeleteRange(e.text, e.start, e.end, m_negativeZero);
  const int caret = InsertDigit(e.text, e.start, ch);
  if (caret < 0 || IsTextTooLong(e.text)) {
    // Refused: a beep for a caret with no room, silence for a thirteenth integer digit and for a
    // leading zero.
    m_negativeZero = oldFlag;
    Result r = Unchanged(sel);
    r.beep = caret == kBeep;
    return r;
  }
  e.start = e.end = caret;
  return Finish(e, oldValue, oldMinus);
}

CurrencyEditModel::Result CurrencyEditModel::DigitDelete(bool back, CurrencySelection sel) {
  const Amount oldValue = m_value;
  const bool oldMinus = IsDigitMinus();
  m_edited = true;
  Edit e = Begin(sel);
  if (e.start != e.end)
    DigitDeleteRange(e.text, e.start, e.end, m_negativeZero);
  else if (back)
    DigitDeleteBack(e.text, e.start, e.end, m_negativeZero);
  else
    DigitDeleteForward(e.text, e.start, e.end, m_negativeZero);
  if (TextToCurrency(e.text, m_value).Raw() == 0) {
    // Behind the single "0" (and behind a kept "-"): where the next digit replaces the zero.
    e.start = e.end = m_negativeZero ? 2 : 1;
  }
  return Finish(e, oldValue, oldMinus);
}

CurrencyEditModel::Result CurrencyEditModel::DigitSwitch(bool toNegative, CurrencySelection sel) {
  const Amount oldValue = m_value;
  const bool oldMinus = IsDigitMinus();
  m_edited = true;
  Edit e = Begin(sel);
  if (e.start != e.end && DigitDeleteRange(e.text, e.start, e.end, m_negativeZero))
    return Finish(e, oldValue, oldMinus);
  if (m_value.Raw() == 0)
    m_negativeZero = toNegative;
  else if ((m_value.Raw() < 0) != toNegative)
    m_value = -m_value;
  const int shift = IsDigitMinus() == oldMinus ? 0 : IsDigitMinus() ? 1 : -1;
  Layout();
  const int len = CanonLength();
  const int caret = std::clamp(e.start + shift, 0, len);
  Result r = Show(caret, caret);
  r.modified = true;
  r.valueChanged = m_value != oldValue || IsDigitMinus() != oldMinus;
  CheckInvariants();
  return r;
}

CurrencyEditModel::Result CurrencyEditModel::SetSelDec() const {
  const int behindPoint = CanonLength() - 4;
  return Show(behindPoint, behindPoint);
}

CurrencyEditModel::Result CurrencyEditModel::OnChar(char ch, CurrencySelection sel) {
  const bool writable = !IsReadOnly();
  if (ch == '-' && m_allowMinus) return writable ? DigitSwitch(!IsDigitMinus(), sel) : Unchanged(sel);
  if (ch == m_locale->GetCharDec() || ch == ',') return SetSelDec();
  if (IsDigit(ch)) return writable ? DigitInsert(ch, sel) : Unchanged(sel);
  if (ch == '\b') return writable ? DigitDelete(true, sel) : Unchanged(sel);
  return Unchanged(sel);
}

CurrencyKeyAction CurrencyEditModel::KeyActionFor(unsigned vk, bool shift, bool ctrl, bool readOnly,
                                                  bool calculatorBtn) {
  for (const KeyRule& k : kKeys) {
    if (k.vk != vk || !Matches(k.shift, shift) || !Matches(k.ctrl, ctrl)) continue;
    if ((k.needs & kWritable) && readOnly) return CurrencyKeyAction::Ignore;
    if ((k.needs & kCalculator) && !calculatorBtn) return CurrencyKeyAction::Ignore;
    return k.action;
  }
  return CurrencyKeyAction::Default;
}

CurrencyEditModel::Result CurrencyEditModel::OnKeyDown(unsigned vk, bool shift, bool ctrl, CurrencySelection sel) {
  Result r = Unchanged(sel);
  switch (KeyActionFor(vk, shift, ctrl, IsReadOnly(), HasCalculatorBtn())) {
    case CurrencyKeyAction::Default:
      r.handled = false;
      break;
    case CurrencyKeyAction::Ignore:
      break;
    case CurrencyKeyAction::SelectLeft:
    case CurrencyKeyAction::SelectRight: {
      const Edit e = Begin(sel);
      if (e.start < 1 || IsCarretOnEnd(e.text, e.end, m_decimals)) {
        r.handled = false;
        break;
      }
      const bool left = vk == kVkLeft;
      const int caret = left ? e.start - 1 : std::min(e.end + 1, static_cast<int>(e.text.size()));
      return Show(caret, caret);
    }
    case CurrencyKeyAction::DeleteForward:
      return DigitDelete(false, sel);
    case CurrencyKeyAction::Cut:
      r.command = Command::Cut;
      break;
    case CurrencyKeyAction::Copy:
      r.command = Command::Copy;
      break;
    case CurrencyKeyAction::Paste:
      r.command = Command::Paste;
      break;
    case CurrencyKeyAction::ToggleCalculator:
      r.command = Command::ToggleCalculator;
      break;
  }
  return r;
}

bool CurrencyEditModel::SetFromText(std::string_view text) {
  if (text.empty()) {
    m_value = Amount::FromRaw(0);
    m_negativeZero = false;
    return true;
  }
  if (text == "-") {
    m_value = Amount::FromRaw(0);
    m_negativeZero = true;
    return true;
  }
  text = Trim(text);
  if (!m_symbol.empty() && text.size() > m_symbol.size() && text.ends_with(m_symbol))
    text = Trim(text.substr(0, text.size() - m_symbol.size()));
  NumberFormat format;
  format.decimal = m_locale->GetSymDec();
  format.thousands = m_locale->GetSymTho();
  format.negativeSign = m_locale->GetSymNeg();
  Amount a = VelRound64C(Amount::Parse(text, format), m_decimals);
  if (!a.IsValid() || a.Raw() > kMaxRaw || a.Raw() < -kMaxRaw) return false;
  m_value = a;
  m_negativeZero = false;
  return true;
}

CurrencyEditModel::Result CurrencyEditModel::OnSetText(const char* text) {
  return PasteOrSet(text ? std::string_view(text) : std::string_view(), false);
}

CurrencyEditModel::Result CurrencyEditModel::PasteText(std::string_view text, CurrencySelection sel) {
  if (IsReadOnly()) return Unchanged(sel);
  std::string cleaned(text);
  if (!m_allowMinus) std::erase(cleaned, '-');
  return PasteOrSet(cleaned, true);
}

CurrencyEditModel::Result CurrencyEditModel::PasteOrSet(std::string_view text, bool byUser) {
  const Amount oldValue = m_value;
  const bool oldMinus = IsDigitMinus();
  if (!SetFromText(text)) {
    Result r = Unchanged({0, static_cast<int>(m_display.size())});
    r.failed = true;
    return r;
  }
  Layout();
  const int beforePoint = CanonLength() - 5;
  Result r = Show(beforePoint, beforePoint);
  r.valueChanged = m_value != oldValue || IsDigitMinus() != oldMinus;
  r.modified = byUser;
  if (byUser) m_edited = true;
  CheckInvariants();
  return r;
}

std::string CurrencyEditModel::GetCopyText(CurrencySelection sel) const {
  int a = std::clamp(std::min(sel.start, sel.end), 0, m_numberEnd);
  int b = std::clamp(std::max(sel.start, sel.end), 0, m_numberEnd);
  if (a == b) {
    a = 0;
    b = m_numberEnd;
  }
  std::string out;
  for (int i = a; i < b; ++i) {
    const auto at = static_cast<size_t>(i);
    const bool separator = i < m_decStart && m_dispToCanon[at] == m_dispToCanon[at + 1];
    if (!separator) out += m_display[at];
  }
  return out;
}

CurrencyEditModel::Result CurrencyEditModel::Cut(CurrencySelection sel, std::string* copied) {
  if (copied) *copied = GetCopyText(sel);
  if (IsReadOnly() || sel.start == sel.end) return Unchanged(sel);
  return DigitDelete(true, sel);
}

CurrencyEditModel::Result CurrencyEditModel::OnKillFocus(CurrencySelection sel) {
  const bool oldMinus = IsDigitMinus();
  const Edit e = Begin(sel);
  const int signShift = m_negativeZero && m_value.Raw() == 0 ? 1 : 0;
  m_negativeZero = false;
  Layout();
  const int len = CanonLength();
  const int start = std::clamp(e.start - signShift, 0, len);
  Result r = Show(start, std::clamp(e.end - signShift, start, len));
  r.valueChanged = IsDigitMinus() != oldMinus;
  return r;
}

CurrencyEditModel::Result CurrencyEditModel::OnSetSettings(std::string_view symbol, unsigned decimals,
                                                           CurrencySelection sel) {
  Result r = Unchanged(sel);
  switch (decimals) {
    case kSetBalloonPending:
      m_balloonPending = m_balloonAfter[0] = m_balloonAfter[1] = true;
      return r;
    case kSetShowCopyButton:
      m_showCopyButton = true;
      r.frameChanged = true;
      return r;
    case kSetForbidMinus:
      m_allowMinus = false;
      return r;
    case kSetAllowMinus:
      m_allowMinus = true;
      return r;
    default:
      break;
  }
  const Amount oldValue = m_value;
  m_symbol = symbol;
  m_decimals = static_cast<int>(std::min(decimals, 4u));
  // Shown again as if its plain text were set: rounded to the new number of decimals. Where that
  // would carry past 12 integer digits (999 999 999 999,5 to none) the field keeps the largest
  // amount it can show instead: a set text would be refused, but a value must remain.
  std::int64_t raw = VelRound64C(m_value.Raw(), m_decimals);
  if (raw > kMaxRaw || raw < -kMaxRaw) {
    static constexpr std::int64_t kStep[] = {10000, 1000, 100, 10, 1};
    const std::int64_t largest = kMaxRaw + 1 - kStep[m_decimals];
    raw = raw < 0 ? -largest : largest;
  }
  m_value = Amount::FromRaw(raw);
  if (m_value.Raw() != 0) m_negativeZero = false;
  Layout();
  const int beforePoint = CanonLength() - 5;
  r = Show(beforePoint, beforePoint);
  r.valueChanged = m_value != oldValue;
  r.calculatorSettings = true;
  CheckInvariants();
  return r;
}

}  // namespace varion
