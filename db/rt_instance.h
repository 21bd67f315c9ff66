// The running instance of the host application as the library sees it: the current database
// connection, the logged-in user (number and identifier text) and the workstation name. The host
// installs it once after logging in; every database-bound subsystem reaches the database through
// it. One per process, shared by the host's user-interface threads.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/export.h"
#include "db/connection.h"

class VARION_API CRtInstance {
 public:
  struct Settings {
    varion::db::Connection connection;
    std::int32_t userId = 0;
    std::string userIdentifier;  // the login text, code page 1250
    std::string workstation;     // empty: the computer's name
  };

  // Makes these settings the current instance, replacing any before.
  static void Install(Settings settings);
  // Ends the current instance; its connection stays open for other holders of it.
  static void Uninstall();
  static bool IsInstalled();

  // The current connection. Without an instance, or with its connection closed, raises ComError
  // kDbNotOpen.
  static varion::db::Connection GetConnection();
  // A read-only static recordset on the current connection.
  static varion::db::Recordset OpenRS(std::string_view sql);

  // 0, "" and the computer's name when no instance is installed.
  static std::int32_t GetUserId();
  static std::string GetUserIdentifier();
  static std::string GetWorkstationName();

  // The computer's name as the system gives it (COMPUTERNAME on Windows, the host name elsewhere).
  static std::string ComputerName();
};
