#include "base/variant_win.h"

#include <oleauto.h>

#include "base/text.h"

namespace varion {

Status32 ToVARIANT(const Variant& in, VARIANT* out) {
  if (!out) return kPointer;
  VariantInit(out);
  switch (in.GetType()) {
    case Variant::Type::Empty: return kOk;
    case Variant::Type::Null: out->vt = VT_NULL; return kOk;
    case Variant::Type::Int32: out->vt = VT_I4; out->lVal = *in.GetInt32(); return kOk;
    case Variant::Type::Int64: {
      std::int64_t v = 0;
      in.ToInt64(v);
      out->vt = VT_I8;
      out->llVal = v;
      return kOk;
    }
    case Variant::Type::Double: {
      double d = 0;
      in.ToDouble(d);
      out->vt = VT_R8;
      out->dblVal = d;
      return kOk;
    }
    case Variant::Type::Bool: {
      bool b = false;
      in.ToBool(b);
      out->vt = VT_BOOL;
      out->boolVal = b ? VARIANT_TRUE : VARIANT_FALSE;
      return kOk;
    }
    case Variant::Type::Text: {
      std::wstring w = text::Cp1250ToWide(*in.GetText());
      BSTR b = SysAllocStringLen(w.data(), static_cast<UINT>(w.size()));
      if (!b) return kOutOfMemory;
      out->vt = VT_BSTR;
      out->bstrVal = b;
      return kOk;
    }
    case Variant::Type::Amount: {
      Amount a;
      if (Failed(in.ToAmount(a))) return kTypeMismatch;
      out->vt = VT_CY;
      out->cyVal = ToCY(a);
      return kOk;
    }
    case Variant::Type::Date: {
      DateTime d;
      if (Failed(in.ToDate(d))) return kTypeMismatch;
      out->vt = VT_DATE;
      out->date = d.Value();
      return kOk;
    }
    case Variant::Type::Binary: {
      const auto& bytes = *in.GetBinary();
      SAFEARRAY* sa = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
      if (!sa) return kOutOfMemory;
      if (!bytes.empty()) {
        void* data = nullptr;
        SafeArrayAccessData(sa, &data);
        memcpy(data, bytes.data(), bytes.size());
        SafeArrayUnaccessData(sa);
      }
      out->vt = VT_ARRAY | VT_UI1;
      out->parray = sa;
      return kOk;
    }
  }
  return kBadVarType;
}

Status32 FromVARIANT(const VARIANT& in, Variant& out) {
  const VARIANT* v = &in;
  if (v->vt == (VT_VARIANT | VT_BYREF)) v = v->pvarVal;
  VARIANT deref;
  if ((v->vt & VT_BYREF) && !(v->vt & VT_ARRAY)) {
    // A by-reference scalar: copy the value it points to through the automation helper.
    VariantInit(&deref);
    if (FAILED(VariantCopyInd(&deref, const_cast<VARIANT*>(v)))) return kBadVarType;
    Status32 s = FromVARIANT(deref, out);
    VariantClear(&deref);
    return s;
  }
  switch (v->vt) {
    case VT_EMPTY: out = Variant(); return kOk;
    case VT_NULL: out = Variant::MakeNull(); return kOk;
    case VT_I1: out = Variant(static_cast<std::int32_t>(v->cVal)); return kOk;
    case VT_UI1: out = Variant(static_cast<std::int32_t>(v->bVal)); return kOk;
    case VT_I2: out = Variant(static_cast<std::int32_t>(v->iVal)); return kOk;
    case VT_UI2: out = Variant(static_cast<std::int32_t>(v->uiVal)); return kOk;
    case VT_I4: case VT_INT: out = Variant(static_cast<std::int32_t>(v->lVal)); return kOk;
    case VT_UI4: case VT_UINT: out = Variant(static_cast<std::int64_t>(v->ulVal)); return kOk;
    case VT_I8: out = Variant(static_cast<std::int64_t>(v->llVal)); return kOk;
    case VT_R4: out = Variant(static_cast<double>(v->fltVal)); return kOk;
    case VT_R8: out = Variant(v->dblVal); return kOk;
    case VT_BOOL: out = Variant(v->boolVal != VARIANT_FALSE); return kOk;
    case VT_CY: out = Variant(FromCY(v->cyVal)); return kOk;
    case VT_DATE: out = Variant(DateTime(v->date)); return kOk;
    case VT_BSTR:
      out = Variant(text::WideToCp1250(std::wstring_view(v->bstrVal ? v->bstrVal : L"", SysStringLen(v->bstrVal))));
      return kOk;
    case VT_DECIMAL: {
      CY cy;
      if (FAILED(VarCyFromDec(const_cast<DECIMAL*>(&v->decVal), &cy))) return kOverflow;
      out = Variant(FromCY(cy));
      return kOk;
    }
    case VT_ARRAY | VT_UI1: {
      SAFEARRAY* sa = v->parray;
      if (!sa || SafeArrayGetDim(sa) != 1) return kBadVarType;
      LONG lo = 0, hi = -1;
      SafeArrayGetLBound(sa, 1, &lo);
      SafeArrayGetUBound(sa, 1, &hi);
      Variant::Bytes bytes(static_cast<size_t>(hi - lo + 1));
      if (!bytes.empty()) {
        void* data = nullptr;
        SafeArrayAccessData(sa, &data);
        memcpy(bytes.data(), data, bytes.size());
        SafeArrayUnaccessData(sa);
      }
      out = Variant(std::move(bytes));
      return kOk;
    }
    default: return kBadVarType;
  }
}

}  // namespace varion
