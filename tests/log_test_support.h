// Helpers of the logging tests, native and under Wine: a sink that records, a clock that stands
// still, and whole-file reads.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "diagnostics/log_formatters.h"
#include "diagnostics/simple_log.h"

namespace varion::testing {

class RecordingSink : public SimpleLog::ILoggerSink {
 public:
  void Write(tagFramLogLevel level, std::string_view text) override {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.emplace_back(level, std::string(text));
  }
  std::vector<std::pair<tagFramLogLevel, std::string>> Entries() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_entries;
  }

 private:
  mutable std::mutex m_mutex;
  std::vector<std::pair<tagFramLogLevel, std::string>> m_entries;
};

class FixedClock : public SimpleLog::IClock {
 public:
  explicit FixedClock(DateTime when) : m_when(when) {}
  DateTime CurrentTime() const override { return m_when; }

 private:
  DateTime m_when;
};

// The bytes of a file named in code page 1250; "" when it cannot be read.
inline std::string ReadWholeFile(const std::string& cp1250Path) {
#if defined(_WIN32)
  std::ifstream in(std::filesystem::path(text::Cp1250ToWide(cp1250Path)), std::ios::binary);
#else
  std::ifstream in(text::Cp1250ToUtf8(cp1250Path), std::ios::binary);
#endif
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The lines of a file, without their line ends ("\n" or "\r\n").
inline std::vector<std::string> ReadLines(const std::string& cp1250Path) {
  std::vector<std::string> lines;
  const std::string all = ReadWholeFile(cp1250Path);
  std::size_t start = 0;
  while (start < all.size()) {
    std::size_t end = all.find('\n', start);
    if (end == std::string::npos) end = all.size();
    std::size_t stop = end;
    if (stop > start && all[stop - 1] == '\r') --stop;
    lines.push_back(all.substr(start, stop - start));
    start = end + 1;
  }
  return lines;
}

}  // namespace varion::testing
