// Timing of a full paint of the library's month calendar against the platform's month calendar
// control, both showing December 2025 in the same font and painted into the same memory bitmap
// through WM_PRINTCLIENT (run under Wine). A plain program: each figure is the median of several
// rounds, timed with QueryPerformanceCounter.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/win/bench_clock_win.h"
#include "controls/calendar_win.h"
#include "controls/system_time_win.h"

namespace {

using varion::bench::Now;

constexpr int kPaints = 200;  // per sample
constexpr int kRounds = 7;

// Microseconds per full paint of the window, the median of kRounds samples.
double PaintMicroseconds(HWND window) {
  RECT client;
  GetClientRect(window, &client);
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, std::max<LONG>(client.right, 1), std::max<LONG>(client.bottom, 1));
  ReleaseDC(nullptr, screen);
  HGDIOBJ old = SelectObject(memory, bitmap);
  std::vector<double> samples;
  for (int round = 0; round < kRounds; ++round) {
    const double start = Now();
    for (int i = 0; i < kPaints; ++i)
      SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory), PRF_CLIENT | PRF_ERASEBKGND);
    GdiFlush();
    samples.push_back((Now() - start) * 1e6 / kPaints);
  }
  SelectObject(memory, old);
  DeleteObject(bitmap);
  DeleteDC(memory);
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

}  // namespace

int main() {
  INITCOMMONCONTROLSEX icc{sizeof icc, ICC_DATE_CLASSES};
  InitCommonControlsEx(&icc);
  HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 640, 400, nullptr, nullptr, nullptr,
                                nullptr);
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
  SYSTEMTIME day = varion::ToSystemTime(COleDateTime(2025, 12, 15));

  CVelCalendar* ours = CVelCalendar::Create(0, L"", WS_CHILD | WS_VISIBLE, RECT{0, 0, 0, 0}, parent, 1);
  HWND platform = CreateWindowExW(0, MONTHCAL_CLASSW, L"", WS_CHILD | WS_VISIBLE, 300, 0, 0, 0, parent, nullptr,
                                  nullptr, nullptr);
  if (!ours || !platform) {
    std::printf("calendar bench: could not create the calendars\n");
    return 1;
  }
  for (HWND w : {ours->GetHwnd(), platform}) {
    SendMessageW(w, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(w, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&day));
  }
  RECT need{};
  SendMessageW(platform, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&need));
  SetWindowPos(platform, nullptr, 0, 0, need.right, need.bottom, SWP_NOMOVE | SWP_NOZORDER);

  const double ourPaint = PaintMicroseconds(ours->GetHwnd());
  const double platformPaint = PaintMicroseconds(platform);
  std::printf("calendar paint, December 2025, median of %d rounds of %d paints:\n", kRounds, kPaints);
  std::printf("  vel_calendar      %8.1f us\n", ourPaint);
  std::printf("  SysMonthCal32     %8.1f us\n", platformPaint);
  std::printf("  ratio             %8.2f\n", ourPaint / platformPaint);
  DestroyWindow(parent);
  DeleteObject(font);
  return 0;
}
