// Registration of the library's window classes and the per-thread creation hook that attaches
// the library's control objects to windows of those classes as they are created, so that a host
// dialog template can name "vel_curredit" and get a working control.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>

#include "base/export.h"

// The style the library's drawing uses for one window.
enum VEL_VISUAL_STYLE : int {
  VVS_DEFAULT = 0,  // whatever the window's parents (or the system) use
  VVS_CLASSIC = 1,  // flat system colours, no themes
  VVS_THEMED = 2,   // the visual styles of the system's theme
  VVS_OFFICE = 3,   // light gradients of the business applications' ribbon look
};

// Attaches a control object to a window just created; the result is what the hook's dispatch
// returns (TRUE when something was attached).
using VelSubclassProc = BOOL (*)(HWND window, CREATESTRUCTW* create);

// The grid library is closed and not ours: the host hands its entry points over before InitGrid.
struct GridLibraryBinding {
  void (*GXInit)(unsigned int flags) = nullptr;
  void (*GXSetNewGridLineMode)(BOOL enable, unsigned int flags) = nullptr;
  void (*GXTerminate)() = nullptr;
};

class VARION_API CHookSupp {
 public:
  // Set once the library's classes are registered; nothing is hooked before.
  static std::atomic<int> m_bInitialized;
  // Raised while a subclass procedure runs from the hook.
  static std::atomic<int> m_nHookGuard;
  // The host module state handed to InitVXAXVelControls.
  static void* m_pVXAXState;

  // Registers "VXAX_Edit", "VXAX_ListBox" and "VXAX_ComboBox", then the library's own classes
  // unless that was done before.
  static void InitVXAXVelControls(void* moduleState);
  static void InitVelControls();
  static void InitDefSubProcMap();
  // Unregisters the classes and empties the map (process detach).
  static void TermVelControls();

  // Registers one class: a copy of `baseClass` when given (its procedure, style, cursor and
  // brush; `proc` is not used), else a class of its own with `proc`, the arrow cursor, `brush`
  // and `style`. Either way global (CS_GLOBALCLASS) and of the library's module. A failed
  // registration is not reported.
  static void RegisterVelClass(const char* className, WNDPROC proc, const char* baseClass, HBRUSH brush, UINT style);

  static void AddSubclassProc(const char* className, VelSubclassProc proc);
  static void RemoveSubclassProc(const char* className);
  static void RemoveSubclassProc(VelSubclassProc proc);
  static VelSubclassProc FindSubclassProc(const char* className);

  // The calling thread's creation hook.
  static void InstallUIHook();
  static void RemoveUIHook();
  static void SetCbtFilter();
  static void RemoveCbtFilter();
  static bool IsUIHookInstalled();
  // Removes the hooks of every thread (the library is being unloaded) and how many are in place.
  static void RemoveAllUIHooks();
  static std::size_t InstalledUIHookCount();

  // Looks the window's class up and runs its subclass procedure. A class name of 100 characters
  // or more stops the process (deliberately: such a name means the window's class data is
  // damaged, and cutting it could attach the wrong object).
  static BOOL Dispatch(HWND window, CREATESTRUCTW* create);

  // The run-time switch of dispatching (on by default), for code that must create windows of
  // the library's classes without their objects.
  static void SetSubclassingEnabled(bool enabled);
  static bool IsSubclassingEnabled();

  static VEL_VISUAL_STYLE GetVisualStyle(HWND window);
  static void SetVisualStyle(HWND window, VEL_VISUAL_STYLE style);

  static void SetGridBinding(const GridLibraryBinding& binding);
  // False when the host has not bound the grid library.
  static bool InitGrid(unsigned int flags);
  static void TerminateGrid();

 private:
  static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
};

// Class names of the library, in registration order (for tests and documentation tools).
namespace varion {
struct VelClassEntry {
  const char* name;
  const char* baseClass;     // nullptr: a class of its own with the default window procedure
  VelSubclassProc subclass;  // nullptr: not in the subclass map
};
VARION_API const VelClassEntry* VelClassTable(std::size_t* count);
}  // namespace varion
