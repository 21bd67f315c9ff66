// A host application in miniature: links varion.dll through its import library, as the business
// applications do, and calls exported functions. Exit code 0 when every answer is right.
#include <cstdio>

#include "base/amount.h"
#include "base/sql_literal.h"
#include "base/text.h"

int main() {
  int failures = 0;
  auto check = [&](bool ok, const char* what) {
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    failures += !ok;
  };
  check(varion::SqlOkString("O'Brien") == "O''Brien", "SqlOkString through the DLL");
  check(varion::SqlOkCurrency(-125000) == "-12.5", "SqlOkCurrency through the DLL");
  check(varion::text::Cp1250ToUtf16("\xA3") == u"\u0141", "code page conversion through the DLL");
  check(varion::Amount::Parse("1 234,5", varion::NumberFormat{}).Raw() == 12345000, "Amount::Parse through the DLL");
  std::printf("%d passed, %d failed\n", 4 - failures, failures);
  return failures == 0 ? 0 : 1;
}
