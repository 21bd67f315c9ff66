// CMB::CustomizableMessageBox: the library's question and warning box on the dialog base. Its
// texts, buttons, link and don't-show-again check box are set up by chained setters before
// Show; a data-saving setting decides whether it opens at all and keeps the user's choice. The
// window is sized to its measured texts and visible buttons (dialogs/message_box_layout.h) and
// never leaves the monitor: a text too long for it scrolls.
//
//   auto answer = CMB::CustomizableMessageBox(CMB::MessageBoxType::Question, "Dokument zmieniony.",
//                                             "Czy zapisać zmiany?", CMB::InitButtonsSetting())
//                     .SetDataSavingSettings(std::make_unique<CMB::RegistrySetting>("Pytania", "Zapis"))
//                     .Show();
//
// InstallAsFrameworkMessageBox makes every box of the framework (the save prompt, reported
// failures) one of these, through the seam in diagnostics/message_box_seam_win.h.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/export.h"
#include "dialogs/message_box_buttons.h"
#include "dialogs/message_box_layout.h"
#include "dialogs/message_box_settings.h"
#include "diagnostics/message_box_seam_win.h"
#include "framework/flg_dialog_win.h"

namespace CMB {

// Control identifiers of the box's template besides the buttons (30105..30107).
inline constexpr int kIdcIcon = 30100;
inline constexpr int kIdcInfo = 30101;
inline constexpr int kIdcQuestion = 30102;
inline constexpr int kIdcLink = 30103;
inline constexpr int kIdcDontShowAgain = 30104;

// How the box opens a link; the default is the shell with the verb "open". Tests put a
// recorder here. Returns the one it replaces; an empty function restores the default.
using LinkOpener = std::function<void(HWND owner, const std::string& verb, const std::string& url)>;
VARION_API LinkOpener SetLinkOpener(LinkOpener opener);

class VARION_API CustomizableMessageBox : public CFlgDialog {
 public:
  CustomizableMessageBox(MessageBoxType type, std::string description, std::string question,
                         ButtonsSetting buttons = InitButtonsSetting(), HWND parent = nullptr);
  ~CustomizableMessageBox() override;

  CustomizableMessageBox& SetButtonSetting(ButtonId id, ButtonSetting setting);
  CustomizableMessageBox& SetButtonsSetting(ButtonsSetting buttons);
  CustomizableMessageBox& SetButtonWidth(int pixels);
  CustomizableMessageBox& SetDescription(std::string text);
  CustomizableMessageBox& SetQuestion(std::string text);
  CustomizableMessageBox& SetInfoTextHeight(int pixels);
  CustomizableMessageBox& SetQuestionTextHeight(int pixels);
  // The link under the texts; `visible` false hides it.
  CustomizableMessageBox& SetURL(std::string url, bool visible = true);
  // Themed: the whole box on the window colour, as the system's task dialogs are; else the
  // dialog colour.
  CustomizableMessageBox& SetVisualStyle(bool themed);
  CustomizableMessageBox& SetWindowWidth(int pixels);
  CustomizableMessageBox& SetDataSavingSettings(std::unique_ptr<DataSavingSettings> settings);
  // Greys the close box: Esc and Alt+F4 do nothing then, and only a button ends the box.
  CustomizableMessageBox& SetDisableCloseButton(bool disable);
  // The caption; by default the kind's ("Informacja", "Ostrzeżenie", "Błąd", "Pytanie").
  CustomizableMessageBox& SetTitle(std::string title);

  // Shows the box modally. None when the setting says it is not to be shown, or when it was
  // closed without a button (Esc or the close box without a Cancel button). A setting that
  // cannot be read (a database failure) is logged and the box shows.
  std::optional<ButtonId> Show();

  // What a click on a button does (see DecideButtonClick). A failure while saving the choice is
  // logged and the box still ends with the button.
  void HandleBtnClick(ButtonId id);
  // Opens the link with the shell verb "open".
  void OnWWW();

  // Whether the last Show opened the window (false when its setting suppressed it, or when the
  // template could not be loaded).
  bool WasOpened() const { return m_opened; }
  const MessageBoxLayout& GetLayout() const { return m_layout; }
  const ButtonsSetting& GetButtonsSetting() const { return m_buttons; }

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;
  void OnCancel() override;
  void OnSaveData(CFlgDataExchange& dx) override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  INT_PTR DialogProc(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  LayoutInput MakeLayoutInput() const;
  void ApplyTexts();
  void ApplyLayout();

  MessageBoxType m_type;
  std::string m_description, m_question, m_url, m_title;
  bool m_urlVisible = false;
  bool m_themed = false;
  bool m_noClose = false;
  int m_windowWidth = 0, m_buttonWidth = 0, m_infoHeight = 0, m_questionHeight = 0;
  ButtonsSetting m_buttons;
  std::unique_ptr<DataSavingSettings> m_settings;
  std::optional<ButtonId> m_chosen;
  bool m_opened = false;
  MessageBoxLayout m_layout;
  HICON m_icon = nullptr;  // a shared system icon: never destroyed
};

// Puts the box in place of the system's behind the framework's message-box seam: MB_OK,
// MB_OKCANCEL, MB_YESNO and MB_YESNOCANCEL with their icons become a CustomizableMessageBox
// answering IDOK/IDYES, IDNO and IDCANCEL; other kinds stay with the system box. Returns the
// function it replaced.
VARION_API varion::FrameworkMessageBoxFn InstallAsFrameworkMessageBox();

}  // namespace CMB
