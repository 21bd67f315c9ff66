// Where a message box keeps the user's don't-show-again choice, and whether it shows at all:
// an integer in the application's profile (RegistrySetting) or a row of the warnings table
// "pd_Ostrzezenia" (DatabaseSetting). A box owns one setting and asks it CanShow before it
// opens; the check box reports every change through HandleBtnClickDontShowAgain, and a button
// that remembers the choice calls SaveData.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/export.h"
#include "db/connection.h"
#include "framework/window_placement.h"

namespace CMB {

class VARION_API DataSavingSettings {
 public:
  virtual ~DataSavingSettings() = default;
  virtual bool CanShow() = 0;
  virtual void SaveData() = 0;
  virtual void HandleBtnClickDontShowAgain(bool checked) = 0;
};

// An integer under (section, entry) of the application's profile. Only 1 suppresses the box:
// other values (2 included) come from other uses of the entry and still show it.
class VARION_API RegistrySetting : public DataSavingSettings {
 public:
  // Without a profile (none passed and none set by the host) the box always shows and nothing
  // is remembered.
  RegistrySetting(std::string section, std::string entry,
                  std::shared_ptr<varion::IProfileStore> profile = varion::GetApplicationProfile());
  bool CanShow() override;
  // Writes 1 when the check box is ticked; an unticked box leaves the profile as it was.
  void SaveData() override;
  void HandleBtnClickDontShowAgain(bool checked) override { m_checked = checked; }

 private:
  std::string m_section, m_entry;
  std::shared_ptr<varion::IProfileStore> m_profile;
  bool m_checked = false;
};

// The statements of the warnings table. The numbers are the only values, so the texts are the
// same on every server.
VARION_API std::string WarningSelectSql(long messageNumber, long userId);
VARION_API std::string WarningUpdateSql(long flags, long messageNumber, long userId);
VARION_API std::string WarningInsertSql(long messageNumber, long userId, long flags, long showOnceForAll);

// One message's row of "pd_Ostrzezenia" for the current user: "ost_NiePokazujWiecejFlagi" holds
// one bit per program that must not show the message again, "ost_PokazujRazDlaWszystkich" = 1
// makes one user's choice count for everybody.
class VARION_API DatabaseSetting : public DataSavingSettings {
 public:
  // `programBit` is this program's bit (none: not known, then the choice is never stored). The
  // connection and the user default to the running instance's.
  DatabaseSetting(long messageNumber, std::optional<long> programBit, varion::db::Connection connection = {},
                  std::optional<long> userId = std::nullopt);

  // Reads the row. Of several rows (the user's own and show-once rows of other users) a
  // show-once row with flags set wins, since it silences the message for everybody; then the
  // user's own row; then the first. Raises ComError when the database fails.
  void Init();
  // False without a row or without a user; true when the flags hold this program's bit;
  // otherwise true exactly when the row is show-once-for-all and its flags are not zero.
  bool IsMessageDisplayedHere() const;
  bool CanShow() override;
  // Checking xors the bit into the flags, unchecking keeps only the bit (flags & bit). Both are
  // deliberate: existing databases hold flags written this way. Nothing changes while the flags
  // or the bit are unknown.
  void HandleBtnClickDontShowAgain(bool checked) override;
  // Writes the flags to the user's row; nothing without a read row or a user.
  void SaveData() override;
  // Adds the message's row for a user.
  void AddNewMessageToDatabase(long userId, long flags, bool showOnceForAll);

  long GetUserId() const;
  std::optional<long> GetFlags() const { return m_flags; }
  std::optional<long> GetRowUserId() const { return m_rowUser; }
  bool IsShowOnceForAll() const { return m_showOnceForAll; }

 private:
  varion::db::Connection Db() const;

  long m_messageNumber;
  std::optional<long> m_bit;
  varion::db::Connection m_connection;
  std::optional<long> m_userId;
  bool m_initialised = false;
  std::optional<long> m_rowUser, m_flags;
  bool m_showOnceForAll = false;
};

// Brings back suppressed messages of one user, for support staff: every message of the user,
// or (with a bit) only this program's choices. Returns the rows changed; raises ComError when
// the database fails.
VARION_API std::int64_t ResetSuppressedMessages(const varion::db::Connection& connection, long userId,
                                                std::optional<long> programBit = std::nullopt);
VARION_API std::string ResetSuppressedMessagesSql(long userId, std::optional<long> programBit);

}  // namespace CMB
