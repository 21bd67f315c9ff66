// Wording a failing COM call for the user: the host's own wording when its running instance
// offers one, else the shared error informer of the library.
#pragma once

#include <windows.h>
#include <unknwn.h>

#include <map>
#include <mutex>
#include <string>

#include "base/export.h"
#include "db/flg_interfaces.h"

// What a host's running instance may implement beside IFlgInstance to word failures itself:
// true with the message (code page 1250) when it has a wording for this failure.
class VARION_API IFlgErrorInformation {
 public:
  virtual ~IFlgErrorInformation() = default;
  virtual bool DescribeError(HRESULT hr, IUnknown* failing, REFIID iid, std::string& message) = 0;
};

// The process-wide informer of the library (freed when the DLL unloads).
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
