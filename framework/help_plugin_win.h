// The help of dialogs: a text per dialog template, kept in the application's help file (an INI
// file: one section per template name, the text under "Text", "\n" for a line break), shown in a
// box through the framework's message-box seam. A dialog without a text has no help.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"

namespace varion {

// The help file every dialog uses unless it names its own; empty: no help anywhere.
VARION_API void SetDefaultHelpFile(std::wstring path);
VARION_API std::wstring GetDefaultHelpFile();

class VARION_API CVelHelpPlugin {
 public:
  // True when the file has a text for the template.
  bool Init(const std::wstring& helpFile, const std::string& templateName);
  bool IsInitialized() const { return !m_text.empty(); }
  const std::string& Text() const { return m_text; }
  // Shows the text in a box owned by the dialog; nothing without help.
  void Show(HWND owner, const std::string& caption) const;

 private:
  std::string m_text;
};

}  // namespace varion
