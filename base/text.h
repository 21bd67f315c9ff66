// Text conversion at the edges: code page 1250 (the library's own text) to and from UTF-16
// (Windows wide APIs, ODBC, stored blobs) and UTF-8 (SQLite, terminals, files for people).
#pragma once

#include <string>
#include <string_view>

#include "base/export.h"

namespace varion::text {

// Code page 1250 has five unassigned bytes (0x81 0x83 0x88 0x90 0x98). Like Windows, we map them
// to the C1 controls of the same value, so every byte string survives a round trip.
// A character that code page 1250 cannot hold becomes '?' (kUnmappable).
constexpr char kUnmappable = '?';

VARION_API std::u16string Cp1250ToUtf16(std::string_view cp1250);
VARION_API std::string Utf16ToCp1250(std::u16string_view utf16);
VARION_API std::string Cp1250ToUtf8(std::string_view cp1250);
// Invalid UTF-8 (stray continuation bytes, overlong forms, surrogates, truncated sequences)
// gives one '?' per maximal invalid subsequence, as the Unicode standard recommends.
VARION_API std::string Utf8ToCp1250(std::string_view utf8);
VARION_API std::string Utf16ToUtf8(std::u16string_view utf16);
VARION_API std::u16string Utf8ToUtf16(std::string_view utf8);

// The single code point of one code page 1250 byte.
VARION_API char16_t Cp1250Char(unsigned char byte);

// Windows wide strings are UTF-16 in wchar_t; on Linux these convert through char16_t.
VARION_API std::wstring Cp1250ToWide(std::string_view cp1250);
VARION_API std::string WideToCp1250(std::wstring_view wide);

}  // namespace varion::text
