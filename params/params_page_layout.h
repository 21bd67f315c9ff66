// The parameter page as the window draws it where no HTML engine is at hand: the body of the page
// read back into runs of plain text and links, and those runs flowed into lines the way a browser
// flows inline text (blanks collapsed, lines broken at blanks, a word longer than a line kept whole).
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"

namespace varion::params {

struct PageRun {
  std::string text;  // code page 1250, blanks collapsed
  std::string href;  // the link's address; empty for plain text
  bool defined = false;  // a link of class "Defined" (a parameter with a value)
};

// The runs of the page's body. Understands what GenerateContentsHtml writes: text with the
// escapes &amp; &lt; &gt; &quot;, <A class=... href="...">...</a>, and ignores any other tag.
VARION_API std::vector<PageRun> PageRuns(std::string_view html);

struct PageBox {
  int run;           // index into the runs
  std::string text;  // the part of the run on this line
  int x, y, width;   // pixels; y is the line's top
};

// Lays the runs out in lines `width` pixels wide and `lineHeight` high; `measure` gives the width
// of a text in pixels.
VARION_API std::vector<PageBox> FlowRuns(const std::vector<PageRun>& runs, int width, int lineHeight,
                              const std::function<int(std::string_view)>& measure);

}  // namespace varion::params
