// Gallery page of the dialog framework: a contractor form derived from CFlgDialog. OK checks
// every field at once, marks the faulty ones, lists the errors in the docking errors window and
// puts the focus on the first; the form's controls follow its size; its placement is remembered
// in the gallery's profile; a clean OK stores the contractor in the gallery database.
#include <windows.h>
#include <commctrl.h>

#include <memory>

#include "base/text.h"
#include "db/rt_instance.h"
#include "db/updatable_recordset.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"
#include "demo/pages/contractor_form_win.h"
#include "framework/data_exchange_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/hook_supp_win.h"
#include "framework/profile_win.h"

namespace varion::demo {
namespace {

enum { kOpen = 301 };
constexpr char kSection[] = "Galeria.Kontrahent";

class ContractorForm : public CFlgDialog {
 public:
  explicit ContractorForm(HWND owner) : CFlgDialog(IDD_GALLERY_CONTRACTOR, owner) {
    SetFlxProfileSection(kSection);
    SetCtrlIdsForModified({{IDC_GC_NAME, EN_CHANGE}, {IDC_GC_NIP, EN_CHANGE}, {IDC_GC_NOTE, EN_CHANGE}});
    EnableSphereMenu(true);
  }

  std::string name, nip, email, note;
  Amount limit = Amount::FromRaw(50000000);  // 5 000,00
  DateTime from = DateTime(2024, 1, 2), to = DateTime::Null();
  long branch = 0;
  std::string saved;  // what the last clean OK stored

  void OnLoadData(CFlgDataExchange& dx) override {
    HWND combo = GetDlgItem(m_hWnd, IDC_GC_BRANCH);
    if (SendMessageW(combo, CB_GETCOUNT, 0, 0) == 0) {
      try {
        db::Recordset rs = CRtInstance::OpenRS("SELECT so_Id, so_Nazwa FROM sl_Oddzialy ORDER BY so_Nazwa");
        for (; !rs.IsEOF(); rs.MoveNext()) {
          const LRESULT i =
              SendMessageW(combo, CB_ADDSTRING, 0,
                           reinterpret_cast<LPARAM>(text::Cp1250ToWide(rs.GetCollect("so_Nazwa").AsText()).c_str()));
          SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(i), rs.GetCollect("so_Id").AsInt32());
        }
      } catch (const ComError& e) {
        dx.AddError(0, e.Message().c_str(), "Oddziały", 0);
      }
    }
    DLX_Text(dx, IDC_GC_NAME, name);
    DLX_Text(dx, IDC_GC_NIP, nip);
    DLX_Text(dx, IDC_GC_LIMIT, limit);
    DLX_Text(dx, IDC_GC_FROM, from);
    DLX_Text(dx, IDC_GC_TO, to);
    DLX_CBIdent(dx, IDC_GC_BRANCH, branch);
    DLX_Text(dx, IDC_GC_EMAIL, email);
    DLX_Text(dx, IDC_GC_NOTE, note);
  }

  void OnSaveData(CFlgDataExchange& dx) override {
    DV_Required(dx, IDC_GC_NAME, "Podaj nazwę kontrahenta.");
    DSX_Text(dx, IDC_GC_NAME, name);
    DSV_MaxChars(dx, IDC_GC_NAME, name, 255);
    DV_PoprawnyNIP(dx, IDC_GC_NIP);
    DSX_Text(dx, IDC_GC_NIP, nip);
    DSX_Text(dx, IDC_GC_LIMIT, limit);
    if (limit.IsValid() && limit.Raw() < 0) dx.AddError(IDC_GC_LIMIT, "Limit kredytu nie może być ujemny.");
    DSX_Text(dx, IDC_GC_FROM, from);
    DSX_Text(dx, IDC_GC_TO, to);
    if (from.IsValid() && to.IsValid() && to < from)
      dx.AddError(IDC_GC_TO, "Data końcowa nie może być wcześniejsza niż początkowa.");
    DV_CBRequired(dx, IDC_GC_BRANCH, "Wybierz oddział.");
    DSX_CBIdent(dx, IDC_GC_BRANCH, branch);
    DV_PoprawnyEmail(dx, IDC_GC_EMAIL);
    DSX_Text(dx, IDC_GC_EMAIL, email);
    DSX_Text(dx, IDC_GC_NOTE, note);
  }

  int OnUpdate() override {
    db::UpdatableRecordset rs = CRtInstance::GetConnection().OpenForUpdate("SELECT * FROM kh__Kontrahent WHERE 1 = 0");
    rs.AddNew();
    rs.PutCollect("kh_Symbol", Variant(name.substr(0, 20)));
    rs.PutCollect("kh_Nazwa", Variant(name));
    rs.PutCollect("kh_Nip", Variant(nip));
    rs.Update();
    saved = name + (nip.empty() ? "" : ", NIP " + nip);
    return 0;
  }

  void AddFlexConstraints() override {
    AddIfNotPresentFlexConstraint(IDC_GC_NAME, 0, 1, 0, 0);
    AddIfNotPresentFlexConstraint(IDC_GC_EMAIL, 0, 1, 0, 0);
    AddIfNotPresentFlexConstraint(IDC_GC_NOTE, 0, 1, 0, 1);
    for (UINT id : {UINT{IDOK}, UINT{IDCANCEL}, 9u}) AddIfNotPresentFlexConstraint(id, 1, 1, 1, 1);
  }

