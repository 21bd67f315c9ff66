#include "params/params_html_ctrl.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using varion::params::ParamDialogKind;
using varion::params::ParamDialogRequest;

ZEST_PARAMS Line(const char* label, const char* prefix, const char* display, const char* valueStr, bool empty,
                 bool standard = true, bool visible = true) {
  return ZestParams::ZestParamsString()
      .SetLabel(label)
      .SetValuePrefix(prefix)
      .SetDisplayValue(display)
      .SetValueStr(valueStr)
      .SetEmpty(empty)
      .SetStandard(standard)
      .SetVisible(visible);
}

const char kHead[] =
    "<HTML>\n<head>\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1250\">\n"
    "<title>Parametry zestawienia</title>\n<STYLE>A.Defined {color:#008000}</STYLE>\n"
    "<STYLE>A.Undefined {color:red}</STYLE>\n</head>\n";

TEST(ParamsPage, HtmlAndPlainText) {
  struct Case {
    const char* name;
    std::vector<ZEST_PARAMS> params;
    bool highlight;
    const char* url;
    std::string html;
    const char* plain;
    bool contentEmpty;
  } cases[] = {
      {"lines of visible parameters",
       {Line("Okres", "", "bieżący miesiąc", "2024-05-01 AND 2024-05-31", false),
        Line("Ukryty", "", "x", "", false, true, false), Line("Kwota", "od", "", "10,00 do 20,00", false, false),
        Line("Kontrahent", "", "", "", true, false)},
       false, "params://home",
       std::string(kHead) +
           "<BODY topmargin=\"0\" scroll=auto STYLE=\"font-family:Arial;font-size:10pt;\">\n"
           "Okres <A class=\"Defined\" href=\"std://0\"> bieżący miesiąc</a>, \n"
           "Kwota <A class=\"Defined\" href=\"self://2\">od 10,00 do 20,00</a>, \n"
           "Kontrahent <A class=\"Undefined\" href=\"self://3\"> (nie podano wartości)</a>\n\n</BODY>\n</HTML>",
       "Okres bieżący miesiąc\nKwota od 10,00 do 20,00\nKontrahent (nie podano wartości)", false},
      {"all hidden", {Line("A", "", "x", "", false, true, false)}, true, "params://home",
       std::string(kHead) +
           "<BODY topmargin=\"0\" scroll=auto STYLE=\"font-family:Arial;font-size:10pt;background-color:#fffbf0;\">\n"
           "Nie wybrano żadnego parametru\n</BODY>\n</HTML>",
       "Nie wybrano żadnego parametru", true},
      {"another address", {Line("A", "", "x", "", false)}, false, "std://0",
       std::string(kHead) + "<BODY topmargin=\"0\" scroll=auto STYLE=\"font-family:Arial;font-size:10pt;\">\n\n</BODY>\n</HTML>",
       "", false},
      {"no parameters", {}, false, "params://home",
       std::string(kHead) + "<BODY topmargin=\"0\" scroll=auto STYLE=\"font-family:Arial;font-size:10pt;\">\n\n</BODY>\n</HTML>",
       "", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CParamsHtmlCtrl view;
    view.SetColors("#008000", "red");
    view.SetFont("Arial", "10pt");
    view.SetHighlight(c.highlight);
    for (const ZEST_PARAMS& p : c.params) view.GetParams().Add(p);
    std::string html, plain;
    view.GenerateContentsHtml(c.url, html);
    view.GenerateContentsPlain(c.url, plain);
    EXPECT_EQ(html, c.html);
    EXPECT_TRUE(plain == c.plain && view.IsContentEmpty() == c.contentEmpty) << plain;
  }
}

// Records what the view asks the dialogs to open; answers OK and sets a value.
struct Dialogs : varion::params::IParamDialogs {
  bool ShowParamDialog(const ParamDialogRequest& r, ZEST_PARAMS& p, const varion::db::Connection&) override {
    opened.push_back(r);
    ZestParams::ZestParamsWrapper(p).SetDisplayValue("wybrano").SetEmpty(false);
    return true;
  }
  std::vector<ParamDialogRequest> opened;
};

struct Access : CAccessControl::IChecker {
  varion::Status32 CheckStdFuncAccessAndShowMessage(UprawnieniaDoWersji right) override {
    ++checks;
    return right == 7 ? varion::kFail : varion::kOk;
  }
  int checks = 0;
};

TEST(ParamsPage, FollowedLinkOpensTheDialogOfTheTypeAfterTheAccessCheck) {
  struct Case {
    int type;
    const char* url;
    bool opens;
    ParamDialogKind kind;
    int comboMode = 0, dialogOption = 0;
    bool sortable = false, multiple = false;
    UprawnieniaDoWersji right = UprawnieniaDoWersjiBrak;
  } cases[] = {
      {0, "std://0", true, ParamDialogKind::String},     {1, "std://0", true, ParamDialogKind::Currency},
      {2, "self://0", true, ParamDialogKind::Date},      {20, "self://0/", true, ParamDialogKind::Date},
      {3, "std://0", true, ParamDialogKind::Combo, 3, 9}, {4, "std://0", true, ParamDialogKind::Combo, 4, 9},
      {5, "std://0", true, ParamDialogKind::Combo, 5, 9}, {14, "std://0", true, ParamDialogKind::Combo, 5, 0},
      {6, "std://0", true, ParamDialogKind::ComboDb},    {7, "std://0", true, ParamDialogKind::Instynkt},
      {9, "std://0", true, ParamDialogKind::ComboDbString}, {10, "std://0", true, ParamDialogKind::Checklist},
      {11, "std://0", true, ParamDialogKind::ChecklistDb}, {16, "std://0", true, ParamDialogKind::ChecklistDb, 0, 0, true},
      {12, "std://0", true, ParamDialogKind::DateEx},    {13, "std://0", true, ParamDialogKind::DateEx2},
      {15, "std://0", true, ParamDialogKind::Lookup, 0, 0, false, true},
      {17, "std://0", true, ParamDialogKind::Lookup},    {18, "std://0", true, ParamDialogKind::MultiselectionComboDb},
      {19, "std://0", true, ParamDialogKind::DateHour},  {21, "std://0", true, ParamDialogKind::Klas},
      {-1, "std://0", false, {}}, {8, "std://0", false, {}}, {22, "std://0", false, {}},
      {0, "std://0", false, {}, 0, 0, false, false, UprawnieniaDoWersji(7)},  // refused by the check
      {0, "std://1", false, {}}, {0, "std://x", false, {}}, {0, "self://0x", false, {}},
  };
  Access access;
  CAccessControl::SetChecker(&access);
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "type " << c.type << " " << c.url);
    Dialogs dialogs;
    CParamsHtmlCtrl view;
    view.SetDialogs(&dialogs);
    view.SetDialogOption(9);
    view.GetParams().Add(ZestParams::ZestParamsString().SetType(ZestParamsType(c.type)).SetLabel("P").SetPaywalled(c.right));
    view.InitDescr();
    const int checksBefore = access.checks;
    EXPECT_TRUE(view.OnBeforeNavigate2(c.url));
    ASSERT_EQ(dialogs.opened.size(), c.opens ? 1u : 0u);
    EXPECT_EQ(view.Contents().find("wybrano") != std::string::npos, c.opens);  // the page shows the new value
    if (!c.opens) continue;
    const ParamDialogRequest& r = dialogs.opened[0];
    EXPECT_TRUE(access.checks == checksBefore + 1 && r.kind == c.kind && r.comboMode == c.comboMode &&
                r.dialogOption == c.dialogOption && r.sortable == c.sortable && r.multiple == c.multiple);
  }
  CAccessControl::SetChecker(nullptr);
}

