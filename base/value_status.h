// The three states every OLE value type carries: a value, a value that could not be made
// (parse failure, overflow, out of range), or SQL-style null.
#pragma once

#include <cstdint>

namespace varion {

enum class ValueStatus : std::uint8_t { Valid = 0, Invalid = 1, Null = 2 };

}  // namespace varion
