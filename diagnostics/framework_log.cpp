#include "diagnostics/framework_log.h"

#include "diagnostics/log_factories.h"

#include <cstdio>
#include <mutex>

#if defined(_WIN32)
extern "C" __declspec(dllimport) void __stdcall OutputDebugStringA(const char*);
#endif

namespace varion {
namespace {

std::mutex g_mutex;
FrameworkLogSink g_sink;

void DefaultSink(std::string_view area, std::string_view text) {
  const std::string entry = "[" + std::string(area) + "] " + std::string(text);
  SimpleLog::Default::Write("Varion.Framework", FramLogWarning, entry);
  const std::string line = "varion " + entry + "\n";
#if defined(_WIN32)
  OutputDebugStringA(line.c_str());
#else
  std::fputs(line.c_str(), stderr);
#endif
}

}  // namespace

FrameworkLogSink SetFrameworkLogSink(FrameworkLogSink sink) {
  std::lock_guard lock(g_mutex);
  std::swap(g_sink, sink);
  return sink;
}

void FrameworkLog(std::string_view area, std::string_view text) {
  FrameworkLogSink sink;
  {
    std::lock_guard lock(g_mutex);
    sink = g_sink;
  }
  if (sink)
    sink(area, text);
  else
    DefaultSink(area, text);
}

}  // namespace varion
