// Persistence of CMapCustGridCfg through the database layer: the layout row of
// gr__KonfiguracjaEx, the user-defined grids of gr_GridWlasny and the conditional formats of
// gr_FormatowanieWarunkowe.
#include "base/sql_literal.h"
#include "db/connection.h"
#include "grid/cust_grid_cfg.h"

using varion::ComError;
using varion::kFail;
using varion::kFalse;
using varion::kOk;
using varion::kPointer;
using varion::Status32;
using varion::Variant;
namespace db = varion::db;

namespace {

constexpr const char* kUpdateLayout =
    "UPDATE gr__KonfiguracjaEx SET cge_Version = ?, cge_BinListInfo = ?, cge_BinColumns = ?, cge_BinTables = ?, "
    "cge_BinVisibility = ?, cge_Sql = ?, cge_LastUpdateVersion = ? WHERE cge_Section = ? AND cge_User = ? AND "
    "cge_Service = ?";
constexpr const char* kEmptyLayout = "SELECT * FROM gr__KonfiguracjaEx WHERE 1 = 0";

// An image field: nullopt when it is NULL (a missing stream); a missing field raises kPointer.
std::optional<varion::LayoutBytes> BlobOf(const db::Recordset& rs, std::string_view field) {
  if (rs.GetCollect(field).IsEmptyOrNull()) return std::nullopt;
  return rs.GetBytes(field);
}

std::string TextOf(const db::Recordset& rs, std::string_view field) {
  const Variant& v = rs.GetCollect(field);
  return v.IsEmptyOrNull() ? std::string() : v.AsText();
}

const varion::LayoutBytes& Need(const std::optional<varion::LayoutBytes>& blob, const char* field) {
  if (!blob) throw ComError(kPointer, std::string("Brak pola ") + field);
  return *blob;
}

// Runs `work` in a transaction of its own unless the caller already has one.
template <typename Work>
void InTransaction(const db::Connection& connection, Work&& work) {
  if (connection.InTransaction()) {
    work();
    return;
  }
  connection.BeginTrans();
  try {
    work();
    connection.CommitTrans();
  } catch (...) {
    try {
      connection.RollbackTrans();
    } catch (const ComError&) {
      // The first error is the one to report.
    }
    throw;
  }
}

}  // namespace

CMapCustGridCfg::CMapCustGridCfg(const CVelListInfo* list, const CVelColInfo* columns, int columnCount,
                                 const CVelTableInfo* tables, int tableCount, const db::Connection& connection,
                                 const std::string& section, std::int32_t user, std::int32_t service)
    : CMapCustGridCfg(list, columns, columnCount, tables, tableCount) {
  SetConnection(connection);
  try {
    m_loadStatus = LoadCfg(connection, section, user, service);
  } catch (const ComError& e) {
    m_loadStatus = e.Code();  // the program's layout stands
  }
}

void CMapCustGridCfg::SetConnection(const db::Connection& connection) {
  m_connection = connection;
  if (connection.IsOpen()) SetDialect(connection.Dialect());
}

Status32 CMapCustGridCfg::LoadCfg(const db::Connection& connection, const std::string& section, std::int32_t user,
                                  std::int32_t service) {
  SetDialect(connection.Dialect());
  const db::Recordset rs = connection.OpenRS(varion::MakeLayoutSelect(section, user, service));
  if (rs.IsEOF()) return kFalse;
  varion::StoredLayoutRow row;
  row.section = section;
  row.user = user;
  row.service = service;
  row.version = rs.GetCollect("cge_Version");
  row.listInfo = BlobOf(rs, "cge_BinListInfo");
  row.columns = BlobOf(rs, "cge_BinColumns");
  row.tables = BlobOf(rs, "cge_BinTables");
  row.visibility = BlobOf(rs, "cge_BinVisibility");
  row.sql = TextOf(rs, "cge_Sql");
  row.lastUpdateVersion = TextOf(rs, "cge_LastUpdateVersion");
  return LoadCfgFromRow(row);
}

