// The warning windows: a database warning shown once and then silenced by its check box, a
// database that fails, and the simple warnings that report the choice (one closing itself).
#include <windows.h>

#include <gtest/gtest.h>

#include "db/schema/schema.h"
#include "diagnostics/framework_log.h"
#include "dialogs/customizable_warning_win.h"
#include "dialogs/message_box_wintest_support.h"
#include "framework/hook_supp_win.h"
#include "tests/db_backends.h"
#include "tests/win_support.h"

namespace {

using CMB::ButtonId;
using CMB::testing::PostKey;
using CMB::testing::TimerAnswer;
using varion::testing::GetTextA;

class WarningWinTest : public ::testing::Test {
 protected:
  WarningWinTest() : m_db("odbc-sqlite"), m_conn(m_db.Connect()) {
    CHookSupp::InitVXAXVelControls(nullptr);
    varion::db::schema::CreateSchema(m_conn);
    m_previousLog = varion::SetFrameworkLogSink([this](std::string_view, std::string_view text) { m_log.emplace_back(text); });
  }
  ~WarningWinTest() override { varion::SetFrameworkLogSink(m_previousLog); }

  CCustomizableWarning Warning(WarningKind kind) const {
    return CCustomizableWarning(0, {3001, 8, kind, std::nullopt},
                                {"Zmiana stawek", "Od 1 stycznia obowiązują nowe stawki.", "", CMB::MessageBoxType::Warning,
                                 false},
                                m_conn, 7);
  }

  varion::testing::TestDatabase m_db;
  varion::db::Connection m_conn;
  std::vector<std::string> m_log;

 private:
  varion::FrameworkLogSink m_previousLog;
};

TEST_F(WarningWinTest, ShownUntilTheUserTicksDontShowAgain) {
  struct Step {
    const char* name;
    bool tick;
    std::optional<ButtonId> answer;
    std::size_t boxesSeen;
  };
  CCustomizableWarning warning = Warning(WarningKind::General);
  for (const Step& s : {Step{"shown, answered without the tick", false, ButtonId::Ok, 1},
                        Step{"shown again, answered with the tick", true, ButtonId::Ok, 1},
                        Step{"silenced", false, std::nullopt, 0}}) {
    SCOPED_TRACE(s.name);
    TimerAnswer answer([&](HWND box) {
      if (s.tick) SendMessageW(GetDlgItem(box, CMB::kIdcDontShowAgain), BM_CLICK, 0, 0);
      PostKey(GetFocus(), VK_RETURN);
    });
    EXPECT_EQ(ShowCustomizableWarning(warning), s.answer);
    ASSERT_EQ(TimerAnswer::s_seen.size(), s.boxesSeen);
    if (s.boxesSeen) {
      EXPECT_EQ(TimerAnswer::s_seen[0], "Zmiana stawek|&OK");
    }
  }
  // A Brexit warning with no British data never opens.
  CCustomizableWarning brexit = Warning(WarningKind::Brexit);
  TimerAnswer none([](HWND) { PostKey(GetFocus(), VK_RETURN); });
  EXPECT_EQ(ShowCustomizableWarning(brexit), std::nullopt);
  EXPECT_TRUE(TimerAnswer::s_seen.empty());
  EXPECT_TRUE(m_log.empty());
}

TEST_F(WarningWinTest, ADatabaseFailureIsLoggedAndTheWarningStillShows) {
  m_conn.Execute("DROP TABLE pd_Ostrzezenia");
  CCustomizableWarning warning = Warning(WarningKind::General);
  bool checkBoxShown = true;
  TimerAnswer answer([&](HWND box) {
    checkBoxShown = IsWindowVisible(GetDlgItem(box, CMB::kIdcDontShowAgain));
    PostKey(GetFocus(), VK_RETURN);
  });
  EXPECT_EQ(ShowCustomizableWarning(warning), ButtonId::Ok);
  EXPECT_FALSE(checkBoxShown) << "no row to keep the choice in";
  ASSERT_EQ(m_log.size(), 1u);
  EXPECT_NE(m_log[0].find("pd_Ostrzezenia"), std::string::npos) << m_log[0];
}

// A simple warning run by a driver once its window has loaded.
template <class Base>
class Driven : public Base {
 public:
  using Base::Base;
  std::function<void(HWND)> driver;
  void HandleWindowLoaded() override {
    if (driver) driver(this->m_hWnd);
  }
};

TEST_F(WarningWinTest, SimpleWarningsReportTheChoice) {
  struct Case {
    const char* name;
    bool tick;
    UINT key;
    std::optional<ButtonId> answer;
    bool showAgain;
  };
  for (const Case& c : {Case{"OK", false, VK_RETURN, ButtonId::Ok, true},
                        Case{"tick and OK", true, VK_RETURN, ButtonId::Ok, false},
                        Case{"tick and Esc", true, VK_ESCAPE, std::nullopt, true}}) {
    SCOPED_TRACE(c.name);
    Driven<CSimpleWarningDlg> dlg("Drukarka fiskalna nie odpowiada.", nullptr, "Drukarka");
    dlg.driver = [&](HWND box) {
      EXPECT_EQ(GetTextA(box), "Drukarka");
      if (c.tick) SendMessageW(GetDlgItem(box, CMB::kIdcDontShowAgain), BM_CLICK, 0, 0);
      PostKey(GetFocus(), c.key);
    };
    EXPECT_EQ(dlg.Show(), c.answer);
    EXPECT_EQ(dlg.GetShowWarning(), c.showAgain);
  }
}

TEST_F(WarningWinTest, TimedWarningClosesItselfAndCountsDown) {
  Driven<CSimpleWarningWithTimerDlg> dlg("Kopia zapasowa zakończona.", 2);
  std::string first;
  dlg.driver = [&](HWND box) {
    first = GetTextA(GetDlgItem(box, 30105));
    SendMessageW(GetDlgItem(box, CMB::kIdcDontShowAgain), BM_CLICK, 0, 0);
  };
  EXPECT_EQ(dlg.Show(), ButtonId::Ok);
  EXPECT_EQ(first, "&OK (2)");
  EXPECT_EQ(dlg.GetSecondsLeft(), 0u);
  EXPECT_FALSE(dlg.GetShowWarning()) << "the tick counts when the time ends the box";
}

}  // namespace
