#include "diagnostics/db_logger_sink.h"

#include <mutex>

#include "db/rt_instance.h"
#include "diagnostics/log_platform.h"

namespace SimpleLog {
namespace {

std::mutex& DatabaseLogLock() {
  static std::mutex lock;
  return lock;
}

varion::Variant OrNull(const std::optional<std::int32_t>& value) {
  return value ? varion::Variant(*value) : varion::Variant::MakeNull();
}

template <typename Ask>
std::optional<std::int32_t> AskObject(Ask ask) noexcept {
  try {
    return ask();
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace

FramDbLogHeader DefaultFramDbHeaderCreator::Create(std::string_view name) const {
  FramDbLogHeader header;
  header.area = std::string(name);
  return header;
}

FramDbLogHeader ComFlgObjectContextDbHeaderCreator::Create(std::string_view name) const {
  FramDbLogHeader header;
  header.area = std::string(name);
  if (m_object) {
    header.objectType = AskObject([this] { return m_object->GetObjectType(); });
    header.objectTypeEx = AskObject([this] { return m_object->GetObjectTypeEx(); });
    header.objectId = AskObject([this] { return m_object->GetObjectId(); });
  }
  return header;
}

DefaultFramDbWriter::DefaultFramDbWriter(varion::db::Connection connection, std::shared_ptr<const IClock> clock)
    : m_connection(std::move(connection)), m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>()) {}

DefaultFramDbWriter::~DefaultFramDbWriter() {
  // The recordset's statement belongs to the connection, which other threads may be using.
  std::lock_guard<std::mutex> lock(DatabaseLogLock());
  m_recordset.reset();
}

varion::Status32 DefaultFramDbWriter::Write(const FramDbLogHeader& header, tagFramLogLevel level, std::string_view text) {
  namespace platform = varion::logplatform;
  // Everything that needs no connection is gathered before taking the lock.
  const varion::DateTime when = m_clock->CurrentTime();
  const std::string workstation = CRtInstance::GetWorkstationName();
  const std::int32_t userId = CRtInstance::GetUserId();
  const std::string userIdentifier = CRtInstance::GetUserIdentifier();
  const auto processId = static_cast<std::int32_t>(platform::CurrentProcessId());
  const auto threadId = static_cast<std::int32_t>(platform::CurrentThreadId());

  std::lock_guard<std::mutex> lock(DatabaseLogLock());
  try {
    if (!m_recordset) m_recordset.emplace(m_connection.OpenForUpdate(kDbLogSelect));
    varion::db::UpdatableRecordset& rs = *m_recordset;
    rs.AddNew();
    rs.PutCollect("log_Obszar", header.area);
    rs.PutCollect("log_Data", when.IsValid() ? varion::Variant(when) : varion::Variant::MakeNull());
    rs.PutCollect("log_Stanowisko", workstation);
    rs.PutCollect("log_UzytkownikId", userId);
    rs.PutCollect("log_UzytkownikIdentyfikator", userIdentifier);
    rs.PutCollect("log_ObiektTyp", OrNull(header.objectType));
    rs.PutCollect("log_ObiektTypEx", OrNull(header.objectTypeEx));
    rs.PutCollect("log_ObiektId", OrNull(header.objectId));
    rs.PutCollect("log_ProcesId", processId);
    rs.PutCollect("log_WatekId", threadId);
    rs.PutCollect("log_Rodzaj", static_cast<std::int32_t>(level));
    rs.PutCollect("log_Informacje", std::string(text));
    rs.Update();
    return varion::kOk;
  } catch (const varion::ComError& e) {
    m_recordset.reset();
    return e.Code();
  } catch (...) {
    m_recordset.reset();
    return varion::kFail;
  }
}

FramDbLoggerSink::FramDbLoggerSink(std::string name, std::shared_ptr<IFramDbWriter> writer,
                                   std::shared_ptr<const IFramDbHeaderCreator> headerCreator)
    : m_writer(std::move(writer)),
      m_header(headerCreator ? headerCreator->Create(name) : DefaultFramDbHeaderCreator().Create(name)) {}

void FramDbLoggerSink::Write(tagFramLogLevel level, std::string_view text) {
  if (!m_writer) return;
  try {
    m_writer->Write(m_header, level, text);
  } catch (...) {
    // A writer of the host's making may raise; the entry is lost, the caller goes on.
  }
}

}  // namespace SimpleLog
