// Per-call costs of the calendar model that a window pays on every key press and every paint:
// moving the focus with the arrows, and laying out and describing all 42 cells. A typing
// benchmark of the date field sits beside them.
#include <benchmark/benchmark.h>

#include "controls/calendar_model.h"
#include "controls/date_edit_model.h"

namespace {

using varion::CalendarModel;

const varion::CalendarMetrics kMetrics{16, 18, 14, 60, 4, 30, 100, 80};

// Right and Left in turn from the last day of a month, so every other press changes the month
// (the dearer path) and the focus never drifts.
void BM_CalendarProcessKey(benchmark::State& state) {
  DateTools::FixedClock clock(COleDateTime(2025, 12, 10));
  CalendarModel cal(&clock);
  cal.SetCurSel(COleDateTime(2025, 12, 31));
  int key = varion::keys::kRight;
  for (auto _ : state) {
    benchmark::DoNotOptimize(cal.ProcessKey(key));
    key = key == varion::keys::kRight ? varion::keys::kLeft : varion::keys::kRight;
  }
}
BENCHMARK(BM_CalendarProcessKey);

// What a paint asks for: the layout from the measured font, then all 42 cells with their
// flags, holidays and rectangles.
void BM_CalendarLayout42(benchmark::State& state) {
  DateTools::FixedClock clock(COleDateTime(2025, 12, 10));
  CalendarModel cal(&clock);
  cal.SetRange(varion::kCalRangeUpper, COleDateTime::Null(), COleDateTime(2025, 12, 28));
  varion::CalendarCells cells;
  varion::CalendarMetrics metrics = kMetrics;
  for (auto _ : state) {
    benchmark::DoNotOptimize(metrics);
    const varion::CalendarLayout layout = varion::ComputeCalendarLayout(metrics);
    cal.GetCells(layout, cells);
    benchmark::DoNotOptimize(cells);
  }
}
BENCHMARK(BM_CalendarLayout42);

// A whole date typed into an empty field and cleared again: ten calls.
void BM_DateEditTypeDate(benchmark::State& state) {
  DateTools::FixedClock clock(COleDateTime(2025, 12, 10));
  varion::DateEditModel edit(&clock);
  for (auto _ : state) {
    for (char c : {'3', '1', '1', '2', '2', '0', '2', '4'}) benchmark::DoNotOptimize(edit.OnChar(c));
    benchmark::DoNotOptimize(edit.OnKeyDown(varion::keys::kDelete, {.ctrl = true}));
  }
}
BENCHMARK(BM_DateEditTypeDate);

}  // namespace

BENCHMARK_MAIN();
