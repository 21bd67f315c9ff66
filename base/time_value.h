// The framework's CTime: whole seconds since 1970-01-01 00:00 on the wall clock (no time zone),
// the value date-time pickers and older interfaces exchange.
#pragma once

#include <cstdint>

#include "base/date_time.h"
#include "base/export.h"

namespace varion {

class VARION_API TimeValue {
 public:
  constexpr TimeValue() = default;
  constexpr explicit TimeValue(std::int64_t seconds) : m_seconds(seconds) {}
  // A null or invalid date-time gives 0 (the epoch), rounded to the nearest second otherwise.
  static TimeValue FromDateTime(const DateTime& value);

  constexpr std::int64_t GetTime() const { return m_seconds; }
  DateTime ToDateTime() const { return DateTime::FromUnixSeconds(m_seconds); }
  constexpr bool operator==(const TimeValue&) const = default;

 private:
  std::int64_t m_seconds = 0;
};

}  // namespace varion

using CTime = varion::TimeValue;
