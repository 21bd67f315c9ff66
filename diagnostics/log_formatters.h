// Formatters of SimpleLog and the clock the time stamps come from.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/export.h"
#include "diagnostics/simple_log.h"

namespace SimpleLog {

class VARION_API IClock {
 public:
  virtual ~IClock() = default;
  virtual varion::DateTime CurrentTime() const = 0;
};

// The local wall-clock time, to the microsecond the system gives (the date-time value keeps the
// fraction of the second).
class VARION_API SystemClock final : public IClock {
 public:
  varion::DateTime CurrentTime() const override;
};

class VARION_API DummyFormatter final : public IFormatter {
 public:
  std::string ApplyExtraFormatting(std::string_view text) const override { return std::string(text); }
};

// Prepends the clock's time: "<time>\t<text>", the time as "YYYY-MM-DD HH:MM:SS.mmm".
class VARION_API TimestampFormatter final : public IFormatter {
 public:
  TimestampFormatter();  // the system clock
  explicit TimestampFormatter(std::shared_ptr<const IClock> clock);
  std::string ApplyExtraFormatting(std::string_view text) const override;

  // The time text of one value; a null or invalid value gives "Invalid DateTime".
  static std::string TimeText(const varion::DateTime& when);

 private:
  std::shared_ptr<const IClock> m_clock;
};

enum class Formatting { Dummy, Timestamp };

struct VARION_API FormatterFactory {
  static std::unique_ptr<IFormatter> Create(Formatting formatting);
};

}  // namespace SimpleLog
