#include "framework/window_placement.h"

#include <algorithm>
#include <climits>
#include <mutex>

namespace varion {
namespace {

std::mutex g_profileMutex;
std::shared_ptr<IProfileStore> g_profile;

long long Overlap(const FlexRect& a, const FlexRect& b) {
  const long long w = std::min(a.right, b.right) - std::max(a.left, b.left);
  const long long h = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
  return w > 0 && h > 0 ? w * h : 0;
}

// Shifts [lo, hi) into [areaLo, areaHi), cutting it when it is longer.
void PullAxis(int& lo, int& hi, int areaLo, int areaHi) {
  const int length = std::min(hi - lo, areaHi - areaLo);
  if (lo < areaLo) lo = areaLo;
  if (lo + length > areaHi) lo = areaHi - length;
  hi = lo + length;
}

}  // namespace

std::optional<int> MemoryProfile::GetInt(std::string_view section, std::string_view entry) const {
  auto it = m_values.find({std::string(section), std::string(entry)});
  if (it == m_values.end()) return std::nullopt;
  return it->second;
}

bool MemoryProfile::WriteInt(std::string_view section, std::string_view entry, int value) {
  m_values[{std::string(section), std::string(entry)}] = value;
  return true;
}

void SetApplicationProfile(std::shared_ptr<IProfileStore> profile) {
  std::lock_guard lock(g_profileMutex);
  g_profile = std::move(profile);
}

std::shared_ptr<IProfileStore> GetApplicationProfile() {
  std::lock_guard lock(g_profileMutex);
  return g_profile;
}

void WritePlacement(IProfileStore& profile, std::string_view section, const StoredPlacement& p) {
  const int values[] = {p.maximized ? 1 : 0, p.width, p.height, p.left, p.top};
  for (std::size_t i = 0; i < std::size(values); ++i) profile.WriteInt(section, kPlacementEntries[i], values[i]);
}

std::optional<StoredPlacement> ReadPlacement(const IProfileStore& profile, std::string_view section) {
  int values[std::size(kPlacementEntries)];
  for (std::size_t i = 0; i < std::size(values); ++i) {
    auto v = profile.GetInt(section, kPlacementEntries[i]);
    if (!v) return std::nullopt;
    values[i] = *v;
  }
  return StoredPlacement{values[0] != 0, values[1], values[2], values[3], values[4]};
}

bool IsValidWindowSize(int width, int height, const std::vector<FlexRect>& workAreas, int minWidth, int minHeight) {
  if (workAreas.empty()) return false;
  if (width < std::max(minWidth, kMinWindowSize) || height < std::max(minHeight, kMinWindowSize)) return false;
  FlexRect box = workAreas.front();
  for (const auto& a : workAreas) {
    box.left = std::min(box.left, a.left);
    box.top = std::min(box.top, a.top);
    box.right = std::max(box.right, a.right);
    box.bottom = std::max(box.bottom, a.bottom);
  }
  return width <= box.right - box.left && height <= box.bottom - box.top;
}

bool IsValidWindowPos(int left, int top) {
  constexpr int kLimit = 32000;
  return left > -kLimit && left < kLimit && top > -kLimit && top < kLimit;
}

bool IsValidWindowRect(const FlexRect& rect, const std::vector<FlexRect>& workAreas) {
  for (const auto& a : workAreas) {
    const int w = std::min(rect.right, a.right) - std::max(rect.left, a.left);
    const int h = std::min(rect.bottom, a.bottom) - std::max(rect.top, a.top);
    if (w >= kMinVisibleWidth && h >= kMinVisibleHeight) return true;
  }
  return false;
}

FlexRect PullOntoWorkArea(const FlexRect& rect, const std::vector<FlexRect>& workAreas) {
  if (workAreas.empty()) return rect;
  const FlexRect* best = &workAreas.front();
  for (const auto& a : workAreas)
    if (Overlap(rect, a) > Overlap(rect, *best)) best = &a;
  FlexRect r = rect;
  PullAxis(r.left, r.right, best->left, best->right);
  PullAxis(r.top, r.bottom, best->top, best->bottom);
  return r;
}

std::optional<FlexRect> RestoredRect(const StoredPlacement& p, const std::vector<FlexRect>& workAreas, int minWidth,
                                     int minHeight) {
  if (!IsValidWindowSize(p.width, p.height, workAreas, minWidth, minHeight)) return std::nullopt;
  if (!IsValidWindowPos(p.left, p.top)) return std::nullopt;
  const FlexRect rect{p.left, p.top, p.left + p.width, p.top + p.height};
  if (!IsValidWindowRect(rect, workAreas)) return std::nullopt;
  return PullOntoWorkArea(rect, workAreas);
}

}  // namespace varion
