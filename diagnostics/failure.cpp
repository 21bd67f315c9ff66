#include "diagnostics/failure.h"

#include <new>

#include "diagnostics/framework_log.h"

namespace varion {

Failure DescribeFailure(std::exception_ptr error) noexcept {
  try {
    if (error) std::rethrow_exception(error);
    return {"Nieznany błąd.", kUnexpected};
  } catch (const ComError& e) {
    try {
      return {e.Message(), e.Code()};
    } catch (...) {
      return {{}, e.Code()};
    }
  } catch (const std::bad_alloc&) {
    return {"Brak pamięci.", kOutOfMemory};
  } catch (const std::exception& e) {
    try {
      return {e.what(), kFail};
    } catch (...) {
      return {{}, kFail};
    }
  } catch (...) {
    // A host may throw anything through our callbacks; we cannot know what it meant.
    try {
      return {"Nieznany błąd.", kUnexpected};
    } catch (...) {
      return {{}, kUnexpected};
    }
  }
}

void LogFailure(std::string_view where, const Failure& failure) noexcept {
  try {
    FrameworkLog(where, failure.text + " (" + StatusText(failure.code) + ")");
  } catch (...) {
    // The log itself failed (no memory, a sink that throws): nothing is left to tell.
  }
}

}  // namespace varion
