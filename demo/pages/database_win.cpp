// Gallery page of the database layer: the gallery's own database created through the library,
// a dictionary read through a static recordset, and log rows added through the updatable one.
#include <windows.h>

#include "base/text.h"
#include "db/rt_instance.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"

namespace varion::demo {
namespace {

enum { kAddLog = 201, kList };

class DatabasePage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Baza danych"; }
  std::string Slug() const override { return "baza-danych"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_ctx = &ctx;
    AddLabel(page, ctx, 12, 12, 700, 20, "Baza galerii utworzona przez warstwę dostępu do danych", true);
    m_server = AddLabel(page, ctx, 12, 40, 800, 60, "");
    AddLabel(page, ctx, 12, 108, 700, 20, "Kontrahenci z adresami (zestaw rekordów tylko do odczytu):", true);
    m_list = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT,
                             12, 132, 800, 110, page, reinterpret_cast<HMENU>(kList), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
    AddButton(page, ctx, kAddLog, 12, 256, 260, 28, "Dopisz wpis do dziennika");
    m_log = AddLabel(page, ctx, 12, 294, 800, 120, "");
    Load();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (id != kAddLog || code != BN_CLICKED) return false;
    AddLogRow();
    return true;
  }

  void Exercise(HWND) override {
    AddLogRow();
    AddLogRow();
  }

 private:
  void Load() {
    try {
      db::Connection c = GalleryDatabase(*m_ctx);
      SetText(m_server, "Serwer: " + c.ServerName() + " " + c.ServerVersion() + ", dialekt: " + c.Dialect().Name() +
                            "\nUżytkownik: " + CRtInstance::GetUserIdentifier() + ", stanowisko: " +
                            CRtInstance::GetWorkstationName());
      db::Recordset rs = CRtInstance::OpenRS(
          "SELECT kh_Symbol, kh_Nazwa, adr_Miejscowosc, pa_Nazwa FROM kh__Kontrahent LEFT JOIN adr__Ewid ON "
          "adr_IdObiektu = kh_Id LEFT JOIN sl_Panstwo ON adr_IdPanstwo = pa_Id WHERE adr_TypAdresu = 1 ORDER BY kh_Symbol");
      SendMessageW(m_list, LB_RESETCONTENT, 0, 0);
      for (; !rs.IsEOF(); rs.MoveNext()) {
        std::string line = rs.GetCollect("kh_Symbol").AsText() + " \x96 " + rs.GetCollect("kh_Nazwa").AsText() + ", " +
                           rs.GetCollect("adr_Miejscowosc").AsText() + " (" + rs.GetCollect("pa_Nazwa").AsText() + ")";
        SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text::Cp1250ToWide(line).c_str()));
      }
      ShowLog();
    } catch (const ComError& e) {
      SetText(m_server, "Błąd bazy danych " + StatusText(e.Code()) + " [" + e.SqlState() + "]: " + e.Message());
    }
  }

  void AddLogRow() {
    try {
      db::Connection c = CRtInstance::GetConnection();
      db::UpdatableRecordset rs = c.OpenForUpdate("SELECT * FROM log_Logowanie WHERE 1 = 0");
      rs.AddNew();
      rs.PutCollect("log_Informacje", "Otwarto stronę \x84" "Baza danych\x94 galerii");
      rs.PutCollect("log_Obszar", "Galeria");
      rs.PutCollect("log_Data", DateTime::Now());
      rs.PutCollect("log_Stanowisko", CRtInstance::GetWorkstationName());
      rs.PutCollect("log_UzytkownikId", CRtInstance::GetUserId());
      rs.PutCollect("log_UzytkownikIdentyfikator", CRtInstance::GetUserIdentifier());
      rs.PutCollect("log_Rodzaj", 1);
      rs.PutCollect("log_ProcesId", static_cast<std::int32_t>(GetCurrentProcessId()));
      rs.PutCollect("log_WatekId", static_cast<std::int32_t>(GetCurrentThreadId()));
      rs.Update();
      ShowLog();
    } catch (const ComError& e) {
      SetText(m_log, "Błąd zapisu " + StatusText(e.Code()) + " [" + e.SqlState() + "]: " + e.Message());
    }
  }

  void ShowLog() {
    db::Recordset rs =
        CRtInstance::OpenRS("SELECT log_Id, log_Data, log_Obszar, log_Informacje FROM log_Logowanie ORDER BY log_Id DESC");
    std::string s = "Wpisów w log_Logowanie: " + std::to_string(rs.GetRecordCount());
    for (int shown = 0; !rs.IsEOF() && shown < 3; rs.MoveNext(), ++shown) {
      s += "\n#" + rs.GetCollect("log_Id").AsText() + "  " + rs.GetCollect("log_Data").AsText() + "  " +
           rs.GetCollect("log_Obszar").AsText() + ": " + rs.GetCollect("log_Informacje").AsText();
    }
    SetText(m_log, s);
  }

  GalleryContext* m_ctx = nullptr;
  HWND m_server = nullptr, m_list = nullptr, m_log = nullptr;
};

VARION_GALLERY_PAGE(20, DatabasePage);

}  // namespace
}  // namespace varion::demo
