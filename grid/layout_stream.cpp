#include "grid/layout_stream.h"

#include "base/text.h"

namespace varion {

void LayoutWriter::PutInt32(std::int32_t value) {
  const auto u = static_cast<std::uint32_t>(value);
  const size_t at = m_bytes.size();
  m_bytes.resize(at + 4);
  std::uint8_t* p = m_bytes.data() + at;
  p[0] = static_cast<std::uint8_t>(u);
  p[1] = static_cast<std::uint8_t>(u >> 8);
  p[2] = static_cast<std::uint8_t>(u >> 16);
  p[3] = static_cast<std::uint8_t>(u >> 24);
}

void LayoutWriter::PutText(const std::string& cp1250) {
  // Every code page 1250 byte is one UTF-16 unit.
  PutInt32(static_cast<std::int32_t>(cp1250.size()));
  const size_t at = m_bytes.size();
  m_bytes.resize(at + 2 * cp1250.size());
  std::uint8_t* p = m_bytes.data() + at;
  for (char ch : cp1250) {
    const char16_t c = text::Cp1250Char(static_cast<unsigned char>(ch));
    *p++ = static_cast<std::uint8_t>(c & 0xFF);
    *p++ = static_cast<std::uint8_t>(c >> 8);
  }
}

LayoutReader::LayoutReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {
  if (bytes.size() > kMaxLayoutBlob) m_ok = false;
}

bool LayoutReader::GetUInt32(std::uint32_t& value) {
  if (Remaining() < 4) return Fail();
  const std::uint8_t* p = m_bytes.data() + m_pos;
  value = std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 | std::uint32_t(p[3]) << 24;
  m_pos += 4;
  return true;
}

bool LayoutReader::GetInt32(std::int32_t& value) {
  std::uint32_t u = 0;
  if (!GetUInt32(u)) return false;
  value = static_cast<std::int32_t>(u);
  return true;
}

bool LayoutReader::GetText(std::string& cp1250) {
  std::int32_t count = 0;
  if (!GetCount(count, 2)) return false;
  std::u16string units(static_cast<std::size_t>(count), u'\0');
  const std::uint8_t* p = m_bytes.data() + m_pos;
  for (std::size_t i = 0; i < units.size(); ++i) units[i] = static_cast<char16_t>(p[2 * i] | p[2 * i + 1] << 8);
  m_pos += units.size() * 2;
  cp1250 = text::Utf16ToCp1250(units);
  return true;
}

bool LayoutReader::GetCount(std::int32_t& count, std::size_t minItemBytes) {
  if (!GetInt32(count)) return false;
  if (count < 0) return Fail();
  if (minItemBytes != 0 && static_cast<std::size_t>(count) > Remaining() / minItemBytes) return Fail();
  return true;
}

}  // namespace varion
