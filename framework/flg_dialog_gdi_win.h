// The GDI objects a CFlgDialog owns (fonts and brushes it made for its controls, the blank icon
// beside the sphere button); internal to the dialog's files.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <type_traits>
#include <vector>

#include "framework/flg_dialog_win.h"

namespace varion::detail {
struct GdiDeleter {
  void operator()(HGDIOBJ h) const { DeleteObject(h); }
};
using unique_gdi = std::unique_ptr<std::remove_pointer_t<HGDIOBJ>, GdiDeleter>;
struct IconDeleter {
  void operator()(HICON h) const { DestroyIcon(h); }
};
using unique_icon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;
}  // namespace varion::detail

struct CFlgDialog::Gdi {
  std::vector<varion::detail::unique_gdi> fonts;
  std::map<UINT, varion::detail::unique_gdi> brushes;
  varion::detail::unique_icon blankIcon;
};
