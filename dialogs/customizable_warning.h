// CCustomizableWarning: a warning that the database decides about. Its row in "pd_Ostrzezenia"
// (one per message number and user) says whether this program, or everybody, no longer wants it;
// its kind adds a condition of its own on the data (DodatkoweWarunkiSpelnione). The window part
// (Show) is in customizable_warning_win.cpp; everything here is portable.
#pragma once

#include <optional>
#include <string>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "db/connection.h"
#include "dialogs/message_box_buttons.h"

// The kinds of warning and the extra condition each has (DodatkoweWarunkiSpelnione):
//   General  none: shown whenever its row allows.
//   Brexit   shown only when the data has something British left to settle: an account of an
//            open fiscal year in the chart of accounts under the given register filter (when a
//            filter is given), or a contractor whose main address (type 1) is in Great Britain.
enum class WarningKind { General, Brexit };

struct VARION_API WarningIdentity {
  long messageNumber = 0;                 // "ost_NumerProgramowy"
  long programBit = 0;                    // this program's bit in "ost_NiePokazujWiecejFlagi"
  WarningKind kind = WarningKind::General;
  std::optional<long> accountFilter;      // Brexit: "kw_Filtr1" of the account registers
};

struct VARION_API WarningParams {
  std::string title;     // empty: the box kind's caption
  std::string text;      // the information text
  std::string question;  // may be empty
  CMB::MessageBoxType type = CMB::MessageBoxType::Warning;
  bool showOnceForAll = false;  // the row it creates counts for every user
};

class VARION_API CCustomizableWarning {
 public:
  // The connection and the user default to the running instance's. `templateId` is the host's
  // identifier of the warning's dialog, kept for the host (GetTemplateId); the warning itself
  // always shows in the library's message box.
  CCustomizableWarning(unsigned templateId, WarningIdentity identity, WarningParams params,
                       varion::db::Connection connection = {}, std::optional<long> userId = std::nullopt);

  // Adds the warning's row for a user (its statement as production databases know it).
  void DodajNoweOstrzezenieDoBazy(long userId, long flags, bool showOnceForAll);
  static std::string InsertSql(long messageNumber, long userId, long flags, long showOnceForAll);

  // The kind's own condition (see WarningKind). Raises ComError when the database fails.
  bool DodatkoweWarunkiSpelnione();
  bool CzyPokazacOstrzenienieBrexit();

  // The two Brexit queries as SQL Server runs them, reading the found identifier through an
  // output parameter named "Output"; and the same query as any server (SQL Server included)
  // runs it through the recordset path: the value comes back as a row in a column Output.
  // Rewritten rather than bound as an output parameter because a row needs nothing of the
  // backend that the other servers lack, and it runs the same on all of them.
  static std::string BrexitAccountsSql(long accountFilter);
  static std::string BrexitContractorsSql();
  static std::string AsRowQuery(const std::string& outputQuery, const varion::SqlDialect& dialect);

  // True when neither the row nor the kind's condition stops the warning. A row that does not
  // exist yet is created first, so that a don't-show-again choice has a row to go into.
  bool ShouldShow();

  unsigned GetTemplateId() const { return m_templateId; }
  const WarningIdentity& Identity() const { return m_identity; }
  const WarningParams& Params() const { return m_params; }
  varion::db::Connection Db() const;
  long GetUserId() const;

 private:
  unsigned m_templateId;
  WarningIdentity m_identity;
  WarningParams m_params;
  varion::db::Connection m_connection;
  std::optional<long> m_userId;
};
