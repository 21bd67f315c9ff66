// The native suite of simple_log_test.cpp, run under Wine.
#include "diagnostics/simple_log_test.cpp"
