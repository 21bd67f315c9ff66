// Named values added to the text of a log entry, each written "name=value" after a blank.
#pragma once

#include <initializer_list>
#include <source_location>
#include <string>
#include <string_view>

#include "base/export.h"

namespace SimpleLog {
namespace LogFields {

struct VARION_API Field {
  std::string name;
  std::string value;
  std::string ToString() const;  // "name=value"
};

// Where the entry was made: "source_location=<file name>:<line> <function>".
VARION_API Field SourceLocation(const std::source_location& where = std::source_location::current());

// The text followed by each field, every one after a blank.
VARION_API std::string WithFields(std::string_view text, std::initializer_list<Field> fields);

}  // namespace LogFields
}  // namespace SimpleLog
