// Gallery page of report parameters: a sales report's parameter page (period, a warehouse read from
// the gallery database, a list of contractors, an amount range and a text with its operator), the
// WHERE text the parameters give, and the documents the report's query returns with it. A followed
// link opens the parameter's dialog (text, amount and date so far); confirmed values change the
// page, the WHERE text and the rows at once.
#include <windows.h>

#include <memory>

#include "base/text.h"
#include "db/rt_instance.h"
#include "demo/gallery_database_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "framework/hook_supp_win.h"
#include "demo/gallery_win.h"
#include "paramdialogs/param_dialogs_win.h"
#include "paramdialogs/param_dlg_currency_win.h"
#include "paramdialogs/param_dlg_date_win.h"
#include "paramdialogs/param_dlg_string_win.h"
#include "params/params_html_wnd_win.h"

namespace varion::demo {
namespace {

enum { kView = 201 };

constexpr int kPeriodParam = 0, kAmountParam = 3, kTextParam = 4;  // indexes in the parameter list

// The gallery's documents are from May 2024, so the named periods count from a day of that month.
const DateTools::FixedClock& GalleryToday() {
  static const DateTools::FixedClock clock(DateTime(2024, 5, 20, 12, 0));
  return clock;
}

// The library's dialogs where they exist; for the others a followed link says which one it opens.
class GalleryDialogs : public params::IParamDialogs {
 public:
  explicit GalleryDialogs(HWND owner) : m_owner(owner), m_dialogs(owner) { m_dialogs.SetClock(&GalleryToday()); }
  bool ShowParamDialog(const params::ParamDialogRequest& request, ZEST_PARAMS& param, const db::Connection& c) override {
    if (paramdlg::ParamDialogs::HasDialog(request)) return m_dialogs.ShowParamDialog(request, param, c);
    static const char* const kNames[] = {"CParamDlg_String",   "CParamDlg_Currency",   "CParamDlg_Date",
                                         "CParamDlg_Combo",    "CParamDlg_ComboDb",    "CParamDlg_Instynkt",
                                         "CParamDlg_ComboDbString", "CParamDlg_Checklist", "CParamDlg_ChecklistDb",
                                         "CParamDlg_DateEx",   "CParamDlg_DateEx2",    "wybór z listy (lookup)",
                                         "CParamsDlg_MultiselectionComboDb", "CParamsDlg_DateHour", "CParamDlg_Klas"};
    const std::string text = "Parametr \x84" + param.Label + "\x94 edytuje okno " + kNames[static_cast<int>(request.kind)] + ".";
    FrameworkMessageBox(m_owner, text, "Parametry zestawienia", MB_OK | MB_ICONINFORMATION);
    return false;
  }

 private:
  HWND m_owner;
  paramdlg::ParamDialogs m_dialogs;
};

class ReportParamsPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Parametry zestawienia"; }
  std::string Slug() const override { return "parametry-zestawienia"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_ctx = &ctx;
    // The dialogs' templates name the library's amount and date fields (as a host starts once).
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    m_dialogs = std::make_unique<GalleryDialogs>(page);
    AddLabel(page, ctx, 12, 8, 800, 20, "Zestawienie dokumentów: parametry (kliknięcie wartości otwiera jej okno)", true);
    m_status = AddLabel(page, ctx, 12, 604, 800, 40, "");
    try {
      m_connection = GalleryDatabase(ctx);
      CreateDocuments();
      BuildParams();
    } catch (const ComError& e) {
      SetText(m_status, "Błąd bazy danych " + StatusText(e.Code()) + ": " + e.Message());
      return;
    }
    m_view.SetHighlight(true);
    m_view.SetConnection(m_connection);
    m_view.SetDialogs(m_dialogs.get());
    m_view.Create(page, {12, 30, 822, 92}, kView);

    AddLabel(page, ctx, 12, 134, 800, 20, "Warunek parametru \x84Opis\x94 dla każdego operatora (SQL Server):", true);
    m_operators = AddLabel(page, ctx, 12, 154, 800, 102, "");
    AddLabel(page, ctx, 12, 262, 800, 20, "WHERE całej listy parametrów (SQL Server):", true);
    m_whereServer = AddLabel(page, ctx, 12, 282, 800, 50, "");
    AddLabel(page, ctx, 12, 336, 800, 20, "Ten sam warunek na bazie galerii (SQLite przez ODBC) i wiersze zapytania zestawienia:", true);
    m_whereHere = AddLabel(page, ctx, 12, 356, 800, 50, "");
    m_rows = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT,
                             12, 410, 810, 190, page, nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_rows, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
    m_ready = true;
    Refresh();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (!m_ready || id != kView || code != CParamsHtmlWnd::kNotifyParamChanged) return false;
    Refresh();
    return true;
  }

