// The parameter view of a report: its parameters shown as a short HTML page in which every
// visible parameter is a label and a link carrying its value, the dialog opened when a link is
// followed, and the report's WHERE text built from the parameters. This class holds every rule
// and needs no window; the Windows control (params_html_wnd_win.h) shows its page.
//
// Links name parameters by position: "std://N" for a standard parameter, "self://N" (also
// "self://N/") for the others; "params://home" is the page itself. The page is code page 1250
// with its charset declared. Labels and value prefixes are the report author's texts and go in as
// they are (a label may carry <b>); the shown value is data and is escaped, so it is always text.
#pragma once

#include <string>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "db/connection.h"
#include "params/param_dialogs.h"
#include "params/zest_params.h"

class VARION_API CParamsHtmlCtrl {
 public:
  static constexpr const char* kHomeUrl = "params://home";
  // Used in place of a colour, font list or size that is not one.
  static constexpr const char* kDefaultDefinedColor = "#1F3F9F";
  static constexpr const char* kDefaultUndefinedColor = "#B02020";
  static constexpr const char* kDefaultFontFamily = "Tahoma";
  static constexpr const char* kDefaultFontSize = "9pt";

  CParamsHtmlCtrl() = default;
  virtual ~CParamsHtmlCtrl() = default;

  // The parameter array; the dialogs edit it in place.
  CArrZestParams& GetParams() { return m_params; }
  const CArrZestParams& GetParams() const { return m_params; }
  // The record at an index, or null outside the array.
  ZEST_PARAMS* GetParam(int index);
  const ZEST_PARAMS* GetParam(int index) const;

  // The connection handed to the database-bound dialogs; its dialect writes the WHERE text.
  void SetConnection(const varion::db::Connection& connection);
  // The dialect of the WHERE text without a connection (SQL Server by default).
  void SetDialect(const varion::SqlDialect& dialect) { m_dialect = &dialect; }
  void SetDialogs(varion::params::IParamDialogs* dialogs) { m_dialogs = dialogs; }  // not owned
  void SetDialogOption(int option) { m_dialogOption = option; }
  // CSS colours of links of parameters with a value and of empty ones: "#rrggbb" or a colour name
  // of letters; anything else gives the default.
  void SetColors(const std::string& defined, const std::string& undefined);
  // CSS font family and size of the page ("Tahoma", "8pt"). The family is a list of letters,
  // digits, blanks, commas and hyphens, the size a number and a unit; anything else gives the default.
  void SetFont(const std::string& family, const std::string& size);
  void SetHighlight(bool highlight) { m_highlight = highlight; }

  const std::string& DefinedColor() const { return m_definedColor; }
  const std::string& UndefinedColor() const { return m_undefinedColor; }
  const std::string& FontFamily() const { return m_fontFamily; }
  const std::string& FontSize() const { return m_fontSize; }
  bool Highlight() const { return m_highlight; }

  // The page for an address: the parameter lines only for kHomeUrl.
  void GenerateContentsHtml(const char* url, std::string& html) const;
  // The same lines as text, one parameter a line: "Okres od 2024-05-01 do 2024-05-31".
  void GenerateContentsPlain(const char* url, std::string& text) const;

  // Shows a page: the portable view keeps it (Contents()); a window also paints it.
  virtual void WriteContents(const char* html);
  void NavigateTo(const char* url);
  void InitDescr() { NavigateTo(kHomeUrl); }
  const std::string& Contents() const { return m_contents; }

  // A followed link. Always true, so the browser never navigates: the view takes its own page
  // and parameter links, and cancels every other address.
  bool OnBeforeNavigate2(const char* url);
  // The view's own pages ("params://...").
  bool OnAppCmd(const char* url);
  // A parameter link: opens the dialog of the parameter it names and refreshes the page.
  bool OnParam(const char* url);
  // Opens the dialog of the parameter at an index after the access check; true when the user
  // confirmed. Nothing opens for a type without a dialog or when the check refuses.
  // A record with a ParamHandler is asked after a confirmed dialog, with a manager over this
  // view's array and a wrapper on the edited record: false refuses the new values, and the
  // record goes back to what it was before the dialog (the page and the WHERE text stay).
  virtual bool HandleStdParam(int index);
  // Called after a followed link changed the parameter at an index, before the page is shown
  // again: the report's WHERE text (GetWhereString) has changed with it.
  virtual void OnParamChanged(int /*index*/) {}
  // The lookup chooser of lookup parameters (several records or one).
  bool ShowLookupCtrl(ZEST_PARAMS* param, bool multiple, const _variant_t& value);

  // No parameter line to show.
  bool IsContentEmpty() const;

  // The condition of one parameter in parentheses, or "".
  std::string GetWhereString(int index);
  // The condition of the whole list in parentheses, or "". Parameters without a column add
  // their own condition through their GetWhereHandler.
  std::string GetWhereString() const;

 private:
  const varion::SqlDialect& Dialect() const { return m_dialect ? *m_dialect : varion::SqlServerDialect(); }

  CArrZestParams m_params;
  varion::db::Connection m_connection;
  const varion::SqlDialect* m_dialect = nullptr;
  varion::params::IParamDialogs* m_dialogs = nullptr;
  int m_dialogOption = 0;
  std::string m_definedColor = kDefaultDefinedColor;
  std::string m_undefinedColor = kDefaultUndefinedColor;
  std::string m_fontFamily = kDefaultFontFamily;
  std::string m_fontSize = kDefaultFontSize;
  bool m_highlight = false;
  std::string m_contents;
};
