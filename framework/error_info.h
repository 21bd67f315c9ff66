// One validation failure of a dialog (FLG_OBJECT_ERROR_INFO) and the ordered list a dialog
// collects them in (CObjErrorInfoArray). Records are data: nothing here shows anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/variant.h"
#include "base/hwnd_fwd.h"

// Fields in the order the dialog base and its callers rely on.
struct VARION_API FLG_OBJECT_ERROR_INFO {
  std::uint32_t ctrlId = 0;
  // The text naming the dialog (or nested page) that owns the control: borrowed from the
  // exchange context, so it lives as long as that dialog.
  const char* source = nullptr;
  std::string message;
  HWND dialog = nullptr;
  std::string secondText;  // a title for dialog-level errors; empty unless given
  std::uint32_t code = 0;
  std::uint32_t extra = 0;  // left zero by AddError; free for callers
  varion::Variant value;

  // The source as a text; a null source reads as empty.
  std::string Source() const { return source ? source : ""; }
};

class VARION_API CObjErrorInfoArray {
 public:
  using Records = std::vector<FLG_OBJECT_ERROR_INFO>;

  std::size_t Add(FLG_OBJECT_ERROR_INFO record);
  std::size_t GetSize() const { return m_records.size(); }
  std::size_t GetCount() const { return m_records.size(); }
  bool IsEmpty() const { return m_records.empty(); }
  const FLG_OBJECT_ERROR_INFO& GetAt(std::size_t index) const { return m_records.at(index); }
  FLG_OBJECT_ERROR_INFO& GetAt(std::size_t index) { return m_records.at(index); }
  const FLG_OBJECT_ERROR_INFO& operator[](std::size_t index) const { return m_records.at(index); }
  FLG_OBJECT_ERROR_INFO& operator[](std::size_t index) { return m_records.at(index); }
  void RemoveAt(std::size_t index);
  void RemoveAll() { m_records.clear(); }

  Records::const_iterator begin() const { return m_records.begin(); }
  Records::const_iterator end() const { return m_records.end(); }

 private:
  Records m_records;
};
