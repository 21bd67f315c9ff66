#include "diagnostics/failure_boundary_win.h"

#include "diagnostics/message_box_seam_win.h"

namespace varion {
namespace {

thread_local unsigned t_caught = 0;
thread_local bool t_showing = false;

}  // namespace

void ReportFailure(HWND owner, std::string_view where, const Failure& failure, std::string_view caption) noexcept {
  ++t_caught;
  LogFailure(where, failure);
  if (t_showing) return;
  t_showing = true;
  try {
    HWND top = owner && IsWindow(owner) ? GetAncestor(owner, GA_ROOT) : nullptr;
    std::string text = failure.text;
    if (failure.code != kFail && failure.code != kUnexpected) text += "\n" + StatusText(failure.code);
    FrameworkMessageBox(top, text, caption.empty() ? std::string("Błąd") : std::string(caption), MB_OK | MB_ICONERROR);
  } catch (...) {
    // The box itself failed; the log has the failure.
  }
  t_showing = false;
}

unsigned FailuresCaughtOnThread() noexcept { return t_caught; }

}  // namespace varion
