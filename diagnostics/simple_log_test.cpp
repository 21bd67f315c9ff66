// Assembly of loggers, the wrapper, the time stamp and the entry helpers.
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "diagnostics/log_factories.h"
#include "tests/log_test_support.h"

namespace SimpleLog {
namespace {

using varion::DateTime;
using varion::testing::FixedClock;
using varion::testing::RecordingSink;

struct SwitchToggle : ILoggerToggle {
  explicit SwitchToggle(bool on) : on(on) {}
  bool IsEnabled() const override { return on; }
  bool on;
};

struct CountingFormatter : IFormatter {
  std::string ApplyExtraFormatting(std::string_view text) const override {
    ++calls;
    if (text == "throw") throw std::bad_alloc();
    return "<" + std::string(text) + ">";
  }
  mutable std::atomic<int> calls{0};
};

struct ThrowingSink : ILoggerSink {
  void Write(tagFramLogLevel, std::string_view) override { throw std::runtime_error("disk gone"); }
};

std::vector<std::string> Texts(const RecordingSink& sink) {
  std::vector<std::string> out;
  for (const auto& e : sink.Entries()) out.push_back(e.second);
  return out;
}

TEST(SimpleLogAssembly, ToggleDecidesBeforeAnyFormattingAndNothingReachesTheCaller) {
  struct Case {
    bool enabled, withFormatter;
    int formatted;
    std::vector<std::string> written;
  };
  const Case cases[] = {{true, true, 3, {"<a>", "<b>"}}, {true, false, 0, {"a", "b", "throw"}}, {false, true, 0, {}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "enabled " << c.enabled << ", formatter " << c.withFormatter);
    auto sink = std::make_shared<RecordingSink>();
    auto formatter = std::make_shared<CountingFormatter>();
    SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<SwitchToggle>(c.enabled),
                                                      c.withFormatter ? formatter : nullptr);
    logger.Write(FramLogInfo, "a");
    logger.Write(FramLogError, "b");
    EXPECT_NO_THROW(logger.Write(FramLogError, "throw"));
    EXPECT_EQ(formatter->calls.load(), c.formatted);
    EXPECT_EQ(Texts(*sink), c.written);
    if (!c.written.empty()) {
      EXPECT_EQ(sink->Entries()[1].first, FramLogError);
    }
  }
  auto sink = std::make_shared<RecordingSink>();
  Custom::CreateLogger(sink, nullptr, nullptr).Write(FramLogError, "no toggle: off");
  EXPECT_TRUE(sink->Entries().empty());
  auto on = std::make_shared<AlwaysOnLoggerToggle>();
  EXPECT_NO_THROW(Custom::CreateLogger(nullptr, on, nullptr).Write(FramLogError, "x"));
  EXPECT_NO_THROW(Custom::CreateLogger(std::make_shared<ThrowingSink>(), on, nullptr).Write(FramLogError, "x"));
  // A host's toggle that throws counts as off: nothing written, nothing thrown.
  struct ThrowingToggle : ILoggerToggle {
    bool IsEnabled() const override { throw std::runtime_error("registry gone"); }
  };
  SimpleLoggerWrapper throwing = Custom::CreateLogger(sink, std::make_shared<ThrowingToggle>(), nullptr);
  EXPECT_NO_THROW(throwing.Write(FramLogError, "toggle throws"));
  EXPECT_TRUE(sink->Entries().empty());
}

TEST(SimpleLogWrapper, MovesAndUnwrapsItsOneLogger) {
  auto sink = std::make_shared<RecordingSink>();
  SimpleLoggerWrapper first = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
  SimpleLoggerWrapper second = std::move(first);
  first.Write(FramLogInfo, "moved from");
  second.Write(FramLogInfo, "one");
  std::unique_ptr<ISimpleLogger> raw = second.Unwrap();
  ASSERT_NE(raw, nullptr);
  second.Write(FramLogInfo, "unwrapped");
  raw->Write(FramLogWarning, "two");
  EXPECT_EQ(Texts(*sink), (std::vector<std::string>{"one", "two"}));
  static_assert(!std::is_copy_constructible_v<SimpleLoggerWrapper>);
}

TEST(SimpleLogFormatters, TimestampTextOfClockValues) {
  const double ms = 1.0 / 86'400'000;
  struct Case {
    DateTime when;
    const char* text;
  };
  const Case cases[] = {
      {DateTime(DateTime(2025, 3, 14, 9, 26, 53).Value() + 589 * ms), "2025-03-14 09:26:53.589"},
      // A fraction just under a whole millisecond rounds up, into the next day and year if need be.
      {DateTime(DateTime(2024, 12, 31, 23, 59, 59).Value() + 999.7 * ms), "2025-01-01 00:00:00.000"},
      // Before 1899-12-30 the days count backwards while the time still counts forwards.
      {DateTime(-1.25), "1899-12-29 06:00:00.000"},
      {DateTime(100, 1, 1), "0100-01-01 00:00:00.000"},
      {DateTime::Invalid(), "Invalid DateTime"},
      {DateTime::Null(), "Invalid DateTime"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    TimestampFormatter formatter(std::make_shared<FixedClock>(c.when));
    EXPECT_EQ(formatter.ApplyExtraFormatting("Łódź\tok"), std::string(c.text) + "\tŁódź\tok");
  }
  // The system clock is the local time DateTime::Now gives, with a fraction of the second.
  const DateTime before = DateTime::Now(), now = SystemClock().CurrentTime(), after = DateTime::Now();
  EXPECT_GE(now.Value(), before.Value() - 1e-9);
  EXPECT_LT(now.Value(), after.Value() + 1.0 / 86400);
}

TEST(SimpleLogFields, ComErrorAndSourceLocationAreAppendedAsNamedFields) {
  auto sink = std::make_shared<RecordingSink>();
  SimpleLoggerWrapper logger = Custom::CreateLogger(sink, std::make_shared<AlwaysOnLoggerToggle>(), nullptr);
  ComHelpers::WriteComError(logger, "Zapis", varion::ComError(varion::kFail, "Nieokreślony błąd"));
  ComHelpers::WriteComError(logger, "Zapis", varion::ComError(0x1, "x=y"));
  EXPECT_EQ(Texts(*sink), (std::vector<std::string>{"Zapis error_message=Nieokreślony błąd error_code=0x80004005",
                                                    "Zapis error_message=x=y error_code=0x1"}));
  EXPECT_EQ(sink->Entries()[0].first, FramLogError);

  const int line = __LINE__ + 1;
  const LogFields::Field here = LogFields::SourceLocation();
  EXPECT_EQ(here.value.rfind("simple_log_test.cpp:" + std::to_string(line) + " ", 0), 0u) << here.value;
  EXPECT_NE(here.value.find("TestBody"), std::string::npos) << here.value;
  EXPECT_EQ(LogFields::WithFields("a", {{"k", "v"}, here}), "a k=v source_location=" + here.value);
}

}  // namespace
}  // namespace SimpleLog
