// CN code formatting on any text: never crashes, and whatever it writes is a valid CN code.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "controls/validators.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  std::string formatted = text;
  FormatujKodCN(formatted);
  if (!formatted.empty() && !PoprawnyKodCN(formatted.c_str())) std::abort();
  std::string kept = text;
  FormatujNiepustyKodCN(kept);
  if (!formatted.empty() && kept != formatted) std::abort();
  if (formatted.empty() && kept != text) std::abort();
  return 0;
}