  // Headless: the three dialogs open in turn over the page with values set, then the page after
  // they were confirmed.
  bool NextShot(HWND page, int shot) override {
    if (!m_ready) return false;
    if (m_open) {  // confirm the dialog of the previous shot
      SendMessageW(m_open->GetHWND(), WM_COMMAND, IDOK, 0);
      m_open.reset();
      Refresh();
    }
    switch (shot) {
      case 2: {
        auto d = std::make_unique<CParamDlg_Date>(*m_view.GetParam(kPeriodParam), page);
        d->SetClock(&GalleryToday());
        if (!d->Create(page)) return false;
        PickOperator(*d, 0x81000);  // current month
        m_open = std::move(d);
        break;
      }
      case 3: {
        auto d = std::make_unique<CParamDlg_Currency>(*m_view.GetParam(kAmountParam), page);
        if (!d->Create(page)) return false;
        SendDlgItemMessageW(d->GetHWND(), IDC_PARAMDLG_VALUE2, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"16000"));
        m_open = std::move(d);
        break;
      }
      case 4: {
        auto d = std::make_unique<CParamDlg_String>(*m_view.GetParam(kTextParam), page);
        if (!d->Create(page)) return false;
        PickOperator(*d, 0x100);
        SendDlgItemMessageW(d->GetHWND(), IDC_PARAMDLG_VALUE, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"M\u0142yn"));
        m_open = std::move(d);
        break;
      }
      case 5: return true;  // the page after the three dialogs
      default: return false;
    }
    RECT r;
    GetWindowRect(page, &r);
    SetWindowPos(m_open->GetHWND(), HWND_TOP, r.left + 420, r.top + 120, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
    UpdateWindow(m_open->GetHWND());
    return true;
  }

  void OnPageDestroyed() override { m_open.reset(); }

 private:
  // The report's documents, made once per gallery run.
  void CreateDocuments() {
    const SqlDialect& d = m_connection.Dialect();
    m_connection.Execute(std::string("CREATE TABLE gal_Dokument (dok_Id INT, dok_Numer ") + d.TextType(30) + ", dok_Data " +
                         d.DateTimeType() + ", dok_MagId INT, dok_KhId INT, dok_Wartosc " + d.AmountType() +
                         ", dok_Opis " + d.TextType(100) + ")");
    const char* rows[] = {
        "1, 'FS 1/05/2024', '2024-05-02 09:15:00', 1, 1, 1230.00, 'Zioła dla Zielarni'",
        "2, 'FS 2/05/2024', '2024-05-06 12:40:00', 1, 2, 4890.50, 'Mąka żytnia, Młyn Żytni'",
        "3, 'FS 3/05/2024', '2024-05-14 16:05:00', 2, 2, 15200.00, 'Dostawa hurtowa do młyna'",
        "4, 'FS 4/05/2024', '2024-05-20 08:30:00', 1, 3, 760.00, 'O''Brien: herbata'",
        "5, 'PA 1/05/2024', '2024-05-23 17:55:00', 3, NULL, 89.99, 'Paragon, sklep Łódź'",
        "6, 'FS 5/05/2024', '2024-05-31 23:10:00', 1, 2, 2100.00, 'Młyn Żytni: worki'",
        "7, 'FS 1/06/2024', '2024-06-01 00:05:00', 1, 1, 3300.00, 'Zielarnia, czerwiec'",
        "8, 'FS 9/04/2024', '2024-04-30 23:59:00', 1, 2, 1800.00, 'Młyn Żytni: kwiecień'",
    };
    for (const char* row : rows) m_connection.Execute(std::string("INSERT INTO gal_Dokument VALUES (") + row + ")");
  }

  void BuildParams() {
    using namespace ZestParams;
    CArrZestParams& params = m_view.GetParams();
    params.Add(ZestParamsDate()
                   .SetType(ZestParamsTypeDateTime)
                   .SetDbField("dok_Data")
                   .SetLabel("Okres")
                   .SetParam(0x1FFFFF)  // every date operator and named period
                   .SetValue(DateTime(2024, 5, 1))
                   .SetValue2(DateTime(2024, 5, 31))
                   .SetValue3(0x1000)
                   .SetDisplayValue("maj 2024")
                   .SetEmpty(false));
    // The warehouse as the list dialog would give it: chosen from the dictionary in the database.
    db::Recordset rs = CRtInstance::OpenRS("SELECT mag_Id, mag_Nazwa FROM sl_Magazyn ORDER BY mag_Id");
    params.Add(ZestParamsSelectionDbObject()
                   .SetDbField("dok_MagId")
                   .SetLabel("Magazyn")
                   .SetListFilterSql("SELECT mag_Id, mag_Nazwa FROM sl_Magazyn")
                   .SetValue(rs.GetCollect("mag_Id").AsInt32())
                   .SetDisplayValue(rs.GetCollect("mag_Nazwa").AsText())
                   .SetEmpty(false));
    params.Add(ZestParamsMultiselectionDbObject()
                   .SetDbField("dok_KhId")
                   .SetLabel("Kontrahenci")
                   .SetValue("1, 2")
                   .SetValue2(0x20)
                   .SetDisplayValue("Zielarnia \"Pod Świerkiem\", Młyn Żytni")
                   .SetEmpty(false));
    params.Add(ZestParamsCurrency()
                   .SetDbField("dok_Wartosc")
                   .SetLabel("Wartość")
                   .SetValue(Amount::FromUnits(1000))
                   .SetValue2(Amount::FromUnits(5000))
                   .SetValue3(0x1000)
                   .SetDisplayValue("od 1\xA0" "000,00 do 5\xA0" "000,00")  // no-break spaces keep each amount whole
                   .SetEmpty(false));
    params.Add(ZestParamsString()
                   .SetDbField("dok_Opis")
                   .SetLabel("Opis")
                   .SetStandard(false)
                   .SetParam(0x371)  // every text operator
                   .SetValue("Młyn")
                   .SetValue2(0x200)
                   .SetDisplayValue("zawiera Młyn")
                   .SetEmpty(false));
    params.Add(ZestParamsLookup().SetDbField("dok_TowarId").SetLabel("Towar").SetTypeStr("Towary.Lookup"));
  }

