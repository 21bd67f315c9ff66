#include "controls/time_edit_model.h"

#include "controls/ident_rules.h"

namespace varion {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

TimeEditModel::TimeEditModel(bool seconds) { SetSeconds(seconds); }

CDtTokenActive* TimeEditModel::Field(int tokenIndex) const {
  return static_cast<CDtTokenActive*>(m_tokens[static_cast<size_t>(tokenIndex)].get());
}

void TimeEditModel::SetSeconds(bool seconds) {
  // Keep what a complete time shows; the new form fills or drops the seconds.
  const std::string kept = GetEntry() == TimeEntry::Time ? GetCanonicalText().substr(0, 5) : std::string();
  m_seconds = seconds;
  m_tokens = BuildTimeTokens(seconds);
  m_fields.clear();
  for (size_t i = 0; i < m_tokens.size(); ++i)
    if (m_tokens[i]->IsActive()) m_fields.push_back(static_cast<int>(i));
  m_field = m_fields.front();
  m_advanced = false;
  if (!kept.empty()) SetText(kept);
}

// Texts ---------------------------------------------------------------------------------------

std::string TimeEditModel::GetText() const {
  std::string text;
  for (const auto& t : m_tokens) text += t->GetText();
  return text;
}

TimeEntry TimeEditModel::GetEntry() const {
  if (m_tokens.empty()) return TimeEntry::Empty;
  bool any = false, all = true;
  for (int i : m_fields) {
    any |= !Field(i)->GetBuffer().empty();
    all &= Field(i)->IsComplete();
  }
  return !any ? TimeEntry::Empty : all ? TimeEntry::Time : TimeEntry::Partial;
}

std::string TimeEditModel::GetCanonicalText() const { return GetEntry() == TimeEntry::Time ? GetText() : std::string(); }

bool TimeEditModel::SetText(std::string_view text) {
  IdentOptions options;
  options.seconds = m_seconds;
  const std::string tidy = IdentNormalise(IdentKind::Time, text, options);
  std::string empty;
  for (const auto& t : m_tokens)
    empty += t->IsActive() ? std::string(2, static_cast<const CDtTokenActive*>(t.get())->GetLetter()) : t->GetText();
  if (tidy.empty() || tidy == empty) {
    for (int i : m_fields) Field(i)->Clear();
  } else {
    // The rule set's check takes the field's own form only: "HH:MM" or "HH:MM:SS", in range.
    if (!IdentCheck(IdentKind::Time, tidy, options)) return false;
    size_t pos = 0;
    for (int i : m_fields) {
      Field(i)->SetValue((tidy[pos] - '0') * 10 + (tidy[pos + 1] - '0'));
      pos += 3;
    }
  }
  m_field = m_fields.front();
  m_advanced = false;
  return true;
}

DateEditResult TimeEditModel::Paste(std::string_view text) {
  DateEditResult r;
  r.handled = true;
  const std::string before = GetCanonicalText();
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos || !SetText(text)) {
    r.beep = true;
    return r;
  }
  r.textChanged = true;  // the caret went back to the first field
  Changed(before, r);
  return r;
}

void TimeEditModel::Changed(const std::string& before, DateEditResult& r) const {
  if (GetCanonicalText() != before) r.valueChanged = true;
}

// Caret ---------------------------------------------------------------------------------------

int TimeEditModel::GetCaret() const {
  int pos = 0;
  for (int i = 0; i < m_field; ++i) pos += static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
  const CDtTokenActive* t = Current();
  return pos + (t->IsComplete() ? 0 : static_cast<int>(t->GetBuffer().size()));
}

void TimeEditModel::GetFieldSpan(int& start, int& length) const {
  start = 0;
  for (int i = 0; i < m_field; ++i) start += static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
  length = static_cast<int>(Current()->GetText().size());
}

