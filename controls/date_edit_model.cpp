#include "controls/date_edit_model.h"

#include <algorithm>
#include <cassert>

#include "controls/date_input.h"

namespace varion {
namespace {

const DateTools::SystemClock kSystemClock;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Characters that finish a field as typed. "-" is not among them: it steps the field back.
bool IsFieldSeparator(char c, const std::string& patternSeparators) {
  return c == '.' || c == '/' || c == ',' || c == ' ' || (c != '-' && c != '+' && patternSeparators.find(c) != std::string::npos);
}

}  // namespace

DateEditModel::DateEditModel(const DateTools::IClock* clock)
    : m_clock(clock ? clock : &kSystemClock), m_lower(1900, 1, 1), m_upper(2100, 12, 31) {
  SetPattern(kDefaultPattern);
}

// Tokens --------------------------------------------------------------------------------------

CDtTokenActive* DateEditModel::Field(int tokenIndex) const {
  return static_cast<CDtTokenActive*>(m_tokens[static_cast<size_t>(tokenIndex)].get());
}

void DateEditModel::SetPattern(std::string pattern) {
  m_pattern = pattern;
  m_tokens = BuildDateTokens(std::move(pattern), this);
  m_fields.clear();
  for (size_t i = 0; i < m_tokens.size(); ++i)
    if (m_tokens[i]->IsActive()) m_fields.push_back(static_cast<int>(i));
  m_field = m_fields.empty() ? -1 : m_fields.front();
  Show(m_value);
}

std::string DateEditModel::FieldOrder() const {
  std::string order;
  for (int i : m_fields) order += Field(i)->GetLetter();
  return order;
}

void DateEditModel::Show(const COleDateTime& value) {
  m_advanced = false;
  DateParts p;
  const bool has = value.GetParts(p);
  for (int i : m_fields) {
    CDtTokenActive* t = Field(i);
    if (!has) {
      t->Clear();
      continue;
    }
    switch (t->GetLetter()) {
      case 'd': t->SetValue(p.day); break;
      case 'm': t->SetValue(p.month); break;
      default: t->SetValue(p.year); break;
    }
  }
}

// Value and range -----------------------------------------------------------------------------

bool DateEditModel::IsInRange(const COleDateTime& date) const {
  if (!date.IsValid()) return false;
  const COleDateTime day = date.DateOnly();
  return (m_lower.IsNull() || !(day < m_lower)) && (m_upper.IsNull() || !(day > m_upper));
}

bool DateEditModel::SetValue(const COleDateTime& value) {
  if (!value.IsNull() && !IsInRange(value)) return false;
  m_value = value.IsNull() ? value : value.DateOnly();
  Show(m_value);
  CheckInvariants();
  return true;
}

bool DateEditModel::SetRange(const COleDateTime& lower, const COleDateTime& upper) {
  if ((!lower.IsNull() && !lower.IsValid()) || (!upper.IsNull() && !upper.IsValid())) return false;
  const COleDateTime low = lower.IsNull() ? lower : lower.DateOnly();
  const COleDateTime high = upper.IsNull() ? upper : upper.DateOnly();
  if (low.IsValid() && high.IsValid() && !(high > low)) return false;
  m_lower = low;
  m_upper = high;
  if (m_value.IsValid() && !IsInRange(m_value)) m_value = m_value < m_lower ? m_lower : m_upper;
  Show(m_value);  // an unfinished entry is judged by the old range; start from the value again
  CheckInvariants();
  return true;
}

bool DateEditModel::ApplyValue(const COleDateTime& value, DateEditResult& r) {
  if (!IsInRange(value)) return false;
  const COleDateTime day = value.DateOnly();
  if (!(day == m_value)) r.valueChanged = true;
  m_value = day;
  Show(m_value);
  r.textChanged = true;
  return true;
}

COleDateTime DateEditModel::GetDateValue() const {
  return Evaluate(nullptr) == DateEntry::Date ? m_value : COleDateTime::Null();
}

bool DateEditModel::OfferDateValue(const COleDateTime& value) {
  DateEditResult ignored;
  return ApplyValue(value, ignored);
}

// Entry ---------------------------------------------------------------------------------------

DateEntry DateEditModel::Evaluate(COleDateTime* date) const {
  if (m_fields.empty()) {
    if (date) *date = m_value;
    return m_value.IsNull() ? DateEntry::Empty : DateEntry::Date;
  }
  bool any = false, all = true;
  int parts[3] = {-1, -1, -1};  // day, month, year: the first field of each kind
  for (int i : m_fields) {
    const CDtTokenActive* t = Field(i);
    any |= !t->GetBuffer().empty();
    all &= t->IsComplete();
    int& part = parts[t->GetLetter() == 'd' ? 0 : t->GetLetter() == 'm' ? 1 : 2];
    if (part < 0 && t->IsComplete()) part = t->GetValue();
  }
  if (!any) return DateEntry::Empty;
  if (!all) return DateEntry::Partial;
  const COleDateTime shown = Compose(parts);
  if (!shown.IsValid()) return DateEntry::NotADate;
  if (!IsInRange(shown)) return DateEntry::OutOfRange;
  if (date) *date = shown;
  return DateEntry::Date;
}

COleDateTime DateEditModel::Compose(const int (&parts)[3]) const {
  // Fields the pattern lacks come from the value, or from the first of January of this year.
  DateParts base;
  if (!m_value.GetParts(base)) {
    base = DateParts{};
    base.year = m_clock->Today().GetYear();
    base.month = base.day = 1;
  }
  const int year = parts[2] >= 0 ? parts[2] : base.year;
  const int month = parts[1] >= 0 ? parts[1] : base.month;
  const int day = parts[0] >= 0 ? parts[0] : std::min(base.day, DateTime::DaysInMonth(year, month));
  return COleDateTime(year, month, day);
}

DateEntry DateEditModel::GetEntry() const { return Evaluate(nullptr); }

bool DateEditModel::IsUnfinished() const {
  const DateEntry e = GetEntry();
  return e != DateEntry::Empty && e != DateEntry::Date;
}

void DateEditModel::Sync(DateEditResult& r) {
  COleDateTime shown;
  const DateEntry e = Evaluate(&shown);
  if (e == DateEntry::Date && !(shown == m_value)) {
    m_value = shown;
    r.valueChanged = true;
  } else if (e == DateEntry::Empty && !m_value.IsNull()) {
    m_value = COleDateTime::Null();
    r.valueChanged = true;
  }
}

void DateEditModel::CheckInvariants() const {
#ifndef NDEBUG
  assert(m_value.IsNull() || (IsInRange(m_value) && !m_value.HasTimeOfDay()));
  assert((m_field < 0) == m_fields.empty());
  assert(m_field < 0 || m_tokens[static_cast<size_t>(m_field)]->IsActive());
  COleDateTime shown;
  const DateEntry e = Evaluate(&shown);
  assert(e != DateEntry::Date || shown == m_value);
  assert(e != DateEntry::Empty || m_value.IsNull());
  const int caret = GetCaret();
  assert(caret >= 0 && caret <= static_cast<int>(GetText().size()));
#endif
}

// Texts ---------------------------------------------------------------------------------------

std::string DateEditModel::GetText() const {
  std::string text;
  for (const auto& t : m_tokens) text += t->GetText();
  return text;
}

std::string DateEditModel::EmptyText() const {
  std::string text;
  for (const auto& t : m_tokens) {
    if (t->IsActive())
      text.append(static_cast<size_t>(std::max(t->GetWidth(), 1)), static_cast<const CDtTokenActive*>(t.get())->GetLetter());
    else
      text += t->GetText();
  }
  return text;
}

std::string DateEditModel::GetCanonicalText() const { return m_value.Format("%Y-%m-%d"); }

COleDateTime DateEditModel::ParseText(std::string_view text) const {
  const size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return COleDateTime::Null();
  text = text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
  if (text == EmptyText()) return COleDateTime::Null();

  // The pattern's own shown form first: its separators may be ones the general reader does not
  // take ("31--12. 2024").
  size_t pos = 0;
  int parts[3] = {-1, -1, -1};
  bool matched = !m_fields.empty();
  for (const auto& token : m_tokens) {
    if (!matched) break;
    if (!token->IsActive()) {
      const std::string sep = token->GetText();
      matched = text.substr(pos, sep.size()) == sep;
      pos += sep.size();
      continue;
    }
    const auto* t = static_cast<const CDtTokenActive*>(token.get());
    const size_t most = t->GetLetter() == 'r' ? 4 : 2;
    size_t n = 0;
    int v = 0;
    for (; n < most && pos < text.size() && IsDigit(text[pos]); ++n, ++pos) v = v * 10 + (text[pos] - '0');
    matched = n == most || (n > 0 && t->GetLetter() != 'r');
    int& part = parts[t->GetLetter() == 'd' ? 0 : t->GetLetter() == 'm' ? 1 : 2];
    if (part < 0) part = v;
  }
  COleDateTime date;
  if (matched && pos == text.size()) {
    date = Compose(parts);
  } else {
    date = ParseDateInput(text, FieldOrder());
  }
  return IsInRange(date) ? date : COleDateTime::Invalid();
}

bool DateEditModel::SetText(std::string_view text) {
  const COleDateTime date = ParseText(text);
  if (!date.IsNull() && !date.IsValid()) return false;
  return SetValue(date);
}

DateEditResult DateEditModel::Paste(std::string_view text) {
  DateEditResult r;
  r.handled = true;
  const COleDateTime date = ParseText(text);
  if (!date.IsValid() || !ApplyValue(date, r)) r.beep = true;
  CheckInvariants();
  return r;
}

// Caret ---------------------------------------------------------------------------------------

int DateEditModel::GetCaret() const {
  int pos = 0;
  for (int i = 0; i < static_cast<int>(m_tokens.size()); ++i) {
    if (i == m_field) {
      const CDtTokenActive* t = Field(i);
      return pos + (t->IsComplete() ? 0 : static_cast<int>(t->GetBuffer().size()));
    }
    pos += static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
  }
  return 0;
}

void DateEditModel::GetFieldSpan(int& start, int& length) const {
  start = length = 0;
  for (int i = 0; i < static_cast<int>(m_tokens.size()); ++i) {
    const int size = static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
    if (i == m_field) {
      length = size;
      return;
    }
    start += size;
  }
}

void DateEditModel::SetCaretPos(int pos) {
  m_advanced = false;
  if (m_fields.empty()) return;
  int start = 0, hit = static_cast<int>(m_tokens.size()) - 1;
  for (int i = 0; i < static_cast<int>(m_tokens.size()); ++i) {
    start += static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
    if (pos < start) {
      hit = i;
      break;
    }
  }
  // A separator belongs to the field after it; the last one to the field before it.
  auto after = std::lower_bound(m_fields.begin(), m_fields.end(), hit);
  m_field = after != m_fields.end() ? *after : m_fields.back();
  CheckInvariants();
}

void DateEditModel::MoveField(int direction) {
  auto it = std::find(m_fields.begin(), m_fields.end(), m_field);
  if (it == m_fields.end()) return;
  if (direction < 0 && it != m_fields.begin()) m_field = *(it - 1);
  if (direction > 0 && it + 1 != m_fields.end()) m_field = *(it + 1);
}

// Keys ----------------------------------------------------------------------------------------

DateEditResult DateEditModel::OnChar(char c) {
  DateEditResult r;
  if (static_cast<unsigned char>(c) < 0x20) {
    // Backspace did its work on the key press; the other control characters are the dialog's.
    r.handled = c == '\b';
    return r;
  }
  r.handled = true;
  const bool advanced = m_advanced;
  m_advanced = false;
  if (IsDigit(c)) {
    CDtTokenActive* t = Current();
    const auto verdict = t ? t->AddChar(c) : CDtTokenActive::Input::Refused;
    if (verdict == CDtTokenActive::Input::Refused) {
      r.beep = true;
      return r;
    }
    r.textChanged = true;
    if (verdict == CDtTokenActive::Input::Complete) {
      if (t->GetLetter() != 'r') t->SetValue(t->GetValue());  // "4" shows as "04"
      const int before = m_field;
      MoveField(+1);
      m_advanced = m_field != before;
    }
    Sync(r);
  } else if (c == '+' || c == '-') {
    r = Step(c == '+' ? 1 : -1);
  } else if (c == 't' || c == 'T') {
    if (!ApplyValue(m_clock->Today(), r)) r.beep = true;
  } else {
    std::string separators;
    for (const auto& t : m_tokens)
      if (!t->IsActive()) separators += t->GetText();
    // A separator right after a field completed by itself is the one the user types out of
    // habit ("2024/1/5"): it must not skip the field the caret has just reached.
    if (IsFieldSeparator(c, separators))
      r = advanced ? r : FinishField();
    else
      r.beep = true;
  }
  CheckInvariants();
  return r;
}

DateEditResult DateEditModel::Step(int direction) {
  DateEditResult r;
  r.handled = true;
  CDtTokenActive* t = Current();
  const COleDateTime before = m_value;
  if (!t || !t->Step(direction)) {
    r.beep = true;
    return r;
  }
  r.textChanged = true;
  r.valueChanged = !(before == m_value);
  return r;
}

DateEditResult DateEditModel::FinishField() {
  DateEditResult r;
  r.handled = true;
  CDtTokenActive* t = Current();
  if (!t) {
    r.beep = true;
    return r;
  }
  if (!t->IsComplete() && !t->GetBuffer().empty()) {
    const int v = t->GetValue();
    const bool fits = t->GetLetter() == 'd' ? v >= 1 && v <= 31 : t->GetLetter() == 'm' && v >= 1 && v <= 12;
    if (!fits) {  // a year needs its four digits
      r.beep = true;
      return r;
    }
    t->SetValue(v);
  }
  MoveField(+1);
  r.textChanged = true;
  Sync(r);
  return r;
}

DateEditResult DateEditModel::Clear(bool all, bool back) {
  DateEditResult r;
  r.handled = true;
  if (m_fields.empty()) {
    r.beep = true;
    return r;
  }
  if (all) {
    for (int i : m_fields) Field(i)->Clear();
    m_field = m_fields.front();
  } else {
    if (back && Current()->GetBuffer().empty()) MoveField(-1);
    Current()->Clear();
  }
  r.textChanged = true;
  Sync(r);
  return r;
}

DateEditResult DateEditModel::OnKeyDown(int key, keys::Modifiers mods) {
  DateEditResult r;
  m_advanced = false;
  switch (key) {
    case keys::kUp:
    case keys::kDown:
      if (mods.alt) {
        r.handled = r.dropDown = true;
        return r;
      }
      r = Step(key == keys::kUp ? 1 : -1);
      break;
    case keys::kF4:
      r.handled = r.dropDown = true;
      return r;
    case keys::kLeft:
    case keys::kRight:
      r.handled = r.textChanged = true;
      MoveField(key == keys::kLeft ? -1 : 1);
      break;
    case keys::kHome:
    case keys::kEnd:
      r.handled = true;
      if (mods.ctrl) {
        if (!ApplyValue(key == keys::kHome ? m_lower : m_upper, r)) r.beep = true;
      } else if (!m_fields.empty()) {
        m_field = key == keys::kHome ? m_fields.front() : m_fields.back();
        r.textChanged = true;
      }
      break;
    case keys::kPrior:
    case keys::kNext:
      r.handled = true;
      if (GetEntry() != DateEntry::Date || !ApplyValue(m_value.AddMonths(key == keys::kPrior ? 1 : -1), r))
        r.beep = true;
      break;
    case keys::kDelete:
    case keys::kBack:
      r = Clear(mods.ctrl, key == keys::kBack);
      break;
    default:
      return r;
  }
  CheckInvariants();
  return r;
}

DateEditResult DateEditModel::Settle() {
  DateEditResult r;
  r.handled = true;
  if (IsUnfinished()) {
    Show(m_value);
    r.beep = r.textChanged = true;
  }
  CheckInvariants();
  return r;
}

DateEditResult DateEditModel::OnCalendarSelect(const COleDateTime& date) {
  DateEditResult r;
  r.handled = ApplyValue(date, r);
  CheckInvariants();
  return r;
}

}  // namespace varion
