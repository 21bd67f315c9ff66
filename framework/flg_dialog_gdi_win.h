// The GDI objects a CFlgDialog owns (fonts and brushes it made for its controls, the blank icon
// beside the sphere button); internal to the dialog's files.
#pragma once

#include <windows.h>

#include <map>

#include "framework/flg_dialog_win.h"

#include "base/handles_win.h"

struct CFlgDialog::Gdi {
  // The font SetFont made for each control: one per control, freed when replaced.
  std::map<UINT, varion::unique_font> fonts;
  std::map<UINT, varion::unique_brush> brushes;
  varion::unique_icon blankIcon;
};