  // Selects an operator as the list's user does.
  static void PickOperator(CParamDlg_Base& d, std::uint32_t bits) {
    const auto& ops = d.Operators();
    for (std::size_t i = 0; i < ops.size(); ++i) {
      if (ops[i].bits != bits) continue;
      HWND list = GetDlgItem(d.GetHWND(), IDC_PARAMDLG_OPERATOR);
      SendMessageW(list, CB_SETCURSEL, i, 0);
      SendMessageW(d.GetHWND(), WM_COMMAND, MAKEWPARAM(IDC_PARAMDLG_OPERATOR, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    }
  }

  void Refresh() {
    const ZEST_PARAMS& text = *m_view.GetParam(kTextParam);
    const std::string value = text.Value.AsText();
    std::string perOperator;
    CParamsHtmlCtrl probe;  // each operator's condition, on SQL Server
    probe.GetParams().Add(text);
    for (const paramdlg::OperatorChoice& op : paramdlg::OperatorTable(paramdlg::ValueKind::Text)) {
      ZestParams::ZestParamsWrapper(probe.GetParams()[0])
          .SetValue(value)
          .SetValue2(static_cast<std::int32_t>(op.bits))
          .SetEmpty(value.empty());
      const std::string where = probe.GetWhereString(0);
      perOperator += std::string(op.text) + " \x84" + value + "\x94:  " + (where.empty() ? "(brak warunku)" : where) + "\n";
    }
    SetText(m_operators, perOperator);
    m_view.InitDescr();

    CParamsHtmlCtrl server;  // the production text of the same parameters
    for (const ZEST_PARAMS& p : m_view.GetParams()) server.GetParams().Add(p);
    SetText(m_whereServer, server.GetWhereString());
    const std::string where = m_view.GetWhereString();
    SetText(m_whereHere, where);
    SendMessageW(m_rows, LB_RESETCONTENT, 0, 0);
    try {
      db::Recordset rs = m_connection.OpenRS(
          "SELECT dok_Numer, dok_Data, mag_Nazwa, kh_Nazwa, dok_Wartosc, dok_Opis FROM gal_Dokument LEFT JOIN sl_Magazyn "
          "ON dok_MagId = mag_Id LEFT JOIN kh__Kontrahent ON dok_KhId = kh_Id" +
          (where.empty() ? std::string() : " WHERE " + where) + " ORDER BY dok_Data");
      for (; !rs.IsEOF(); rs.MoveNext()) {
        Amount value;
        rs.GetCollect("dok_Wartosc").ToAmount(value);
        const std::string line = rs.GetCollect("dok_Numer").AsText() + "   " + rs.GetCollect("dok_Data").AsText() +
                                 "   " + rs.GetCollect("mag_Nazwa").AsText() + "   " +
                                 rs.GetCollect("kh_Nazwa").AsText("(brak kontrahenta)") + "   " +
                                 value.Format(NumberFormat{}, 2) + " zł   " + rs.GetCollect("dok_Opis").AsText();
        SendMessageW(m_rows, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text::Cp1250ToWide(line).c_str()));
      }
      SetText(m_status, "Wierszy: " + std::to_string(rs.GetRecordCount()) + " z 8 dokumentów.");
    } catch (const ComError& e) {
      SetText(m_status, "Serwer odrzucił zapytanie (" + StatusText(e.Code()) + "): " + e.Message());
    }
  }

  GalleryContext* m_ctx = nullptr;
  db::Connection m_connection;
  std::unique_ptr<GalleryDialogs> m_dialogs;
  CParamsHtmlWnd m_view;
  std::unique_ptr<CParamDlg_Base> m_open;  // the dialog of the current screenshot
  HWND m_operators = nullptr, m_whereServer = nullptr, m_whereHere = nullptr,
       m_rows = nullptr, m_status = nullptr;
  bool m_ready = false;
};

VARION_GALLERY_PAGE(40, ReportParamsPage);

}  // namespace
}  // namespace varion::demo
