// The older per-file text log, kept for the callers that still use it. It writes only while the
// registry key "SOFTWARE\Orvant\EnableSimpleLogging" exists under the current user's hive (asked
// once per object), one line per entry: the local time as the user's locale writes it, a tab and
// the text. New code uses the loggers of SimpleLog.
#pragma once

#include <atomic>
#include <cstdarg>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/export.h"
#include "base/status.h"

#if defined(__GNUC__)
#define VARION_PRINTF_FORMAT(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define VARION_PRINTF_FORMAT(fmt, args)
#endif

class VARION_API CSimpleLogDeprecated {
 public:
  // `fileName` in `directory` (code page 1250; an empty directory is the default log folder).
  // `flushEachEntry`: every entry reaches the file before Write returns; otherwise the stream's
  // buffer decides. `sizeLimitKb`: a file already larger than this many kilobytes when it is
  // opened is renamed to "<file name>.old", replacing an older one, and a new file begun;
  // 0 or less: no limit.
  CSimpleLogDeprecated(std::string fileName, bool flushEachEntry = true, int sizeLimitKb = 0, std::string directory = {});
  virtual ~CSimpleLogDeprecated();
  CSimpleLogDeprecated(const CSimpleLogDeprecated&) = delete;
  CSimpleLogDeprecated& operator=(const CSimpleLogDeprecated&) = delete;

  void Write(std::string_view text);
  void WriteFormat(const char* format, ...) VARION_PRINTF_FORMAT(2, 3);
  void WriteFormatV(const char* format, va_list args);

  // The message text of a library status code: the system's text when it has one, else the code
  // as "0x80004005".
  static std::string GetMsgFromVelError(varion::Status32 code);

  // The answer of CheckCanEnableLogging, asked on the first call only.
  bool IsLoggingDisabled();
  bool NeedToCheckIfLogEnabled() const { return !m_checked.load(); }
  const std::string& GetFilePath() const { return m_filePath; }

 protected:
  // Whether logging may be on: the registry key can be opened for reading. Outside Windows there
  // is no registry and the answer is false.
  virtual bool CheckCanEnableLogging();
  // The current local time to the second, as the user's default locale writes it.
  virtual std::string GetTimestamp();
  // The time text of a value; when the value cannot be converted, the module's string 55296, or
  // "Invalid DateTime" when the module has none.
  static std::string TimestampOf(const varion::DateTime& when);

  std::string CreateFilePath() const;
  static std::ios_base::openmode GetOpenForAppendMask() { return std::ios_base::out | std::ios_base::app; }
  // Opens the stream when logging is enabled and it is not open yet; true when it is open.
  bool OpenStreamIfLoggingEnabled();

 private:
  void WriteLine(std::string_view text);

  std::string m_fileName;
  bool m_flushEachEntry;
  int m_sizeLimitKb;
  std::string m_directory;
  std::string m_filePath;
  std::mutex m_mutex;  // the stream
  std::ofstream m_stream;
  std::mutex m_checkMutex;  // the answer of the switch
  std::atomic<bool> m_checked{false};
  bool m_disabled = true;
};
