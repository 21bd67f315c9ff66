#include "db/rt_instance.h"

#include <cstdlib>
#include <memory>
#include <mutex>

#include "db/messages.h"

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace {

std::mutex& Lock() {
  static std::mutex m;
  return m;
}

std::shared_ptr<const CRtInstance::Settings>& Slot() {
  static std::shared_ptr<const CRtInstance::Settings> current;
  return current;
}

std::shared_ptr<const CRtInstance::Settings> Current() {
  std::lock_guard<std::mutex> guard(Lock());
  return Slot();
}

}  // namespace

void CRtInstance::Install(Settings settings) {
  if (settings.workstation.empty()) settings.workstation = ComputerName();
  auto installed = std::make_shared<const Settings>(std::move(settings));
  std::lock_guard<std::mutex> guard(Lock());
  Slot() = std::move(installed);
}

void CRtInstance::Uninstall() {
  std::shared_ptr<const Settings> old;
  {
    std::lock_guard<std::mutex> guard(Lock());
    old.swap(Slot());
  }
}

bool CRtInstance::IsInstalled() { return Current() != nullptr; }

varion::db::Connection CRtInstance::GetConnection() {
  auto current = Current();
  if (!current || !current->connection.IsOpen())
    throw varion::ComError(varion::kDbNotOpen, varion::db::messages::ConnectionClosed());
  return current->connection;
}

varion::db::Recordset CRtInstance::OpenRS(std::string_view sql) { return GetConnection().OpenRS(sql); }

std::int32_t CRtInstance::GetUserId() {
  auto current = Current();
  return current ? current->userId : 0;
}

std::string CRtInstance::GetUserIdentifier() {
  auto current = Current();
  return current ? current->userIdentifier : std::string();
}

std::string CRtInstance::GetWorkstationName() {
  auto current = Current();
  return current ? current->workstation : ComputerName();
}

std::string CRtInstance::ComputerName() {
#if defined(_WIN32)
  // The environment carries the name in the ANSI code page, which is 1250 on Polish systems.
  const char* name = std::getenv("COMPUTERNAME");
  return name ? name : "";
#else
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0) return {};
  return name;
#endif
}
