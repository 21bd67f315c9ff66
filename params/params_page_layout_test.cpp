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
  // Runs as "text>href" ("*" for a Defined link), then boxes as "y:x:text" at one pixel a character
  // in lines of 20: breaks at blanks, no blank opening a line, a link's words on a line in one box.
  std::string runs, boxes;
  for (const auto& r : PageRuns(html)) runs += "[" + r.text + ">" + r.href + (r.defined ? "*]" : "]");
  EXPECT_EQ(runs, "[Okres >][maj 2024>std://0*][, Nazwa sklepu >][(nie podano wartości)>self://1][, Kwota >]"
                  "[od 10 do 20>std://2*]");
  for (const auto& b : FlowRuns(PageRuns(html), 20, 10, [](std::string_view t) { return static_cast<int>(t.size()); }))
    boxes += std::to_string(b.y) + ":" + std::to_string(b.x) + ":" + b.text + "|";
  EXPECT_EQ(boxes, "0:0:Okres |0:6:maj 2024|0:14:, |10:0:Nazwa sklepu |10:13:(nie |20:0:podano wartości)|20:16:, |"
                   "30:0:Kwota |30:6:od 10 do 20|");
}

}  // namespace
