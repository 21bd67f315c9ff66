// The read-only static recordset: a snapshot of a statement's rows taken when it is opened, read
// with end-of-file and move-next, fields by name or index as variants, image fields as bytes or
// streams. A snapshot holds no statement handle, so any number of recordsets may stay open while
// other statements run on the same connection (SQL Server without MARS allows one active result).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/export.h"
#include "base/variant.h"
#include "db/stream.h"

namespace varion::db {

// The kind of value a column holds, as the server describes it. Values are delivered as:
// Integer Int32, BigInt Int64, Double Double, Amount Amount, Date Date, Text Text,
// Binary Binary, Bool Bool; Unknown columns (expressions whose type the server does not tell)
// deliver whatever each value is.
enum class FieldType : std::uint8_t { Unknown, Integer, BigInt, Double, Amount, Date, Text, Binary, Bool };

// The cells of a snapshot, row by row, in fixed-size chunks: appending never moves the cells
// already stored (growing one vector cost as much as reading the rows), and a chunk of 40 KB
// stays below the allocator's threshold for mapping fresh pages.
class VARION_API CellStore {
 public:
  void push_back(Variant&& v) {
    if (m_size % kChunk == 0) {
      m_chunks.emplace_back();
      m_chunks.back().reserve(kChunk);
    }
    m_chunks.back().push_back(std::move(v));
    ++m_size;
  }
  void push_back(const Variant& v) { push_back(Variant(v)); }
  template <typename... Args>
  void emplace_back(Args&&... args) {
    push_back(Variant(std::forward<Args>(args)...));
  }
  std::size_t size() const { return m_size; }
  const Variant& operator[](std::size_t i) const { return m_chunks[i / kChunk][i % kChunk]; }

 private:
  static constexpr std::size_t kChunk = 1024;
  std::vector<std::vector<Variant>> m_chunks;
  std::size_t m_size = 0;
};

class VARION_API Recordset {
 public:
  Recordset() = default;
  // Cells row by row; their count must be a multiple of the number of names.
  Recordset(std::vector<std::string> names, std::vector<FieldType> types, std::vector<Variant> cells);
  Recordset(std::vector<std::string> names, std::vector<FieldType> types, CellStore cells);

  bool IsEOF() const { return m_position >= m_rows; }
  bool IsBOF() const { return m_rows == 0; }
  void MoveNext();  // at end of file: ComError kDbEof
  void MoveFirst() { m_position = 0; }
  std::size_t GetRecordCount() const { return m_rows; }
  std::size_t GetAbsolutePosition() const { return m_position; }

  int GetFieldCount() const { return static_cast<int>(m_names.size()); }
  // Names as the server reports them (PostgreSQL folds unquoted names to lower case).
  const std::string& GetFieldName(int index) const;
  FieldType GetFieldType(int index) const;
  // Field names compare case-insensitively, as on SQL Server. -1 when there is no such field.
  int FindField(std::string_view name) const;

  // The current row's field; SQL NULL is a null variant. A field that does not exist raises
  // ComError kPointer; reading at end of file raises kDbEof.
  const Variant& GetCollect(int index) const;
  const Variant& GetCollect(std::string_view name) const;
  // The same without exceptions: kPointer for a missing field, kDbEof at end of file.
  Status32 GetFieldValue(std::string_view name, Variant& out) const;

  // An image field's bytes; NULL gives no bytes. A field that holds text gives its code page
  // 1250 bytes; any other value is kTypeMismatch. Raises ComError kPointer for a missing field.
  std::vector<std::uint8_t> GetBytes(std::string_view name) const;
  // The same as a stream positioned at its start, for the blob readers.
  std::unique_ptr<ByteStream> GetStream(std::string_view name) const;

 private:
  int RequireField(std::string_view name) const;
  const Variant& Cell(int index) const;

  std::vector<std::string> m_names;
  std::vector<FieldType> m_types;
  CellStore m_cells;
  std::size_t m_rows = 0;
  std::size_t m_position = 0;
};

// Case-insensitive comparison of ASCII identifiers (field and table names).
VARION_API bool SameName(std::string_view a, std::string_view b);

}  // namespace varion::db
