// SimpleLog, the library's diagnostic log. A logger is assembled from a sink (a text file or the
// database log table), a toggle that decides whether anything is written, and a formatter. Logging
// is off unless a toggle says otherwise, and a failing sink never disturbs the caller: nothing a
// logger does raises an exception.
//
// Thread safety: one logger may be shared by several threads. The logger itself keeps no state;
// the sinks serialise their writes, so a line is never mixed with another. Toggles and formatters
// are called concurrently and must not change state without their own lock.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/export.h"

// Levels of an entry, written into files by name and into the database by number. Any other
// value is accepted and written with an empty name.
enum tagFramLogLevel : int {
  FramLogDebug = 0,
  FramLogInfo = 1,
  FramLogWarning = 2,
  FramLogError = 3,
};
typedef tagFramLogLevel FramLogLevel;

namespace SimpleLog {

// "DEBUG", "INFO", "WARNING", "ERROR"; "" for a value outside 0..3.
VARION_API std::string_view LevelName(tagFramLogLevel level);

// Where entries go. Write receives the text already formatted.
class VARION_API ILoggerSink {
 public:
  virtual ~ILoggerSink() = default;
  virtual void Write(tagFramLogLevel level, std::string_view text) = 0;
};

// Whether a logger writes at all. Asked before anything else on every entry, so it must be cheap:
// the toggles of the library take their answer once, when they are made.
class VARION_API ILoggerToggle {
 public:
  virtual ~ILoggerToggle() = default;
  virtual bool IsEnabled() const = 0;
};

// Turns the caller's text into the text the sink writes.
class VARION_API IFormatter {
 public:
  virtual ~IFormatter() = default;
  virtual std::string ApplyExtraFormatting(std::string_view text) const = 0;
};

class VARION_API ISimpleLogger {
 public:
  virtual ~ISimpleLogger() = default;
  virtual void Write(tagFramLogLevel level, std::string_view text) const = 0;
};

// Sole owner of one logger. A wrapper without a logger (default-made, moved from, unwrapped)
// writes nothing.
class VARION_API SimpleLoggerWrapper {
 public:
  SimpleLoggerWrapper() = default;
  explicit SimpleLoggerWrapper(std::unique_ptr<ISimpleLogger> logger) : m_logger(std::move(logger)) {}
  SimpleLoggerWrapper(SimpleLoggerWrapper&&) noexcept = default;
  SimpleLoggerWrapper& operator=(SimpleLoggerWrapper&&) noexcept = default;
  SimpleLoggerWrapper(const SimpleLoggerWrapper&) = delete;
  SimpleLoggerWrapper& operator=(const SimpleLoggerWrapper&) = delete;
  ~SimpleLoggerWrapper() = default;

  void Write(tagFramLogLevel level, std::string_view text) const {
    if (m_logger) m_logger->Write(level, text);
  }
  // Gives the logger up; the wrapper is empty afterwards.
  std::unique_ptr<ISimpleLogger> Unwrap() { return std::move(m_logger); }
  bool HasLogger() const { return m_logger != nullptr; }

 private:
  std::unique_ptr<ISimpleLogger> m_logger;
};

namespace Custom {

// The general assembly. The parts may be shared between loggers (one toggle for several files,
// one sink for several names). Without a toggle the logger is off; without a formatter the text
// is written unchanged; without a sink nothing is written.
VARION_API SimpleLoggerWrapper CreateLogger(std::shared_ptr<ILoggerSink> sink, std::shared_ptr<const ILoggerToggle> toggle,
                                            std::shared_ptr<const IFormatter> formatter);

}  // namespace Custom

namespace Dummy {

// A logger that writes nothing, for callers that must hold one.
VARION_API SimpleLoggerWrapper CreateLogger();

}  // namespace Dummy

}  // namespace SimpleLog
