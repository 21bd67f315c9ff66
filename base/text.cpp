#include "base/text.h"

#include <array>
#include <cstdint>

namespace varion::text {
namespace {

// Code points of the bytes 0x80..0xFF. The five unassigned bytes map to themselves (C1 controls).
constexpr std::array<char16_t, 128> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x0088, 0x2030, 0x0160, 0x2039, 0x015A, 0x0164, 0x017D, 0x0179,  // 88
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x0098, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A,  // 98
    0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6, 0x00A7,  // A0
    0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,  // A8
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7,  // B0
    0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C,  // B8
    0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,  // C0
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,  // C8
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7,  // D0
    0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,  // D8
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,  // E0
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F,  // E8
    0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,  // F0
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,  // F8
};

struct Utf8Seq {
  std::uint8_t len;
  char bytes[3];
};

struct Tables {
  std::array<char16_t, 256> toUtf16{};
  std::array<Utf8Seq, 256> toUtf8{};
  // Reverse map over the whole BMP; 0 means unmappable except for U+0000 itself.
  std::array<unsigned char, 0x10000> fromUtf16{};
};

Utf8Seq EncodeUtf8(char16_t c) {
  if (c < 0x80) return {1, {static_cast<char>(c), 0, 0}};
  if (c < 0x800) return {2, {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F)), 0}};
  return {3,
          {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)),
           static_cast<char>(0x80 | (c & 0x3F))}};
}

const Tables& GetTables() {
  static const Tables* tables = [] {
    auto* t = new Tables();
    for (int b = 0; b < 256; ++b) {
      char16_t c = b < 0x80 ? static_cast<char16_t>(b) : kHigh[b - 0x80];
      t->toUtf16[b] = c;
      t->toUtf8[b] = EncodeUtf8(c);
      t->fromUtf16[c] = static_cast<unsigned char>(b);
    }
    return t;
  }();
  return *tables;
}

char FromCodePoint(const Tables& t, char32_t cp) {
  if (cp == 0) return 0;
  if (cp > 0xFFFF) return kUnmappable;
  unsigned char b = t.fromUtf16[cp];
  return b ? static_cast<char>(b) : kUnmappable;
}

// Decodes one UTF-8 character starting at s[i]; advances i past it. Returns U+FFFD for a maximal
// invalid subsequence (which is never representable, so it becomes '?').
char32_t DecodeUtf8(std::string_view s, size_t& i) {
  const auto byte = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
  unsigned char b0 = byte(i);
  if (b0 < 0x80) {
    ++i;
    return b0;
  }
  int len;
  char32_t cp;
  unsigned char lo = 0x80, hi = 0xBF;  // allowed range of the second byte
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    len = 2;
    cp = b0 & 0x1F;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    len = 3;
    cp = b0 & 0x0F;
    if (b0 == 0xE0) lo = 0xA0;
    if (b0 == 0xED) hi = 0x9F;  // no surrogates
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    len = 4;
    cp = b0 & 0x07;
    if (b0 == 0xF0) lo = 0x90;
    if (b0 == 0xF4) hi = 0x8F;
  } else {
    ++i;
    return 0xFFFD;
  }
  size_t k = i + 1;
  for (int n = 1; n < len; ++n, ++k) {
    if (k >= s.size()) {
      i = k;
      return 0xFFFD;
    }
    unsigned char b = byte(k);
    unsigned char l = n == 1 ? lo : 0x80, h = n == 1 ? hi : 0xBF;
    if (b < l || b > h) {
      i = k;
      return 0xFFFD;
    }
    cp = (cp << 6) | (b & 0x3F);
  }
  i = k;
  return cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Decodes one UTF-16 character; a lone surrogate gives U+FFFD.
char32_t DecodeUtf16(std::u16string_view s, size_t& i) {
  char16_t c = s[i++];
  if (c < 0xD800 || c > 0xDFFF) return c;
  if (c <= 0xDBFF && i < s.size() && s[i] >= 0xDC00 && s[i] <= 0xDFFF) {
    char32_t cp = 0x10000 + ((static_cast<char32_t>(c) - 0xD800) << 10) + (s[i] - 0xDC00);
    ++i;
    return cp;
  }
  return 0xFFFD;
}

}  // namespace

char16_t Cp1250Char(unsigned char byte) { return GetTables().toUtf16[byte]; }

std::u16string Cp1250ToUtf16(std::string_view cp1250) {
  const Tables& t = GetTables();
  std::u16string out(cp1250.size(), u'\0');
  for (size_t i = 0; i < cp1250.size(); ++i) out[i] = t.toUtf16[static_cast<unsigned char>(cp1250[i])];
  return out;
}

std::string Utf16ToCp1250(std::u16string_view utf16) {
  const Tables& t = GetTables();
  std::string out;
  out.reserve(utf16.size());
  for (size_t i = 0; i < utf16.size();) {
    char16_t c = utf16[i];
    if (c < 0xD800 || c > 0xDFFF) {
      out += FromCodePoint(t, c);
      ++i;
    } else {
      DecodeUtf16(utf16, i);  // a surrogate pair or a lone surrogate: never in code page 1250
      out += kUnmappable;
    }
  }
  return out;
}

std::string Cp1250ToUtf8(std::string_view cp1250) {
  const Tables& t = GetTables();
  std::string out;
  out.resize(cp1250.size() * 3);
  char* p = out.data();
  for (unsigned char b : cp1250) {
    const Utf8Seq& seq = t.toUtf8[b];
    p[0] = seq.bytes[0];
    p[1] = seq.bytes[1];
    p[2] = seq.bytes[2];
    p += seq.len;
  }
  out.resize(static_cast<size_t>(p - out.data()));
  return out;
}

std::string Utf8ToCp1250(std::string_view utf8) {
  const Tables& t = GetTables();
  std::string out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    unsigned char b = static_cast<unsigned char>(utf8[i]);
    if (b < 0x80) {
      out += static_cast<char>(b);
      ++i;
    } else {
      out += FromCodePoint(t, DecodeUtf8(utf8, i));
    }
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (size_t i = 0; i < utf16.size();) AppendUtf8(out, DecodeUtf16(utf16, i));
  return out;
}

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    char32_t cp = DecodeUtf8(utf8, i);
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out += static_cast<char16_t>(0xD800 + (cp >> 10));
      out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    } else {
      out += static_cast<char16_t>(cp);
    }
  }
  return out;
}

std::wstring Cp1250ToWide(std::string_view cp1250) {
  const Tables& t = GetTables();
  std::wstring out(cp1250.size(), L'\0');
  for (size_t i = 0; i < cp1250.size(); ++i) out[i] = static_cast<wchar_t>(t.toUtf16[static_cast<unsigned char>(cp1250[i])]);
  return out;
}

std::string WideToCp1250(std::wstring_view wide) {
  if constexpr (sizeof(wchar_t) == 2) {
    return Utf16ToCp1250(std::u16string_view(reinterpret_cast<const char16_t*>(wide.data()), wide.size()));
  } else {
    const Tables& t = GetTables();
    std::string out;
    out.reserve(wide.size());
    for (wchar_t c : wide) out += FromCodePoint(t, static_cast<char32_t>(c));
    return out;
  }
}

}  // namespace varion::text
