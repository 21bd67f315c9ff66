#include "diagnostics/failure.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "diagnostics/framework_log.h"

namespace varion {
namespace {

template <class E>
std::exception_ptr Thrown(E error) {
  try {
    throw error;
  } catch (...) {
    return std::current_exception();
  }
}

TEST(Failure, EveryKindOfThrownValueIsDescribedWithItsTextAndCode) {
  struct Case {
    const char* what;
    std::exception_ptr error;
    std::string text;
    Status32 code;
  } cases[] = {
      {"ComError", Thrown(ComError(kDbError, "Naruszenie ograniczenia UNIQUE", "23000")),
       "Naruszenie ograniczenia UNIQUE", kDbError},
      {"standard", Thrown(std::runtime_error("handler failed")), "handler failed", kFail},
      {"no memory", Thrown(std::bad_alloc()), "Brak pamięci.", kOutOfMemory},
      {"a host's int", Thrown(42), "Nieznany błąd.", kUnexpected},
      {"nothing", nullptr, "Nieznany błąd.", kUnexpected},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const Failure f = DescribeFailure(c.error);
    EXPECT_EQ(f.text, c.text);
    EXPECT_EQ(f.code, c.code);
  }
}

TEST(Failure, LogFailureWritesAreaTextAndCodeAndSurvivesAThrowingSink) {
  std::string area, text;
  auto previous = SetFrameworkLogSink([&](std::string_view a, std::string_view t) {
    area = a;
    text = t;
  });
  LogFailure("dialog #9102", {"zapis nieudany", kDbError});
  EXPECT_EQ(area, "dialog #9102");
  EXPECT_EQ(text, "zapis nieudany (" + StatusText(kDbError) + ")");
  SetFrameworkLogSink([](std::string_view, std::string_view) { throw std::runtime_error("sink failed"); });
  EXPECT_NO_THROW(LogFailure("hook", {"x", kFail}));
  SetFrameworkLogSink(previous);
}

}  // namespace
}  // namespace varion
