// The clock of the Windows benchmark programs: seconds from the performance counter, and the
// median of repeated runs (one slow run under Wine says little; the middle one is the figure).
#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

namespace varion::bench {

inline double Now() {
  static const double frequency = [] {
    LARGE_INTEGER f;
    QueryPerformanceFrequency(&f);
    return static_cast<double>(f.QuadPart);
  }();
  LARGE_INTEGER t;
  QueryPerformanceCounter(&t);
  return static_cast<double>(t.QuadPart) / frequency;
}

inline double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

}  // namespace varion::bench
