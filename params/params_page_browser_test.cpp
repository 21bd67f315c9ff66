// The parameter page in a real browser: headless Chromium loads the page as written (code page
// 1250, charset declared) inside a probe page that reports what a person sees: the text of the
// body, each link's text, class, address and computed colour. A screenshot goes to out/.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "params/params_html_ctrl.h"
#include "tests/native_support.h"

namespace {

namespace fs = std::filesystem;
using varion::text::Cp1250ToUtf8;

std::string FindChromium() {
  for (const char* path : {"/usr/bin/chromium", "/usr/bin/chromium-browser"})
    if (fs::exists(path)) return path;
  return {};
}

// Runs a command and gives what it wrote to standard output.
std::string RunCommand(const std::string& command) {
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return out;
  std::array<char, 4096> buf;
  for (std::size_t n; (n = fread(buf.data(), 1, buf.size(), pipe)) > 0;) out.append(buf.data(), n);
  pclose(pipe);
  return out;
}

void WriteFile(const fs::path& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

// The probe reports one line per fact, fields separated by "|", inside <pre id="seen">.
const char kProbe[] = R"(<!DOCTYPE html><html><head><meta charset="utf-8"></head><body>
<iframe id="page" src="page.html" style="width:700px;height:200px"></iframe><pre id="seen"></pre>
<script>
document.getElementById('page').addEventListener('load', () => {
  const doc = document.getElementById('page').contentDocument;
  const lines = ['charset|' + doc.characterSet, 'title|' + doc.title, 'text|' + doc.body.innerText.trim(),
                 'tags|' + Array.from(doc.body.querySelectorAll('*'), e => e.tagName).join(',')];
  for (const a of doc.querySelectorAll('a'))
    lines.push(['link', a.className, a.getAttribute('href'), getComputedStyle(a).color, a.innerText.trim()].join('|'));
  document.getElementById('seen').textContent = lines.join('\n');
});
</script></body></html>)";

std::vector<std::string> SeenLines(const std::string& dom) {
  std::vector<std::string> lines;
  const std::size_t start = dom.find("<pre id=\"seen\">"), end = dom.find("</pre>", start);
  if (start == std::string::npos || end == std::string::npos) return lines;
  std::istringstream in(dom.substr(start + 15, end - start - 15));
  // The dump serialises the probe's text, escaping what the page's values may hold.
  for (std::string line; std::getline(in, line);) {
    std::string text;
    for (std::size_t at = 0; at < line.size();) {
      bool replaced = false;
      for (const auto& [escape, c] : {std::pair<std::string_view, char>{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}})
        if (std::string_view(line).substr(at, escape.size()) == escape) {
          text += c;
          at += escape.size();
          replaced = true;
          break;
        }
      if (!replaced) text += line[at++];
    }
    lines.push_back(text);
  }
  return lines;
}

TEST(ParamsPageInBrowser, ShowsLabelsLinksColoursAndPolishLetters) {
  const std::string chromium = FindChromium();
  if (chromium.empty()) GTEST_SKIP() << "chromium is not installed (Debian package chromium): the page is not shown";

  CParamsHtmlCtrl view;
  view.SetColors("#1F3F9F", "#B02020");
  view.SetHighlight(true);
  CArrZestParams& params = view.GetParams();
  params.Add(ZestParams::ZestParamsDate().SetLabel("Okres").SetDisplayValue("bieżący miesiąc").SetEmpty(false));
  params.Add(ZestParams::ZestParamsSelectionDbObject().SetLabel("Magazyn").SetValueStr("Sklep Łódź Piotrkowska").SetEmpty(false));
  params.Add(ZestParams::ZestParamsString().SetLabel("Ukryty").SetVisible(false));
  params.Add(ZestParams::ZestParamsLookupMultisel().SetLabel("Kontrahenci").SetStandard(false));
  params.Add(ZestParams::ZestParamsCurrency().SetLabel("Kwota").SetValuePrefix("od").SetValueStr("10,00 zł do 20,00 zł").SetEmpty(false));
  params.Add(ZestParams::ZestParamsString().SetLabel("Nazwa zaczyna się od").SetValueStr("Żółw").SetEmpty(false));

  varion::testing::TempDir dir;
  std::string html, plain;
  view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
  view.GenerateContentsPlain(CParamsHtmlCtrl::kHomeUrl, plain);
  WriteFile(fs::path(dir.Path()) / "page.html", html);
  WriteFile(fs::path(dir.Path()) / "probe.html", kProbe);

  const std::string common = chromium +
                             " --headless --no-sandbox --disable-gpu --no-first-run --disable-background-networking"
                             " --disable-component-update --disable-sync --allow-file-access-from-files"
                             " --user-data-dir=";
  const std::string dom =
      RunCommand("timeout 120 " + common + dir.Path() + "/profile1 --dump-dom file://" + dir.Path() + "/probe.html 2>/dev/null");
  const auto seen = SeenLines(dom);
  // The whole text as shown: the lines of the plain text, run together as the browser flows them.
  std::string shown = plain;
  for (std::size_t at; (at = shown.find('\n')) != std::string::npos;) shown.replace(at, 1, ", ");
  const std::string expected[] = {
      "charset|windows-1250",
      "title|Parametry zestawienia",
      "text|" + shown,
      "tags|A,A,A,A,A",
      "link|Defined|std://0|rgb(31, 63, 159)|bieżący miesiąc",
      "link|Defined|std://1|rgb(31, 63, 159)|Sklep Łódź Piotrkowska",
      "link|Undefined|self://3|rgb(176, 32, 32)|(nie podano wartości)",
      "link|Defined|std://4|rgb(31, 63, 159)|od 10,00 zł do 20,00 zł",
      "link|Defined|std://5|rgb(31, 63, 159)|Żółw",
  };
  ASSERT_EQ(seen.size(), std::size(expected)) << dom;
  for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_EQ(seen[i], Cp1250ToUtf8(expected[i]));

  const std::string shot = varion::testing::OutDir() + "/params-page.png";
  fs::remove(shot);
  RunCommand("timeout 120 " + common + dir.Path() + "/profile2 --hide-scrollbars --window-size=720,160 --screenshot=" + shot +
      " file://" + dir.Path() + "/page.html >/dev/null 2>&1");
  std::ifstream png(shot, std::ios::binary);
  char signature[8] = {};
  png.read(signature, 8);
  EXPECT_EQ(std::string(signature + 1, 3), "PNG") << "no screenshot at " << shot;
}

// Values holding markup, an entity and a forged link: the browser shows each as the text typed, in
// its own link, and builds no element from it; the label's own <b> stays markup.
TEST(ParamsPageInBrowser, ShownValuesStayText) {
  const std::string chromium = FindChromium();
  if (chromium.empty()) GTEST_SKIP() << "chromium is not installed (Debian package chromium): the page is not shown";

  const std::string values[] = {"Żółw & Spółka", "</a><A href=\"std://1\">drugi", "<script>document.title='x'</script>",
                                "<img src=x onerror=\"document.title='y'\">", "&quot; &amp;lt;"};
  CParamsHtmlCtrl view;
  view.SetColors("red}</STYLE><script>document.title='z'</script>", "#B02020");
  view.SetFont("x\";background:url(y)", "9pt");
  for (const std::string& v : values)
    view.GetParams().Add(ZestParams::ZestParamsString().SetLabel("<b>K</b>").SetDisplayValue(v).SetEmpty(false));

  varion::testing::TempDir dir;
  std::string html;
  view.GenerateContentsHtml(CParamsHtmlCtrl::kHomeUrl, html);
  WriteFile(fs::path(dir.Path()) / "page.html", html);
  WriteFile(fs::path(dir.Path()) / "probe.html", kProbe);
  const std::string dom = RunCommand("timeout 120 " + chromium +
                                     " --headless --no-sandbox --disable-gpu --no-first-run --disable-background-networking"
                                     " --disable-component-update --disable-sync --allow-file-access-from-files"
                                     " --user-data-dir=" + dir.Path() + "/profile --dump-dom file://" + dir.Path() +
                                     "/probe.html 2>/dev/null");
  const auto seen = SeenLines(dom);
  std::vector<std::string> expected = {"charset|windows-1250", "title|Parametry zestawienia"};
  std::string text, tags;
  for (std::size_t i = 0; i < std::size(values); ++i) {
    text += (i ? ", K " : "K ") + values[i];
    tags += i ? ",B,A" : "B,A";
  }
  expected.push_back("text|" + text);
  expected.push_back("tags|" + tags);
  for (std::size_t i = 0; i < std::size(values); ++i)
    expected.push_back("link|Defined|std://" + std::to_string(i) + "|rgb(31, 63, 159)|" + values[i]);
  ASSERT_EQ(seen.size(), expected.size()) << dom;
  for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_EQ(seen[i], Cp1250ToUtf8(expected[i]));
}

}  // namespace