void TimeEditModel::SetCaretPos(int pos) {
  m_advanced = false;
  int end = 0;
  for (int i = 0; i < static_cast<int>(m_tokens.size()); ++i) {
    end += static_cast<int>(m_tokens[static_cast<size_t>(i)]->GetText().size());
    if (pos < end) {
      // A separator belongs to the field after it.
      m_field = m_tokens[static_cast<size_t>(i)]->IsActive() ? i : i + 1;
      return;
    }
  }
  m_field = m_fields.back();
}

void TimeEditModel::MoveField(int direction) {
  for (size_t k = 0; k < m_fields.size(); ++k) {
    if (m_fields[k] != m_field) continue;
    if (direction < 0 && k > 0) m_field = m_fields[k - 1];
    if (direction > 0 && k + 1 < m_fields.size()) m_field = m_fields[k + 1];
    return;
  }
}

// Keys ----------------------------------------------------------------------------------------

DateEditResult TimeEditModel::OnChar(char c) {
  DateEditResult r;
  if (static_cast<unsigned char>(c) < 0x20) {
    // Backspace did its work on the key press; the other control characters are the dialog's.
    r.handled = c == '\b';
    return r;
  }
  r.handled = true;
  const bool advanced = m_advanced;
  m_advanced = false;
  const std::string before = GetCanonicalText();
  if (IsDigit(c)) {
    CDtTokenActive* t = Current();
    const auto verdict = t->AddChar(c);
    if (verdict == CDtTokenActive::Input::Refused) {
      r.beep = true;
      return r;
    }
    r.textChanged = true;
    if (verdict == CDtTokenActive::Input::Complete) {
      t->SetValue(t->GetValue());  // "7" shows as "07"
      const int was = m_field;
      MoveField(+1);
      m_advanced = m_field != was;
    }
    Changed(before, r);
  } else if (c == '+' || c == '-') {
    r = Step(c == '+' ? 1 : -1);
  } else if (c == ':' || c == '.' || c == ' ') {
    // The separator typed out of habit right after a field completed by itself must not skip the
    // field the caret has just reached ("7:30").
    if (!advanced) r = FinishField();
  } else {
    r.beep = true;
  }
  return r;
}

DateEditResult TimeEditModel::Step(int direction) {
  DateEditResult r;
  r.handled = r.textChanged = true;
  const std::string before = GetCanonicalText();
  Current()->Step(direction);
  Changed(before, r);
  return r;
}

DateEditResult TimeEditModel::FinishField() {
  DateEditResult r;
  r.handled = true;
  const std::string before = GetCanonicalText();
  CDtTokenActive* t = Current();
  if (!t->IsComplete() && !t->GetBuffer().empty()) t->SetValue(t->GetValue());  // a waiting digit is a value already
  MoveField(+1);
  r.textChanged = true;
  Changed(before, r);
  return r;
}

DateEditResult TimeEditModel::Clear(bool all, bool back) {
  DateEditResult r;
  r.handled = r.textChanged = true;
  const std::string before = GetCanonicalText();
  if (all) {
    for (int i : m_fields) Field(i)->Clear();
    m_field = m_fields.front();
  } else {
    if (back && Current()->GetBuffer().empty()) MoveField(-1);
    Current()->Clear();
  }
  Changed(before, r);
  return r;
}

DateEditResult TimeEditModel::OnKeyDown(int key, keys::Modifiers mods) {
  DateEditResult r;
  m_advanced = false;
  switch (key) {
    case keys::kUp:
    case keys::kDown:
      if (mods.alt) return r;
      return Step(key == keys::kUp ? 1 : -1);
    case keys::kLeft:
    case keys::kRight:
      r.handled = r.textChanged = true;
      MoveField(key == keys::kLeft ? -1 : 1);
      return r;
    case keys::kHome:
    case keys::kEnd:
      r.handled = r.textChanged = true;
      m_field = key == keys::kHome ? m_fields.front() : m_fields.back();
      return r;
    case keys::kDelete:
    case keys::kBack:
      return Clear(mods.ctrl, key == keys::kBack);
    default:
      return r;
  }
}

}  // namespace varion
