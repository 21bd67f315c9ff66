// The identifier edits ("vel_nipedit", "vel_rbedit", "vel_mailedit", "vel_timeeditex" and the
// rest of controls/ident_rules.h) on the edit base: typed and pasted characters go through the
// kind's filter, leaving the field tidies its text and marks the field faulty (or clears the mark)
// through the private messages, mail and web fields open their address on Ctrl+click, the time
// field steps a field with the arrow keys, and folder and file fields carry a browse button.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/ident_rules.h"
#include "controls/vel_controls_win.h"

namespace varion {

// What opens an address: the shell's "open" verb by default. Tests put a recorder in its place;
// an empty function restores the shell. The address has passed IdentAddressToOpen.
using ShellOpenHook = std::function<void(HWND owner, const std::string& address)>;
VARION_API void SetShellOpenHook(ShellOpenHook hook);
// Opens a checked address with the shell's "open" verb (or the hook); links use it too.
VARION_API void OpenShellAddress(HWND owner, const std::string& address);
// What asks for a folder or a file: the shell's choosers by default. True and `path` set when the
// user chose one. Tests answer without a dialog.
using PathChooserHook = std::function<bool(HWND owner, IdentKind kind, std::string& path)>;
VARION_API void SetPathChooserHook(PathChooserHook hook);
// A refused character beeps with MessageBeep(0x30) unless a test counts beeps instead.
using IdentBeepHook = void (*)();
VARION_API IdentBeepHook SetIdentBeepHook(IdentBeepHook hook);

}  // namespace varion

class VARION_API CVelIdentEdit : public CVelEditBase {
 public:
  // Attaches a window-owned field of the kind to an existing edit; the field already attached
  // when there is one of the same kind, nullptr when another object holds the window.
  static CVelIdentEdit* Attach(HWND edit, varion::IdentKind kind);
  // The creation hook's entry for every identifier class: the kind comes from the class name.
  static BOOL AttachCreating(HWND edit, CREATESTRUCTW* create);
  static CVelIdentEdit* FromHandle(HWND window);

  varion::IdentKind GetKind() const { return m_kind; }
  const varion::IdentOptions& GetOptions() const { return m_options; }
  // Number limits and decimals, the time's seconds; the text is checked again at once.
  void SetOptions(const varion::IdentOptions& options);
  // Tidies and checks the text as leaving the field does; true when it passes.
  bool Settle();
  // Opens the chooser of a folder or file field.
  void Browse();

  static constexpr int kBrowseButtonId = 1;

 protected:
  friend class CVelControlBase;
  CVelIdentEdit() = default;
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;

 private:
  void Initialize();
  std::string Text() const;
  void SetText(const std::string& text);
  bool OnChar(WPARAM ch, LPARAM lp);
  void OnPaste();
  bool OnKeyDown(WPARAM key);
  bool OnCtrlClick();
  void PlaceButton();
  bool HasBrowseButton() const {
    return m_kind == varion::IdentKind::Folder || m_kind == varion::IdentKind::File;
  }

  varion::IdentKind m_kind = varion::IdentKind::Nip;
  varion::IdentOptions m_options;
  HWND m_button = nullptr;  // the browse button, a child the edit destroys with itself
  bool m_initialized = false;
};
