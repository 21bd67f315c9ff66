// The database sink of SimpleLog: one row of "log_Logowanie" per entry, added through an
// updatable recordset. The fixed part of the row (area and object) is made once per sink by a
// header creator; the writer adds the time, workstation, user, process, thread, kind and text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/status.h"
#include "db/connection.h"
#include "db/flg_interfaces.h"
#include "db/updatable_recordset.h"
#include "diagnostics/log_formatters.h"
#include "diagnostics/simple_log.h"

namespace SimpleLog {

struct VARION_API FramDbLogHeader {
  std::string area;  // "log_Obszar": the logger's name
  // "log_ObiektTyp", "log_ObiektTypEx", "log_ObiektId"; NULL in the row when not known.
  std::optional<std::int32_t> objectType;
  std::optional<std::int32_t> objectTypeEx;
  std::optional<std::int32_t> objectId;
};

class VARION_API IFramDbHeaderCreator {
 public:
  virtual ~IFramDbHeaderCreator() = default;
  virtual FramDbLogHeader Create(std::string_view name) const = 0;
};

// A header without an object.
class VARION_API DefaultFramDbHeaderCreator final : public IFramDbHeaderCreator {
 public:
  FramDbLogHeader Create(std::string_view name) const override;
};

// A header naming an object: its type, extended type and identifier, asked when the header is
// made. An object that cannot answer leaves what it did not give NULL; a null object is no object.
// The object must live until the header is made (the logger does not keep it).
class VARION_API ComFlgObjectContextDbHeaderCreator final : public IFramDbHeaderCreator {
 public:
  explicit ComFlgObjectContextDbHeaderCreator(IFlgItem* objectContext) : m_object(objectContext) {}
  FramDbLogHeader Create(std::string_view name) const override;

 private:
  IFlgItem* m_object;
};

// Writes one row. Returns kOk or the failure's status; never raises.
class VARION_API IFramDbWriter {
 public:
  virtual ~IFramDbWriter() = default;
  virtual varion::Status32 Write(const FramDbLogHeader& header, tagFramLogLevel level, std::string_view text) = 0;
};

// The row through "SELECT * FROM log_Logowanie WHERE 1 = 0" on a connection, fields set in the
// order of the table: area, time (the clock's, by default the local time), workstation, user
// number and identifier (the running instance's), object type, extended type and identifier,
// process, thread, kind (the level's number, whatever it is) and the text. The recordset is kept
// for the next row and opened again after a failure, so a table created later is found.
// The connection serves one thread at a time: every database log writer of the process takes
// the same lock around its row.
class VARION_API DefaultFramDbWriter final : public IFramDbWriter {
 public:
  explicit DefaultFramDbWriter(varion::db::Connection connection, std::shared_ptr<const IClock> clock = nullptr);
  ~DefaultFramDbWriter() override;
  varion::Status32 Write(const FramDbLogHeader& header, tagFramLogLevel level, std::string_view text) override;

 private:
  varion::db::Connection m_connection;
  std::shared_ptr<const IClock> m_clock;
  std::optional<varion::db::UpdatableRecordset> m_recordset;
};

// The statement the writer opens its recordset with.
inline constexpr const char* kDbLogSelect = "SELECT * FROM log_Logowanie WHERE 1 = 0";

class VARION_API FramDbLoggerSink final : public ILoggerSink {
 public:
  // The header is made here, once. Without a writer nothing is written; without a header
  // creator the header has no object.
  FramDbLoggerSink(std::string name, std::shared_ptr<IFramDbWriter> writer,
                   std::shared_ptr<const IFramDbHeaderCreator> headerCreator);
  void Write(tagFramLogLevel level, std::string_view text) override;
  const FramDbLogHeader& Header() const { return m_header; }

 private:
  std::shared_ptr<IFramDbWriter> m_writer;
  FramDbLogHeader m_header;
};

}  // namespace SimpleLog
