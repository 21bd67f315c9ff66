// Helpers shared by the test programs, native and under Wine: temporary folders and the folder
// for files people look at.
#pragma once

#include <string>

namespace varion::testing {

// A fresh folder under the system's temporary directory, removed with everything in it.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

// The repository's out/ folder (created when missing), where tests leave files for people to
// look at, such as screenshots.
std::string OutDir();

}  // namespace varion::testing