// The record's ParamHandler judges a confirmed dialog's values; a refusal puts the record back.
TEST(ParamsPage, ParamHandlerAcceptsOrRefusesTheConfirmedValues) {
  struct View : CParamsHtmlCtrl {
    void OnParamChanged(int index) override { changed.push_back(index); }
    std::vector<int> changed;
  };
  enum class Handler { None, Accepts, Refuses };
  for (Handler h : {Handler::None, Handler::Accepts, Handler::Refuses}) {
    SCOPED_TRACE(static_cast<int>(h));
    Dialogs dialogs;
    View view;
    view.SetDialogs(&dialogs);
    view.GetParams().Add(ZestParams::ZestParamsString().SetLabel("A"));
    ZEST_PARAMS b = ZestParams::ZestParamsString().SetLabel("B").SetDisplayValue("stare");
    std::string seen;
    int arraySize = 0;
    if (h != Handler::None) {
      ZestParams::ZestParamsWrapper(b).OnParam([&seen, &arraySize, h](const ZestParams::ZestParamsManager& m, const ZestParams::ZestParamsWrapper& w) {
        seen = w.get_ref().DisplayValue;  // the handler sees the new values
        arraySize = m.get().GetSize();
        return h == Handler::Accepts;
      });
    }
    view.GetParams().Add(b);
    view.InitDescr();
    EXPECT_TRUE(view.OnBeforeNavigate2("std://1"));
    const ZEST_PARAMS& p = *view.GetParam(1);
    const bool kept = h != Handler::Refuses;
    EXPECT_EQ(p.DisplayValue, kept ? "wybrano" : "stare");
    EXPECT_EQ(p.Empty != 0, !kept);
    EXPECT_EQ(view.changed, kept ? std::vector<int>{1} : std::vector<int>{});
    EXPECT_EQ(view.Contents().find("wybrano") != std::string::npos, kept);
    if (h != Handler::None) {
      EXPECT_EQ(seen, "wybrano");
      EXPECT_EQ(arraySize, 2);
    }
  }
}

