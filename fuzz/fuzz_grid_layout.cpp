// libFuzzer target for the four stored layout blobs. The input either is the blobs themselves,
// or edits a valid layout (bytes, int32 items, cuts, insertions), which reaches the merge code
// without a corpus. Every blob goes through its reader and then into a configuration in one of
// its loading modes; a layout that loads must leave a configuration that builds, saves and
// reads back.
#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdlib>

#include "grid/grid_test_lists.h"

namespace {

using varion::LayoutBytes;
using varion::StoredLayoutRow;

const StoredLayoutRow& Baseline() {
  static const StoredLayoutRow row = [] {
    CVelListInfo list = varion::testing::SampleList();
    list.allowCustomColumns = 1;
    CMapCustGridCfg cfg = varion::testing::MakeSampleCfg();
    cfg.SetList(list);
    auto* custom = dynamic_cast<CCustomColumnsCfgImpl*>(cfg.CustomColumns());
    custom->AddField("Ulica", varion::testing::kTabAddress, "adr_Ulica");
    custom->AddExpression("Długość", "LENGTH(kh.kh_Nazwa)", "Dlugosc");
    cfg.UpdateCfgAfterCfgChanges();
    cfg.SetVisible(varion::testing::kColName, false);
    cfg.SetSortColumnID(varion::testing::kSampleColumnCount + 2);
    return cfg.MakeLayoutRow("Kontrahenci", 1, 1);
  }();
  return row;
}

void Edit(LayoutBytes& blob, FuzzedDataProvider& in) {
  const size_t at = blob.empty() ? 0 : in.ConsumeIntegralInRange<size_t>(0, blob.size() - 1);
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0:
      if (!blob.empty()) blob[at] = in.ConsumeIntegral<std::uint8_t>();
      break;
    case 1: {
      const std::uint32_t v = in.ConsumeIntegral<std::uint32_t>();
      for (size_t i = 0; i < 4 && at + i < blob.size(); ++i) blob[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
      break;
    }
    case 2: blob.resize(at); break;
    default: {
      const auto bytes = in.ConsumeBytes<std::uint8_t>(in.ConsumeIntegralInRange(1, 16));
      blob.insert(blob.begin() + static_cast<long>(at), bytes.begin(), bytes.end());
    }
  }
}

CMapCustGridCfg MakeTarget(int mode) {
  if (mode == 0) return CMapCustGridCfg();  // a user-defined grid starts empty
  CMapCustGridCfg cfg = varion::testing::MakeSampleCfg();
  if (mode == 2) cfg.DisableAutoUpdate();
  if (mode == 3) cfg.SetSuppressLayout(true);
  return cfg;
}

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  FuzzedDataProvider in(data, size);
  const bool raw = in.ConsumeBool();
  const int mode = in.ConsumeIntegralInRange(0, 3);

  StoredLayoutRow row = Baseline();
  std::array<LayoutBytes*, 4> blobs = {&*row.listInfo, &*row.columns, &*row.tables, &*row.visibility};
  if (raw) {
    for (LayoutBytes* b : blobs) *b = in.ConsumeBytes<std::uint8_t>(in.ConsumeIntegralInRange<size_t>(0, 4096));
  } else {
    for (int edits = in.ConsumeIntegralInRange(1, 6); edits > 0; --edits)
      Edit(*blobs[in.ConsumeIntegralInRange<size_t>(0, 3)], in);
  }

  CVelListInfoCustImpl list;
  std::vector<varion::StoredColumn> columns;
  std::vector<CVelTableInfoImpl> tables;
  std::vector<std::int32_t> order;
  varion::ReadListBlob(*blobs[0], list);
  varion::ReadColumnBlob(*blobs[1], columns);
  varion::ReadTableBlob(*blobs[2], tables);
  varion::ReadVisibilityBlob(*blobs[3], order);

  CMapCustGridCfg cfg = MakeTarget(mode);
  const LayoutBytes before = cfg.SaveColInfo();
  const varion::Status32 st =
      mode == 0 ? cfg.LoadCustomCfgFromBlobs(*blobs[0], *blobs[1], *blobs[2], *blobs[3]) : cfg.LoadCfgFromRow(row);
  if (st < 0) {
    Check(cfg.SaveColInfo() == before);
    return 0;
  }
  for (int index : cfg.GetColumnIndexes()) Check(index >= 0 && index < cfg.GetTotalColumnsCount());
  std::string sql;
  cfg.MakeSQL(sql, in.ConsumeBool());
  cfg.MakeCalcSQL(sql);
  cfg.GetFullSummaryQuery(sql);
  const StoredLayoutRow saved = cfg.MakeLayoutRow("K", 1, 1);
  CMapCustGridCfg again = MakeTarget(mode);
  Check(varion::ReadColumnBlob(*saved.columns, columns) == varion::kOk);
  Check((mode == 0 ? again.LoadCustomCfgFromBlobs(*saved.listInfo, *saved.columns, *saved.tables, *saved.visibility)
                   : again.LoadCfgFromRow(saved)) == varion::kOk);
  return 0;
}
