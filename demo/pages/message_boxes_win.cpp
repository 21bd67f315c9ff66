// The gallery page of the message box: a question with all three buttons, a link and the
// don't-show-again check box, remembered in the gallery's profile; and the same box suppressed
// once the choice was made.
#include "base/text.h"
#include "demo/gallery_win.h"
#include "dialogs/customizable_message_box_win.h"
#include "dialogs/customizable_warning_win.h"
#include "framework/hook_supp_win.h"
#include "framework/profile_win.h"

namespace varion::demo {
namespace {

constexpr int kAsk = 100;
constexpr int kReset = 101;
constexpr int kTimed = 102;
constexpr const char* kSection = "Galeria.Komunikaty";
constexpr const char* kEntry = "UsunDokument";
constexpr const char* kTimedText =
    "Kopia zapasowa bazy danych została wykonana. Okno zamknie się samo po upływie czasu pokazanego na przycisku.";

std::string AnswerText(std::optional<CMB::ButtonId> answer) {
  if (!answer) return "brak (okno nie zostało otwarte albo zamknięto je bez odpowiedzi)";
  switch (*answer) {
    case CMB::ButtonId::Ok: return "OK";
    case CMB::ButtonId::No: return "Nie";
    case CMB::ButtonId::Cancel: return "Anuluj";
  }
  return "?";
}

class MessageBoxesPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Komunikaty i pytania (CMB)"; }
  std::string Slug() const override { return "komunikaty"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_page = page;
    CHookSupp::InitVXAXVelControls(nullptr);
    m_profile = std::make_shared<IniFileProfile>(ctx.outDir + L"\\galeria.ini");
    m_profile->WriteInt(kSection, kEntry, 0);
    AddLabel(page, ctx, 12, 12, 800, 20, "Komunikat z opcją „nie pokazuj więcej” (CMB::CustomizableMessageBox)", true);
    AddLabel(page, ctx, 12, 40, 800, 60,
             "Okno dopasowuje się do tekstów i widocznych przycisków, długi tekst przewija się zamiast wychodzić poza "
             "ekran. Zaznaczenie pola i odpowiedź OK albo Nie zapisuje wybór w profilu galerii; Anuluj nigdy go nie "
             "zapisuje. Przycisk „Przywróć” przywraca komunikat.");
    AddButton(page, ctx, kAsk, 12, 104, 200, 28, "Pokaż pytanie");
    AddButton(page, ctx, kReset, 222, 104, 200, 28, "Przywróć komunikat");
    AddButton(page, ctx, kTimed, 432, 104, 240, 28, "Ostrzeżenie z odliczaniem");
    m_status = AddLabel(page, ctx, 12, 144, 800, 60, "");
    ShowStatus();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (code != BN_CLICKED) return false;
    if (id == kAsk) {
      auto box = MakeBox();
      m_last = AnswerText(box->Show());
      ShowStatus();
      return true;
    }
    if (id == kTimed) {
      CSimpleWarningWithTimerDlg warning(kTimedText, 5, GetAncestor(m_page, GA_ROOT), "Kopia zapasowa");
      m_last = "ostrzeżenie zamknięte: " + AnswerText(warning.Show()) +
               (warning.GetShowWarning() ? "" : "; użytkownik nie chce go więcej oglądać");
      ShowStatus();
      return true;
    }
    if (id == kReset) {
      m_profile->WriteInt(kSection, kEntry, 0);
      m_last = "komunikat przywrócony";
      ShowStatus();
      return true;
    }
    return false;
  }

  void Exercise(HWND) override {
    // Without a display the box opens modeless over the gallery, so that the picture shows it.
    m_box = MakeBox();
    m_box->Create(GetAncestor(m_page, GA_ROOT));
  }

  bool NextShot(HWND, int shot) override {
    if (shot == 3) {
      // A warning that closes itself: CSimpleWarningWithTimerDlg counting down on its button.
      m_timed = std::make_unique<CSimpleWarningWithTimerDlg>(kTimedText, 9, GetAncestor(m_page, GA_ROOT),
                                                             "Kopia zapasowa");
      m_timed->Create(GetAncestor(m_page, GA_ROOT));
      return true;
    }
    if (shot != 2 || !m_box || !IsWindow(m_box->m_hWnd)) return false;
    // The user ticks "don't show again" and answers No; the next Show does not open the box.
    SendMessageW(GetDlgItem(m_box->m_hWnd, CMB::kIdcDontShowAgain), BM_CLICK, 0, 0);
    SendMessageW(GetDlgItem(m_box->m_hWnd, *CMB::GetButtonIDC(CMB::ButtonId::No)), BM_CLICK, 0, 0);
    m_box.reset();
    m_last = "Nie; następne Show() zwróciło: " + AnswerText(MakeBox()->Show());
    ShowStatus();
    return true;
  }

  void OnPageDestroyed() override {
    m_box.reset();
    m_timed.reset();
  }

 private:
  std::unique_ptr<CMB::CustomizableMessageBox> MakeBox() const {
    auto box = std::make_unique<CMB::CustomizableMessageBox>(
        CMB::MessageBoxType::Question,
        "Dokument FV 124/2024 ma zapisane płatności i został wysłany do kontrahenta. Usunięcie dokumentu usunie "
        "także jego płatności i zapisy w rejestrze VAT; tej operacji nie można cofnąć.",
        "Czy na pewno usunąć dokument?", CMB::InitButtonsSetting(), GetAncestor(m_page, GA_ROOT));
    box->SetURL("https://pomoc.example.com/usuwanie-dokumentow")
        .SetDataSavingSettings(std::make_unique<CMB::RegistrySetting>(kSection, kEntry, m_profile));
    return box;
  }

  void ShowStatus() {
    std::string s = "W profilu: " + std::string(kSection) + "/" + kEntry + " = " +
                    std::to_string(m_profile->GetInt(kSection, kEntry).value_or(0));
    if (!m_last.empty()) s += "\nOstatnia odpowiedź: " + m_last;
    SetText(m_status, s);
  }

  HWND m_page = nullptr, m_status = nullptr;
  std::shared_ptr<IniFileProfile> m_profile;
  std::unique_ptr<CMB::CustomizableMessageBox> m_box;
  std::unique_ptr<CSimpleWarningWithTimerDlg> m_timed;
  std::string m_last;
};

}  // namespace

VARION_GALLERY_PAGE(66, MessageBoxesPage);

}  // namespace varion::demo
