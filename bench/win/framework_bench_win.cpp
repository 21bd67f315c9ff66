// Timings of the dialog framework on Windows (run under Wine): the cost of the creation hook on
// window creation, and one LoadData plus SaveData of a form of 100 controls. A plain program:
// each figure is the median of several rounds, timed with QueryPerformanceCounter.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "bench/win/bench_clock_win.h"
#include "bench/win/framework_bench_win.h"
#include "framework/data_exchange_win.h"
#include "framework/extension_module_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/hook_supp_win.h"

namespace {

using varion::bench::Now;

constexpr int kWindows = 1000;  // per sample

// Seconds to create kWindows child windows of the class; they are destroyed outside the timing.
double CreateWindows(HWND parent, const wchar_t* cls) {
  std::vector<HWND> made(kWindows);
  const double start = Now();
  for (int i = 0; i < kWindows; ++i)
    made[static_cast<size_t>(i)] =
        CreateWindowExW(0, cls, L"", WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, 0, 0, 80, 20, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(i + 1)), nullptr, nullptr);
  const double seconds = Now() - start;
  for (HWND h : made) DestroyWindow(h);
  return seconds;
}

class BenchForm : public CFlgDialog {
 public:
  BenchForm() : CFlgDialog(IDD_BENCH_FORM) {}
  int numbers[50] = {};
  varion::Amount amounts[20];
  varion::DateTime dates[10];
  int checks[10] = {};
  long branches[10] = {};

  void OnLoadData(CFlgDataExchange& dx) override {
    int id = IDC_BENCH_FIRST;
    for (int& v : numbers) DLX_Text(dx, id++, v);
    for (auto& v : amounts) DLX_Text(dx, id++, v);
    for (auto& v : dates) DLX_Text(dx, id++, v);
    for (int& v : checks) DLX_Check(dx, id++, v);
    for (long& v : branches) DLX_CBIdent(dx, id++, v);
  }
  void OnSaveData(CFlgDataExchange& dx) override {
    int id = IDC_BENCH_FIRST;
    for (int& v : numbers) {
      DV_Required(dx, id);
      DSX_Text(dx, id++, v);
    }
    for (auto& v : amounts) DSX_Text(dx, id++, v);
    for (auto& v : dates) DSX_Text(dx, id++, v);
    for (int& v : checks) DSX_Check(dx, id++, v);
    for (long& v : branches) {
      DV_CBRequired(dx, id);
      DSX_CBIdent(dx, id++, v);
    }
  }
};

}  // namespace

int main() {
  if (!varion::InitExtensionModule()) return 2;
  CHookSupp::InitVXAXVelControls(nullptr);
  HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
  constexpr int kRounds = 9;
  for (int i = 0; i < 3; ++i) CreateWindows(parent, L"vel_curredit");  // warm-up: classes, heaps, caches

  // The machine is shared and the window system is another process, so the timings drift: the
  // ways are timed in turns of a thousand windows each, the overhead is taken within each turn
  // (hooked against unhooked, measured back to back) and the medians are reported.
  struct Way {
    const char* what;
    const wchar_t* cls;
    bool hook, dispatch;
    std::vector<double> times;
  } ways[] = {{"vel_curredit, no hook", L"vel_curredit", false, true, {}},
              {"vel_curredit, hook attaching objects", L"vel_curredit", true, true, {}},
              {"VXAX_Edit, no hook", L"VXAX_Edit", false, true, {}},
              {"VXAX_Edit, hook looking the class up", L"VXAX_Edit", true, true, {}},
              {"vel_curredit, no hook", L"vel_curredit", false, true, {}},
              {"vel_curredit, hook, dispatching off", L"vel_curredit", true, false, {}}};
  constexpr int kTurns = 15;
  for (int turn = 0; turn < kTurns; ++turn) {
    for (Way& w : ways) {
      if (w.hook)
        CHookSupp::InstallUIHook();
      else
        CHookSupp::RemoveUIHook();
      CHookSupp::SetSubclassingEnabled(w.dispatch);
      w.times.push_back(CreateWindows(parent, w.cls));
    }
  }
  CHookSupp::SetSubclassingEnabled(true);
  CHookSupp::InstallUIHook();
  auto median = [](std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
  };
  std::printf(
      "creating %d edit windows, %d turns (time: median per %d windows; overhead: median of the\n"
      "turns' ratios against the unhooked line above)\n",
      kWindows, kTurns, kWindows);
  for (std::size_t i = 0; i < std::size(ways); ++i) {
    const double t = median(ways[i].times) * 1e3;
    if (i % 2 == 0) {
      std::printf("  %-38s %8.2f ms\n", ways[i].what, t);
      continue;
    }
    std::vector<double> ratios;
    for (int k = 0; k < kTurns; ++k)
      ratios.push_back(ways[i].times[static_cast<size_t>(k)] / ways[i - 1].times[static_cast<size_t>(k)]);
    std::printf("  %-38s %8.2f ms  overhead %+.1f %%\n", ways[i].what, t, (median(ratios) - 1) * 100);
  }

  BenchForm form;
  if (!form.Create(parent)) {
    std::printf("could not open the benchmark form\n");
    return 1;
  }
  for (int i = 0; i < 10; ++i) {
    HWND combo = GetDlgItem(form.m_hWnd, IDC_BENCH_FIRST + 90 + i);
    for (long item = 1; item <= 20; ++item) {
      const LRESULT at = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Pozycja"));
      SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(at), item);
    }
    form.branches[i] = 5 + i;
  }
  for (int i = 0; i < 20; ++i) form.amounts[i] = varion::Amount::FromRaw(123456789LL * (i + 1));
  for (int i = 0; i < 10; ++i) form.dates[i] = varion::DateTime(2024, 1 + i, 15);
  for (int i = 0; i < 50; ++i) form.numbers[i] = i * 1000 - 7;
  constexpr int kCycles = 50;
  // Every cycle loads other values than the one before (a form showing the next record), so
  // every control really changes its text.
  int cycleNo = 0;
  std::vector<double> loads, saves;
  for (int round = 0; round < kRounds; ++round) {
    double load = 0, save = 0;
    for (int i = 0; i < kCycles; ++i) {
      const int step = ++cycleNo % 2 ? 1 : -1;
      for (int& n : form.numbers) n += step;
      for (auto& a : form.amounts) a = a + varion::Amount::FromRaw(step * 10000);
      for (auto& d : form.dates) d = d.AddDays(step);
      for (int& c : form.checks) c = 1 - c;
      for (long& b : form.branches) b += step;
      const double t0 = Now();
      form.LoadData();
      const double t1 = Now();
      form.SaveData();
      load += t1 - t0;
      save += Now() - t1;
    }
    loads.push_back(load / kCycles);
    saves.push_back(save / kCycles);
  }
  const bool clean = !form.HasErrors() && form.numbers[49] == 48993 && form.branches[9] == 14;
  const double l = median(loads), sv = median(saves);
  std::printf(
      "form of 100 controls (median of %d rounds of %d cycles): LoadData %.2f ms + SaveData %.2f ms = %.2f ms%s\n",
      kRounds, kCycles, l * 1e3, sv * 1e3, (l + sv) * 1e3, clean ? "" : "  (WRONG VALUES)");
  DestroyWindow(form.m_hWnd);
  DestroyWindow(parent);
  return clean ? 0 : 1;
}
