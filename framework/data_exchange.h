// The exchange context every data dialog passes to the DLX_ (load), DSX_ (save), DSV_ and DV_
// (check) functions: which window holds the controls, where errors go and which text names the
// dialog in each error record. It owns nothing; a null error list drops every failure silently.
#pragma once

#include <cstdint>
#include <optional>

#include "base/export.h"
#include "framework/error_info.h"
#include "base/hwnd_fwd.h"

#if defined(_WIN32)
struct IUnknown;
struct _GUID;
struct IFlgInstance;
class CFlgDialog;
#endif

class VARION_API CFlgDataExchange {
 public:
  CFlgDataExchange(CObjErrorInfoArray* errors, HWND dialog, const char* source, bool flag = false)
      : m_errors(errors), m_flag(flag), m_dialog(dialog), m_source(source) {}
#if defined(_WIN32)
  // The dialog's error list, window and template name; the dialog base always passes false.
  CFlgDataExchange(CFlgDialog& dialog, bool flag);
  CFlgDataExchange(const CFlgDialog& dialog, bool flag);
#endif

  CFlgDataExchange(const CFlgDataExchange&) = default;
  CFlgDataExchange(CFlgDataExchange&&) = default;
  CFlgDataExchange& operator=(const CFlgDataExchange&) = default;
  CFlgDataExchange& operator=(CFlgDataExchange&&) = default;

  void AddError(std::uint32_t ctrlId, const char* message);
  void AddError(std::uint32_t ctrlId, const char* message, const char* secondText, std::uint32_t code);
  // Identifiers written as int literals (dialog-level errors use 0) pick these, not the window forms.
  void AddError(int ctrlId, const char* message) { AddError(static_cast<std::uint32_t>(ctrlId), message); }
  void AddError(int ctrlId, const char* message, const char* secondText, std::uint32_t code) {
    AddError(static_cast<std::uint32_t>(ctrlId), message, secondText, code);
  }
#if defined(_WIN32)
  // The message comes from the string resources (the library's, then the program's); a missing
  // resource gives an empty message.
  void AddError(std::uint32_t ctrlId, unsigned int messageId);
  void AddError(int ctrlId, unsigned int messageId) { AddError(static_cast<std::uint32_t>(ctrlId), messageId); }
  // The control identifier is read from the control's window.
  void AddError(HWND control, const char* message);
  void AddError(HWND control, const char* message, const char* secondText, std::uint32_t code);
  void AddError(HWND control, unsigned int messageId);
  // The message is worded from the failing call's error information: by the host's instance when
  // it implements IFlgErrorInformation and has a wording, else by the library's error informer.
  void AddErrorFromHR(std::uint32_t ctrlId, long hr, IFlgInstance* instance, IUnknown* failing, const _GUID& iid);
#endif

  std::size_t GetCount() const { return m_errors ? m_errors->GetCount() : 0; }
  // A copy of the first record for the control, if any.
  std::optional<FLG_OBJECT_ERROR_INFO> GetError(std::uint32_t ctrlId) const;
  // Removes the first record for the control, and only that one.
  void RemoveError(std::uint32_t ctrlId);

  CObjErrorInfoArray* GetErrorsArray() const { return m_errors; }
  bool GetFlag() const { return m_flag; }
  HWND GetDialog() const { return m_dialog; }
  const char* GetSource() const { return m_source; }

 private:
  CObjErrorInfoArray* m_errors;
  bool m_flag;
  HWND m_dialog;
  const char* m_source;
};
