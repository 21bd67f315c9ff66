#include "framework/dialog_cfg.h"

#include <new>

#include "base/status.h"
#include "db/recordset.h"
#include "db/updatable_recordset.h"
#include "diagnostics/framework_log.h"

namespace varion {
namespace {

constexpr char kArea[] = "dialog configuration";
// Texts in the stream longer than this are taken for damage rather than data.
constexpr std::uint32_t kMaxText = 1u << 24;

std::vector<std::uint8_t> BytesOf(const Variant& v) {
  if (const auto* b = v.GetBinary()) return *b;
  return {};
}

void ReadExact(db::ByteStream& s, void* buffer, std::size_t size) {
  std::size_t got = 0;
  if (Failed(s.Read(buffer, size, &got)) || got != size) throw ComError(kFail, "short configuration stream");
}

}  // namespace

std::optional<DialogCfgRecord> DbDialogCfgFactory::LoadDialogCfg(std::string_view section, std::int32_t user,
                                                                 std::int32_t service) {
  db::Recordset rs = m_connection
                         .Prepare(
                             "SELECT vwcg_Data, vwcg_FiltersData FROM vw_KonfiguracjaDialogu "
                             "WHERE vwcg_Section = ? AND vwcg_User = ? AND vwcg_Service = ?")
                         .Bind(1, Variant(std::string(section)))
                         .Bind(2, Variant(user))
                         .Bind(3, Variant(service))
                         .Open();
  if (rs.IsEOF()) return std::nullopt;
  return DialogCfgRecord{std::string(section), user, service, BytesOf(rs.GetCollect("vwcg_Data")),
                         BytesOf(rs.GetCollect("vwcg_FiltersData"))};
}

void DbDialogCfgFactory::SaveDialogCfg(const DialogCfgRecord& r) {
  const bool own = !m_connection.InTransaction();
  if (own) m_connection.BeginTrans();
  try {
    m_connection
        .Prepare("DELETE FROM vw_KonfiguracjaDialogu WHERE vwcg_Section = ? AND vwcg_User = ? AND vwcg_Service = ?")
        .Bind(1, Variant(r.section))
        .Bind(2, Variant(r.user))
        .Bind(3, Variant(r.service))
        .Execute();
    db::UpdatableRecordset rs = m_connection.OpenForUpdate("SELECT * FROM vw_KonfiguracjaDialogu WHERE 1 = 0");
    rs.AddNew();
    rs.PutCollect("vwcg_Section", Variant(r.section));
    rs.PutCollect("vwcg_User", Variant(r.user));
    rs.PutCollect("vwcg_Service", Variant(r.service));
    rs.PutCollect("vwcg_Data", Variant(r.data));
    rs.PutCollect("vwcg_FiltersData", Variant(r.filtersData));
    rs.Update();
    if (own) m_connection.CommitTrans();
  } catch (...) {
    if (own) m_connection.RollbackTrans();
    throw;
  }
}

bool SaveDialogCfg(IFlgDataFactory& factory, std::string_view section, std::int32_t user, std::int32_t service,
                   const DialogCfgStreams& writers) {
  DialogCfgRecord record{std::string(section), user, service, {}, {}};
  try {
    db::MemoryStream data, filters;
    CfgWriteInt32(data, static_cast<std::int32_t>(kDialogCfgFormat));
    if (writers.data) writers.data(data);
    if (writers.filters) writers.filters(filters);
    record.data = data.TakeBytes();
    record.filtersData = filters.TakeBytes();
  } catch (const std::bad_alloc&) {
    return false;
  }
  try {
    factory.SaveDialogCfg(record);
    return true;
  } catch (const ComError& e) {
    FrameworkLog(kArea, "not saved for " + std::string(section) + ": " + e.Message());
  } catch (const std::exception& e) {
    FrameworkLog(kArea, "not saved for " + std::string(section) + ": " + e.what());
  }
  return false;
}

bool LoadDialogCfg(IFlgDataFactory& factory, std::string_view section, std::int32_t user, std::int32_t service,
                   const DialogCfgStreams& readers) {
  std::optional<DialogCfgRecord> record;
  try {
    record = factory.LoadDialogCfg(section, user, service);
  } catch (const std::exception& e) {
    FrameworkLog(kArea, "not read for " + std::string(section) + ": " + e.what());
    return false;
  }
  if (!record) return false;
  auto hand = [&](const char* which, std::vector<std::uint8_t> bytes, bool withFormat,
                  const std::function<void(db::ByteStream&)>& reader) {
    db::MemoryStream stream(std::move(bytes));
    try {
      if (withFormat && static_cast<std::uint32_t>(CfgReadInt32(stream)) != kDialogCfgFormat) {
        FrameworkLog(kArea, std::string(which) + " of " + std::string(section) + " has an unknown format; ignored");
        return false;
      }
      if (reader) reader(stream);
      return true;
    } catch (const std::exception& e) {
      FrameworkLog(kArea,
                   std::string(which) + " of " + std::string(section) + " is damaged; ignored (" + e.what() + ")");
      return false;
    }
  };
  const bool dataRead = hand("data stream", std::move(record->data), true, readers.data);
  hand("filters stream", std::move(record->filtersData), false, readers.filters);
  return dataRead;
}

void CfgWriteInt32(db::ByteStream& s, std::int32_t value) {
  const auto u = static_cast<std::uint32_t>(value);
  const std::uint8_t bytes[4] = {static_cast<std::uint8_t>(u), static_cast<std::uint8_t>(u >> 8),
                                 static_cast<std::uint8_t>(u >> 16), static_cast<std::uint8_t>(u >> 24)};
  if (Failed(s.Write(bytes, 4))) throw ComError(kFail, "configuration stream not writable");
}

void CfgWriteText(db::ByteStream& s, std::string_view text) {
  CfgWriteInt32(s, static_cast<std::int32_t>(text.size()));
  if (Failed(s.Write(text.data(), text.size()))) throw ComError(kFail, "configuration stream not writable");
}

std::int32_t CfgReadInt32(db::ByteStream& s) {
  std::uint8_t b[4];
  ReadExact(s, b, 4);
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(b[0]) | static_cast<std::uint32_t>(b[1]) << 8 |
                                   static_cast<std::uint32_t>(b[2]) << 16 | static_cast<std::uint32_t>(b[3]) << 24);
}

std::string CfgReadText(db::ByteStream& s) {
  const auto length = static_cast<std::uint32_t>(CfgReadInt32(s));
  if (length > kMaxText || length > s.Size()) throw ComError(kFail, "text length beyond the stream");
  std::string text(length, '\0');
  ReadExact(s, text.data(), length);
  return text;
}

}  // namespace varion
