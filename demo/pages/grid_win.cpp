// Gallery page of the grid configuration: the contractors of the gallery database in a list view
// built from a configuration that joins the contractor, address and country tables. Header
// clicks sort, header drags reorder, the column chooser shows and hides columns; the layout is
// stored in gr__KonfiguracjaEx and read back whenever the page opens.
#include <windows.h>
#include <commctrl.h>

#include <memory>

#include "base/text.h"
#include "db/rt_instance.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"
#include "grid/list_view_grid_win.h"

namespace varion::demo {
namespace {

enum { kList = 301, kChooser, kSave, kReopen, kDefault, kSql };
constexpr const char* kSection = "Galeria.Kontrahenci";
constexpr std::int32_t kService = 0;

enum : std::int32_t { kColId = 1, kColSymbol, kColName, kColNip, kColStreet, kColCode, kColCity, kColCountry, kColNote };

const CVelTableInfo kTables[] = {
    {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""},
    {2, 0, 1, "adr", "adr__Ewid", "adr_Id", "adr_IdObiektu", "", 0, 0, "adr.adr_TypAdresu = 1"},
    {3, 0, 2, "pa", "sl_Panstwo", "pa_Id", "adr_IdPanstwo", "", 1, 0, ""},
};

CVelColInfo Column(std::int32_t id, std::int32_t table, const char* field, const char* caption, std::int32_t width,
                   const char* resultName = "") {
  CVelColInfo c{};
  c.allowShow = c.allowSort = c.allowFilter = c.visible = 1;
  c.dbFieldName = field;
  c.defCaption = caption;
  c.resultName = resultName;
  c.width = width;
  c.textColor = c.backColor = -1;
  c.tableID = table;
  c.columnID = id;
  return c;
}

std::vector<CVelColInfo> Columns() {
  std::vector<CVelColInfo> c = {
      Column(kColId, 1, "kh_Id", "Identyfikator", 60),
      Column(kColSymbol, 1, "kh_Symbol", "Symbol", 80),
      Column(kColName, 1, "kh_Nazwa", "Nazwa", 230),
      Column(kColNip, 1, "kh_Nip", "NIP", 95),
      Column(kColStreet, 2, "adr_Adres", "Adres", 130, "Adres"),
      Column(kColCode, 2, "adr_Kod", "Kod", 60, "Kod"),
      Column(kColCity, 2, "adr_Miejscowosc", "Miejscowość", 100, "Miasto"),
      Column(kColCountry, 3, "pa_Nazwa", "Państwo", 100, "Panstwo"),
      Column(kColNote, 1, "Uwagi", "Uwagi", 80),
  };
  c[kColId - 1].forcePresent = 1;
  c[kColId - 1].visible = 0;
  c[kColStreet - 1].visible = 0;
  c[kColNote - 1].kind = kColKindNoData;
  c[kColNote - 1].visible = 0;
  return c;
}

CVelListInfo List() {
  CVelListInfo l{};
  l.title = "Kontrahenci";
  l.keyField = "kh_Id";
  l.horLines = l.verLines = l.rowHeaderVisible = 1;
  l.rowHeight = 18;
  l.colHeaderHeight = 20;
  l.zoom = 100;
  l.defSortColumnID = l.sortColumnID = kColSymbol;
  l.defAscending = l.ascending = 1;
  return l;
}

class GridPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Konfiguracja listy"; }
  std::string Slug() const override { return "konfiguracja-listy"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_ctx = &ctx;
    m_grid.reset();
    AddLabel(page, ctx, 12, 12, 760, 20, "Lista kontrahentów z konfiguracji (kontrahent, adres, państwo)", true);
    AddLabel(page, ctx, 12, 36, 760, 20,
             "Kliknięcie nagłówka sortuje, przeciągnięcie zmienia kolejność, lista obok pokazuje i ukrywa kolumny.");
    m_page = page;
    m_chooser = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                                WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL, 640, 64, 170,
                                230, page, reinterpret_cast<HMENU>(kChooser), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_chooser, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), FALSE);
    SendMessageW(m_chooser, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_CHECKBOXES);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = 145;
    SendMessageW(m_chooser, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    AddButton(page, ctx, kSave, 640, 302, 170, 26, "Zapisz układ");
    AddButton(page, ctx, kReopen, 640, 334, 170, 26, "Otwórz ponownie");
    AddButton(page, ctx, kDefault, 640, 366, 170, 26, "Układ domyślny");
    m_status = AddLabel(page, ctx, 12, 402, 800, 40, "");
    // A wrapping edit: the gallery's own edits scroll sideways.
    m_sql = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                            WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 12, 446,
                            800, 110, page, reinterpret_cast<HMENU>(kSql), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_sql, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), FALSE);
    Open("");
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code != BN_CLICKED) return false;
    switch (id) {
      case kSave: Save(); return true;
      case kReopen: Open("Układ odczytany ponownie z gr__KonfiguracjaEx."); return true;
      case kDefault: Reset(); return true;
      default: return false;
    }
  }

  // Without a display: the user's changes, saved, and the page opened again from the database.
  void Exercise(HWND) override {
    if (!m_grid) return;
    ListViewModel& model = m_grid->Model();
    model.ShowColumn(kColNip, false);
    model.ShowColumn(kColStreet, true);
    model.MoveColumn(Position(kColCountry), 1);
    model.ClickColumn(Position(kColCity));
    model.ClickColumn(Position(kColCity));
    model.SetColumnWidth(Position(kColName), 200);
    Save();
    Open("Układ zapisany, a strona otwarta ponownie: kolumny, kolejność, szerokości i sortowanie wróciły z "
         "gr__KonfiguracjaEx.");
  }

 private:
  bool OnNotify(HWND, const NMHDR& header, LRESULT& result) override {
    if (m_grid && m_grid->OnNotify(header, result)) return true;
    if (header.hwndFrom == m_chooser && header.code == LVN_ITEMCHANGED) OnChooser(reinterpret_cast<LPARAM>(&header));
    return false;
  }
  void OnPageDestroyed() override { m_grid.reset(); }

  int Position(std::int32_t columnID) const {
    const auto columns = m_grid->Model().Columns();
    for (size_t i = 0; i < columns.size(); ++i)
      if (columns[i].columnID == columnID) return static_cast<int>(i);
    return -1;
  }

  // The configuration with the user's stored layout, and the list built from it.
  void Open(const std::string& note) {
    try {
      db::Connection connection = GalleryDatabase(*m_ctx);
      const auto columns = Columns();
      const CVelListInfo list = List();
      m_grid.reset();
      m_cfg = std::make_unique<CMapCustGridCfg>(&list, columns.data(), static_cast<int>(columns.size()), kTables, 3,
                                                connection, kSection, CRtInstance::GetUserId(), kService);
      m_grid = std::make_unique<ListViewGrid>(*m_cfg, connection);
      m_grid->SetOnLayoutChanged([this] { ShowState("Układ zmieniony; \x84Zapisz układ\x94 zapamięta go w bazie."); });
      m_grid->SetOnError([this](const ComError& e) { ShowError(e); });
      const RECT rect = {12, 64, 628, 392};
      m_grid->Create(m_page, kList, rect, m_ctx->font);
      m_grid->Refresh();
      FillChooser();
      std::string state = note;
      if (state.empty()) {
        const Status32 st = m_cfg->GetLoadStatus();
        state = st == kOk ? "Układ użytkownika odczytany z gr__KonfiguracjaEx."
                : st == kFalse ? "Brak zapisanego układu: lista w układzie programu."
                               : "Zapisany układ nieczytelny (" + StatusText(st) + "): lista w układzie programu.";
      }
      ShowState(state);
    } catch (const ComError& e) {
      ShowError(e);
    }
  }

  void Save() {
    if (!m_cfg) return;
    try {
      db::Connection connection = GalleryDatabase(*m_ctx);
      m_cfg->SaveCfg(connection, kSection, CRtInstance::GetUserId(), kService);
      ShowState("Układ zapisany w gr__KonfiguracjaEx (sekcja \x84" + std::string(kSection) + "\x94, kolumny: " +
                std::to_string(m_cfg->SaveColInfo().size()) + " B).");
    } catch (const ComError& e) {
      ShowError(e);
    }
  }

  void Reset() {
    try {
      m_cfg->DeleteCfg(GalleryDatabase(*m_ctx), kSection, CRtInstance::GetUserId(), kService);
      Open("Zapisany układ usunięty: lista w układzie programu.");
    } catch (const ComError& e) {
      ShowError(e);
    }
  }

  void FillChooser() {
    m_fillingChooser = true;
    SendMessageW(m_chooser, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const CheckListItem& item : m_cfg->FillAwaiableColumnsCheckListBox()) {
      std::wstring text = text::Cp1250ToWide(item.text);
      LVITEMW lv{};
      lv.mask = LVIF_TEXT | LVIF_PARAM;
      lv.iItem = row;
      lv.pszText = text.data();
      lv.lParam = item.data;
      SendMessageW(m_chooser, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&lv));
      lv.stateMask = LVIS_STATEIMAGEMASK;
      lv.state = INDEXTOSTATEIMAGEMASK(item.checked ? 2 : 1);
      SendMessageW(m_chooser, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&lv));
      ++row;
    }
    m_fillingChooser = false;
  }

  void OnChooser(LPARAM lp) {
    const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lp);
    if (m_fillingChooser || !m_grid || !(change.uChanged & LVIF_STATE) ||
        ((change.uNewState ^ change.uOldState) & LVIS_STATEIMAGEMASK) == 0)
      return;
    const bool checked = (change.uNewState & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
    if (!m_grid->Model().ShowColumn(static_cast<std::int32_t>(change.lParam), checked)) return;
    try {
      m_grid->Refresh();
      ShowState("Układ zmieniony; \x84Zapisz układ\x94 zapamięta go w bazie.");
    } catch (const ComError& e) {
      ShowError(e);
    }
  }

  void ShowState(const std::string& note) {
    SetText(m_status, note);
    std::string sql = m_grid ? m_grid->Model().Sql() : std::string();
    SetText(m_sql, "Zapytanie listy:\r\n" + sql);
  }

  void ShowError(const ComError& e) {
    SetText(m_status, "Błąd bazy danych " + StatusText(e.Code()) + " [" + e.SqlState() + "]: " + e.Message());
  }

  GalleryContext* m_ctx = nullptr;
  HWND m_page = nullptr, m_chooser = nullptr, m_status = nullptr, m_sql = nullptr;
  std::unique_ptr<CMapCustGridCfg> m_cfg;
  std::unique_ptr<ListViewGrid> m_grid;
  bool m_fillingChooser = false;
};

VARION_GALLERY_PAGE(40, GridPage);

}  // namespace
}  // namespace varion::demo
