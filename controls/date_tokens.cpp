#include "controls/date_tokens.h"

#include <algorithm>
#include <cstdio>

#include "controls/locale_info.h"

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int Number(const std::string& s) {
  int v = 0;
  for (char c : s) v = v * 10 + (c - '0');
  return v;
}

// Two-digit fields: a first digit up to `waitUpTo` may still be followed by a second one.
CDtTokenActive::Input JudgeTwoDigits(std::string& buffer, char waitUpTo, int max, int min = 1) {
  if (buffer.size() == 1) {
    if (buffer[0] <= waitUpTo) return CDtTokenActive::Input::Waiting;
    return CDtTokenActive::Input::Complete;
  }
  int v = Number(buffer);
  return v >= min && v <= max ? CDtTokenActive::Input::Complete : CDtTokenActive::Input::Refused;
}

}  // namespace

CDtTokenActive::Input CDtTokenActive::AddChar(char c) {
  if (!IsDigit(c)) return Input::Refused;
  // A complete field starts over with the new digit.
  std::string next = m_complete ? std::string() : m_buffer;
  next += c;
  Input verdict = Judge(next);
  if (verdict == Input::Refused) return verdict;
  m_buffer = std::move(next);
  m_complete = verdict == Input::Complete;
  return verdict;
}

int CDtTokenActive::GetValue() const { return m_buffer.empty() ? -1 : Number(m_buffer); }

void CDtTokenActive::SetValue(int value) {
  char buf[16];
  std::snprintf(buf, sizeof buf, MaxDigits() == 4 ? "%04d" : "%02d", value);
  m_buffer = buf;
  m_complete = true;
}

std::string CDtTokenActive::GetText() const {
  std::string text = m_buffer;
  if (!m_complete) {
    // At least one letter, so that an incomplete field never reads as a number ("1" of a
    // one-letter day field shows as "1d").
    const size_t width = std::max(static_cast<size_t>(m_width), text.size() + 1);
    text.append(width - text.size(), GetLetter());
  }
  return text;
}

bool CDtTokenActive::OfferShifted(int days, int months) {
  if (!m_owner) return false;
  COleDateTime value = m_owner->GetDateValue();
  if (!value.IsValid()) return false;
  COleDateTime shifted = months != 0 ? value.AddMonths(months) : value.AddDays(days);
  return shifted.IsValid() && m_owner->OfferDateValue(shifted);
}

CDtTokenActive::Input CDtTokenDay::Judge(std::string& buffer) const { return JudgeTwoDigits(buffer, '3', 31); }

bool CDtTokenDay::Step(int direction) { return OfferShifted(direction < 0 ? -1 : 1, 0); }

CDtTokenActive::Input CDtTokenMonth::Judge(std::string& buffer) const { return JudgeTwoDigits(buffer, '1', 12); }

bool CDtTokenMonth::Step(int direction) { return OfferShifted(0, direction < 0 ? -1 : 1); }

CDtTokenActive::Input CDtTokenYear::Judge(std::string& buffer) const {
  if (buffer.size() < 4) return Input::Waiting;
  if (buffer[0] == '0') {
    buffer.erase(0, 1);  // leading zeros never start a year
    return Input::Waiting;
  }
  return Input::Complete;
}

bool CDtTokenYear::Step(int direction) { return OfferShifted(0, direction < 0 ? -12 : 12); }

CDtTokenList BuildDateTokens(std::string pattern, CDtTokenOwner* owner) {
  if (pattern.empty()) pattern = CLocaleInfo::GetTheLocaleInfo().GetShortDateFormat();
  for (char& c : pattern) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    if (c == 'y') c = 'r';
  }
  CDtTokenList tokens;
  for (size_t i = 0; i < pattern.size();) {
    size_t j = i;
    while (j < pattern.size() && pattern[j] == pattern[i]) ++j;
    int width = static_cast<int>(j - i);
    switch (pattern[i]) {
      case 'd': tokens.push_back(std::make_unique<CDtTokenDay>(owner, width)); break;
      case 'm': tokens.push_back(std::make_unique<CDtTokenMonth>(owner, width)); break;
      case 'r': tokens.push_back(std::make_unique<CDtTokenYear>(owner, width)); break;
      default: tokens.push_back(std::make_unique<CDtTokenSep>(owner, pattern.substr(i, j - i))); break;
    }
    i = j;
  }
  return tokens;
}

CDtTokenActive::Input CDtTokenTimeField::Judge(std::string& buffer) const {
  // The first digit that can still start a two-digit value waits: 2 for hours (20..23), 5 for
  // minutes and seconds.
  const int max = GetMax();
  return JudgeTwoDigits(buffer, static_cast<char>('0' + max / 10), max, 0);
}

bool CDtTokenTimeField::Step(int direction) {
  const int span = GetMax() + 1;
  const int v = GetValue();  // a partly typed field steps from the digit typed
  const int next = v < 0 ? (direction < 0 ? GetMax() : 0) : ((v + (direction < 0 ? -1 : 1)) % span + span) % span;
  SetValue(next);
  return true;
}

CDtTokenList BuildTimeTokens(bool seconds) {
  CDtTokenList tokens;
  tokens.push_back(std::make_unique<CDtTokenHour>(nullptr, 2));
  tokens.push_back(std::make_unique<CDtTokenSep>(nullptr, ":"));
  tokens.push_back(std::make_unique<CDtTokenMinute>(nullptr, 2));
  if (seconds) {
    tokens.push_back(std::make_unique<CDtTokenSep>(nullptr, ":"));
    tokens.push_back(std::make_unique<CDtTokenSecond>(nullptr, 2));
  }
  return tokens;
}
