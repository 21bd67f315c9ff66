// A report-style list view that shows a grid configuration's list: the window half of
// ListViewModel. It fills the columns and rows and turns the header's clicks, drags and resizes
// into configuration changes. The parent forwards its WM_NOTIFY messages to OnNotify.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/window_base_win.h"
#include "db/connection.h"
#include "grid/list_view_model.h"

namespace varion {

class VARION_API ListViewGrid : public Window {
 public:
  ListViewGrid(CMapCustGridCfg& cfg, db::Connection connection);
  ~ListViewGrid() override;

  HWND Create(HWND parent, int id, const RECT& rect, HFONT font);
  HWND Window() const { return m_list.get(); }
  ListViewModel& Model() { return m_model; }

  // Reads the rows again and shows them under the configuration's columns. Raises ComError.
  void Refresh();
  // The list view's and its header's notifications; true, with the result set, when handled.
  // A database failure while showing the change is passed to the error callback, or without
  // one to the library's failure boundary (logged and shown); it is never thrown.
  bool OnNotify(const NMHDR& header, LRESULT& result);
  void SetOnError(std::function<void(const ComError&)> callback) { m_error = std::move(callback); }
  // Called after each change the user made to the layout (sort, order, width), once the list
  // shows it.
  void SetOnLayoutChanged(std::function<void()> callback) { m_changed = std::move(callback); }

 protected:
  LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
  std::string FailureArea() const override { return "list view"; }

 private:
  void FillColumns();
  void FillRows(const std::vector<std::vector<std::string>>& rows);
  void ApplyDrag(int dragged);
  void Changed();
  // Shows the change and tells the callback; a failure goes to the error callback.
  void RefreshAfterChange();

  CMapCustGridCfg& m_cfg;
  ListViewModel m_model;
  db::Connection m_connection;
  unique_window m_list;
  std::function<void()> m_changed;
  std::function<void(const ComError&)> m_error;
  bool m_filling = false;
};

}  // namespace varion
