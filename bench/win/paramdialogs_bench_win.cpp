// Timing of opening each parameter dialog under Wine: from DoModal until the dialog has loaded
// its record and painted its window once, then it is closed. A plain program: each figure is the
// median of several openings, timed with QueryPerformanceCounter.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "bench/win/bench_clock_win.h"
#include "framework/extension_module_win.h"
#include "framework/hook_supp_win.h"
#include "paramdialogs/param_dlg_currency_win.h"
#include "paramdialogs/param_dlg_date_win.h"
#include "paramdialogs/param_dlg_string_win.h"

namespace {

using varion::bench::Now;

constexpr int kOpenings = 15;

// Milliseconds to the first paint, the median of kOpenings openings; negative when a dialog did
// not open.
template <typename Dialog>
double OpenMilliseconds(ZEST_PARAMS record) {
  std::vector<double> samples;
  double start = 0;
  CParamDlg_Base::SetOpenObserver([&](CParamDlg_Base& d) {
    UpdateWindow(d.GetHWND());
    samples.push_back((Now() - start) * 1e3);
    PostMessageW(d.GetHWND(), WM_COMMAND, IDCANCEL, 0);
  });
  for (int i = 0; i < kOpenings; ++i) {
    Dialog dialog(record);
    start = Now();
    if (dialog.DoModal() != IDCANCEL) return -1;
  }
  CParamDlg_Base::SetOpenObserver(nullptr);
  if (samples.empty()) return -1;
  return varion::bench::Median(samples);
}

}  // namespace

int main() {
  if (!varion::InitExtensionModule()) return 2;
  CHookSupp::InitVXAXVelControls(nullptr);
  CHookSupp::InstallUIHook();
  ZEST_PARAMS date = ZestParams::ZestParamsDate().SetParam(0x1FFFFF).SetLabel("Okres");
  const struct {
    const char* name;
    double ms;
  } rows[] = {
      {"CParamDlg_String", OpenMilliseconds<CParamDlg_String>(ZestParams::ZestParamsString().SetParam(0x371))},
      {"CParamDlg_Currency", OpenMilliseconds<CParamDlg_Currency>(ZestParams::ZestParamsCurrency())},
      {"CParamDlg_Date", OpenMilliseconds<CParamDlg_Date>(date)},
  };
  int rc = 0;
  for (const auto& r : rows) {
    if (r.ms < 0) rc = 1;
    std::printf("%-20s open to first paint: %8.2f ms (median of %d)\n", r.name, r.ms, kOpenings);
  }
  return rc;
}
