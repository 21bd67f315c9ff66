// Byte streams in the manner of IStream: image fields are read through them, and the layout
// writers build their blobs in a growable memory stream before copying it into a field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/export.h"
#include "base/status.h"

namespace varion::db {

enum class SeekOrigin { Begin, Current, End };

class VARION_API ByteStream {
 public:
  virtual ~ByteStream() = default;
  // Reads up to `size` bytes; fewer (0 at the end) is not a failure. `read` may be null.
  virtual Status32 Read(void* buffer, std::size_t size, std::size_t* read) = 0;
  // Writes at the current position, growing the stream when needed.
  virtual Status32 Write(const void* data, std::size_t size) = 0;
  // A position before the start is kInvalidArg and leaves the position as it was; past the end
  // is allowed (a later write fills the gap with zeros). `newPosition` may be null.
  virtual Status32 Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* newPosition) = 0;
  virtual std::uint64_t Size() const = 0;
};

class VARION_API MemoryStream final : public ByteStream {
 public:
  MemoryStream() = default;
  explicit MemoryStream(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}

  Status32 Read(void* buffer, std::size_t size, std::size_t* read) override;
  Status32 Write(const void* data, std::size_t size) override;
  Status32 Seek(std::int64_t offset, SeekOrigin origin, std::uint64_t* newPosition) override;
  std::uint64_t Size() const override { return m_bytes.size(); }

  std::uint64_t Position() const { return m_position; }
  const std::vector<std::uint8_t>& Bytes() const { return m_bytes; }
  std::vector<std::uint8_t> TakeBytes();  // leaves the stream empty at position 0

 private:
  std::vector<std::uint8_t> m_bytes;
  std::uint64_t m_position = 0;
};

}  // namespace varion::db
