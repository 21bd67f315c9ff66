#include "framework/error_info.h"

#include <stdexcept>

std::size_t CObjErrorInfoArray::Add(FLG_OBJECT_ERROR_INFO record) {
  m_records.push_back(std::move(record));
  return m_records.size() - 1;
}

void CObjErrorInfoArray::RemoveAt(std::size_t index) {
  if (index >= m_records.size()) throw std::out_of_range("CObjErrorInfoArray::RemoveAt");
  m_records.erase(m_records.begin() + static_cast<std::ptrdiff_t>(index));
}
