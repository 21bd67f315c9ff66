#include "dialogs/message_box_buttons.h"

namespace CMB {
namespace {

constexpr int kFirstButtonIdc = 30105;

// System icon ordinals (IDI_INFORMATION, IDI_WARNING, IDI_ERROR, IDI_QUESTION), written as
// numbers so that this file needs no system header.
struct IconOfType {
  MessageBoxType type;
  int icon;
};
constexpr IconOfType kIcons[] = {
    {MessageBoxType::Information, 32516},
    {MessageBoxType::Warning, 32515},
    {MessageBoxType::Error, 32513},
    {MessageBoxType::Question, 32514},
};

}  // namespace

std::optional<int> GetButtonIDC(ButtonId id) {
  const int n = static_cast<int>(id);
  if (n < 0 || n > 2) return std::nullopt;
  return kFirstButtonIdc + n;
}

std::optional<ButtonId> ButtonFromIDC(int controlId) {
  const int n = controlId - kFirstButtonIdc;
  if (n < 0 || n > 2) return std::nullopt;
  return static_cast<ButtonId>(n);
}

ButtonSetting ButtonSetting::HelpButton() {
  return {"Pomoc", IsVisible(true), IsDefault(false), ShouldSaveData(false), IsHelpButton(true)};
}

ButtonsSetting InitButtonsSetting() {
  return {
      {ButtonId::Ok, {"&OK", IsVisible(true), IsDefault(true), ShouldSaveData(true), IsHelpButton(false)}},
      {ButtonId::No, {"&Nie", IsVisible(true), IsDefault(false), ShouldSaveData(true), IsHelpButton(false)}},
      {ButtonId::Cancel, {"&Anuluj", IsVisible(true), IsDefault(false), ShouldSaveData(false), IsHelpButton(false)}},
  };
}

std::optional<int> GetIconType(MessageBoxType type) {
  for (const auto& e : kIcons)
    if (e.type == type) return e.icon;
  return std::nullopt;
}

int GetVisibleButtonsNumber(const ButtonsSetting& buttons) {
  int n = 0;
  for (const auto& [id, setting] : buttons)
    if (GetButtonIDC(id) && setting.visible) ++n;
  return n;
}

ClickOutcome DecideButtonClick(const ButtonsSetting& buttons, ButtonId id) {
  ClickOutcome out;
  const auto it = buttons.find(id);
  if (it == buttons.end() || !it->second.visible || !GetButtonIDC(id)) return out;
  if (it->second.helpButton) {
    out.openHelp = true;
    return out;
  }
  out.saveData = bool(it->second.saveData) && id != ButtonId::Cancel;
  out.endDialog = true;
  out.result = id;
  return out;
}

std::optional<ButtonId> EscapeButton(const ButtonsSetting& buttons) {
  const auto it = buttons.find(ButtonId::Cancel);
  if (it == buttons.end() || !it->second.visible || it->second.helpButton) return std::nullopt;
  return ButtonId::Cancel;
}

}  // namespace CMB
