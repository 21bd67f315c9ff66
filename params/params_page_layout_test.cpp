#include "params/params_page_layout.h"

#include <gtest/gtest.h>

#include <random>

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

// Values made of the characters that matter to HTML: the view's own reading of the page finds one
// link per visible parameter, each reading exactly its value, whatever the values hold.
TEST(ParamsPageLayout, HostileValuesNeverAddLinks) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 rng(seed);
  const std::string alphabet = "<>&\"'/=aA;#:ółx";
  const char* const pieces[] = {"</a>", "<A href=\"std://1\">", "&amp;", "&quot;", "<a", "&lt", "\">"};
  for (int round = 0; round < 300; ++round) {
    CParamsHtmlCtrl view;
    std::vector<std::string> shown;
    const int count = 1 + static_cast<int>(rng() % 5);
    for (int i = 0; i < count; ++i) {
      std::string value;
      for (int n = static_cast<int>(rng() % 12); n > 0; --n)
        value += rng() % 3 ? std::string(1, alphabet[rng() % alphabet.size()]) : pieces[rng() % std::size(pieces)];
      const bool visible = rng() % 4 != 0;
      view.GetParams().Add(ZestParams::ZestParamsString().SetLabel("P").SetDisplayValue(value).SetEmpty(false).SetVisible(visible));
      if (visible) shown.push_back(value.empty() ? "(nie podano wartości)" : value);
    }
    std::string html;
    view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
    std::vector<std::string> links;
    for (const auto& r : PageRuns(html))
      if (!r.href.empty()) links.push_back(r.text);
    ASSERT_EQ(links, shown) << html;
  }
}

TEST(ParamsPageLayout, MegabyteLabelAndValue) {
  CParamsHtmlCtrl view;
  const std::string label(1 << 20, 'L'), value = std::string(1 << 20, '<') + "&";
  view.GetParams().Add(ZestParams::ZestParamsString().SetLabel(label).SetDisplayValue(value).SetEmpty(false));
  std::string html;
  view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
  const auto runs = PageRuns(html);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_TRUE(runs[0].text == label + " " && runs[1].text == value && runs[1].href == "std://0");
}

}  // namespace
