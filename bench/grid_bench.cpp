// The list statement of a large list (200 columns over 20 tables) and its four layout blobs,
// written and read back as a save and a load do without the database.
#include <benchmark/benchmark.h>

#include "bench/grid_layout_list.h"

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
  for (auto _ : state) {
    const varion::StoredLayoutRow row = cfg.MakeLayoutRow("Lista", 1, 1);
    CMapCustGridCfg loaded = List().MakeCfg();
    benchmark::DoNotOptimize(loaded.LoadCfgFromRow(row));
  }
}
BENCHMARK(BM_LayoutBlobs_SaveAndLoad_200Columns);

}  // namespace

BENCHMARK_MAIN();
