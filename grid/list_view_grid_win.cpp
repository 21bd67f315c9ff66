#include "grid/list_view_grid_win.h"

#include <commctrl.h>

#include "base/text.h"
#include "diagnostics/failure_boundary_win.h"

namespace varion {
namespace {

// Posted to the list view itself once a header drag has ended and the header shows its order.
constexpr UINT kApplyDrag = WM_APP + 0x5A1;

int AlignFormat(std::int32_t align) {
  switch (align) {
    case 1: return LVCFMT_CENTER;
    case 2: return LVCFMT_RIGHT;
    default: return LVCFMT_LEFT;
  }
}

}  // namespace

ListViewGrid::ListViewGrid(CMapCustGridCfg& cfg, db::Connection connection)
    : m_cfg(cfg), m_model(cfg), m_connection(std::move(connection)) {}

ListViewGrid::~ListViewGrid() {
  // Let go before the list view goes with m_list, so its last messages reach no half-gone object.
  DetachWindow();
}

HWND ListViewGrid::Create(HWND parent, int id, const RECT& rect, HFONT font) {
  HWND list = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS, rect.left, rect.top,
                              rect.right - rect.left, rect.bottom - rect.top, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
  if (!list) return nullptr;
  m_list.reset(list);
  if (font) SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
               LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES | LVS_EX_HEADERDRAGDROP);
  AttachWindow(list);
  return list;
}

void ListViewGrid::Refresh() {
  const auto rows = m_model.Load(m_connection);
  FillColumns();
  FillRows(rows);
}

void ListViewGrid::FillColumns() {
  HWND list = m_list.get();
  m_filling = true;
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  while (SendMessageW(list, LVM_DELETECOLUMN, 0, 0)) {
  }
  const auto columns = m_model.Columns();
  HWND header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  for (size_t i = 0; i < columns.size(); ++i) {
    std::wstring caption = text::Cp1250ToWide(columns[i].caption);
    LVCOLUMNW c{};
    c.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    c.fmt = i == 0 ? LVCFMT_LEFT : AlignFormat(columns[i].align);  // the first column is always left
    c.cx = columns[i].width;
    c.pszText = caption.data();
    c.iSubItem = static_cast<int>(i);
    SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&c));
    if (columns[i].sort != 0 && header) {
      HDITEMW h{};
      h.mask = HDI_FORMAT;
      SendMessageW(header, HDM_GETITEMW, i, reinterpret_cast<LPARAM>(&h));
      h.fmt |= columns[i].sort > 0 ? HDF_SORTUP : HDF_SORTDOWN;
      SendMessageW(header, HDM_SETITEMW, i, reinterpret_cast<LPARAM>(&h));
    }
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  m_filling = false;
}

void ListViewGrid::FillRows(const std::vector<std::vector<std::string>>& rows) {
  HWND list = m_list.get();
  m_filling = true;
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  for (size_t r = 0; r < rows.size(); ++r) {
    for (size_t c = 0; c < rows[r].size(); ++c) {
      std::wstring cell = text::Cp1250ToWide(rows[r][c]);
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(r);
      item.iSubItem = static_cast<int>(c);
      item.pszText = cell.data();
      SendMessageW(list, c == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW, c == 0 ? 0 : r, reinterpret_cast<LPARAM>(&item));
    }
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
  m_filling = false;
}

bool ListViewGrid::OnNotify(const NMHDR& header, LRESULT& result) {
  HWND list = m_list.get();
  if (!list || m_filling) return false;
  HWND listHeader = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  if (header.hwndFrom == list && header.code == LVN_COLUMNCLICK) {
    const auto& lv = reinterpret_cast<const NMLISTVIEW&>(header);
    if (m_model.ClickColumn(lv.iSubItem)) RefreshAfterChange();
    result = 0;
    return true;
  }
  if (header.hwndFrom != listHeader) return false;
  const auto& hd = reinterpret_cast<const NMHEADERW&>(header);
  switch (header.code) {
    case HDN_ENDDRAG:
      // The header moves the column after this returns; the move is read from its order then.
      PostMessageW(list, kApplyDrag, static_cast<WPARAM>(hd.iItem), 0);
      result = FALSE;
      return true;
    case HDN_ENDTRACKW:
    case HDN_ITEMCHANGEDW:
      if (hd.pitem && (hd.pitem->mask & HDI_WIDTH) && m_model.SetColumnWidth(hd.iItem, hd.pitem->cxy) &&
          header.code == HDN_ENDTRACKW)
        Changed();
      result = 0;
      return true;
    default:
      return false;
  }
}

void ListViewGrid::ApplyDrag(int dragged) {
  HWND list = m_list.get();
  const int count = static_cast<int>(m_model.Columns().size());
  std::vector<int> order(static_cast<size_t>(count));
  if (count == 0 || !SendMessageW(list, LVM_GETCOLUMNORDERARRAY, count, reinterpret_cast<LPARAM>(order.data())))
    return;
  for (int to = 0; to < count; ++to) {
    if (order[static_cast<size_t>(to)] != dragged) continue;
    // Columns again in the configuration's order, so that a subitem is its position.
    if (to != dragged && m_model.MoveColumn(dragged, to)) RefreshAfterChange();
    return;
  }
}

void ListViewGrid::Changed() {
  if (m_changed) m_changed();
}

void ListViewGrid::RefreshAfterChange() {
  try {
    Refresh();
  } catch (...) {
    const Failure failure = DescribeFailure(std::current_exception());
    if (m_error)
      CallGuarded(m_list.get(), FailureArea(), [&] { m_error(ComError(failure.code, failure.text)); });
    else
      ReportFailure(m_list.get(), FailureArea(), failure);
    return;
  }
  CallGuarded(m_list.get(), FailureArea(), [this] { Changed(); });
}

LRESULT ListViewGrid::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == kApplyDrag) {
    ApplyDrag(static_cast<int>(wp));
    return 0;
  }
  return Default(msg, wp, lp);
}

}  // namespace varion
