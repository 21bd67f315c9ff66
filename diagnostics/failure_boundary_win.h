// The one failure boundary of the library's Windows code. Every window procedure, hook
// procedure, timer procedure and entry point that runs host code or database work runs it
// inside CallGuarded: whatever is thrown is caught, written to the log and shown to the user
// through the message-box seam, and the caller gets a fixed fallback result. Nothing unwinds
// through user32, which would skip its own clean-up and, on 64-bit Windows, end the process.
//
//   LRESULT CALLBACK Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
//     return varion::CallGuarded(h, "my window", LRESULT{0}, [&] { return Handle(h, msg, wp, lp); });
//   }
#pragma once

#include <windows.h>

#include <exception>
#include <string_view>

#include "base/export.h"
#include "diagnostics/failure.h"

namespace varion {

// Logs the failure and shows it in a box owned by `owner`'s top-level window (or ownerless).
// Reports made while a report is already showing on the thread are logged only, so a failure in
// a handler run by the box's own message loop cannot stack boxes without end. Never throws.
// `caption` titles the box ("Błąd" when empty).
VARION_API void ReportFailure(HWND owner, std::string_view where, const Failure& failure,
                              std::string_view caption = {}) noexcept;

// How many failures this thread's boundaries caught (tests read it).
VARION_API unsigned FailuresCaughtOnThread() noexcept;

template <class R, class F>
R CallGuarded(HWND owner, std::string_view where, R onFailure, F&& body) noexcept {
  try {
    return body();
  } catch (...) {
    ReportFailure(owner, where, DescribeFailure(std::current_exception()));
    return onFailure;
  }
}

template <class F>
void CallGuarded(HWND owner, std::string_view where, F&& body) noexcept {
  try {
    body();
  } catch (...) {
    ReportFailure(owner, where, DescribeFailure(std::current_exception()));
  }
}

}  // namespace varion
