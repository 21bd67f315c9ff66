// The checks: lengths, presence, bounds and the standard failures.
#include "base/status.h"
#include "controls/validators.h"
#include "framework/data_exchange_win.h"
#include "framework/exchange_internal_win.h"
#include "framework/exchange_rules.h"
#include "base/library_module_win.h"

using namespace varion;
using varion::exchange::ReadText;

namespace {

std::uint32_t U(int id) { return static_cast<std::uint32_t>(id); }

void CheckRange(CFlgDataExchange& dx, int id, BoundFormat format, std::int64_t value, std::int64_t min,
                std::int64_t max) {
  if (!InRange(value, min, max)) dx.AddError(U(id), RangeMessage(format, min, max).c_str());
}

void CheckMinChars(CFlgDataExchange& dx, int id, const std::string& text, long min, std::string message) {
  if (static_cast<long long>(text.size()) >= min) return;
  if (message.empty()) message = FormatLongMessage(msg::kMinChars, min);
  dx.AddError(U(id), message.c_str());
}

}  // namespace

long GetStringFieldsTotalLength(CFlgDataExchange& dx, const std::set<int>& ids) {
  long total = 0;
  for (int id : ids) total += static_cast<long>(ReadText(dx, id).size());
  return total;
}

void CheckIfEmptyAddErrorAndThrow(CFlgDataExchange& dx, int id) {
  if (!ReadText(dx, id).empty()) return;
  dx.AddError(U(id), msg::kFieldEmpty);
  throw ComError(kFail, msg::kFieldEmpty);
}

void VelFailMaxChars(CFlgDataExchange& dx, long max, int id) {
  dx.AddError(U(id), FormatLongMessage(msg::kMaxChars, max).c_str());
}

void VelFailRadio(CFlgDataExchange& dx, int id) { dx.AddError(U(id), msg::kChooseButton); }

int DSV_MaxChars(CFlgDataExchange& dx, int id, const std::string& text, long max) {
  if (static_cast<long long>(text.size()) <= max) return 1;
  VelFailMaxChars(dx, max, id);
  return 0;
}

int DSV_MaxChars(CFlgDataExchange& dx, int id, const char* text, long max) {
  return DSV_MaxChars(dx, id, std::string(text ? text : ""), max);
}

int DSV_MaxChars(CFlgDataExchange& dx, int id, long max) { return DSV_MaxChars(dx, id, ReadText(dx, id), max); }

void DV_Required(CFlgDataExchange& dx, int id, const char* message) {
  if (TrimBlanks(ReadText(dx, id)).empty()) dx.AddError(U(id), message ? message : msg::kRequired);
}

void DV_CBRequired(CFlgDataExchange& dx, int id, const char* message) {
  HWND h = exchange::Control(dx, id);
  if (!h || SendMessageW(h, CB_GETCURSEL, 0, 0) == CB_ERR) dx.AddError(U(id), message ? message : msg::kChooseItem);
}

void DV_MinChars(CFlgDataExchange& dx, int id, long min, UINT messageId) {
  CheckMinChars(dx, id, ReadText(dx, id), min, LoadResourceString(messageId));
}

void DV_MinChars(CFlgDataExchange& dx, int id, long min, const char* message) {
  CheckMinChars(dx, id, ReadText(dx, id), min, message ? message : "");
}

void DV_MinChars(CFlgDataExchange& dx, int id, const std::string& text, long min, const char* message) {
  CheckMinChars(dx, id, text, min, message ? message : "");
}

void DV_MinLong(CFlgDataExchange& dx, int id, long value, long min, const char* message) {
  if (value >= min) return;
  dx.AddError(U(id), message ? message : FormatLongMessage(msg::kMinLong, min).c_str());
}

void DV_MinMaxByte(CFlgDataExchange& dx, int id, unsigned char v, unsigned char min, unsigned char max) {
  CheckRange(dx, id, BoundFormat::Unsigned, v, min, max);
}
void DV_MinMaxShort(CFlgDataExchange& dx, int id, short v, short min, short max) {
  CheckRange(dx, id, BoundFormat::SignedLong, v, min, max);
}
void DV_MinMaxInt(CFlgDataExchange& dx, int id, int v, int min, int max) {
  CheckRange(dx, id, BoundFormat::SignedLong, v, min, max);
}
void DV_MinMaxUInt(CFlgDataExchange& dx, int id, unsigned int v, unsigned int min, unsigned int max) {
  CheckRange(dx, id, BoundFormat::UnsignedLong, v, min, max);
}
void DV_MinMaxDWord(CFlgDataExchange& dx, int id, unsigned long v, unsigned long min, unsigned long max) {
  CheckRange(dx, id, BoundFormat::UnsignedLong, static_cast<std::int64_t>(v), static_cast<std::int64_t>(min),
             static_cast<std::int64_t>(max));
}
void DV_MinMaxLong(CFlgDataExchange& dx, int id, long v, long min, long max) {
  CheckRange(dx, id, BoundFormat::SignedLong, v, min, max);
}
void DV_MinMaxSlider(CFlgDataExchange& dx, int id, int v, int min, int max) {
  CheckRange(dx, id, BoundFormat::SignedLong, v, min, max);
}

void DV_PoprawnyEmail(CFlgDataExchange& dx, int id) {
  const std::string text = TrimBlanks(ReadText(dx, id));
  if (!text.empty() && !PoprawnyEmail(text.c_str())) dx.AddError(U(id), msg::kBadEmail);
}

// Users type a NIP with its usual separators ("526-025-02-74", "PL 5260250274"): the digits the
// parser finds behind an optional Polish prefix are checked, with the check digit. A foreign
// prefix is refused, as the Polish check digit says nothing about it.
void DV_PoprawnyNIP(CFlgDataExchange& dx, int id) {
  const std::string text = TrimBlanks(ReadText(dx, id));
  if (text.empty()) return;
  const std::optional<NipDivided> nip = ParsujNip(text.c_str());
  if (!nip || nip->CzyPrefiksZagraniczny() || !NipChecksumOk(nip->PodajNumerBezZnakowSpecjalnych().c_str()))
    dx.AddError(U(id), msg::kBadNip);
}