void CMapCustGridCfg::LoadCfgToRS(db::UpdatableRecordset& rs, const std::string& section, std::int32_t user,
                                  std::int32_t service) const {
  const varion::StoredLayoutRow row = MakeLayoutRow(section, user, service);
  rs.PutCollect("cge_Section", Variant(row.section));
  rs.PutCollect("cge_User", Variant(row.user));
  rs.PutCollect("cge_Service", Variant(row.service));
  rs.PutCollect("cge_Version", row.version);
  rs.PutCollect("cge_BinListInfo", Variant(*row.listInfo));
  rs.PutCollect("cge_BinColumns", Variant(*row.columns));
  rs.PutCollect("cge_BinTables", Variant(*row.tables));
  rs.PutCollect("cge_BinVisibility", Variant(*row.visibility));
  rs.PutCollect("cge_Sql", Variant(row.sql));
  rs.PutCollect("cge_LastUpdateVersion", Variant(row.lastUpdateVersion));
}

Status32 CMapCustGridCfg::SaveCfg(const db::Connection& connection, const std::string& section, std::int32_t user,
                                  std::int32_t service) {
  InTransaction(connection, [&] {
    const varion::StoredLayoutRow row = MakeLayoutRow(section, user, service);
    db::Statement update = connection.Prepare(kUpdateLayout);
    update.Bind(1, row.version)
        .Bind(2, Variant(*row.listInfo), db::FieldType::Binary)
        .Bind(3, Variant(*row.columns), db::FieldType::Binary)
        .Bind(4, Variant(*row.tables), db::FieldType::Binary)
        .Bind(5, Variant(*row.visibility), db::FieldType::Binary)
        .Bind(6, Variant(row.sql))
        .Bind(7, Variant(row.lastUpdateVersion))
        .Bind(8, Variant(section))
        .Bind(9, Variant(user))
        .Bind(10, Variant(service));
    if (update.Execute() > 0) return;
    db::UpdatableRecordset rs = connection.OpenForUpdate(kEmptyLayout);
    rs.AddNew();
    LoadCfgToRS(rs, section, user, service);
    rs.Update();
  });
  return kOk;
}

bool CMapCustGridCfg::IsCfgExists(const db::Connection& connection, const std::string& section, std::int32_t user,
                                  std::int32_t service) const {
  const db::Recordset rs = connection.OpenRS(std::string("SELECT COUNT(*) AS Ile FROM ") + varion::kLayoutTable +
                                             " WHERE " + varion::MakeLayoutKeyWhere(section, user, service));
  return !rs.IsEOF() && rs.GetCollect(0).AsInt32() > 0;
}

Status32 CMapCustGridCfg::DeleteCfg(const db::Connection& connection, const std::string& section, std::int32_t user,
                                    std::int32_t service) {
  const std::int64_t rows = connection.Execute(std::string("DELETE FROM ") + varion::kLayoutTable + " WHERE " +
                                               varion::MakeLayoutKeyWhere(section, user, service));
  return rows > 0 ? kOk : kFalse;
}

Status32 CMapCustGridCfg::MakeEntryForCfg(const db::Connection& connection, const std::string& section,
                                          std::int32_t user, std::int32_t service) {
  Status32 status = kFalse;
  InTransaction(connection, [&] {
    if (IsCfgExists(connection, section, user, service)) return;
    db::UpdatableRecordset rs = connection.OpenForUpdate(kEmptyLayout);
    rs.AddNew();
    LoadCfgToRS(rs, section, user, service);
    rs.Update();
    status = kOk;
  });
  return status;
}

Status32 CMapCustGridCfg::LoadCustomCfg(const db::Connection& connection, const std::string& section,
                                        std::int32_t moduleId, std::optional<std::int32_t> gridType) {
  SetDialect(connection.Dialect());
  const db::Recordset rs = connection.OpenRS(varion::MakeCustomGridSelect(section, moduleId, gridType));
  if (rs.IsEOF()) return kFalse;
  const auto list = BlobOf(rs, "grg_BinListInfo");
  const auto columns = BlobOf(rs, "grg_BinColumns");
  const auto tables = BlobOf(rs, "grg_BinTables");
  const auto visibility = BlobOf(rs, "grg_BinVisibility");
  const Status32 st = LoadCustomCfgFromBlobs(Need(list, "grg_BinListInfo"), Need(columns, "grg_BinColumns"),
                                             Need(tables, "grg_BinTables"), Need(visibility, "grg_BinVisibility"));
  if (st < 0) return st;
  const std::string sql = TextOf(rs, "grg_Sql");
  if (!sql.empty()) {
    SetSql(sql);
    DisableAutoUpdate();
  }
  SetCustomEntryWhere(TextOf(rs, "grg_SqlWhere"));
  const Variant& own = rs.GetCollect("grg_KolumnyWlasneWidoczne");
  if (!own.IsEmptyOrNull()) m_list.allowCustomColumns = own.AsInt32() != 0;
  return kOk;
}

