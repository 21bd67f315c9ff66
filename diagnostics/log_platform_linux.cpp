// The log's operating-system services in the native build.
#include "diagnostics/log_platform.h"

#include <pwd.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

namespace varion::logplatform {

std::filesystem::path DefaultDirectory() {
  std::filesystem::path base;
  if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data == '/') {
    base = data;
  } else {
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
      const passwd* pw = getpwuid(getuid());
      home = pw ? pw->pw_dir : nullptr;
    }
    if (!home || !*home) return {};
    base = std::filesystem::path(home) / ".local" / "share";
  }
  return base / "Orvant VX";
}

std::uint32_t CurrentProcessId() { return static_cast<std::uint32_t>(getpid()); }

std::uint32_t CurrentThreadId() {
  // The kernel's thread id, as tools (top -H, gdb) show it; cached per thread.
  thread_local const auto id = static_cast<std::uint32_t>(syscall(SYS_gettid));
  return id;
}

bool UserKeyExists(std::string_view) { return false; }

std::string LocaleDateTimeText(const varion::DateTime& when) { return when.Format("%Y-%m-%d %H:%M:%S"); }

std::string LibraryString(unsigned) { return {}; }

std::string SystemMessage(varion::Status32) { return {}; }

}  // namespace varion::logplatform
