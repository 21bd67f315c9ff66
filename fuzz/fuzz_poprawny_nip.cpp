// Tax number check on any text: never crashes; a number that passes the checksum passes without it.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "controls/validators.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  int plain = PoprawnyNIP(text.c_str(), false);
  int checked = PoprawnyNIP(text.c_str(), true);
  if ((plain != 0 && plain != 1) || (checked != 0 && checked != 1) || checked > plain) std::abort();
  PoprawnyPESEL(text.c_str());
  PoprawnyREGON(text.c_str());
  return 0;
}
