// What the log needs from the operating system, one implementation per build
// (log_platform_win.cpp, log_platform_linux.cpp). Internal to diagnostics/.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/status.h"

namespace varion::logplatform {

// The folder log files go to when no directory is given: on Windows the user's application-data
// folder (the shell's special folder 0x1A) and "\Orvant VX"; elsewhere the user's data directory
// ($XDG_DATA_HOME, else ~/.local/share) and "/Orvant VX". Empty when the system has none.
std::filesystem::path DefaultDirectory();

// The separator between a directory and a file name: '\' on Windows, '/' elsewhere.
#if defined(_WIN32)
inline constexpr char kSeparator = '\\';
#else
inline constexpr char kSeparator = '/';
#endif

// A code page 1250 path as the file system spells it (UTF-16 on Windows, UTF-8 elsewhere), and back.
std::filesystem::path NativePath(std::string_view cp1250);
std::string Cp1250Path(const std::filesystem::path& path);

std::uint32_t CurrentProcessId();
std::uint32_t CurrentThreadId();

// Whether a key can be opened for reading under the current user's registry hive. There is no
// registry outside Windows: false.
bool UserKeyExists(std::string_view key);

// A date and time as the user's default locale writes them; "" when the conversion fails.
std::string LocaleDateTimeText(const varion::DateTime& when);

// A string resource of the library's own module; "" when it has none.
std::string LibraryString(unsigned id);

// The system's message text for a status code (no trailing line end); "" when it has none.
std::string SystemMessage(varion::Status32 code);

}  // namespace varion::logplatform
