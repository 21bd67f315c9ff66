// The native suite of file_logger_sink_test.cpp, run under Wine.
#include "diagnostics/file_logger_sink_test.cpp"
