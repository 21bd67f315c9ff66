// SYSTEMTIME records as the month-calendar and date-picker messages carry them, to and from the
// library's date-time.
#pragma once

#include <windows.h>

#include "base/date_time.h"

namespace varion {

// The date and time of day; wDayOfWeek counts from Sunday = 0. A null or invalid date-time
// gives a zeroed record.
inline SYSTEMTIME ToSystemTime(const COleDateTime& date) {
  SYSTEMTIME st{};
  DateParts parts{};
  if (!date.IsValid() || !date.GetParts(parts)) return st;
  st.wYear = static_cast<WORD>(parts.year);
  st.wMonth = static_cast<WORD>(parts.month);
  st.wDay = static_cast<WORD>(parts.day);
  st.wHour = static_cast<WORD>(parts.hour);
  st.wMinute = static_cast<WORD>(parts.minute);
  st.wSecond = static_cast<WORD>(parts.second);
  st.wDayOfWeek = static_cast<WORD>(parts.dayOfWeek - 1);
  return st;
}

// The record's year, month and day only (the range and selection messages ignore the time);
// invalid when they name no day.
inline COleDateTime FromSystemDate(const SYSTEMTIME& st) {
  COleDateTime date;
  if (!date.SetDate(st.wYear, st.wMonth, st.wDay)) return COleDateTime::Invalid();
  return date;
}

}  // namespace varion
