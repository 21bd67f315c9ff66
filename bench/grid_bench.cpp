// The list statement of a large list (200 columns over 20 tables) and its stored layout: the four
// blobs written and read back in memory, and SaveCfg with LoadCfg on an SQLite file.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>

#include "bench/grid_layout_list.h"
#include "db/schema/schema.h"

namespace {

const varion::bench::LargeList& List() {
  static const varion::bench::LargeList list;
  return list;
}

void BM_MakeSQL_200Columns20Tables(benchmark::State& state) {
  CMapCustGridCfg cfg = List().MakeCfg();
  cfg.SetFilterWhere("t0.tb0_Pole0 > 10");
  cfg.SetUserWhere("t1.tb1_Pole1 LIKE 'A%'");
  std::string sql;
  for (auto _ : state) {
    cfg.MakeSQL(sql);
    benchmark::DoNotOptimize(sql.data());
  }
  state.counters["bytes"] = static_cast<double>(sql.size());
}
BENCHMARK(BM_MakeSQL_200Columns20Tables);

void BM_LayoutBlobs_SaveAndLoad_200Columns(benchmark::State& state) {
  CMapCustGridCfg cfg = List().MakeCfg();
  CMapCustGridCfg loaded = List().MakeCfg();
  for (auto _ : state) {
    const varion::StoredLayoutRow row = cfg.MakeLayoutRow("Lista", 1, 1);
    benchmark::DoNotOptimize(loaded.LoadCfgFromRow(row));
  }
}
BENCHMARK(BM_LayoutBlobs_SaveAndLoad_200Columns);

// One SaveCfg (an UPDATE of the existing row, in its own transaction) and one LoadCfg per
// iteration, on an SQLite file in a temporary folder.
void BM_SqliteSaveCfgAndLoadCfg_200Columns(benchmark::State& state) {
  char folder[] = "/tmp/varion-bench-XXXXXX";
  if (!mkdtemp(folder)) {
    state.SkipWithError("no temporary folder");
    return;
  }
  {
    const varion::db::Connection conn =
        varion::db::Connection::Open(std::string("Provider=SQLite;Data Source=") + folder + "/grid.db");
    varion::db::schema::CreateSchema(conn);
    CMapCustGridCfg cfg = List().MakeCfg();
    CMapCustGridCfg loaded = List().MakeCfg();
    cfg.SaveCfg(conn, "Lista", 1, 1);
    for (auto _ : state) {
      cfg.SaveCfg(conn, "Lista", 1, 1);
      benchmark::DoNotOptimize(loaded.LoadCfg(conn, "Lista", 1, 1));
    }
    state.counters["blobBytes"] = static_cast<double>(cfg.SaveColInfo().size());
  }
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_SqliteSaveCfgAndLoadCfg_200Columns)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
