// The buttons of CMB::CustomizableMessageBox as data: which three there are, how each is set up
// (caption and four tagged flags), the box kinds and their icons, and what a click on a button
// does. Portable, so that the rules are tested without a window.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "base/export.h"

namespace CMB {

// The three buttons, left to right. Their numbers are what Show returns.
enum class ButtonId { Ok = 0, No = 1, Cancel = 2 };

// Dialog control identifiers of the buttons: 30105, 30106, 30107; none for any other value.
VARION_API std::optional<int> GetButtonIDC(ButtonId id);
// The button whose control identifier this is.
VARION_API std::optional<ButtonId> ButtonFromIDC(int controlId);

// A boolean that converts from and to nothing implicitly, one type per meaning, so that the
// four flags of a ButtonSetting cannot be passed in the wrong order.
template <class Tag>
struct TaggedBool {
  constexpr TaggedBool() = default;
  constexpr explicit TaggedBool(bool v) : value(v) {}
  constexpr explicit operator bool() const { return value; }
  constexpr bool operator==(const TaggedBool&) const = default;
  bool value = false;
};
using IsVisible = TaggedBool<struct IsVisibleTag>;
using IsDefault = TaggedBool<struct IsDefaultTag>;
using ShouldSaveData = TaggedBool<struct ShouldSaveDataTag>;
using IsHelpButton = TaggedBool<struct IsHelpButtonTag>;

struct VARION_API ButtonSetting {
  std::string caption;  // code page 1250; '&' marks the Alt+letter key
  IsVisible visible;
  IsDefault isDefault;
  ShouldSaveData saveData;
  IsHelpButton helpButton;

  // A visible button captioned "Pomoc" that opens help and never ends the box.
  static ButtonSetting HelpButton();
  bool operator==(const ButtonSetting&) const = default;
};

using ButtonsSetting = std::map<ButtonId, ButtonSetting>;

// "&OK" (visible, default, remembers the choice), "&Nie" (visible, remembers the choice) and
// "&Anuluj" (visible; never remembers it).
VARION_API ButtonsSetting InitButtonsSetting();

// The kind of box, which decides its icon.
enum class MessageBoxType { None, Information, Warning, Error, Question };

// The system icon resource of a kind (the IDI_* ordinal), none for MessageBoxType::None.
VARION_API std::optional<int> GetIconType(MessageBoxType type);

// Visible buttons of a map, at most three.
VARION_API int GetVisibleButtonsNumber(const ButtonsSetting& buttons);

// What a click on a button does, in this order: an unknown or hidden button does nothing; the
// help button opens help and leaves the box open; a button that remembers the choice saves it
// first; then the box ends with the button's number. Cancel never saves: it means the user did
// not decide, so a ticked don't-show-again box must not take effect through it.
struct ClickOutcome {
  bool openHelp = false;
  bool saveData = false;
  bool endDialog = false;
  ButtonId result = ButtonId::Ok;
  bool operator==(const ClickOutcome&) const = default;
};
VARION_API ClickOutcome DecideButtonClick(const ButtonsSetting& buttons, ButtonId id);

// The button that Esc and the close box stand for: Cancel when it is visible and no help
// button, else none (the box then ends without a button).
VARION_API std::optional<ButtonId> EscapeButton(const ButtonsSetting& buttons);

}  // namespace CMB
