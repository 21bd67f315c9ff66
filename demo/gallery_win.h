// The gallery: a small host application that shows every capability of the library, one page
// each. A page registers itself with VARION_GALLERY_PAGE and builds its controls in Create.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace varion::demo {

// What every page may use.
struct GalleryContext {
  std::wstring outDir;        // where files for people go (out/demo), a Windows path
  std::wstring databasePath;  // the demo database file, a Windows path
  HFONT font = nullptr;       // the gallery's dialog font
  HFONT boldFont = nullptr;
};

class GalleryPage {
 public:
  virtual ~GalleryPage() = default;
  virtual std::wstring Title() const = 0;    // Polish, shown in the page list
  virtual std::string Slug() const = 0;      // ASCII, names the screenshot file
  // Creates the page's controls as children of `page`, a blank window filling the content area.
  virtual void Create(HWND page, GalleryContext& ctx) = 0;
  // Without a display, before the screenshot: put the page into a state worth looking at.
  virtual void Exercise(HWND /*page*/) {}
  // Without a display, after screenshot `shot` (1, 2...): put the page into its next state worth
  // a picture; false when it has no more.
  virtual bool NextShot(HWND /*page*/, int /*shot*/) { return false; }
  // WM_COMMAND from a child of the page; true when handled.
  virtual bool OnCommand(HWND /*page*/, int /*id*/, int /*code*/, HWND /*control*/) { return false; }
  // WM_NOTIFY from a child of the page; true, with `result` set, when handled.
  virtual bool OnNotify(HWND /*page*/, const NMHDR& /*header*/, LRESULT& /*result*/) { return false; }
  // Any other message to the page window (a control's own message to its parent); true, with
  // `result` set, when handled.
  virtual bool OnMessage(HWND /*page*/, UINT /*msg*/, WPARAM /*wp*/, LPARAM /*lp*/, LRESULT& /*result*/) {
    return false;
  }
  // The page window is being destroyed (another page is shown, or the gallery closes).
  virtual void OnPageDestroyed() {}
};

using PageFactory = std::unique_ptr<GalleryPage> (*)();
std::vector<std::pair<int, PageFactory>>& PageRegistry();

struct PageRegistration {
  PageRegistration(int order, PageFactory factory) { PageRegistry().emplace_back(order, factory); }
};

#define VARION_GALLERY_PAGE(order, Type)                                 \
  static const ::varion::demo::PageRegistration kGalleryPage##Type(      \
      order, []() -> std::unique_ptr<::varion::demo::GalleryPage> { return std::make_unique<Type>(); })

// Small helpers for building pages; texts are code page 1250.
HWND AddLabel(HWND parent, const GalleryContext& ctx, int x, int y, int w, int h, const std::string& text,
              bool bold = false);
HWND AddEdit(HWND parent, const GalleryContext& ctx, int id, int x, int y, int w, int h, const std::string& text,
             DWORD extraStyle = 0);
HWND AddButton(HWND parent, const GalleryContext& ctx, int id, int x, int y, int w, int h, const std::string& text);
void SetText(HWND window, const std::string& text);
std::string GetText(HWND window);

}  // namespace varion::demo
