#include "controls/nip_unique.h"

#include <cstdio>

#include "base/sql_literal.h"
#include "controls/validators.h"
#include "db/rt_instance.h"

std::string CzyNipUnikalnySql(const varion::SqlDialect& dialect, const char* nip, long idKontrahenta, long maxRows) {
  auto parts = ParsujNip(nip);
  if (!parts) return {};
  std::string number = parts->PodajNumerBezZnakowSpecjalnych();
  if (number.empty()) return {};
  for (char& c : number)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  // The stored number is compared as the typed one is cleaned: upper case, no hyphens or blanks.
  std::string candidates;
  if (parts->CzyPrefiksZagraniczny()) {
    candidates = "'" + varion::SqlOkString(parts->PodajNumerZPrefiksemBezZnakowSpecjalnych()) + "'";
  } else {
    candidates = "'" + varion::SqlOkString(number) + "', 'PL" + varion::SqlOkString(number) + "'";
  }
  if (maxRows < 1) maxRows = 1;
  const int rows = maxRows > 1000000 ? 1000000 : static_cast<int>(maxRows);

  char tail[96];
  std::snprintf(tail, sizeof tail, " AND kh_Id<>%ld AND kh_OdbDet=0", idKontrahenta);
  return "SELECT " + dialect.TopClause(rows) +
         "adr_Id, COALESCE(adr_Nazwa, 'BRAK') AS adr_Nazwa, COALESCE(adr_NazwaPelna, 'BRAK') AS adr_NazwaPelna"
         " FROM adr__Ewid LEFT JOIN kh__Kontrahent ON adr_IdObiektu = kh_Id"
         " WHERE adr_TypAdresu = 1 AND REPLACE(REPLACE(UPPER(kh_Nip), '-', ''), ' ', '') IN (" +
         candidates + ")" + tail + " ORDER BY adr_Id" + dialect.LimitClause(rows);
}

std::pair<bool, varion::db::Recordset> CzyNipUnikalny(const varion::db::Connection& connection, const char* nip,
                                                      long idKontrahenta, long maxRows) {
  std::string sql = CzyNipUnikalnySql(connection.Dialect(), nip, idKontrahenta, maxRows);
  if (sql.empty()) return {true, varion::db::Recordset()};
  varion::db::Recordset clashes = connection.OpenRS(sql);
  bool unique = clashes.IsEOF();
  return {unique, std::move(clashes)};
}

std::pair<bool, varion::db::Recordset> CzyNipUnikalny(const char* nip, long idKontrahenta, long maxRows) {
  return CzyNipUnikalny(CRtInstance::GetConnection(), nip, idKontrahenta, maxRows);
}
