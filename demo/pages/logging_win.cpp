// Gallery page of SimpleLog: a button writes entries at every level through a file logger (the
// default log folder, time-stamped lines) and through the running instance's database logger
// (switched by log_Parametry), then shows the file's last lines and the table's last rows.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "base/text.h"
#include "db/rt_instance.h"
#include "demo/gallery_database_win.h"
#include "demo/gallery_win.h"
#include "diagnostics/log_factories.h"

namespace varion::demo {
namespace {

enum { kWrite = 301, kFileLines, kRows };

constexpr const char* kFileName = "Galeria.log";
constexpr std::size_t kShown = 12;

// The document the database entries are about.
class GalleryDocument : public IFlgItem {
 public:
  std::int32_t GetObjectType() override { return 2; }
  std::int32_t GetObjectTypeEx() override { return 0; }
  std::int32_t GetObjectId() override { return 17; }
};

class LoggingPage : public GalleryPage {
 public:
  std::wstring Title() const override { return L"Dziennik zdarze\u0144"; }
  std::string Slug() const override { return "dziennik"; }

  void Create(HWND page, GalleryContext& ctx) override {
    m_ctx = &ctx;
    AddLabel(page, ctx, 12, 12, 800, 20, "SimpleLog: dziennik w pliku tekstowym i w tabeli log_Logowanie", true);
    m_state = AddLabel(page, ctx, 12, 38, 820, 56, "");
    AddButton(page, ctx, kWrite, 12, 100, 300, 28, "Zapisz wpisy na każdym poziomie");
    AddLabel(page, ctx, 12, 142, 800, 20, "Ostatnie wiersze pliku:", true);
    m_fileLines = AddEdit(page, ctx, kFileLines, 12, 164, 820, 210, "",
                          ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_HSCROLL);
    AddLabel(page, ctx, 12, 386, 800, 20, "Ostatnie wiersze tabeli log_Logowanie:", true);
    m_rows = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT,
                             12, 408, 820, 230, page, reinterpret_cast<HMENU>(kRows), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(m_rows, WM_SETFONT, reinterpret_cast<WPARAM>(ctx.font), TRUE);
    ShowState();
    ShowFile();
    ShowRows();
  }

  bool OnCommand(HWND, int id, int code, HWND) override {
    if (id != kWrite || code != BN_CLICKED) return false;
    WriteEntries();
    return true;
  }

  void Exercise(HWND) override { WriteEntries(); }

 private:
  void WriteEntries() {
    GalleryDocument document;
    try {
      GalleryDatabase(*m_ctx);
    } catch (const ComError&) {
      // The page still shows the file; the database logger writes nothing without a database.
    }
    {
      SimpleLog::SimpleLoggerWrapper file =
          SimpleLog::Custom::File::LoggerFactory(kFileName, std::make_shared<SimpleLog::AlwaysOnLoggerToggle>(),
                                                 SimpleLog::Formatting::Timestamp)
              .Get();
      SimpleLog::SimpleLoggerWrapper database = SimpleLog::Default::CreateLogger("Galeria", &document);
      for (const SimpleLog::SimpleLoggerWrapper* logger : {&file, &database}) {
        logger->Write(FramLogDebug, "Otwarto listę kontrahentów");
        logger->Write(FramLogDebug, "Odczytano 3 wiersze z kh__Kontrahent");
        logger->Write(FramLogInfo, "Zapisano dokument FS 17/2025");
        logger->Write(FramLogInfo, "Wysłano fakturę na adres biuro@example.pl");
        logger->Write(FramLogWarning, "Kontrahent O'Brien Trading Ltd nie ma numeru NIP");
        logger->Write(FramLogWarning, "Termin płatności FS 17/2025 minął 3 dni temu");
        SimpleLog::ComHelpers::WriteComError(*logger, "Nie udało się zapisać dokumentu",
                                             ComError(kFail, "Naruszenie ograniczenia UNIQUE"));
        logger->Write(FramLogError, SimpleLog::LogFields::WithFields("Brak kursu waluty EUR na dzień 2025-03-14",
                                                                     {SimpleLog::LogFields::SourceLocation()}));
      }
    }  // the file logger writes out what it holds when it goes
    ShowState();
    ShowFile();
    ShowRows();
  }

