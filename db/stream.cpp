#include "db/stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace varion::db {

Status32 MemoryStream::Read(void* buffer, std::size_t size, std::size_t* read) {
  if (!buffer && size) return kPointer;
  std::size_t n = 0;
  if (m_position < m_bytes.size()) {
    n = static_cast<std::size_t>(std::min<std::uint64_t>(size, m_bytes.size() - m_position));
    std::memcpy(buffer, m_bytes.data() + m_position, n);
    m_position += n;
  }
  if (read) *read = n;
  return kOk;
}

Status32 MemoryStream::Write(const void* data, std::size_t size) {
  if (!data && size) return kPointer;
  if (size == 0) return kOk;
  if (m_position > std::numeric_limits<std::size_t>::max() - size) return kOutOfMemory;
  const std::size_t end = static_cast<std::size_t>(m_position) + size;
  if (end > m_bytes.size()) m_bytes.resize(end);
  std::memcpy(m_bytes.data() + m_position, data, size);
  m_position = end;
  return kOk;
}

Status32 MemoryStream::Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* newPosition) {
  std::int64_t base = 0;
  switch (origin) {
    case SeekOrigin::Begin: base = 0; break;
    case SeekOrigin::Current: base = static_cast<std::int64_t>(m_position); break;
    case SeekOrigin::End: base = static_cast<std::int64_t>(m_bytes.size()); break;
  }
  if ((offset < 0 && base + offset < 0) ||
      (offset > 0 && base > std::numeric_limits<std::int64_t>::max() - offset))
    return kInvalidArg;
  m_position = static_cast<std::uint64_t>(base + offset);
  if (newPosition) *newPosition = m_position;
  return kOk;
}

std::vector<std::uint8_t> MemoryStream::TakeBytes() {
  std::vector<std::uint8_t> out;
  out.swap(m_bytes);
  m_position = 0;
  return out;
}

}  // namespace varion::db
