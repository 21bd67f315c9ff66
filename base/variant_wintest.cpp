#include "base/variant_win.h"

#include <gtest/gtest.h>
#include <oleauto.h>

namespace varion {
namespace {

TEST(VariantWin, EveryTypeSurvivesTheAutomationVariantBothWays) {
  const Variant values[] = {
      Variant(), Variant::MakeNull(), Variant(-7), Variant(std::int64_t{1} << 40), Variant(0.125), Variant(true),
      Variant("Zażółć 'gęślą'"), Variant(Amount::FromRaw(-125000)), Variant(DateTime(2024, 5, 31, 13, 5, 0)),
      Variant(Variant::Bytes{0, 1, 0xFF}), Variant(Variant::Bytes{}),
  };
  for (const Variant& v : values) {
    SCOPED_TRACE(v.AsText("<binary or null>"));
    VARIANT raw;
    ASSERT_EQ(ToVARIANT(v, &raw), kOk);
    Variant back;
    ASSERT_EQ(FromVARIANT(raw, back), kOk);
    EXPECT_TRUE(back == v);
    VariantClear(&raw);
  }
}

TEST(VariantWin, AutomationConversionsAgreeWithOurs) {
  // The OLE runtime's own text of a BSTR holding Polish letters, and of a CY and a DATE.
  VARIANT raw;
  ASSERT_EQ(ToVARIANT(Variant("Łódź"), &raw), kOk);
  EXPECT_EQ(SysStringLen(raw.bstrVal), 4u);
  EXPECT_EQ(raw.bstrVal[0], L'\u0141');
  VariantClear(&raw);

  ASSERT_EQ(ToVARIANT(Variant(DateTime(2024, 5, 31)), &raw), kOk);
  SYSTEMTIME st{};
  ASSERT_TRUE(VariantTimeToSystemTime(raw.date, &st));
  EXPECT_EQ(st.wYear, 2024);
  EXPECT_EQ(st.wMonth, 5);
  EXPECT_EQ(st.wDay, 31);

  VARIANT dec;
  VariantInit(&dec);
  dec.vt = VT_R8;
  dec.dblVal = 12.34565;
  ASSERT_EQ(VariantChangeType(&dec, &dec, 0, VT_CY), S_OK);
  Variant fromCy;
  ASSERT_EQ(FromVARIANT(dec, fromCy), kOk);
  Amount a;
  ASSERT_EQ(fromCy.ToAmount(a), kOk);
  EXPECT_EQ(a.Raw(), Amount::FromDouble(12.34565).Raw());

  VARIANT unknown;
  VariantInit(&unknown);
  unknown.vt = VT_UNKNOWN;
  unknown.punkVal = nullptr;
  Variant out;
  EXPECT_EQ(FromVARIANT(unknown, out), kBadVarType);
}

}  // namespace
}  // namespace varion
