// The list view grid in a real window under Wine: what it shows, and the header clicks, drags
// and resizes a user makes, through the messages they produce.
#include "grid/list_view_grid_win.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "db/schema/schema.h"
#include "tests/db_backends.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using varion::testing::PumpMessages;

enum : std::int32_t { kId = 1, kSymbol, kName, kNip };

CVelColInfo Column(std::int32_t id, const char* field, const char* caption) {
  CVelColInfo c{};
  c.allowShow = c.allowSort = c.visible = 1;
  c.dbFieldName = field;
  c.defCaption = caption;
  c.width = 90;
  c.tableID = 1;
  c.columnID = id;
  return c;
}

class ListViewGridTest : public ::testing::Test {
 protected:
  ListViewGridTest() : m_db(varion::testing::DatabaseBackends().front()), m_conn(m_db.Connect()) {
    db::schema::CreateSchema(m_conn);
    m_conn.Execute("INSERT INTO kh__Kontrahent (kh_Symbol, kh_Nazwa, kh_Nip) VALUES ('BETA', 'Beta', '2')");
    m_conn.Execute("INSERT INTO kh__Kontrahent (kh_Symbol, kh_Nazwa, kh_Nip) VALUES ('ALFA', 'Żuraw', '1')");
    m_conn.Execute("INSERT INTO kh__Kontrahent (kh_Symbol, kh_Nazwa, kh_Nip) VALUES ('GAMMA', 'Alfa', '3')");
    const CVelColInfo columns[] = {Column(kId, "kh_Id", "Id"), Column(kSymbol, "kh_Symbol", "Symbol"),
                                   Column(kName, "kh_Nazwa", "Nazwa"), Column(kNip, "kh_Nip", "NIP")};
    const CVelTableInfo table = {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""};
    CVelListInfo list{};
    list.sortColumnID = kSymbol;
    list.ascending = 1;
    m_cfg = std::make_unique<CMapCustGridCfg>(&list, columns, 4, &table, 1);
    m_cfg->SetVisible(kId, false);
    m_parent = varion::testing::MakeParentWindow(500, 300);
    m_forwarder.Attach(m_parent.get(), this);
    m_grid = std::make_unique<ListViewGrid>(*m_cfg, m_conn);
    m_grid->SetOnLayoutChanged([this] { ++m_changes; });
    const RECT rect = {0, 0, 480, 260};
    m_list = m_grid->Create(m_parent.get(), 7, rect, nullptr);
    m_header = reinterpret_cast<HWND>(SendMessageW(m_list, LVM_GETHEADER, 0, 0));
    m_grid->Refresh();
    PumpMessages();
  }
  ~ListViewGridTest() override { m_grid.reset(); }

  // The parent hands the list view's notifications to the grid, as a host's window does.
  class NotifyForwarder : public Window {
   public:
    void Attach(HWND parent, ListViewGridTest* test) {
      m_test = test;
      AttachWindow(parent);
    }

   protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
      LRESULT result = 0;
      if (msg == WM_NOTIFY && m_test->m_grid && m_test->m_grid->OnNotify(*reinterpret_cast<NMHDR*>(lp), result))
        return result;
      return Default(msg, wp, lp);
    }

   private:
    ListViewGridTest* m_test = nullptr;
  };

  std::vector<std::string> Headers() const {
    std::vector<std::string> out;
    for (int i = 0;; ++i) {
      wchar_t buf[64] = {};
      LVCOLUMNW c{};
      c.mask = LVCF_TEXT;
      c.pszText = buf;
      c.cchTextMax = 64;
      if (!SendMessageW(m_list, LVM_GETCOLUMNW, i, reinterpret_cast<LPARAM>(&c))) break;
      HDITEMW h{};
      h.mask = HDI_FORMAT;
      SendMessageW(m_header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&h));
      out.push_back(text::WideToCp1250(buf) + (h.fmt & HDF_SORTUP ? "+" : h.fmt & HDF_SORTDOWN ? "-" : ""));
    }
    return out;
  }

  std::vector<std::string> Column0() const {
    std::vector<std::string> out;
    const int n = static_cast<int>(SendMessageW(m_list, LVM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < n; ++i) {
      wchar_t buf[64] = {};
      LVITEMW item{};
      item.iSubItem = 0;
      item.pszText = buf;
      item.cchTextMax = 64;
      SendMessageW(m_list, LVM_GETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item));
      out.push_back(text::WideToCp1250(buf));
    }
    return out;
  }

  POINT HeaderPoint(int item, int dx = 0) const {
    RECT r{};
    SendMessageW(m_header, HDM_GETITEMRECT, item, reinterpret_cast<LPARAM>(&r));
    return {(r.left + r.right) / 2 + dx, (r.top + r.bottom) / 2};
  }

  void Press(UINT msg, POINT p) const {
    SendMessageW(m_header, msg, msg == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(p.x, p.y));
  }

  varion::testing::TestDatabase m_db;
  db::Connection m_conn;
  std::unique_ptr<CMapCustGridCfg> m_cfg;
  varion::testing::unique_hwnd m_parent;
  std::unique_ptr<ListViewGrid> m_grid;
  NotifyForwarder m_forwarder;
  HWND m_list = nullptr, m_header = nullptr;
  int m_changes = 0;
};

