// Window placement remembered in the application's profile: five integers under the dialog's
// profile section, and the rules that decide whether a stored rectangle can be used again on
// the monitors of today, pulled back onto one of them, or dropped for the default size.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"
#include "framework/flex_layout.h"

namespace varion {

// The application's profile: sections of named integers (an INI file, the registry, or memory).
class VARION_API IProfileStore {
 public:
  virtual ~IProfileStore() = default;
  virtual std::optional<int> GetInt(std::string_view section, std::string_view entry) const = 0;
  virtual bool WriteInt(std::string_view section, std::string_view entry, int value) = 0;
};

class VARION_API MemoryProfile final : public IProfileStore {
 public:
  std::optional<int> GetInt(std::string_view section, std::string_view entry) const override;
  bool WriteInt(std::string_view section, std::string_view entry, int value) override;

 private:
  std::map<std::pair<std::string, std::string>, int> m_values;
};

// The profile every dialog uses; none until the host sets one, and then placements are neither
// saved nor restored.
VARION_API void SetApplicationProfile(std::shared_ptr<IProfileStore> profile);
VARION_API std::shared_ptr<IProfileStore> GetApplicationProfile();

// The normal-state rectangle in screen coordinates, and whether the window was maximised.
struct StoredPlacement {
  bool maximized = false;
  int width = 0, height = 0, left = 0, top = 0;
  bool operator==(const StoredPlacement&) const = default;
};

// Entries in the order they are written.
inline constexpr const char* kPlacementEntries[] = {"Maximized", "Width", "Height", "Left", "Top"};

VARION_API void WritePlacement(IProfileStore& profile, std::string_view section, const StoredPlacement& placement);
// Nothing when any of the five values is missing.
VARION_API std::optional<StoredPlacement> ReadPlacement(const IProfileStore& profile, std::string_view section);

// The part of a window that must lie on some monitor's work area for the user to grab it.
inline constexpr int kMinVisibleWidth = 40;
inline constexpr int kMinVisibleHeight = 20;
// Below this a stored size is taken for damage rather than a choice.
inline constexpr int kMinWindowSize = 40;

// A size is absurd below the minimum tracking size (and never below kMinWindowSize) or beyond
// the box around all work areas.
VARION_API bool IsValidWindowSize(int width, int height, const std::vector<FlexRect>& workAreas, int minWidth = 0,
                                  int minHeight = 0);
// Coordinates a window can have; -32000 is where the system parks minimised windows.
VARION_API bool IsValidWindowPos(int left, int top);
// Enough of the rectangle lies on one work area to be seen and grabbed.
VARION_API bool IsValidWindowRect(const FlexRect& rect, const std::vector<FlexRect>& workAreas);

// Moves a partly visible rectangle wholly onto the work area it overlaps most, shrinking it
// only when it is larger than that area.
VARION_API FlexRect PullOntoWorkArea(const FlexRect& rect, const std::vector<FlexRect>& workAreas);

// The rectangle to restore from a stored placement, or nothing when the default size must be
// used instead (absurd size or position, or nothing of it on any monitor).
VARION_API std::optional<FlexRect> RestoredRect(const StoredPlacement& placement,
                                                const std::vector<FlexRect>& workAreas, int minWidth = 0,
                                                int minHeight = 0);

}  // namespace varion
