#include "params/params_html_ctrl.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <string_view>

#include "params/where_builders.h"

namespace {

// The text a link shows: the display value, else the value text, else a note that nothing is set.
const std::string& ShownValue(const ZEST_PARAMS& p) {
  static const std::string kNoValue = "(nie podano wartości)";
  if (!p.DisplayValue.empty()) return p.DisplayValue;
  if (!p.ValueStr.empty()) return p.ValueStr;
  return kNoValue;
}

const char kNoParameter[] = "Nie wybrano żadnego parametru";

void Trim(std::string& s) {
  const char* blanks = " \t\r\n";
  const std::size_t first = s.find_first_not_of(blanks);
  if (first == std::string::npos) {
    s.clear();
    return;
  }
  s.erase(s.find_last_not_of(blanks) + 1);
  s.erase(0, first);
}

// The shown value is data (typed by a user, read from the database), so it is written as text:
// exactly the four characters that could end the link or start markup are escaped.
void AppendEscaped(std::string& html, const std::string& text) {
  for (char c : text) {
    switch (c) {
      case '&': html += "&amp;"; break;
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      case '"': html += "&quot;"; break;
      default: html += c;
    }
  }
}

bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsAsciiDigit(char c) { return c >= '0' && c <= '9'; }

// The style values go into a STYLE element and a style attribute; only forms that cannot leave
// them are taken. A colour is "#rrggbb" or a name of letters ("navy").
bool IsColor(std::string_view c) {
  if (c.size() == 7 && c[0] == '#')
    return std::all_of(c.begin() + 1, c.end(), [](char h) { return std::isxdigit(static_cast<unsigned char>(h)) != 0; });
  return !c.empty() && std::all_of(c.begin(), c.end(), IsAsciiLetter);
}

// A font list: "Tahoma", "Segoe UI, Arial, sans-serif".
bool IsFontList(std::string_view f) {
  return !f.empty() && std::all_of(f.begin(), f.end(), [](char c) {
    return IsAsciiLetter(c) || IsAsciiDigit(c) || c == ' ' || c == ',' || c == '-';
  });
}

// A font size: a number and a unit of letters, or a percentage ("9pt", "1.2em", "90%").
bool IsFontSize(std::string_view s) {
  std::size_t at = 0;
  while (at < s.size() && IsAsciiDigit(s[at])) ++at;
  if (at == 0) return false;
  if (at < s.size() && s[at] == '.') {
    const std::size_t fraction = ++at;
    while (at < s.size() && IsAsciiDigit(s[at])) ++at;
    if (at == fraction) return false;
  }
  const std::string_view unit = s.substr(at);
  return unit == "%" || std::all_of(unit.begin(), unit.end(), IsAsciiLetter);
}

bool IsHome(const char* url) { return url && std::strcmp(url, CParamsHtmlCtrl::kHomeUrl) == 0; }

// The index of "std://N", "self://N" or "self://N/"; -1 for anything else.
int LinkIndex(std::string_view url) {
  std::string_view rest;
  if (url.starts_with("std://")) rest = url.substr(6);
  else if (url.starts_with("self://")) rest = url.substr(7);
  else return -1;
  if (rest.ends_with('/')) rest.remove_suffix(1);
  int index = -1;
  auto [end, ec] = std::from_chars(rest.data(), rest.data() + rest.size(), index);
  return ec == std::errc() && end == rest.data() + rest.size() && index >= 0 ? index : -1;
}

}  // namespace

ZEST_PARAMS* CParamsHtmlCtrl::GetParam(int index) {
  return index >= 0 && index < m_params.GetSize() ? &m_params[index] : nullptr;
}
const ZEST_PARAMS* CParamsHtmlCtrl::GetParam(int index) const {
  return index >= 0 && index < m_params.GetSize() ? &m_params[index] : nullptr;
}

void CParamsHtmlCtrl::SetConnection(const varion::db::Connection& connection) {
  m_connection = connection;
  m_dialect = connection.IsOpen() ? &connection.Dialect() : nullptr;
}

void CParamsHtmlCtrl::SetColors(const std::string& defined, const std::string& undefined) {
  m_definedColor = IsColor(defined) ? defined : kDefaultDefinedColor;
  m_undefinedColor = IsColor(undefined) ? undefined : kDefaultUndefinedColor;
}

void CParamsHtmlCtrl::SetFont(const std::string& family, const std::string& size) {
  m_fontFamily = IsFontList(family) ? family : kDefaultFontFamily;
  m_fontSize = IsFontSize(size) ? size : kDefaultFontSize;
}

void CParamsHtmlCtrl::GenerateContentsHtml(const char* url, std::string& html) const {
  html.clear();
  html.reserve(512 + 96 * static_cast<std::size_t>(m_params.GetSize()));
  html += "<HTML>\n<head>\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1250\">\n"
          "<title>Parametry zestawienia</title>\n<STYLE>A.Defined {color:";
  html += m_definedColor;
  html += "}</STYLE>\n<STYLE>A.Undefined {color:";
  html += m_undefinedColor;
  html += "}</STYLE>\n</head>\n<BODY topmargin=\"0\" scroll=auto STYLE=\"font-family:";
  html += m_fontFamily;
  html += ";font-size:";
  html += m_fontSize;
  html += ';';
  if (m_highlight) html += "background-color:#fffbf0;";
  html += "\">\n";
  if (IsHome(url) && !m_params.IsEmpty()) {
    const std::size_t bodyStart = html.size();
    char number[16];
    for (int i = 0; i < m_params.GetSize(); ++i) {
      const ZEST_PARAMS& p = m_params[i];
      if (!p.Visible) continue;
      html += p.Label;
      html += p.Empty ? " <A class=\"Undefined\" href=\"" : " <A class=\"Defined\" href=\"";
      html += p.Standard ? "std://" : "self://";
      html.append(number, std::to_chars(number, number + sizeof number, i).ptr);
      html += "\">";
      html += p.ValuePrefix;
      html += ' ';
      AppendEscaped(html, ShownValue(p));
      html += "</a>, \n";
    }
    if (html.size() == bodyStart) {
      html += kNoParameter;
    } else {
      html.resize(html.size() - 3);  // the last ", " and line feed
      html += '\n';
    }
  }
  html += "\n</BODY>\n</HTML>";
}

