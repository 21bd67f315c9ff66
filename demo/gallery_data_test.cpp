#include "demo/gallery_data.h"

#include <gtest/gtest.h>

#include "tests/db_backends.h"

namespace varion::demo {
namespace {

// The gallery's pages join contractors to their addresses and countries; the rows must be there
// on every backend.
TEST(GalleryDataTest, DictionariesJoinOnEveryBackend) {
  for (const std::string& backend : varion::testing::DatabaseBackends()) {
    SCOPED_TRACE(backend);
    varion::testing::TestDatabase database(backend);
    db::Connection c = database.Connect();
    CreateGalleryDatabase(c);
    db::Recordset rs = c.OpenRS(
        "SELECT kh_Nazwa, adr_Miejscowosc, pa_KodPanstwaISO FROM kh__Kontrahent LEFT JOIN adr__Ewid ON adr_IdObiektu = "
        "kh_Id LEFT JOIN sl_Panstwo ON adr_IdPanstwo = pa_Id WHERE adr_TypAdresu = 1 ORDER BY kh_Id");
    ASSERT_EQ(rs.GetRecordCount(), 3u);
    EXPECT_EQ(rs.GetCollect("kh_Nazwa"), Variant("Zielarnia \"Pod Świerkiem\" sp. z o.o."));
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_EQ(rs.GetCollect("adr_Miejscowosc"), Variant("London"));
    EXPECT_EQ(rs.GetCollect("pa_KodPanstwaISO"), Variant("GB"));
    EXPECT_EQ(c.OpenRS("SELECT COUNT(*) FROM pd_RokObrotowy WHERE robr_Zamkniety = 0").GetCollect(0).AsInt32(), 1);
  }
}

}  // namespace
}  // namespace varion::demo
