#include "diagnostics/simple_log_deprecated.h"

#include <cstdio>
#include <system_error>
#include <vector>

#include "diagnostics/file_logger_sink.h"
#include "diagnostics/log_platform.h"
#include "diagnostics/log_toggles.h"

namespace platform = varion::logplatform;

namespace {

constexpr unsigned kInvalidDateTimeString = 55296;

}  // namespace

CSimpleLogDeprecated::CSimpleLogDeprecated(std::string fileName, bool flushEachEntry, int sizeLimitKb, std::string directory)
    : m_fileName(std::move(fileName)),
      m_flushEachEntry(flushEachEntry),
      m_sizeLimitKb(sizeLimitKb),
      m_directory(std::move(directory)),
      m_filePath(CreateFilePath()) {}

CSimpleLogDeprecated::~CSimpleLogDeprecated() = default;

bool CSimpleLogDeprecated::CheckCanEnableLogging() { return platform::UserKeyExists(SimpleLog::kEnableSimpleLoggingKey); }

bool CSimpleLogDeprecated::IsLoggingDisabled() {
  std::lock_guard<std::mutex> lock(m_checkMutex);
  if (NeedToCheckIfLogEnabled()) {
    m_disabled = !CheckCanEnableLogging();
    m_checked = true;
  }
  return m_disabled;
}

std::string CSimpleLogDeprecated::CreateFilePath() const {
  const std::string directory = m_directory.empty() ? SimpleLog::DefaultLogDirectory() : m_directory;
  return SimpleLog::JoinLogPath(directory, m_fileName);
}

std::string CSimpleLogDeprecated::TimestampOf(const varion::DateTime& when) {
  std::string text = platform::LocaleDateTimeText(when);
  if (!text.empty()) return text;
  text = platform::LibraryString(kInvalidDateTimeString);
  return text.empty() ? std::string("Invalid DateTime") : text;
}

std::string CSimpleLogDeprecated::GetTimestamp() { return TimestampOf(varion::DateTime::Now()); }

bool CSimpleLogDeprecated::OpenStreamIfLoggingEnabled() {
  if (IsLoggingDisabled()) return false;
  if (m_stream.is_open()) return true;
  const std::filesystem::path path = platform::NativePath(m_filePath);
  std::error_code ec;
  if (m_sizeLimitKb > 0) {
    const auto size = std::filesystem::file_size(path, ec);
    if (!ec && size > static_cast<std::uintmax_t>(m_sizeLimitKb) * 1024) {
      std::filesystem::path old = path;
      old += ".old";
      std::filesystem::rename(path, old, ec);
    }
  }
  m_stream.clear();
  m_stream.open(path, GetOpenForAppendMask());
  if (!m_stream.is_open()) {
    // Dropped; the next entry tries again.
    m_stream.clear();
    return false;
  }
  return true;
}

void CSimpleLogDeprecated::WriteLine(std::string_view text) {
  std::lock_guard<std::mutex> lock(m_mutex);
  if (!OpenStreamIfLoggingEnabled()) return;
  std::string line = GetTimestamp();
  line.append(1, '\t').append(text).append(1, '\n');
  m_stream.write(line.data(), static_cast<std::streamsize>(line.size()));
  if (m_flushEachEntry) m_stream.flush();
  if (!m_stream) m_stream.clear();
}

void CSimpleLogDeprecated::Write(std::string_view text) {
  try {
    WriteLine(text);
  } catch (...) {
  }
}

void CSimpleLogDeprecated::WriteFormatV(const char* format, va_list args) {
  if (!format) return;
  try {
    // Nothing is formatted for a log that is off.
    if (IsLoggingDisabled()) return;
    va_list measure;
    va_copy(measure, args);
    const int length = std::vsnprintf(nullptr, 0, format, measure);
    va_end(measure);
    if (length < 0) return;
    std::vector<char> buffer(static_cast<std::size_t>(length) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), format, args);
    WriteLine(std::string_view(buffer.data(), static_cast<std::size_t>(length)));
  } catch (...) {
  }
}

void CSimpleLogDeprecated::WriteFormat(const char* format, ...) {
  va_list args;
  va_start(args, format);
  WriteFormatV(format, args);
  va_end(args);
}

std::string CSimpleLogDeprecated::GetMsgFromVelError(varion::Status32 code) {
  std::string message = platform::SystemMessage(code);
  return message.empty() ? varion::StatusText(code) : message;
}
