// Named values added to the text of a log entry, each written "name=value" after a blank.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <version>
#if defined(__cpp_lib_source_location)
#include <source_location>
#endif

#include "base/export.h"

namespace SimpleLog {
namespace LogFields {

struct VARION_API Field {
  std::string name;
  std::string value;
  std::string ToString() const;  // "name=value"
};

#if defined(__cpp_lib_source_location)
// Where the entry was made: "source_location=<file name>:<line> <function>". Left out where the
// standard library has no source_location (clang 14 with GCC 12's library, the fuzz build).
VARION_API Field SourceLocation(const std::source_location& where = std::source_location::current());
#endif

// The text followed by each field, every one after a blank.
VARION_API std::string WithFields(std::string_view text, std::initializer_list<Field> fields);

}  // namespace LogFields
}  // namespace SimpleLog
