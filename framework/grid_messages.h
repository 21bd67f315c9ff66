// Messages that grids embedded in a dialog report about their cells, counted per control.
// Identical messages add up (a grid reports "no price" once per faulty row); those carrying the
// error icon also become the control's error record, with a text that tells how many.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/export.h"

namespace ValidatableGrid {

// Icon resource identifiers as the system numbers them.
inline constexpr unsigned kIconError = 32513;
inline constexpr unsigned kIconQuestion = 32514;
inline constexpr unsigned kIconWarning = 32515;
inline constexpr unsigned kIconInformation = 32516;

struct MessageData {
  std::string text;  // the message as one occurrence reads
  // For a counted message: the text from two occurrences on, with "%d" where the count goes
  // ("Brak ceny w %d pozycjach."). Empty for a message that is never counted.
  std::string countedText;
  unsigned icon = kIconInformation;
  int type = 0;             // the kind of info tip that shows it
  unsigned templateId = 0;  // the dialog template whose tip shows it
  auto operator<=>(const MessageData&) const = default;
};

}  // namespace ValidatableGrid

namespace varion {

class VARION_API GridMessageCounts {
 public:
  struct Entry {
    std::uint32_t ctrlId;
    ValidatableGrid::MessageData data;
    std::size_t count;
  };

  // Counts the message for the control. For a message with the error icon, returns the text of
  // the control's error record: the message's own text, or its counted text from two on.
  std::optional<std::string> Add(std::uint32_t ctrlId, const ValidatableGrid::MessageData& message);
  void Remove(std::uint32_t ctrlId);
  void Clear() { m_messages.clear(); }

  std::size_t Count(std::uint32_t ctrlId, const ValidatableGrid::MessageData& message) const;
  // Every distinct message once with its count, by control and then by message.
  std::vector<Entry> Distinct() const;
  // The same, only messages without the error icon.
  std::vector<Entry> Warnings() const;

 private:
  std::map<std::uint32_t, std::multiset<ValidatableGrid::MessageData>> m_messages;
};

// The counted text with the count in place of its "%d" (every occurrence).
VARION_API std::string CountedText(const std::string& format, std::size_t count);

}  // namespace varion
