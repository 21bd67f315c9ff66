#include "dialogs/message_box_settings.h"

#include <cstdio>
#include <utility>

#include "db/rt_instance.h"

namespace CMB {
namespace {

// The statements as production databases know them; every value is a number.
constexpr const char* kSelect =
    "SELECT * FROM pd_Ostrzezenia WHERE ost_NumerProgramowy=%ld AND (ost_IdUzytkownika=%ld OR "
    "ost_PokazujRazDlaWszystkich=1)";
constexpr const char* kUpdate =
    "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=%ld WHERE ost_NumerProgramowy=%ld AND ost_IdUzytkownika=%ld";
constexpr const char* kInsert =
    "INSERT INTO pd_Ostrzezenia (ost_NumerProgramowy, ost_IdUzytkownika, ost_NiePokazujWiecejFlagi, "
    "ost_PokazujRazDlaWszystkich) VALUES (%ld, %ld, %ld, %ld)";
constexpr const char* kResetAll = "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=0 WHERE ost_IdUzytkownika=%ld";
// The bit is cleared by and-ing with its complement, which every server writes as '&'.
constexpr const char* kResetBit =
    "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=ost_NiePokazujWiecejFlagi & %ld WHERE ost_IdUzytkownika=%ld "
    "AND (ost_NiePokazujWiecejFlagi & %ld) <> 0";

template <class... Args>
std::string Format(const char* format, Args... args) {
  char buf[512];
  const int n = std::snprintf(buf, sizeof buf, format, args...);
  return std::string(buf, n > 0 ? static_cast<size_t>(n) : 0);
}

std::optional<long> OptionalField(const varion::db::Recordset& rs, const char* name) {
  const varion::Variant& v = rs.GetCollect(name);
  if (v.IsEmptyOrNull()) return std::nullopt;
  std::int32_t out = 0;
  if (varion::Failed(v.ToInt32(out))) return std::nullopt;
  return out;
}

}  // namespace

// The registry setting ------------------------------------------------------------------------------

RegistrySetting::RegistrySetting(std::string section, std::string entry, std::shared_ptr<varion::IProfileStore> profile)
    : m_section(std::move(section)), m_entry(std::move(entry)), m_profile(std::move(profile)) {}

bool RegistrySetting::CanShow() {
  return !m_profile || m_profile->GetInt(m_section, m_entry).value_or(0) != 1;
}

void RegistrySetting::SaveData() {
  if (m_profile && m_checked) m_profile->WriteInt(m_section, m_entry, 1);
}

// The database setting ------------------------------------------------------------------------------

std::string WarningSelectSql(long messageNumber, long userId) { return Format(kSelect, messageNumber, userId); }

std::string WarningUpdateSql(long flags, long messageNumber, long userId) {
  return Format(kUpdate, flags, messageNumber, userId);
}

std::string WarningInsertSql(long messageNumber, long userId, long flags, long showOnceForAll) {
  return Format(kInsert, messageNumber, userId, flags, showOnceForAll);
}

std::string ResetSuppressedMessagesSql(long userId, std::optional<long> programBit) {
  if (!programBit) return Format(kResetAll, userId);
  return Format(kResetBit, ~*programBit, userId, *programBit);
}

DatabaseSetting::DatabaseSetting(long messageNumber, std::optional<long> programBit, varion::db::Connection connection,
                                 std::optional<long> userId)
    : m_messageNumber(messageNumber), m_bit(programBit), m_connection(std::move(connection)), m_userId(userId) {}

long DatabaseSetting::GetUserId() const { return m_userId ? *m_userId : static_cast<long>(CRtInstance::GetUserId()); }

varion::db::Connection DatabaseSetting::Db() const {
  return m_connection.IsOpen() ? m_connection : CRtInstance::GetConnection();
}

void DatabaseSetting::Init() {
  m_initialised = true;
  m_rowUser.reset();
  m_flags.reset();
  m_showOnceForAll = false;
  const long user = GetUserId();
  if (user == 0) return;
  varion::db::Recordset rs = Db().OpenRS(WarningSelectSql(m_messageNumber, user));
  struct Row {
    std::optional<long> user, flags;
    bool showOnce;
  };
  std::optional<Row> chosen;
  int chosenRank = 0;
  for (; !rs.IsEOF(); rs.MoveNext()) {
    Row row{OptionalField(rs, "ost_IdUzytkownika"), OptionalField(rs, "ost_NiePokazujWiecejFlagi"),
            OptionalField(rs, "ost_PokazujRazDlaWszystkich").value_or(0) == 1};
    const int rank = row.showOnce && row.flags.value_or(0) != 0 ? 3 : row.user == user ? 2 : 1;
    if (rank > chosenRank) {
      chosen = row;
      chosenRank = rank;
    }
  }
  if (!chosen) return;
  m_rowUser = chosen->user;
  m_flags = chosen->flags;
  m_showOnceForAll = chosen->showOnce;
}

bool DatabaseSetting::IsMessageDisplayedHere() const {
  if (!m_rowUser || GetUserId() == 0) return false;
  const long flags = m_flags.value_or(0);
  if (m_bit && (flags & *m_bit) != 0) return true;
  return m_showOnceForAll && flags != 0;
}

bool DatabaseSetting::CanShow() {
  if (!m_initialised) Init();
  return !IsMessageDisplayedHere();
}

void DatabaseSetting::HandleBtnClickDontShowAgain(bool checked) {
  if (!m_flags || !m_bit) return;
  if (checked)
    *m_flags ^= *m_bit;
  else
    *m_flags &= *m_bit;
}

void DatabaseSetting::SaveData() {
  const long user = GetUserId();
  if (!m_flags || user == 0) return;
  Db().Execute(WarningUpdateSql(*m_flags, m_messageNumber, user));
}

void DatabaseSetting::AddNewMessageToDatabase(long userId, long flags, bool showOnceForAll) {
  Db().Execute(WarningInsertSql(m_messageNumber, userId, flags, showOnceForAll ? 1 : 0));
}

std::int64_t ResetSuppressedMessages(const varion::db::Connection& connection, long userId,
                                     std::optional<long> programBit) {
  return connection.Execute(ResetSuppressedMessagesSql(userId, programBit));
}

}  // namespace CMB
