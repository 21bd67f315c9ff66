#include "diagnostics/simple_log.h"

#include <iterator>

namespace SimpleLog {
namespace {

class AssembledLogger final : public ISimpleLogger {
 public:
  AssembledLogger(std::shared_ptr<ILoggerSink> sink, std::shared_ptr<const ILoggerToggle> toggle,
                  std::shared_ptr<const IFormatter> formatter)
      : m_sink(std::move(sink)), m_toggle(std::move(toggle)), m_formatter(std::move(formatter)) {}

  void Write(tagFramLogLevel level, std::string_view text) const override {
    try {
      // The toggle comes first: a logger that is off must not pay for formatting. A toggle that
      // throws (one supplied by the host) counts as off.
      if (!m_toggle->IsEnabled()) return;
      if (m_formatter) {
        m_sink->Write(level, m_formatter->ApplyExtraFormatting(text));
      } else {
        m_sink->Write(level, text);
      }
    } catch (...) {
      // A log that cannot be written is lost; the caller's work goes on.
    }
  }

 private:
  std::shared_ptr<ILoggerSink> m_sink;
  std::shared_ptr<const ILoggerToggle> m_toggle;
  std::shared_ptr<const IFormatter> m_formatter;
};

class NullLogger final : public ISimpleLogger {
 public:
  void Write(tagFramLogLevel, std::string_view) const override {}
};

}  // namespace

std::string_view LevelName(tagFramLogLevel level) {
  static constexpr std::string_view kNames[] = {"DEBUG", "INFO", "WARNING", "ERROR"};
  const int index = static_cast<int>(level);
  if (index < 0 || index >= static_cast<int>(std::size(kNames))) return {};
  return kNames[index];
}

namespace Custom {

SimpleLoggerWrapper CreateLogger(std::shared_ptr<ILoggerSink> sink, std::shared_ptr<const ILoggerToggle> toggle,
                                 std::shared_ptr<const IFormatter> formatter) {
  if (!sink || !toggle) return Dummy::CreateLogger();
  return SimpleLoggerWrapper(std::make_unique<AssembledLogger>(std::move(sink), std::move(toggle), std::move(formatter)));
}

}  // namespace Custom

namespace Dummy {

SimpleLoggerWrapper CreateLogger() { return SimpleLoggerWrapper(std::make_unique<NullLogger>()); }

}  // namespace Dummy

}  // namespace SimpleLog
