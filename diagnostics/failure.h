// What a failure boundary learns from the exception in flight: a text for the log and the user,
// and a status code. Portable, so that every boundary (window procedures, hooks, entry points)
// words a failure the same way.
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/status.h"

namespace varion {

struct Failure {
  std::string text;     // code page 1250
  Status32 code = kFail;
};

// Reads a caught exception: ComError gives its message and code, a standard exception its
// what(), anything else (a thrown int, a host's own type) a fixed text. Never throws.
VARION_API Failure DescribeFailure(std::exception_ptr error) noexcept;

// Writes the failure to the library's log under `where` (the window, hook or entry point that
// caught it). Never throws.
VARION_API void LogFailure(std::string_view where, const Failure& failure) noexcept;

}  // namespace varion
