// The native suite of simple_log_deprecated_test.cpp, run under Wine.
#include "diagnostics/simple_log_deprecated_test.cpp"
