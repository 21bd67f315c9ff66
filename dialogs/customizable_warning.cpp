#include "dialogs/customizable_warning.h"

#include <cstdio>

#include "base/status.h"
#include "db/rt_instance.h"
#include "dialogs/message_box_settings.h"

namespace {

// No blank before the parenthesis of VALUES: the statement as production databases log it.
constexpr const char* kInsert =
    "INSERT INTO pd_Ostrzezenia (ost_NumerProgramowy, ost_IdUzytkownika, ost_NiePokazujWiecejFlagi, "
    "ost_PokazujRazDlaWszystkich) VALUES(%ld, %ld, %ld, %ld)";
constexpr const char* kBrexitAccounts =
    "SELECT TOP 1 ? = ko_Id FROM pk_PlanKont LEFT JOIN pk_Kartoteka ON ko_IdKartoteki = kw_Id LEFT JOIN "
    "pd_RokObrotowy ON robr_Id = ko_IdRokuObrotowego WHERE robr_Zamkniety = 0 AND kw_Filtr1 = %ld";
constexpr const char* kBrexitContractors =
    "SELECT TOP 1 ? = kh_Id FROM kh__Kontrahent LEFT JOIN adr__Ewid ON adr_IdObiektu = kh_Id LEFT JOIN sl_Panstwo "
    "ON adr_IdPanstwo = pa_Id WHERE adr_TypAdresu = 1 AND pa_KodPanstwaISO = 'GB' ";
constexpr std::string_view kOutputHead = "SELECT TOP 1 ? = ";

template <class... Args>
std::string Format(const char* format, Args... args) {
  char buf[512];
  const int n = std::snprintf(buf, sizeof buf, format, args...);
  return std::string(buf, n > 0 ? static_cast<size_t>(n) : 0);
}

}  // namespace

CCustomizableWarning::CCustomizableWarning(unsigned templateId, WarningIdentity identity, WarningParams params,
                                           varion::db::Connection connection, std::optional<long> userId)
    : m_templateId(templateId),
      m_identity(std::move(identity)),
      m_params(std::move(params)),
      m_connection(std::move(connection)),
      m_userId(userId) {}

varion::db::Connection CCustomizableWarning::Db() const {
  return m_connection.IsOpen() ? m_connection : CRtInstance::GetConnection();
}

long CCustomizableWarning::GetUserId() const {
  return m_userId ? *m_userId : static_cast<long>(CRtInstance::GetUserId());
}

std::string CCustomizableWarning::InsertSql(long messageNumber, long userId, long flags, long showOnceForAll) {
  return Format(kInsert, messageNumber, userId, flags, showOnceForAll);
}

void CCustomizableWarning::DodajNoweOstrzezenieDoBazy(long userId, long flags, bool showOnceForAll) {
  Db().Execute(InsertSql(m_identity.messageNumber, userId, flags, showOnceForAll ? 1 : 0));
}

std::string CCustomizableWarning::BrexitAccountsSql(long accountFilter) { return Format(kBrexitAccounts, accountFilter); }

std::string CCustomizableWarning::BrexitContractorsSql() { return kBrexitContractors; }

std::string CCustomizableWarning::AsRowQuery(const std::string& outputQuery, const varion::SqlDialect& dialect) {
  if (outputQuery.compare(0, kOutputHead.size(), kOutputHead) != 0)
    throw varion::ComError(varion::kInvalidArg, "not an output-parameter query: " + outputQuery);
  const std::size_t from = outputQuery.find(" FROM ", kOutputHead.size());
  if (from == std::string::npos) throw varion::ComError(varion::kInvalidArg, "no FROM in: " + outputQuery);
  // OUTPUT is a reserved word of T-SQL, so the column's name is quoted on every server.
  return "SELECT " + dialect.TopClause(1) + outputQuery.substr(kOutputHead.size(), from - kOutputHead.size()) +
         " AS " + dialect.QuoteIdentifier("Output") + outputQuery.substr(from) + dialect.LimitClause(1);
}

bool CCustomizableWarning::CzyPokazacOstrzenienieBrexit() {
  const varion::db::Connection db = Db();
  const auto found = [&](const std::string& query) {
    varion::db::Recordset rs = db.OpenRS(AsRowQuery(query, db.Dialect()));
    return !rs.IsEOF() && !rs.GetCollect("Output").IsEmptyOrNull();
  };
  if (m_identity.accountFilter && found(BrexitAccountsSql(*m_identity.accountFilter))) return true;
  return found(BrexitContractorsSql());
}

bool CCustomizableWarning::DodatkoweWarunkiSpelnione() {
  switch (m_identity.kind) {
    case WarningKind::General:
      return true;
    case WarningKind::Brexit:
      return CzyPokazacOstrzenienieBrexit();
  }
  return true;
}

bool CCustomizableWarning::ShouldShow() {
  CMB::DatabaseSetting setting(m_identity.messageNumber, m_identity.programBit, Db(), GetUserId());
  setting.Init();
  if (!setting.GetRowUserId() && GetUserId() != 0) {
    DodajNoweOstrzezenieDoBazy(GetUserId(), 0, m_params.showOnceForAll);
    setting.Init();
  }
  return setting.CanShow() && DodatkoweWarunkiSpelnione();
}
