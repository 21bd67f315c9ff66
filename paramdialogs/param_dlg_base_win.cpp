#include "paramdialogs/param_dlg_base_win.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

using namespace varion::paramdlg;

namespace {

CParamDlg_Base::OpenObserver& Observer() {
  static CParamDlg_Base::OpenObserver observer;
  return observer;
}

// Labels may carry simple markup for the parameter page (<b>); a caption shows the words only.
std::string WithoutMarkup(const std::string& text) {
  std::string out;
  bool inTag = false;
  for (char ch : text) {
    if (ch == '<') inTag = true;
    else if (ch == '>') inTag = false;
    else if (!inTag) out += ch;
  }
  return out;
}

void SetItemText(HWND dialog, int id, const std::string& text) {
  SetDlgItemTextW(dialog, id, varion::text::Cp1250ToWide(text).c_str());
}

UINT ControlOf(EditField field) {
  switch (field) {
    case EditField::Value: return IDC_PARAMDLG_VALUE;
    case EditField::Value2: return IDC_PARAMDLG_VALUE2;
    default: return IDC_PARAMDLG_OPERATOR;
  }
}

}  // namespace

CParamDlg_Base::CParamDlg_Base(UINT templateId, ZEST_PARAMS& param, ValueKind kind, HWND parent)
    : CFlgDialog(templateId, parent), m_param(&param), m_kind(kind), m_operators(AllowedOperators(param)) {
  // A parameter is picked, not a document edited: closing it never asks about saving.
  SetNoSavePrompt(true);
}

CParamDlg_Base::OpenObserver CParamDlg_Base::SetOpenObserver(OpenObserver observer) {
  return std::exchange(Observer(), std::move(observer));
}

const DateTools::IClock& CParamDlg_Base::Clock() const {
  static const DateTools::SystemClock system;
  return m_clock ? *m_clock : system;
}

BOOL CParamDlg_Base::OnInitDialog() {
  // A record of another type could not hold this dialog's values: it is closed unchanged.
  if (KindOfType(m_param->Type) != m_kind) {
    EndDialog(IDCANCEL);
    return FALSE;
  }
  const std::string label = WithoutMarkup(m_param->Label);
  SetWindowTextW(m_hWnd, varion::text::Cp1250ToWide(label.empty() ? "Parametr" : label).c_str());
  SetItemText(m_hWnd, IDC_PARAMDLG_LABEL, m_param->Prompt.empty() ? label : WithoutMarkup(m_param->Prompt));
  HWND list = GetDlgItem(m_hWnd, IDC_PARAMDLG_OPERATOR);
  for (const OperatorChoice& op : m_operators)
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(varion::text::Cp1250ToWide(op.text).c_str()));
  // Only one operator: nothing to choose, but it stays readable.
  EnableWindow(list, m_operators.size() > 1);
  if (!AllowsAny(*m_param)) ShowWindow(GetDlgItem(m_hWnd, IDC_PARAMDLG_ANY), SW_HIDE);
  return CFlgDialog::OnInitDialog();
}

void CParamDlg_Base::OnLoadData(CFlgDataExchange& dx) {
  const ParamEditValues v = LoadEditValues(*m_param);
  const auto it = std::find_if(m_operators.begin(), m_operators.end(), [&](const OperatorChoice& o) { return o.bits == v.op; });
  const auto index = it == m_operators.end() ? 0 : it - m_operators.begin();
  SendDlgItemMessageW(m_hWnd, IDC_PARAMDLG_OPERATOR, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  CheckDlgButton(m_hWnd, IDC_PARAMDLG_ANY, v.any ? BST_CHECKED : BST_UNCHECKED);
  LoadValues(dx, v);
  UpdateEnabled();
}

void CParamDlg_Base::OnSaveData(CFlgDataExchange& dx) {
  ParamEditValues v = LoadEditValues(*m_param);
  v.any = AnyChecked();
  const OperatorChoice op = SelectedOperator();
  v.op = op.bits;
  if (!v.any) SaveValues(dx, op, v);
  // A control that already reported its own failure keeps that one message.
  for (const EditError& e : CheckEditValues(*m_param, v)) {
    const UINT id = ControlOf(e.field);
    if (!dx.GetError(id)) dx.AddError(id, e.message.c_str());
  }
  m_values = v;
}

int CParamDlg_Base::OnUpdate() {
  // Checked in OnSaveData; a refusal here would mean the record changed under the dialog.
  const auto errors = StoreEditValues(*m_param, m_values, Clock());
  if (!errors.empty()) {
    CFlgDataExchange dx(*this, false);
    for (const EditError& e : errors) dx.AddError(ControlOf(e.field), e.message.c_str());
    ShowErrors();
    return -1;
  }
  return 0;
}

bool CParamDlg_Base::OnCommand(UINT id, UINT code, HWND control) {
  if ((id == IDC_PARAMDLG_OPERATOR && code == CBN_SELCHANGE) || (id == IDC_PARAMDLG_ANY && code == BN_CLICKED)) {
    UpdateEnabled();
    return true;
  }
  return CFlgDialog::OnCommand(id, code, control);
}

void CParamDlg_Base::HandleWindowLoaded() {
  if (Observer()) Observer()(*this);
}

OperatorChoice CParamDlg_Base::SelectedOperator() const {
  const LRESULT index = SendDlgItemMessageW(m_hWnd, IDC_PARAMDLG_OPERATOR, CB_GETCURSEL, 0, 0);
  if (index < 0 || static_cast<std::size_t>(index) >= m_operators.size()) return m_operators.front();
  return m_operators[static_cast<std::size_t>(index)];
}

bool CParamDlg_Base::AnyChecked() const {
  return AllowsAny(*m_param) && IsDlgButtonChecked(m_hWnd, IDC_PARAMDLG_ANY) == BST_CHECKED;
}

void CParamDlg_Base::EnableItem(int id, bool enable) const {
  if (HWND h = GetDlgItem(m_hWnd, id)) EnableWindow(h, enable);
}

void CParamDlg_Base::EnableValues(const OperatorChoice& op, bool any) {
  EnableItem(IDC_PARAMDLG_VALUE, !any && !op.periodCode);
  EnableItem(IDC_PARAMDLG_VALUE2, !any && op.range && !op.periodCode);
  EnableItem(IDC_PARAMDLG_TO, !any && op.range);
}

void CParamDlg_Base::UpdateEnabled() {
  const bool any = AnyChecked();
  EnableItem(IDC_PARAMDLG_OPERATOR, !any && m_operators.size() > 1);
  EnableValues(SelectedOperator(), any);
}