// --- conditional formats ---------------------------------------------------------------------

Status32 CMapCustGridCfg::LoadCustomFmts(const db::Connection& connection, const std::string& name,
                                         std::int32_t listId) {
  return LoadFormats(connection, name, listId, std::nullopt);
}

Status32 CMapCustGridCfg::LoadCustomFmts(const db::Connection& connection, const std::string& name,
                                         std::int32_t listId, std::int32_t userId) {
  return LoadFormats(connection, name, listId, userId);
}

Status32 CMapCustGridCfg::LoadFormats(const db::Connection& connection, const std::string& name, std::int32_t listId,
                                      std::optional<std::int32_t> userId) {
  std::string sql =
      "SELECT grf_Id, grf_Nazwa, grf_Warunek, grf_Tabele, grf_Kolumna, grf_KolorTekstu, grf_KolorTla, "
      "grf_Pogrubienie, grf_Kursywa, grf_Przekreslenie, grf_Aktywny FROM " +
      std::string(varion::kCustomFormatsTable) + " WHERE grf_Section = '" + varion::SqlOkString(name) +
      "' AND grf_IdListy = " + std::to_string(listId);
  sql += userId ? " AND grf_IdUzytkownika IN (0, " + std::to_string(*userId) + ")" : " AND grf_IdUzytkownika = 0";
  sql += " ORDER BY grf_Kolejnosc, grf_Id";
  db::Recordset rs = connection.OpenRS(sql);
  auto formats = std::make_unique<varion::CustomFormatSet>();
  for (; !rs.IsEOF(); rs.MoveNext()) {
    varion::CustomFormat f;
    f.id = rs.GetCollect("grf_Id").AsInt32();
    f.name = TextOf(rs, "grf_Nazwa");
    f.condition = TextOf(rs, "grf_Warunek");
    f.extraTables = TextOf(rs, "grf_Tabele");
    f.column = TextOf(rs, "grf_Kolumna");
    f.textColor = rs.GetCollect("grf_KolorTekstu").AsInt32(-1);
    f.backColor = rs.GetCollect("grf_KolorTla").AsInt32(-1);
    f.bold = rs.GetCollect("grf_Pogrubienie").AsInt32() != 0;
    f.italic = rs.GetCollect("grf_Kursywa").AsInt32() != 0;
    f.strikeOut = rs.GetCollect("grf_Przekreslenie").AsInt32() != 0;
    f.active = rs.GetCollect("grf_Aktywny").AsInt32() != 0;
    formats->Add(std::move(f));  // a row without a condition formats nothing
  }
  m_formats = std::move(formats);
  m_formatsSource = FormatsSource{connection, name, listId, userId};
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::RefreshCustomFmt() {
  if (!m_formatsSource) return kFalse;
  const FormatsSource source = *m_formatsSource;
  return LoadFormats(source.connection, source.name, source.listId, source.userId);
}

Status32 CMapCustGridCfg::TurnOffAllWarFmtForUserAndGrid(const db::Connection& connection, const std::string& name,
                                                         std::int32_t userId) {
  connection.Execute("UPDATE " + std::string(varion::kCustomFormatsTable) + " SET grf_Aktywny = 0 WHERE grf_Section = '" +
                     varion::SqlOkString(name) + "' AND grf_IdUzytkownika = " + std::to_string(userId));
  if (m_formats) {
    m_formats->TurnOffAll();
    m_sqlChanged = true;
  }
  return kOk;
}
