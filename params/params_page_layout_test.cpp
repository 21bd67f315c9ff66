#include "params/params_page_layout.h"

#include <gtest/gtest.h>

#include "params/params_html_ctrl.h"

namespace {

using varion::params::FlowRuns;
using varion::params::PageRuns;

TEST(ParamsPageLayout, RunsOfTheGeneratedPageFlowIntoLines) {
  CParamsHtmlCtrl view;
  view.GetParams().Add(ZestParams::ZestParamsDate().SetLabel("Okres").SetDisplayValue("maj 2024").SetEmpty(false));
  view.GetParams().Add(ZestParams::ZestParamsString().SetLabel("Nazwa  sklepu").SetStandard(false));
  view.GetParams().Add(ZestParams::ZestParamsCurrency().SetLabel("Kwota").SetValuePrefix("od").SetValueStr("10 do 20").SetEmpty(false));
  std::string html;
  view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
  const auto runs = PageRuns(html);
  struct Run {
    const char* text;
    const char* href;
    bool defined;
  } expected[] = {{"Okres ", "", false},        {"maj 2024", "std://0", true}, {", Nazwa sklepu ", "", false},
                  {"(nie podano wartości)", "self://1", false}, {", Kwota ", "", false}, {"od 10 do 20", "std://2", true}};
  ASSERT_EQ(runs.size(), std::size(expected));
  for (std::size_t i = 0; i < runs.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(runs[i].text, expected[i].text);
    EXPECT_EQ(runs[i].href, expected[i].href);
    EXPECT_EQ(runs[i].defined, expected[i].defined);
  }

  // One pixel a character: lines of 20 break at blanks, a blank never opens a line, and a link's
  // words on one line make one box.
  const auto boxes = FlowRuns(runs, 20, 10, [](std::string_view t) { return static_cast<int>(t.size()); });
  struct Box {
    int run;
    const char* text;
    int x, y;
  } lines[] = {{0, "Okres ", 0, 0},  {1, "maj 2024", 6, 0},          {2, ", ", 14, 0},       {2, "Nazwa sklepu ", 0, 10},
               {3, "(nie ", 13, 10}, {3, "podano wartości)", 0, 20}, {4, ", ", 16, 20},      {4, "Kwota ", 0, 30},
               {5, "od 10 do 20", 6, 30}};
  ASSERT_EQ(boxes.size(), std::size(lines));
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(boxes[i].run, lines[i].run);
    EXPECT_EQ(boxes[i].text, lines[i].text);
    EXPECT_EQ(boxes[i].x, lines[i].x);
    EXPECT_EQ(boxes[i].y, lines[i].y);
    EXPECT_LE(boxes[i].x + static_cast<int>(boxes[i].text.size()), 21);  // a trailing blank may overhang
  }
}

}  // namespace
