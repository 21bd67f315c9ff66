#include "base/time_value.h"

namespace varion {

TimeValue TimeValue::FromDateTime(const DateTime& value) {
  DateParts p;
  if (!value.GetParts(p)) return TimeValue();
  const long long days = DaysFromCivil(p.year, p.month, p.day) - DaysFromCivil(1970, 1, 1);
  return TimeValue(days * 86400 + p.hour * 3600 + p.minute * 60 + p.second);
}

}  // namespace varion
