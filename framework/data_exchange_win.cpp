// The Windows members of the exchange context: messages from resources, controls named by
// window, and messages worded from a failing COM call.
#include <windows.h>
#include <oleauto.h>

#include <memory>

#include "base/text.h"
#include "framework/data_exchange.h"
#include "framework/error_informator_win.h"
#include "base/library_module_win.h"

namespace {
std::uint32_t IdOf(HWND control) { return static_cast<std::uint32_t>(GetWindowLongA(control, GWL_ID)); }
}  // namespace

void CFlgDataExchange::AddError(std::uint32_t ctrlId, unsigned int messageId) {
  AddError(ctrlId, varion::LoadResourceString(messageId).c_str());
}

void CFlgDataExchange::AddError(HWND control, const char* message) { AddError(IdOf(control), message); }

void CFlgDataExchange::AddError(HWND control, const char* message, const char* secondText, std::uint32_t code) {
  AddError(IdOf(control), message, secondText, code);
}

void CFlgDataExchange::AddError(HWND control, unsigned int messageId) { AddError(IdOf(control), messageId); }

void CFlgDataExchange::AddErrorFromHR(std::uint32_t ctrlId, long hr, IFlgInstance* instance, IUnknown* failing,
                                      const _GUID& iid) {
  std::string text;
  if (auto* wording = dynamic_cast<IFlgErrorInformation*>(instance)) wording->DescribeError(hr, failing, iid, text);
  if (text.empty()) text = CVelErrorInformator::Get().DescribeFailure(hr, failing, iid);
  AddError(ctrlId, text.c_str());
}
