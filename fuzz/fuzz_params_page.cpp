// The parameter page built from hostile values, colours and fonts: the view's own reading of the
// page finds exactly one link per visible parameter, in order, whatever the values hold.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "params/params_html_ctrl.h"
#include "params/params_page_layout.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  // Pieces separated by byte 1: the colour, the font family, then one value per parameter; a
  // value's first byte decides whether the parameter is visible. Values start with a letter, so
  // that no link is made only of blanks (which a browser shows as nothing, too).
  std::vector<std::string> pieces(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == 1) pieces.emplace_back();
    else pieces.back() += static_cast<char>(data[i]);
  }
  while (pieces.size() < 2) pieces.emplace_back();
  CParamsHtmlCtrl view;
  view.SetColors(pieces[0], pieces[0]);
  view.SetFont(pieces[1], pieces[0]);
  std::vector<std::string> hrefs;
  for (std::size_t i = 2; i < pieces.size() && i < 66; ++i) {
    const bool visible = pieces[i].empty() || pieces[i][0] % 4 != 0;
    view.GetParams().Add(
        ZestParams::ZestParamsString().SetLabel("P").SetDisplayValue("v" + pieces[i]).SetEmpty(false).SetVisible(visible));
    if (visible) hrefs.push_back("std://" + std::to_string(i - 2));
  }
  std::string html;
  view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
  std::vector<std::string> links;
  for (const auto& run : varion::params::PageRuns(html))
    if (!run.href.empty()) links.push_back(run.href);
  if (links != hrefs) std::abort();
  return 0;
}
