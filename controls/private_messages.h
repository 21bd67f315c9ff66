// The private window messages through which dialogs talk to their controls and to themselves.
// They sit at the host application's message base, which the host may move (before any dialog
// opens) when its own messages already use the default range.
#pragma once

#include <cstdint>

#include "base/export.h"

namespace varion {

// WM_APP: the first value no system control uses.
inline constexpr unsigned kDefaultAppMessageBase = 0x8000;

VARION_API unsigned GetAppMessageBase();
VARION_API void SetAppMessageBase(unsigned base);

// Offsets from the base.
inline constexpr unsigned kCalcOwnerOffset = 2;      // to a calculator: wParam is the amount field it serves
inline constexpr unsigned kCalcSettingsOffset = 3;   // to a calculator: wParam decimals, lParam const char* symbol
inline constexpr unsigned kMarkFaultyOffset = 6;     // wParam 1 marks the control faulty, 0 clears the mark
inline constexpr unsigned kIndicateOffset = 7;       // wParam 1: draw the user's eye to the control
inline constexpr unsigned kErrorTextOffset = 8;      // lParam: const ErrorTextTriple*, valid during the call
inline constexpr unsigned kWindowLoadedOffset = 42;  // a dialog posts it to itself once its window is up

inline unsigned MsgCalcOwner() { return GetAppMessageBase() + kCalcOwnerOffset; }
inline unsigned MsgCalcSettings() { return GetAppMessageBase() + kCalcSettingsOffset; }
inline unsigned MsgMarkFaulty() { return GetAppMessageBase() + kMarkFaultyOffset; }
inline unsigned MsgIndicate() { return GetAppMessageBase() + kIndicateOffset; }
inline unsigned MsgErrorText() { return GetAppMessageBase() + kErrorTextOffset; }
inline unsigned MsgWindowLoaded() { return GetAppMessageBase() + kWindowLoadedOffset; }

// What the error-text message points at: the error record's second text, message and code.
struct ErrorTextTriple {
  const char* secondText;
  const char* message;
  std::uint32_t code;
};

}  // namespace varion
