// Shared helpers of the native test programs.
#include "tests/native_support.h"

#include <filesystem>
#include <random>

namespace varion::testing {

TempDir::TempDir() {
  std::random_device rd;
  auto base = std::filesystem::temp_directory_path();
  for (;;) {
    auto p = base / ("varion-" + std::to_string(rd()));
    if (std::filesystem::create_directory(p)) {
      m_path = p.string();
      break;
    }
  }
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(m_path, ec);
}

std::string OutDir() {
  const std::filesystem::path out = std::filesystem::path(VARION_SOURCE_DIR) / "out";
  std::filesystem::create_directories(out);
  return out.string();
}

}  // namespace varion::testing