  BOOL OnInitDialog() override {
    EnableErrorsWnd(true);
    const BOOL r = CFlgDialog::OnInitDialog();
    SetBoldForPrevious(IDC_GC_NAME);
    return r;
  }

  HWND Item(int id) const { return GetDlgItem(m_hWnd, id); }
  void Type(int id, const char* text) const { SetWindowTextW(Item(id), text::Cp1250ToWide(text).c_str()); }
};

class ContractorFormPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Formularz kontrahenta (CFlgDialog)"; }
  std::string Slug() const override { return "formularz-kontrahenta"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_page = page;
    m_ctx = &ctx;
    GalleryDatabase(ctx);  // the branches come from it
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    SetApplicationProfile(std::make_shared<IniFileProfile>(ctx.outDir + L"\\galeria.ini"));
    AddLabel(page, ctx, 12, 12, 800, 20, "Formularz danych na bazie CFlgDialog", true);
    AddLabel(page, ctx, 12, 40, 800, 60,
             "OK sprawdza wszystkie pola naraz: błędne pola dostają czerwoną ramkę i tło, lista błędów dokuje się "
             "przy krawędzi formularza, a pierwsze błędne pole dostaje fokus z dymkiem. Kontrolki rosną razem z "
             "oknem; położenie okna jest zapamiętywane w profilu galerii.");
    AddButton(page, ctx, kOpen, 12, 104, 240, 28, "Otwórz formularz kontrahenta");
    m_status = AddLabel(page, ctx, 12, 144, 800, 60, "");
    ShowStatus();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (id != kOpen || code != BN_CLICKED) return false;
    Open();
    return true;
  }

  void Exercise(HWND) override {
    // Opened once, moved and closed, opened again: the placement comes back from the profile.
    Open();
    SetWindowPos(m_form->m_hWnd, nullptr, Origin().x, Origin().y, 580, 440, SWP_NOZORDER | SWP_NOACTIVATE);
    DestroyWindow(m_form->m_hWnd);
    Open();
    ShowStatus();
    // The window system settles the activation of the closed and the new window first, so that
    // the form keeps the focus (and its balloon) for the picture.
    Settle(500);
    SetForegroundWindow(m_form->m_hWnd);
    Settle(100);
    // Everything wrong at once.
    m_form->Type(IDC_GC_NAME, "");
    m_form->Type(IDC_GC_NIP, "526-025-02-75");
    m_form->Type(IDC_GC_LIMIT, "-1 500,00");
    m_form->Type(IDC_GC_FROM, "2024-05-10");
    m_form->Type(IDC_GC_TO, "2024-05-01");
    m_form->Type(IDC_GC_EMAIL, "biuro@zielarnia");
    m_form->Type(IDC_GC_NOTE, "Dostawy tylko we wtorki.\r\nKontakt: pani Żaneta.");
    SendMessageW(m_form->Item(IDC_GC_BRANCH), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    SendMessageW(m_form->Item(IDOK), BM_CLICK, 0, 0);
  }

 private:
  static void Settle(DWORD ms) {
    const DWORD end = GetTickCount() + ms;
    while (static_cast<LONG>(end - GetTickCount()) > 0) {
      MSG m;
      while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
      }
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
  }

  POINT Origin() const {
    RECT r;
    GetWindowRect(m_page, &r);
    return {r.left + 250, r.top + 40};
  }

  void Open() {
    if (m_form && IsWindow(m_form->m_hWnd)) {
      SetForegroundWindow(m_form->m_hWnd);
      return;
    }
    m_form = std::make_unique<ContractorForm>(GetAncestor(m_page, GA_ROOT));
    m_form->SetDefaultSize(560, 400);
    if (!m_form->Create(GetAncestor(m_page, GA_ROOT))) SetText(m_status, "Nie udało się otworzyć formularza.");
  }

  void ShowStatus() {
    std::string s =
        "Położenie w profilu (" + text::WideToCp1250(m_ctx->outDir) + "\\galeria.ini, sekcja " + kSection + "): ";
    if (auto p = ReadPlacement(*GetApplicationProfile(), kSection))
      s += "Left=" + std::to_string(p->left) + ", Top=" + std::to_string(p->top) +
           ", Width=" + std::to_string(p->width) + ", Height=" + std::to_string(p->height) +
           ", Maximized=" + std::to_string(p->maximized);
    else
      s += "jeszcze nie zapisane";
    if (m_form && !m_form->saved.empty()) s += "\nZapisano kontrahenta: " + m_form->saved;
    SetText(m_status, s);
  }

  // The form belongs to this page: it closes when the page goes.
  void OnPageDestroyed() override { m_form.reset(); }

  HWND m_page = nullptr, m_status = nullptr;
  GalleryContext* m_ctx = nullptr;
  std::unique_ptr<ContractorForm> m_form;
};

VARION_GALLERY_PAGE(60, ContractorFormPage);

}  // namespace
}  // namespace varion::demo
