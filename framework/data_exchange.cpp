#include "framework/data_exchange.h"

void CFlgDataExchange::AddError(std::uint32_t ctrlId, const char* message) { AddError(ctrlId, message, nullptr, 0); }

void CFlgDataExchange::AddError(std::uint32_t ctrlId, const char* message, const char* secondText, std::uint32_t code) {
  if (!m_errors) return;
  FLG_OBJECT_ERROR_INFO record;
  record.ctrlId = ctrlId;
  record.source = m_source;
  record.message = message ? message : "";
  record.dialog = m_dialog;
  record.secondText = secondText ? secondText : "";
  record.code = code;
  m_errors->Add(std::move(record));
}

std::optional<FLG_OBJECT_ERROR_INFO> CFlgDataExchange::GetError(std::uint32_t ctrlId) const {
  if (!m_errors) return std::nullopt;
  for (const auto& record : *m_errors)
    if (record.ctrlId == ctrlId) return record;
  return std::nullopt;
}

void CFlgDataExchange::RemoveError(std::uint32_t ctrlId) {
  if (!m_errors) return;
  for (std::size_t i = 0; i < m_errors->GetSize(); ++i) {
    if (m_errors->GetAt(i).ctrlId == ctrlId) {
      m_errors->RemoveAt(i);
      return;
    }
  }
}