TEST_F(ListViewGridTest, ShowsTheConfiguredColumnsAndRows) {
  EXPECT_EQ(Headers(), (std::vector<std::string>{"Symbol+", "Nazwa", "NIP"}));
  EXPECT_EQ(Column0(), (std::vector<std::string>{"ALFA", "BETA", "GAMMA"}));
  wchar_t buf[32] = {};
  LVITEMW item{};
  item.iSubItem = 1;
  item.pszText = buf;
  item.cchTextMax = 32;
  SendMessageW(m_list, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(text::WideToCp1250(buf), "Żuraw");
  EXPECT_EQ(SendMessageW(m_list, LVM_GETCOLUMNWIDTH, 2, 0), 90);
}

TEST_F(ListViewGridTest, HeaderClicksSortAndTurnTheDirection) {
  struct Click {
    int item;
    std::vector<std::string> headers, rows;
  } clicks[] = {
      {1, {"Symbol", "Nazwa+", "NIP"}, {"GAMMA", "BETA", "ALFA"}},
      {1, {"Symbol", "Nazwa-", "NIP"}, {"ALFA", "BETA", "GAMMA"}},
      {2, {"Symbol", "Nazwa", "NIP+"}, {"ALFA", "BETA", "GAMMA"}},
      {0, {"Symbol+", "Nazwa", "NIP"}, {"ALFA", "BETA", "GAMMA"}},
      {0, {"Symbol-", "Nazwa", "NIP"}, {"GAMMA", "BETA", "ALFA"}},
  };
  int changes = 0;
  for (const Click& c : clicks) {
    SCOPED_TRACE(c.item);
    Press(WM_LBUTTONDOWN, HeaderPoint(c.item));
    Press(WM_LBUTTONUP, HeaderPoint(c.item));
    PumpMessages();
    EXPECT_EQ(Headers(), c.headers);
    EXPECT_EQ(Column0(), c.rows);
    EXPECT_EQ(m_changes, ++changes);
  }
  EXPECT_EQ(m_cfg->GetSortColumnID(), kSymbol);
  EXPECT_FALSE(m_cfg->GetAscending());
}

TEST_F(ListViewGridTest, HeaderDragReordersTheConfiguration) {
  // Drag "NIP" onto the first column's place.
  Press(WM_LBUTTONDOWN, HeaderPoint(2));
  for (int dx = 0; dx >= -200; dx -= 20) Press(WM_MOUSEMOVE, HeaderPoint(2, dx));
  Press(WM_LBUTTONUP, HeaderPoint(0, -30));
  PumpMessages(50);
  EXPECT_EQ(Headers(), (std::vector<std::string>{"NIP", "Symbol+", "Nazwa"}));
  EXPECT_EQ(Column0(), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(m_cfg->GetColumnIndexes(), (std::vector<int>{3, 1, 2}));
  EXPECT_EQ(m_changes, 1);
}

TEST_F(ListViewGridTest, ColumnResizeReachesTheConfiguration) {
  // Drag the divider after "Nazwa" 65 pixels to the right.
  RECT r{};
  SendMessageW(m_header, HDM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
  const int y = (r.top + r.bottom) / 2;
  Press(WM_LBUTTONDOWN, {r.right - 1, y});
  Press(WM_MOUSEMOVE, {r.right + 30, y});
  Press(WM_MOUSEMOVE, {r.right + 64, y});
  Press(WM_LBUTTONUP, {r.right + 64, y});
  PumpMessages();
  EXPECT_EQ(SendMessageW(m_list, LVM_GETCOLUMNWIDTH, 1, 0), 155);
  EXPECT_EQ(m_changes, 1);
  EXPECT_EQ(m_cfg->GetColumnInfo(kName - 1).width, 155);
  EXPECT_EQ(m_cfg->GetColumnInfo(kSymbol - 1).width, 90);
}

}  // namespace
}  // namespace varion
