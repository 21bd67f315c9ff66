// The registry switch under Wine with the real registry: the key under HKEY_CURRENT_USER created
// and deleted by the tests, RegistryLoggerToggle, file loggers and the older per-file log
// following it; the default log folder and the Windows side of the file format.
#include <windows.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "base/text.h"
#include "diagnostics/log_factories.h"
#include "diagnostics/simple_log_deprecated.h"
#include "tests/log_test_support.h"
#include "tests/native_support.h"

namespace SimpleLog {
namespace {

using varion::testing::ReadLines;
using varion::testing::ReadWholeFile;
using varion::testing::TempDir;

constexpr const wchar_t* kParentKey = L"SOFTWARE\\Orvant";
constexpr const wchar_t* kSwitchKey = L"SOFTWARE\\Orvant\\EnableSimpleLogging";

bool KeyExists(const wchar_t* key) {
  HKEY h = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_READ, &h) != ERROR_SUCCESS) return false;
  RegCloseKey(h);
  return true;
}

// Puts the switch key in the wanted state for one test and leaves the registry as it found it.
class SwitchKey {
 public:
  SwitchKey() : m_parentExisted(KeyExists(kParentKey)), m_switchExisted(KeyExists(kSwitchKey)) {}
  ~SwitchKey() {
    Set(m_switchExisted);
    if (!m_parentExisted) RegDeleteKeyW(HKEY_CURRENT_USER, kParentKey);
  }
  void Set(bool present, const wchar_t* key = kSwitchKey) {
    if (present) {
      HKEY h = nullptr;
      ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, key, 0, nullptr, 0, KEY_WRITE, nullptr, &h, nullptr), ERROR_SUCCESS);
      RegCloseKey(h);
    } else if (KeyExists(key)) {
      ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, key), ERROR_SUCCESS);
    }
  }

 private:
  bool m_parentExisted, m_switchExisted;
};

TEST(RegistrySwitch, ToggleTakesTheKeysPresenceOnceWhenMadeAndReadsNoValue) {
  SwitchKey key;
  key.Set(false);
  RegistryLoggerToggle madeWithout;
  key.Set(true);
  // A value that reads "off" changes nothing: only the key counts.
  const DWORD off = 0;
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSwitchKey, L"Enabled", REG_DWORD, &off, sizeof off), ERROR_SUCCESS);
  RegistryLoggerToggle madeWith;
  RegistryLoggerToggle otherKey("SOFTWARE\\Orvant\\InnyKlucz");
  key.Set(false);
  EXPECT_FALSE(madeWithout.IsEnabled());
  EXPECT_TRUE(madeWith.IsEnabled());
  EXPECT_FALSE(otherKey.IsEnabled());
  EXPECT_FALSE(RegistryLoggerToggle().IsEnabled());
  key.Set(true, L"SOFTWARE\\Orvant\\InnyKlucz");
  EXPECT_TRUE(RegistryLoggerToggle("SOFTWARE\\Orvant\\InnyKlucz").IsEnabled());
  key.Set(false, L"SOFTWARE\\Orvant\\InnyKlucz");
}

TEST(RegistrySwitch, FileLoggersAndTheOlderLogWriteOnlyWhileTheKeyExists) {
  for (bool present : {false, true}) {
    SCOPED_TRACE(present);
    SwitchKey key;
    key.Set(present);
    TempDir dir;  // the directory exists either way
    Custom::File::LoggerFactory("Nowy.log", std::make_shared<RegistryLoggerToggle>(), Formatting::Dummy)
        .WithCustomDirectory(dir.Path())
        .Get()
        .Write(FramLogInfo, "Zażółć gęślą jaźń");
    CSimpleLogDeprecated old("Stary.log", true, 0, dir.Path() + "\\");
    old.Write("Zażółć gęślą jaźń");
    old.WriteFormat("%s nr %d", "Faktura", 17);
    const std::string newPath = dir.Path() + "\\Nowy.log", oldPath = dir.Path() + "\\Stary.log";
    EXPECT_EQ(old.GetFilePath(), oldPath);
    if (!present) {
      EXPECT_FALSE(std::filesystem::exists(newPath));
      EXPECT_FALSE(std::filesystem::exists(oldPath));
      continue;
    }
    // Text files on Windows: every line ends with CR LF.
    EXPECT_EQ(ReadWholeFile(newPath), "[INFO] Zażółć gęślą jaźń\r\n");
    const auto lines = ReadLines(oldPath);
    ASSERT_EQ(lines.size(), 2u);
    // The Polish locale writes the short date with dots and the time with colons.
    const std::regex stamp(R"(\d\d\.\d\d\.\d{4} \d{1,2}:\d\d:\d\d\t)");
    EXPECT_TRUE(std::regex_search(lines[0], stamp)) << lines[0];
    EXPECT_EQ(lines[0].substr(lines[0].find('\t') + 1), "Zażółć gęślą jaźń");
    EXPECT_EQ(lines[1].substr(lines[1].find('\t') + 1), "Faktura nr 17");
  }
}

TEST(RegistrySwitch, DefaultFolderIsApplicationDataAndOrvantVx) {
  wchar_t appData[MAX_PATH] = {};
  ASSERT_EQ(SHGetFolderPathW(nullptr, 0x1A, nullptr, SHGFP_TYPE_CURRENT, appData), S_OK);
  const std::string expected = varion::text::WideToCp1250(appData) + "\\Orvant VX";
  EXPECT_EQ(DefaultLogDirectory(), expected);
  EXPECT_EQ(FileLoggerSink("Galeria.log").Path(), expected + "\\Galeria.log");
  EXPECT_EQ(CSimpleLogDeprecated("Stary.log").GetFilePath(), expected + "\\Stary.log");
}

TEST(RegistrySwitch, LibraryErrorCodesGiveTheSystemsTextOrTheCode) {
  const std::string known = CSimpleLogDeprecated::GetMsgFromVelError(static_cast<varion::Status32>(0x80070002u));
  EXPECT_FALSE(known.empty());
  EXPECT_NE(known, "0x80070002");
  EXPECT_NE(known.back(), '\n');
  EXPECT_EQ(CSimpleLogDeprecated::GetMsgFromVelError(static_cast<varion::Status32>(0x8FFF1234u)), "0x8FFF1234");
}

}  // namespace
}  // namespace SimpleLog
