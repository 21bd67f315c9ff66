// The platform's FormatMessageW against the portable formatter on the same table.
#include <gtest/gtest.h>

#include "framework/message_template.h"
#include "framework/message_template_cases.h"
#include "framework/message_template_win.h"

namespace varion {
namespace {

TEST(PlatformMessageTemplate, AgreesWithThePortableFormatter) {
  for (const auto& c : testing::MessageTemplateCases()) {
    SCOPED_TRACE(c.tmpl);
    std::string platform = "unchanged", portable = "unchanged";
    const bool platformOk = PlatformFormatMessage(c.tmpl, c.args, platform);
    const bool portableOk = FormatMessageTemplate(c.tmpl, c.args, portable);
    EXPECT_EQ(platformOk, c.expected.has_value());
    EXPECT_EQ(platformOk, portableOk);
    EXPECT_EQ(platform, portable);
    EXPECT_EQ(platform, c.expected.value_or("unchanged"));
  }
}

}  // namespace
}  // namespace varion
