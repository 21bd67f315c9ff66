// SimpleLog against spdlog in the same run: lines per second of a file logger with the time stamp
// (FileLoggerSink + TimestampFormatter against spdlog's basic file sink with the same line shape,
// "[level] YYYY-MM-DD HH:MM:SS.mmm<tab>text", both by default and flushing every line as
// SimpleLog does), one thread and four threads on one logger; the cost
// of a Write while the logger is off; and database rows per second on SQLite.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "db/connection.h"
#include "db/schema/schema.h"
#include "diagnostics/log_factories.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kMessage = "Zapisano dokument FS 123/2025 dla kontrahenta ZIELAR, pozycji 14";

const fs::path& Folder() {
  static const fs::path dir = [] {
    fs::path p = fs::temp_directory_path() / ("varion-log-bench-" + std::to_string(::getpid()));
    fs::create_directories(p);
    std::atexit([] {
      std::error_code ec;
      fs::remove_all(fs::temp_directory_path() / ("varion-log-bench-" + std::to_string(::getpid())), ec);
    });
    return p;
  }();
  return dir;
}

// The loggers live for one benchmark run: made in Setup before the threads start, dropped in
// Teardown with their file, so the files stay small.
SimpleLog::SimpleLoggerWrapper g_simple;
std::shared_ptr<spdlog::logger> g_spdlog;

void SetupSimple(const benchmark::State&) {
  fs::remove(Folder() / "simple.log");
  g_simple = SimpleLog::Custom::CreateLogger(std::make_shared<SimpleLog::FileLoggerSink>(Folder().string(), "simple.log"),
                                             std::make_shared<SimpleLog::AlwaysOnLoggerToggle>(),
                                             std::make_shared<SimpleLog::TimestampFormatter>());
}
void TeardownSimple(const benchmark::State&) {
  g_simple = SimpleLog::SimpleLoggerWrapper();
  fs::remove(Folder() / "simple.log");
}

void SetupSpdlog(const benchmark::State&) {
  fs::remove(Folder() / "spdlog.log");
  g_spdlog = spdlog::basic_logger_mt("bench", (Folder() / "spdlog.log").string());
  g_spdlog->set_pattern("[%l] %Y-%m-%d %H:%M:%S.%e\t%v");
}
// The same logger made to flush every line, which is what SimpleLog's file sink promises: each line
// handed to the system before the call returns.
void SetupSpdlogFlushing(const benchmark::State& state) {
  SetupSpdlog(state);
  g_spdlog->flush_on(spdlog::level::trace);
}
void TeardownSpdlog(const benchmark::State&) {
  g_spdlog.reset();
  spdlog::drop("bench");
  fs::remove(Folder() / "spdlog.log");
}

void BM_SimpleLog_FileLines(benchmark::State& state) {
  for (auto _ : state) g_simple.Write(FramLogInfo, kMessage);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SimpleLog_FileLines)->Setup(SetupSimple)->Teardown(TeardownSimple)->Threads(1)->Threads(4)->UseRealTime();

void BM_Spdlog_FileLines(benchmark::State& state) {
  for (auto _ : state) g_spdlog->info(kMessage);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Spdlog_FileLines)->Setup(SetupSpdlog)->Teardown(TeardownSpdlog)->Threads(1)->Threads(4)->UseRealTime();

void BM_Spdlog_FileLinesFlushEveryLine(benchmark::State& state) {
  for (auto _ : state) g_spdlog->info(kMessage);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Spdlog_FileLinesFlushEveryLine)
    ->Setup(SetupSpdlogFlushing)
    ->Teardown(TeardownSpdlog)
    ->Threads(1)
    ->Threads(4)
    ->UseRealTime();

// A file logger whose database switch is off, as most loggers of a running program are.
void BM_SimpleLog_DisabledWrite(benchmark::State& state) {
  SimpleLog::SimpleLoggerWrapper logger =
      SimpleLog::Custom::File::LoggerFactory("off.log", std::make_shared<SimpleLog::NoDataFactoryParamLoggerToggle>(varion::db::Connection()),
                                             SimpleLog::Formatting::Timestamp)
          .WithCustomDirectory(Folder().string())
          .Get();
  for (auto _ : state) logger.Write(FramLogInfo, kMessage);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SimpleLog_DisabledWrite);

void BM_Spdlog_DisabledWrite(benchmark::State& state) {
  auto logger = spdlog::basic_logger_mt("off", (Folder() / "spdlog-off.log").string());
  logger->set_level(spdlog::level::off);
  for (auto _ : state) logger->info(kMessage);
  state.SetItemsProcessed(state.iterations());
  spdlog::drop("off");
}
BENCHMARK(BM_Spdlog_DisabledWrite);

// Rows of "log_Logowanie" on the directly linked SQLite: each entry in its own transaction, as a
// program logs, and many entries inside one transaction of the caller.
void BM_SimpleLog_DatabaseRows(benchmark::State& state) {
  const bool oneTransaction = state.range(0) != 0;
  const fs::path file = Folder() / "log.db";
  fs::remove(file);
  varion::db::Connection c = varion::db::Connection::Open("Provider=SQLite;Data Source=" + file.string());
  varion::db::schema::CreateSchema(c);
  SimpleLog::SimpleLoggerWrapper logger =
      SimpleLog::Custom::Db::LoggerFactory("Bench", std::make_shared<SimpleLog::AlwaysOnLoggerToggle>()).WithCustomConnection(c).Get();
  if (oneTransaction) c.BeginTrans();
  for (auto _ : state) logger.Write(FramLogInfo, kMessage);
  if (oneTransaction) c.CommitTrans();
  state.SetItemsProcessed(state.iterations());
  state.SetLabel(oneTransaction ? "one transaction" : "a transaction per row");
}
BENCHMARK(BM_SimpleLog_DatabaseRows)->Arg(0)->Arg(1)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
