// The host's running instance as the library's COM-facing code sees it, and the shared error
// informer that words a failing COM call for the user when the host does not.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include <map>
#include <mutex>
#include <string>

#include "base/export.h"

// Implemented by the host. GetErrorMessage words the failure of a call on `failing` (through
// interface `iid`) for the user; S_FALSE or a failure leaves the wording to the library.
struct IFlgInstance : public IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetErrorMessage(HRESULT hr, IUnknown* failing, REFIID iid, BSTR* message) = 0;
};

class VARION_API CVelErrorInformator {
 public:
  // The process-wide informer, made on first use.
  static CVelErrorInformator& Get();
  // Frees it (process detach); the next Get makes a new one.
  static void Free();

  // The failing object's own error information when it supports it for `iid`, else the
  // system's text for the code; the code is always appended, as "(0x80004005)".
  std::string DescribeFailure(HRESULT hr, IUnknown* failing, REFIID iid);

 private:
  std::string SystemText(HRESULT hr);
  std::mutex m_mutex;
  std::map<HRESULT, std::string> m_systemTexts;
};