void CParamsHtmlCtrl::GenerateContentsPlain(const char* url, std::string& text) const {
  text.clear();
  if (!IsHome(url) || m_params.IsEmpty()) return;
  for (const ZEST_PARAMS& p : m_params) {
    if (!p.Visible) continue;
    if (!text.empty()) text += '\n';
    text += p.Label;
    text += ' ';
    if (!p.ValuePrefix.empty()) {
      text += p.ValuePrefix;
      text += ' ';
    }
    text += ShownValue(p);
  }
  if (text.empty()) text = kNoParameter;
}

void CParamsHtmlCtrl::WriteContents(const char* html) { m_contents = html ? html : ""; }

void CParamsHtmlCtrl::NavigateTo(const char* url) {
  std::string html;
  GenerateContentsHtml(url, html);
  WriteContents(html.c_str());
}

bool CParamsHtmlCtrl::OnBeforeNavigate2(const char* url) {
  // The page leads nowhere but to its own addresses: anything else (a web address, "javascript:",
  // a file) is cancelled without being followed.
  if (!url) return true;
  const std::string_view u(url);
  if (u.starts_with("params://")) return OnAppCmd(url);
  if (u.starts_with("std://") || u.starts_with("self://")) return OnParam(url);
  return true;
}

bool CParamsHtmlCtrl::OnAppCmd(const char* url) {
  NavigateTo(url);
  return true;
}

bool CParamsHtmlCtrl::OnParam(const char* url) {
  const int index = LinkIndex(url ? url : "");
  if (index >= 0 && HandleStdParam(index)) {
    OnParamChanged(index);
    InitDescr();
  }
  return true;
}

bool CParamsHtmlCtrl::HandleStdParam(int index) {
  ZEST_PARAMS* p = GetParam(index);
  if (!p) return false;
  const auto request = varion::params::ParamDialogFor(p->Type, m_dialogOption);
  if (!request) return false;
  if (varion::Failed(CAccessControl::CheckStdFuncAccessAndShowMessage(p->Paywalled))) return false;
  const ZEST_PARAMS before = *p;
  const bool confirmed = request->kind == varion::params::ParamDialogKind::Lookup
                             ? ShowLookupCtrl(p, request->multiple, p->Value)
                             : m_dialogs && m_dialogs->ShowParamDialog(*request, *p, m_connection);
  if (!confirmed) return false;
  if (p->ParamHandler) {
    const ZestParams::ZestParamsManager manager(m_params);
    const ZestParams::ZestParamsWrapper wrapper(*p);
    if (!p->ParamHandler(manager, wrapper)) {
      *p = before;
      return false;
    }
  }
  return true;
}

bool CParamsHtmlCtrl::ShowLookupCtrl(ZEST_PARAMS* param, bool multiple, const _variant_t&) {
  if (!param || !m_dialogs) return false;
  varion::params::ParamDialogRequest request{varion::params::ParamDialogKind::Lookup};
  request.multiple = multiple;
  request.usesConnection = true;
  return m_dialogs->ShowParamDialog(request, *param, m_connection);
}

bool CParamsHtmlCtrl::IsContentEmpty() const {
  for (const ZEST_PARAMS& p : m_params)
    if (p.Visible) return false;
  return true;
}

std::string CParamsHtmlCtrl::GetWhereString(int index) {
  const ZEST_PARAMS* p = GetParam(index);
  if (!p || !p->Visible || p->Empty || p->DbField.empty()) return {};
  std::string text;
  if (!varion::params::RunBuilder(varion::params::BuilderForType(p->Type, false), *p, Dialect(), text)) return {};
  Trim(text);
  return text.empty() ? text : "(" + text + ")";
}

std::string CParamsHtmlCtrl::GetWhereString() const {
  using namespace varion::params;
  std::string where;
  std::string condition;
  // The handlers get a manager and a wrapper, which bind by reference to a modifiable array;
  // both are handed on as const, so nothing changes the parameters through them.
  auto& params = const_cast<CArrZestParams&>(m_params);
  const ZestParams::ZestParamsManager manager(params);
  for (ZEST_PARAMS& p : params) {
    if (p.DbField.empty()) {
      if (p.GetWhereHandler) {
        const ZestParams::ZestParamsWrapper wrapper(p);
        p.GetWhereHandler(manager, wrapper, where);
      }
      continue;
    }
    if (p.Param & ZestParams::kParamNeverInWhere) continue;
    if ((p.Empty || !p.Visible) && !(p.Param & ZestParams::kParamBuildWhenEmpty)) continue;
    if (RunBuilder(BuilderForType(p.Type, true), p, Dialect(), condition) && !condition.empty()) {
      where += " AND ";
      where += condition;
    }
  }
  if (where.starts_with(" AND")) where.erase(0, 4);
  Trim(where);
  return where.empty() ? where : "(" + where + ")";
}
