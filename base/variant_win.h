// Conversions between our variant and the automation VARIANT (CY, DATE, BSTR, SAFEARRAY of bytes).
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "base/export.h"
#include "base/status.h"
#include "base/variant.h"

namespace varion {

// Writes a fresh VARIANT (the caller clears it with VariantClear). Text becomes a BSTR through
// code page 1250; binary a SAFEARRAY of VT_UI1.
VARION_API Status32 ToVARIANT(const Variant& in, VARIANT* out);
// Reads a VARIANT (by reference too). Types with no counterpart give kBadVarType.
VARION_API Status32 FromVARIANT(const VARIANT& in, Variant& out);

inline CY ToCY(Amount a) {
  CY cy;
  cy.int64 = a.Raw();
  return cy;
}
inline Amount FromCY(CY cy) { return Amount::FromRaw(cy.int64); }

}  // namespace varion
