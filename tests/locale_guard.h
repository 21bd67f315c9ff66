// Pins the process-wide locale to given values for one test and puts the user's back after it.
#pragma once

#include "controls/locale_info.h"

namespace varion::testing {

class LocaleGuard {
 public:
  explicit LocaleGuard(const LocaleValues& values) {
    SetLocaleSource([values] { return values; });
  }
  ~LocaleGuard() { SetLocaleSource(nullptr); }
  LocaleGuard(const LocaleGuard&) = delete;
  LocaleGuard& operator=(const LocaleGuard&) = delete;
};

}  // namespace varion::testing
