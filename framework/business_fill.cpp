#include "framework/business_fill.h"

#include <cstdio>

namespace varion::fill {

std::string ZusCodeText(long code) {
  if (code <= 0) return {};
  char buffer[24];
  std::snprintf(buffer, sizeof buffer, "%04ld", code);
  return buffer;
}

int FindCodeItem(const Items& items, std::string_view code) {
  if (code.empty()) return -1;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string& t = items[i].text;
    if (t.compare(0, code.size(), code) == 0 && (t.size() == code.size() || t[code.size()] == ' '))
      return static_cast<int>(i);
  }
  return -1;
}

namespace {

// Upper case of a code page 1250 byte: ASCII, and the Polish and other Central European letters
// whose capitals the code page holds.
unsigned char UpperCp1250(unsigned char c) {
  if (c >= 'a' && c <= 'z') return static_cast<unsigned char>(c - 32);
  switch (c) {
    case 0x9A: return 0x8A;  // š
    case 0x9C: return 0x8C;  // ś
    case 0x9D: return 0x8D;  // ť
    case 0x9E: return 0x8E;  // ž
    case 0x9F: return 0x8F;  // ź
    case 0xB3: return 0xA3;  // ł
    case 0xB9: return 0xA5;  // ą
    case 0xBE: return 0xBC;  // ľ
    case 0xBF: return 0xAF;  // ż
    default: break;
  }
  if (c >= 0xE0 && c != 0xF7 && c != 0xFF) return static_cast<unsigned char>(c - 0x20);  // à..ţ except ÷ and ˙
  return c;
}

}  // namespace

std::string RegistrationNumberText(std::string_view number) {
  const std::size_t first = number.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const std::size_t last = number.find_last_not_of(" \t");
  std::string out(number.substr(first, last - first + 1));
  for (char& c : out) c = static_cast<char>(UpperCp1250(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace varion::fill