  void ShowState() {
    const bool key = SimpleLog::RegistryLoggerToggle().IsEnabled();
    bool databaseOn = false;
    try {
      databaseOn = SimpleLog::NoDataFactoryParamLoggerToggle(GalleryDatabase(*m_ctx)).IsEnabled();
    } catch (const ComError&) {
    }
    SetText(m_state, "Plik: " + SimpleLog::JoinLogPath(SimpleLog::DefaultLogDirectory(), kFileName) +
                         "\nKlucz HKCU\\" + SimpleLog::kEnableSimpleLoggingKey + ": " +
                         (key ? "jest (przełącznik rejestrowy włączony)" : "brak (przełącznik rejestrowy wyłączony; ta strona pisze do pliku zawsze)") +
                         "\nPrzełącznik w bazie (log_Parametry.logp_Wlaczone): " + (databaseOn ? "włączony" : "wyłączony"));
  }

  void ShowFile() {
    const std::string path = SimpleLog::JoinLogPath(SimpleLog::DefaultLogDirectory(), kFileName);
    std::ifstream in(std::filesystem::path(text::Cp1250ToWide(path)), std::ios::binary);
    const std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < all.size();) {
      std::size_t end = all.find('\n', start);
      if (end == std::string::npos) end = all.size();
      std::string line = all.substr(start, end - start);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      lines.push_back(std::move(line));
      start = end + 1;
    }
    std::string shown;
    for (std::size_t i = lines.size() > kShown ? lines.size() - kShown : 0; i < lines.size(); ++i)
      shown += lines[i] + "\r\n";
    SetText(m_fileLines, lines.empty() ? "(plik jeszcze nie istnieje)" : shown);
  }

  void ShowRows() {
    SendMessageW(m_rows, LB_RESETCONTENT, 0, 0);
    try {
      db::Recordset rs = CRtInstance::OpenRS(
          "SELECT log_Id, log_Data, log_Rodzaj, log_Obszar, log_ObiektTyp, log_ObiektId, log_WatekId, log_Informacje "
          "FROM log_Logowanie ORDER BY log_Id DESC");
      for (std::size_t shown = 0; !rs.IsEOF() && shown < kShown; rs.MoveNext(), ++shown) {
        const auto level = static_cast<tagFramLogLevel>(rs.GetCollect("log_Rodzaj").AsInt32(-1));
        std::string line = "#" + rs.GetCollect("log_Id").AsText() + "  " + rs.GetCollect("log_Data").AsText() + "  [" +
                           std::string(SimpleLog::LevelName(level)) + "]  " + rs.GetCollect("log_Obszar").AsText();
        if (!rs.GetCollect("log_ObiektId").IsNull())
          line += " (obiekt " + rs.GetCollect("log_ObiektTyp").AsText() + "/" + rs.GetCollect("log_ObiektId").AsText() + ")";
        line += ", wątek " + rs.GetCollect("log_WatekId").AsText() + ": " + rs.GetCollect("log_Informacje").AsText();
        SendMessageW(m_rows, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text::Cp1250ToWide(line).c_str()));
      }
    } catch (const ComError& e) {
      const std::string line = "Błąd bazy danych " + StatusText(e.Code()) + ": " + e.Message();
      SendMessageW(m_rows, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text::Cp1250ToWide(line).c_str()));
    }
  }

  GalleryContext* m_ctx = nullptr;
  HWND m_state = nullptr, m_fileLines = nullptr, m_rows = nullptr;
};

VARION_GALLERY_PAGE(30, LoggingPage);

}  // namespace
}  // namespace varion::demo
