// The application's profile as an INI file, the way host applications keep window placements
// and choices of their users.
#pragma once

#include <string>

#include "base/export.h"
#include "framework/window_placement.h"

namespace varion {

class VARION_API IniFileProfile final : public IProfileStore {
 public:
  explicit IniFileProfile(std::wstring path) : m_path(std::move(path)) {}
  std::optional<int> GetInt(std::string_view section, std::string_view entry) const override;
  bool WriteInt(std::string_view section, std::string_view entry, int value) override;
  const std::wstring& Path() const { return m_path; }

 private:
  std::wstring m_path;
};

}  // namespace varion
