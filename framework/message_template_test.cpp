#include "framework/message_template.h"

#include <gtest/gtest.h>

#include "framework/message_template_cases.h"

namespace varion {
namespace {

TEST(MessageTemplateTest, FormatsTheSharedTable) {
  for (const auto& c : testing::MessageTemplateCases()) {
    SCOPED_TRACE(c.tmpl);
    std::string out = "unchanged";
    const bool ok = FormatMessageTemplate(c.tmpl, c.args, out);
    ASSERT_EQ(ok, c.expected.has_value());
    EXPECT_EQ(out, c.expected.value_or("unchanged"));
  }
}

TEST(MessageTemplateTest, CountsTheHighestArgument) {
  struct Case {
    const char* tmpl;
    int count;
  } cases[] = {{"stały tekst", 0}, {"%1!ls!, %2!ls! %%", 2}, {"%3 %1", 3}, {"%12!ls!", 12}, {"%1!x!", -1}, {"%", -1}};
  for (const auto& c : cases) EXPECT_EQ(MessageTemplateArgCount(c.tmpl), c.count) << c.tmpl;
}

}  // namespace
}  // namespace varion
