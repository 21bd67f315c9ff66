// The file sink of SimpleLog: one text file, opened for appending on the first entry, one line
// per entry: the level name in square brackets, a blank, the formatted text and a line end.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "base/export.h"
#include "diagnostics/simple_log.h"

namespace SimpleLog {

// The folder log files go to when none is given (code page 1250): on Windows the user's
// application-data folder and "\Orvant VX"; elsewhere the user's data directory and "/Orvant VX".
VARION_API std::string DefaultLogDirectory();

// The directory with its trailing separators trimmed, one separator and the name. Separators are
// '\' and '/' on Windows, '/' elsewhere; the one added is '\' on Windows. A directory made only of
// separators is the root; an empty one gives the name alone.
VARION_API std::string JoinLogPath(std::string_view directory, std::string_view name);

namespace detail {
class LogFile;
}

// Every entry is handed to the operating system before Write returns, as one whole line: nothing
// waits in memory, so an entry followed by a crash or a kill is in the file. A file that cannot be
// opened or written drops the entry; the stream's error state is cleared and the file is opened
// again for the next entry (or at once, for one more try). A missing directory is created.
// Sinks of one process that name the same file share one stream, so their lines never overwrite
// or split each other (appending through two streams of one process is not safe on Windows).
class VARION_API FileLoggerSink final : public ILoggerSink {
 public:
  explicit FileLoggerSink(std::string_view name);  // in the default directory
  // An empty directory means the default one. Texts are code page 1250.
  FileLoggerSink(std::string_view directory, std::string_view name);
  ~FileLoggerSink() override;
  FileLoggerSink(const FileLoggerSink&) = delete;
  FileLoggerSink& operator=(const FileLoggerSink&) = delete;

  void Write(tagFramLogLevel level, std::string_view text) override;
  // Nothing is held in memory; kept for hosts that call it.
  void Flush();
  // The file's path, code page 1250.
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
  std::shared_ptr<detail::LogFile> m_file;
};

}  // namespace SimpleLog
