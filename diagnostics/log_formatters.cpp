#include "diagnostics/log_formatters.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace SimpleLog {
namespace {

constexpr std::string_view kInvalidDateTime = "Invalid DateTime";
constexpr long long kMillisecondsPerDay = 86'400'000;

// "YYYY-MM-DD HH:MM:SS.mmm" is 23 characters.
constexpr std::size_t kTimeTextLength = 23;

char* PutDigits(char* out, int value, int digits) {
  for (int i = digits - 1; i >= 0; --i) {
    out[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
  return out + digits;
}

// Writes the time text into `out` (kTimeTextLength characters); false for a null or invalid value.
bool PutTimeText(const varion::DateTime& when, char* out) {
  if (!when.IsValid()) return false;
  // The whole part counts days (backwards before 1899-12-30); the fraction is always the time of
  // that day counted forward.
  const double serial = when.Value();
  const double whole = std::trunc(serial);
  long long day = static_cast<long long>(whole);
  long long ms = std::llround(std::fabs(serial - whole) * kMillisecondsPerDay);
  if (ms >= kMillisecondsPerDay) {
    ms -= kMillisecondsPerDay;
    ++day;
  }
  int year = 0, month = 0, dayOfMonth = 0;
  varion::CivilFromDays(day, year, month, dayOfMonth);
  if (year < 0 || year > 9999) return false;
  char* p = PutDigits(out, year, 4);
  *p++ = '-';
  p = PutDigits(p, month, 2);
  *p++ = '-';
  p = PutDigits(p, dayOfMonth, 2);
  *p++ = ' ';
  const int msOfDay = static_cast<int>(ms);
  p = PutDigits(p, msOfDay / 3'600'000, 2);
  *p++ = ':';
  p = PutDigits(p, msOfDay / 60'000 % 60, 2);
  *p++ = ':';
  p = PutDigits(p, msOfDay / 1000 % 60, 2);
  *p++ = '.';
  PutDigits(p, msOfDay % 1000, 3);
  return true;
}

}  // namespace

varion::DateTime SystemClock::CurrentTime() const {
  using namespace std::chrono;
  const auto now = system_clock::now().time_since_epoch();
  const long long second = duration_cast<seconds>(now).count();
  const long long micro = duration_cast<microseconds>(now).count() - second * 1'000'000;
  // Converting to local time takes the time-zone lock of the C library; within one second the
  // answer is the same, so each thread keeps the serial of the second it saw last.
  thread_local long long cachedSecond = -1;
  thread_local double cachedSerial = 0;
  if (second != cachedSecond) {
    const std::time_t t = static_cast<std::time_t>(second);
    std::tm local{};
#if defined(_WIN32)
    if (localtime_s(&local, &t) != 0) return varion::DateTime::Invalid();
#else
    if (!localtime_r(&t, &local)) return varion::DateTime::Invalid();
#endif
    const varion::DateTime base(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                                local.tm_sec > 59 ? 59 : local.tm_sec);
    if (!base.IsValid()) return base;
    cachedSecond = second;
    cachedSerial = base.Value();
  }
  return varion::DateTime(cachedSerial + static_cast<double>(micro) / 86'400e6);
}

TimestampFormatter::TimestampFormatter() : m_clock(std::make_shared<SystemClock>()) {}

TimestampFormatter::TimestampFormatter(std::shared_ptr<const IClock> clock)
    : m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>()) {}

std::string TimestampFormatter::ApplyExtraFormatting(std::string_view text) const {
  char time[kTimeTextLength];
  const bool valid = PutTimeText(m_clock->CurrentTime(), time);
  const std::string_view timeText = valid ? std::string_view(time, kTimeTextLength) : kInvalidDateTime;
  std::string out;
  out.reserve(timeText.size() + 1 + text.size());
  out.append(timeText).append(1, '\t').append(text);
  return out;
}

std::string TimestampFormatter::TimeText(const varion::DateTime& when) {
  char time[kTimeTextLength];
  if (!PutTimeText(when, time)) return std::string(kInvalidDateTime);
  return std::string(time, kTimeTextLength);
}

std::unique_ptr<IFormatter> FormatterFactory::Create(Formatting formatting) {
  if (formatting == Formatting::Timestamp) return std::make_unique<TimestampFormatter>();
  return std::make_unique<DummyFormatter>();
}

}  // namespace SimpleLog
