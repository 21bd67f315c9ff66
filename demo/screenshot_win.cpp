#include "demo/screenshot_win.h"

// GDI+ wants the COM stream declarations, which the lean Windows headers leave out.
#include <objidl.h>
#include <gdiplus.h>

#include <cstdio>

#include "base/handles_win.h"

namespace varion::demo {
namespace {

// The class identifier of GDI+'s built-in PNG encoder ("image/png").
constexpr CLSID kPngEncoder = {0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

// GDI+ for the length of one save: started and shut down on the calling thread.
class GdiplusSession {
 public:
  GdiplusSession() {
    Gdiplus::GdiplusStartupInput input{};
    input.GdiplusVersion = 1;
    m_ok = Gdiplus::GdiplusStartup(&m_token, &input, nullptr) == Gdiplus::Ok;
  }
  ~GdiplusSession() {
    if (m_ok) Gdiplus::GdiplusShutdown(m_token);
  }
  GdiplusSession(const GdiplusSession&) = delete;
  GdiplusSession& operator=(const GdiplusSession&) = delete;
  explicit operator bool() const { return m_ok; }

 private:
  ULONG_PTR m_token = 0;
  bool m_ok = false;
};

bool Fail(const char* what, int status) {
  std::fprintf(stderr, "screenshot: %s failed (%d)\n", what, status);
  return false;
}

}  // namespace

bool SaveWindowPng(HWND window, const std::wstring& path) {
  RECT r;
  if (!IsWindow(window) || !GetWindowRect(window, &r)) return Fail("finding the window", 0);
  const int w = r.right - r.left, h = r.bottom - r.top;
  if (w <= 0 || h <= 0) return Fail("sizing the window", 0);

  WindowDc screen(nullptr);
  unique_dc mem(CreateCompatibleDC(screen.get()));
  unique_bitmap bitmap(CreateCompatibleBitmap(screen.get(), w, h));
  if (!mem || !bitmap) return Fail("making the bitmap", static_cast<int>(GetLastError()));
  {
    SelectedObject selected(mem.get(), bitmap.get());
    if (!BitBlt(mem.get(), 0, 0, w, h, screen.get(), r.left, r.top, SRCCOPY))
      return Fail("copying the screen", static_cast<int>(GetLastError()));
  }

  GdiplusSession gdiplus;
  if (!gdiplus) return Fail("starting GDI+", 0);
  Gdiplus::GpBitmap* image = nullptr;
  Gdiplus::GpStatus status = Gdiplus::DllExports::GdipCreateBitmapFromHBITMAP(bitmap.get(), nullptr, &image);
  if (status != Gdiplus::Ok) return Fail("GdipCreateBitmapFromHBITMAP", status);
  status = Gdiplus::DllExports::GdipSaveImageToFile(image, path.c_str(), &kPngEncoder, nullptr);
  Gdiplus::DllExports::GdipDisposeImage(image);
  if (status != Gdiplus::Ok) return Fail("GdipSaveImageToFile", status);
  return true;
}

}  // namespace varion::demo
