#include "framework/exchange_rules.h"

#include <cstdio>
#include <limits>

namespace varion {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f'; }

bool IsSignedKind(IntKind kind) { return kind == IntKind::Short || kind == IntKind::Int || kind == IntKind::Long; }

}  // namespace

std::int64_t IntKindMin(IntKind kind) {
  switch (kind) {
    case IntKind::Short:
      return std::numeric_limits<std::int16_t>::min();
    case IntKind::Int:
    case IntKind::Long:
      return std::numeric_limits<std::int32_t>::min();
    default:
      return 0;
  }
}

std::int64_t IntKindMax(IntKind kind) {
  switch (kind) {
    case IntKind::UChar:
      return 255;
    case IntKind::Short:
      return std::numeric_limits<std::int16_t>::max();
    case IntKind::Int:
    case IntKind::Long:
      return std::numeric_limits<std::int32_t>::max();
    case IntKind::UInt:
    case IntKind::ULong:
      return std::numeric_limits<std::uint32_t>::max();
  }
  return 0;
}

std::string FormatExchangeInt(IntKind kind, std::int64_t value) {
  char buf[32];
  switch (kind) {
    case IntKind::UChar:
    case IntKind::UInt:
      std::snprintf(buf, sizeof buf, "%u", static_cast<unsigned>(value));
      break;
    case IntKind::Short:
      std::snprintf(buf, sizeof buf, "%hd", static_cast<short>(value));
      break;
    case IntKind::Int:
      std::snprintf(buf, sizeof buf, "%d", static_cast<int>(value));
      break;
    case IntKind::Long:
      std::snprintf(buf, sizeof buf, "%ld", static_cast<long>(static_cast<std::int32_t>(value)));
      break;
    case IntKind::ULong:
      std::snprintf(buf, sizeof buf, "%lu", static_cast<unsigned long>(static_cast<std::uint32_t>(value)));
      break;
  }
  return buf;
}

bool ParseExchangeInt(std::string_view text, IntKind kind, std::int64_t& value) {
  std::size_t i = 0, end = text.size();
  while (i < end && IsBlank(text[i])) ++i;
  while (end > i && IsBlank(text[end - 1])) --end;
  bool negative = false;
  if (i < end && (text[i] == '-' || text[i] == '+')) {
    if (!IsSignedKind(kind)) return false;
    negative = text[i] == '-';
    ++i;
  }
  // Accumulate as a negative number, which holds the most negative value of every kind.
  std::int64_t acc = 0;
  const std::int64_t limit = negative ? IntKindMin(kind) : -IntKindMax(kind);
  const std::size_t first = i;
  for (; i < end && text[i] >= '0' && text[i] <= '9'; ++i) {
    acc = acc * 10 - (text[i] - '0');
    if (acc < limit) return false;
  }
  if (i == first) return false;
  // The number read so far is the variable's value even when text follows it: the save fails,
  // and the variable holds what the conversion made of the text's beginning.
  value = negative ? acc : -acc;
  return i == end;
}

const char* IntKindMessage(IntKind kind) {
  switch (kind) {
    case IntKind::UChar:
      return msg::kByte;
    case IntKind::UInt:
    case IntKind::ULong:
      return msg::kPositiveInteger;
    default:
      return msg::kInteger;
  }
}

std::string FormatLongMessage(const char* format, long long n) {
  char buf[512];
  std::snprintf(buf, sizeof buf, format, static_cast<long>(n));
  return buf;
}

std::string RangeMessage(BoundFormat format, std::int64_t min, std::int64_t max) {
  auto bound = [format](std::int64_t v) {
    char buf[32];
    switch (format) {
      case BoundFormat::Unsigned:
        std::snprintf(buf, sizeof buf, "%u", static_cast<unsigned>(v));
        break;
      case BoundFormat::UnsignedLong:
        std::snprintf(buf, sizeof buf, "%lu", static_cast<unsigned long>(static_cast<std::uint32_t>(v)));
        break;
      case BoundFormat::SignedLong:
        std::snprintf(buf, sizeof buf, "%ld", static_cast<long>(v));
        break;
    }
    return std::string(buf);
  };
  char buf[512];
  std::snprintf(buf, sizeof buf, msg::kRange, bound(min).c_str(), bound(max).c_str());
  return buf;
}

std::string TrimBlanks(std::string_view text) {
  std::size_t i = 0, end = text.size();
  while (i < end && IsBlank(text[i])) ++i;
  while (end > i && IsBlank(text[end - 1])) --end;
  return std::string(text.substr(i, end - i));
}

std::string DateDisplayText(const DateTime& value) {
  if (!value.IsValid()) return {};
  return value.Format(value.HasTimeOfDay() ? "%Y-%m-%d %H:%M:%S" : "%Y-%m-%d");
}

std::string DateTextDDMMYYYY(const DateTime& value) { return value.IsValid() ? value.Format("%d.%m.%Y") : ""; }

DateTime ParseExchangeDate(std::string_view text) {
  const std::string trimmed = TrimBlanks(text);
  if (trimmed.empty()) return DateTime::Null();
  return DateTime::ParseIso(trimmed);
}

bool ParseTimeOfDay(std::string_view text, int& seconds) {
  const std::string t = TrimBlanks(text);
  int parts[3] = {0, 0, 0};
  int count = 0;
  std::size_t i = 0;
  while (count < 3) {
    const std::size_t start = i;
    while (i < t.size() && t[i] >= '0' && t[i] <= '9') ++i;
    const std::size_t digits = i - start;
    if (digits == 0 || digits > 2 || (count > 0 && digits != 2)) return false;
    parts[count++] = std::stoi(t.substr(start, digits));
    if (i == t.size()) break;
    if (t[i++] != ':') return false;
  }
  if (i != t.size() || count < 2) return false;
  if (parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
  seconds = parts[0] * 3600 + parts[1] * 60 + parts[2];
  return true;
}

int AmountDisplayDecimals(const Amount& value) {
  const std::int64_t fraction = value.Raw() % Amount::kScale;
  if (fraction % 100 == 0) return 2;
  return fraction % 10 == 0 ? 3 : 4;
}

std::string ErrorListLine(std::string_view message) {
  std::string line(message);
  for (std::size_t p; (p = line.find("\r\n")) != std::string::npos;) line.erase(p, 2);
  for (std::size_t p; (p = line.find('\n')) != std::string::npos;) line.erase(p, 1);
  return line;
}

bool IsOwnSource(const FLG_OBJECT_ERROR_INFO& record, std::string_view templateName) {
  const std::string source = record.Source();
  return source.empty() || source == templateName;
}

bool IsDialogLevelError(const FLG_OBJECT_ERROR_INFO& record, std::string_view templateName) {
  return record.ctrlId == 0 && IsOwnSource(record, templateName);
}

}  // namespace varion
