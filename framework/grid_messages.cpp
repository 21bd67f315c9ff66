#include "framework/grid_messages.h"

namespace varion {

std::optional<std::string> GridMessageCounts::Add(std::uint32_t ctrlId, const ValidatableGrid::MessageData& message) {
  auto& bag = m_messages[ctrlId];
  bag.insert(message);
  if (message.icon != ValidatableGrid::kIconError) return std::nullopt;
  const std::size_t n = bag.count(message);
  if (n >= 2 && !message.countedText.empty()) return CountedText(message.countedText, n);
  return message.text;
}

void GridMessageCounts::Remove(std::uint32_t ctrlId) { m_messages.erase(ctrlId); }

std::size_t GridMessageCounts::Count(std::uint32_t ctrlId, const ValidatableGrid::MessageData& message) const {
  auto it = m_messages.find(ctrlId);
  return it == m_messages.end() ? 0 : it->second.count(message);
}

std::vector<GridMessageCounts::Entry> GridMessageCounts::Distinct() const {
  std::vector<Entry> out;
  for (const auto& [id, bag] : m_messages)
    for (auto it = bag.begin(); it != bag.end(); it = bag.upper_bound(*it)) out.push_back({id, *it, bag.count(*it)});
  return out;
}

std::vector<GridMessageCounts::Entry> GridMessageCounts::Warnings() const {
  std::vector<Entry> out;
  for (auto& e : Distinct())
    if (e.data.icon != ValidatableGrid::kIconError) out.push_back(std::move(e));
  return out;
}

std::string CountedText(const std::string& format, std::size_t count) {
  const std::string number = std::to_string(count);
  std::string out;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] == '%' && i + 1 < format.size() && format[i + 1] == 'd') {
      out += number;
      ++i;
    } else {
      out += format[i];
    }
  }
  return out;
}

}  // namespace varion
