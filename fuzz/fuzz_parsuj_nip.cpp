// Tax number split on any text: never crashes, and a split puts the text back together exactly.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "controls/validators.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  text = text.c_str();  // the functions read up to the first zero byte
  auto nip = ParsujNip(text.c_str());
  if (nip) {
    if (nip->prefiks + nip->separator + nip->numer != text) std::abort();
    std::string clean = nip->PodajNumerBezZnakowSpecjalnych();
    if (clean.find('-') != std::string::npos) std::abort();
    nip->CzyPrefiksZagraniczny();
    nip->PodajNumerZPrefiksemBezZnakowSpecjalnych();
  }
  return 0;
}