TEST(ParamsPage, EveryOtherAddressIsCancelledAndOpensNothing) {
  for (const char* url : {"about:blank", "https://example.com/", "javascript:alert(1)", "JAVASCRIPT:void(0)",
                          "file:///etc/passwd", "", " std://0", "STD://0", "vbscript:x"}) {
    SCOPED_TRACE(url);
    Dialogs dialogs;
    CParamsHtmlCtrl view;
    view.SetDialogs(&dialogs);
    view.GetParams().Add(ZestParams::ZestParamsString().SetLabel("P"));
    view.InitDescr();
    const std::string before = view.Contents();
    EXPECT_TRUE(view.OnBeforeNavigate2(url));
    EXPECT_TRUE(dialogs.opened.empty() && view.Contents() == before);
  }
  EXPECT_TRUE(CParamsHtmlCtrl().OnBeforeNavigate2(nullptr));
}

// The shown value is data and reads as text; the label and prefix are the report's own markup.
TEST(ParamsPage, ShownValueEscapedLabelAndPrefixKept) {
  struct Case {
    const char* display;
    const char* valueStr;
    const char* link;  // the link as written
  } cases[] = {
      {"Żółw & Spółka", "", "Żółw &amp; Spółka"},
      {"", "</a><A href=\"std://1\">x", "&lt;/a&gt;&lt;A href=&quot;std://1&quot;&gt;x"},
      {"<script>alert('x')</script>", "", "&lt;script&gt;alert('x')&lt;/script&gt;"},
      {"&amp; już", "", "&amp;amp; już"},
      {"", "a\"b'c", "a&quot;b'c"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.link);
    CParamsHtmlCtrl view;
    view.GetParams().Add(Line("<b>Nazwa</b>", "<i>od</i>", c.display, c.valueStr, false));
    std::string html, plain;
    view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
    EXPECT_NE(html.find(std::string("<b>Nazwa</b> <A class=\"Defined\" href=\"std://0\"><i>od</i> ") + c.link + "</a>\n"),
              std::string::npos) << html;
    view.GenerateContentsPlain(CParamsHtmlCtrl::kHomeUrl, plain);
    EXPECT_EQ(plain, std::string("<b>Nazwa</b> <i>od</i> ") + (*c.display ? c.display : c.valueStr));
  }
}

TEST(ParamsPage, StyleValuesThatAreNotColoursOrFontsGiveTheDefaults) {
  struct Case {
    const char* color;
    const char* family;
    const char* size;
    bool taken;
  } cases[] = {
      {"#00ff7F", "Segoe UI, Arial, sans-serif", "8pt", true},
      {"navy", "MS Sans Serif", "1.25em", true},
      {"red}</STYLE><script>x()</script>", "Tahoma\";background:url(x)", "9pt;color:red", false},
      {"#12345", "Arial;", "pt", false},
      {"#1234567", "\"Arial\"", "9.pt", false},
      {"", "", "", false},
      {"rgb(1,2,3)", "Arial<", "10px\"", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.color);
    CParamsHtmlCtrl view;
    view.SetColors(c.color, c.color);
    view.SetFont(c.family, c.size);
    EXPECT_EQ(view.DefinedColor(), c.taken ? c.color : CParamsHtmlCtrl::kDefaultDefinedColor);
    EXPECT_EQ(view.UndefinedColor(), c.taken ? c.color : CParamsHtmlCtrl::kDefaultUndefinedColor);
    EXPECT_EQ(view.FontFamily(), c.taken ? c.family : CParamsHtmlCtrl::kDefaultFontFamily);
    EXPECT_EQ(view.FontSize(), c.taken ? c.size : CParamsHtmlCtrl::kDefaultFontSize);
  }
}

}  // namespace
