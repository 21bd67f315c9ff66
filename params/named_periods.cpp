#include "params/named_periods.h"

namespace varion {

bool NamedPeriod(int code, const DateTools::IClock& clock, DateTools::Period& out) {
  const COleDateTime today = clock.Today();
  if (!today.IsValid()) return false;
  const DateTools::MonthYear month(today);
  switch (code) {
    case kPeriodCurrentDay:
      out = {today, today};
      return true;
    case kPeriodCurrentWeek: {
      COleDateTime monday = today.AddDays(1 - today.GetIsoDayOfWeek());
      out = {monday, monday.AddDays(6)};
      return true;
    }
    case kPeriodCurrentMonth:
      out = month.ToPeriod();
      return true;
    case kPeriodCurrentQuarter:
      out = DateTools::QuarterYear(today).ToPeriod();
      return true;
    case kPeriodCurrentYear:
      out = {COleDateTime(today.GetYear(), 1, 1), COleDateTime(today.GetYear(), 12, 31)};
      return true;
    case kPeriodLast7Days:
      out = {today.AddDays(-6), today};
      return true;
    case kPeriodLast30Days:
      out = {today.AddDays(-29), today};
      return true;
    case kPeriodPreviousMonth:
      out = month.Next(-1).ToPeriod();
      return true;
    default:
      return false;
  }
}

}  // namespace varion

namespace {

std::string RangeSide(const COleDateTime& d) { return d.IsValid() ? d.Format("%Y-%m-%d") : "Invalid DateTime"; }

std::string RangeSide(const _variant_t& v) {
  COleDateTime d = COleDateTime::Invalid();
  if (v.GetType() != varion::Variant::Type::Date || varion::Failed(v.ToDate(d))) return RangeSide(COleDateTime::Invalid());
  return RangeSide(d);
}

}  // namespace

std::string GetDokOkresFormatBetween(int code, const _variant_t& from, const _variant_t& to,
                                     const DateTools::IClock& clock) {
  DateTools::Period period;
  if (varion::NamedPeriod(code, clock, period)) return RangeSide(period.GetStart()) + " AND " + RangeSide(period.GetEnd());
  return RangeSide(from) + " AND " + RangeSide(to);
}
