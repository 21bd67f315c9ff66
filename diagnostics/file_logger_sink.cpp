#include "diagnostics/file_logger_sink.h"

#include <cwctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <system_error>

#include "base/text.h"
#include "diagnostics/log_platform.h"

namespace varion::logplatform {

std::filesystem::path NativePath(std::string_view cp1250) {
#if defined(_WIN32)
  return std::filesystem::path(text::Cp1250ToWide(cp1250));
#else
  return std::filesystem::path(text::Cp1250ToUtf8(cp1250));
#endif
}

std::string Cp1250Path(const std::filesystem::path& path) {
#if defined(_WIN32)
  return text::WideToCp1250(path.native());
#else
  return text::Utf8ToCp1250(path.native());
#endif
}

}  // namespace varion::logplatform

namespace SimpleLog {
namespace {

namespace platform = varion::logplatform;

template <typename Char>
bool IsSeparator(Char c) {
#if defined(_WIN32)
  return c == Char('\\') || c == Char('/');
#else
  return c == Char('/');
#endif
}

template <typename Char>
std::basic_string<Char> Join(std::basic_string_view<Char> directory, std::basic_string_view<Char> name) {
  if (directory.empty()) return std::basic_string<Char>(name);
  std::size_t end = directory.size();
  while (end > 0 && IsSeparator(directory[end - 1])) --end;
  std::basic_string<Char> path(directory.substr(0, end));
  path += Char(platform::kSeparator);
  path += name;
  return path;
}

std::filesystem::path FilePath(std::string_view directory, std::string_view name) {
  using Native = std::filesystem::path::string_type;
  const Native nativeName = platform::NativePath(name).native();
  const Native nativeDir = directory.empty() ? platform::DefaultDirectory().native() : platform::NativePath(directory).native();
  return std::filesystem::path(Join<Native::value_type>(nativeDir, nativeName));
}

}  // namespace


namespace detail {

// One log file of the process: its stream behind one lock. Every entry is handed to the operating
// system before Append returns, in one write of the whole line, so a line written just before a
// crash, a kill or a deliberate process stop is in the file.
class LogFile {
 public:
  explicit LogFile(std::filesystem::path path) : m_path(std::move(path)) {
    // No buffer in the stream: each write goes straight to the system, and always ends at a
    // line end because a line is written in one piece.
    m_stream.rdbuf()->pubsetbuf(nullptr, 0);
  }

  void Append(tagFramLogLevel level, std::string_view text) {
    const std::string_view name = LevelName(level);
    std::lock_guard<std::mutex> lock(m_mutex);
    m_line.clear();
    m_line.append(1, '[').append(name).append("] ").append(text).append(1, '\n');
    if (!WriteLine()) {
      // The file went away under us (a removed directory, a vanished share): open it again,
      // making the directories, and try once more; a second failure loses this line only.
      m_stream.close();
      m_stream.clear();
      WriteLine();
    }
    // A rare huge line does not keep its memory for the rest of the process.
    if (m_line.capacity() > kKeptLineCapacity) std::string().swap(m_line);
  }

 private:
  static constexpr std::size_t kKeptLineCapacity = 64 * 1024;

  bool WriteLine() {
    if (!EnsureOpen()) return false;
    m_stream.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
    if (m_stream) return true;
    m_stream.clear();
    return false;
  }

  bool EnsureOpen() {
    if (m_stream.is_open()) return true;
    m_stream.clear();
    m_stream.open(m_path, std::ios::out | std::ios::app);
    if (!m_stream.is_open() && m_path.has_parent_path()) {
      std::error_code ec;
      std::filesystem::create_directories(m_path.parent_path(), ec);
      m_stream.clear();
      m_stream.open(m_path, std::ios::out | std::ios::app);
    }
    if (!m_stream.is_open()) {
      m_stream.clear();
      return false;
    }
    return true;
  }

  const std::filesystem::path m_path;
  std::mutex m_mutex;
  std::ofstream m_stream;
  std::string m_line;
};

}  // namespace detail

namespace {

// The files in use, by absolute path (letter case ignored on Windows). Never destroyed, so that
// loggers living in static objects may still be made and dropped while the process ends.
struct OpenFiles {
  std::mutex lock;
  std::map<std::filesystem::path::string_type, std::weak_ptr<detail::LogFile>> files;
};

std::shared_ptr<detail::LogFile> SharedLogFile(const std::filesystem::path& path) {
  static OpenFiles* const open = new OpenFiles;
  std::error_code ec;
  std::filesystem::path absolute = std::filesystem::absolute(path, ec);
  if (ec) absolute = path;
  auto key = absolute.lexically_normal().native();
#if defined(_WIN32)
  for (auto& c : key) c = static_cast<wchar_t>(std::towlower(c));
#endif
  std::lock_guard<std::mutex> guard(open->lock);
  if (auto existing = open->files[key].lock()) return existing;
  std::erase_if(open->files, [](const auto& entry) { return entry.second.expired(); });
  auto file = std::make_shared<detail::LogFile>(path);
  open->files[key] = file;
  return file;
}

}  // namespace

std::string DefaultLogDirectory() { return platform::Cp1250Path(platform::DefaultDirectory()); }

std::string JoinLogPath(std::string_view directory, std::string_view name) { return Join<char>(directory, name); }

FileLoggerSink::FileLoggerSink(std::string_view name) : FileLoggerSink(std::string_view(), name) {}

FileLoggerSink::FileLoggerSink(std::string_view directory, std::string_view name) {
  const std::filesystem::path path = FilePath(directory, name);
  m_path = platform::Cp1250Path(path);
  m_file = SharedLogFile(path);
}

FileLoggerSink::~FileLoggerSink() = default;

void FileLoggerSink::Write(tagFramLogLevel level, std::string_view text) { m_file->Append(level, text); }

void FileLoggerSink::Flush() {}

}  // namespace SimpleLog
