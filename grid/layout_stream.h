// Reading and writing the stored grid layouts: int32 little-endian integers and texts held as
// an int32 count of UTF-16 code units followed by the UTF-16LE units (no terminator). The reader
// checks every length against the bytes left, so a damaged blob can neither make it read past
// the end nor allocate more than the blob itself could hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/export.h"

namespace varion {

using LayoutBytes = std::vector<std::uint8_t>;

// The largest blob we read at all; real layouts are a few kilobytes.
constexpr std::size_t kMaxLayoutBlob = 16u << 20;

class VARION_API LayoutWriter {
 public:
  void Reserve(std::size_t bytes) { m_bytes.reserve(bytes); }
  void PutInt32(std::int32_t value);
  void PutText(const std::string& cp1250);
  const LayoutBytes& Bytes() const { return m_bytes; }
  LayoutBytes Take() { return std::move(m_bytes); }

 private:
  LayoutBytes m_bytes;
};

// Every getter returns false, and leaves the reader failed, when the data is not there; later
// calls fail too, so a caller may read a whole record and test once.
class VARION_API LayoutReader {
 public:
  explicit LayoutReader(std::span<const std::uint8_t> bytes);

  bool GetInt32(std::int32_t& value);
  bool GetUInt32(std::uint32_t& value);
  bool GetText(std::string& cp1250);
  // A count of items, each taking at least minItemBytes: negative counts and counts that the
  // remaining bytes cannot hold fail before anything is allocated for them.
  bool GetCount(std::int32_t& count, std::size_t minItemBytes);

  bool Ok() const { return m_ok; }
  bool AtEnd() const { return m_ok && m_pos == m_bytes.size(); }
  std::size_t Remaining() const { return m_ok ? m_bytes.size() - m_pos : 0; }

 private:
  bool Fail() {
    m_ok = false;
    return false;
  }

  std::span<const std::uint8_t> m_bytes;
  std::size_t m_pos = 0;
  bool m_ok = true;
};

}  // namespace varion
