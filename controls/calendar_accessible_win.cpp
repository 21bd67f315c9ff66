#include "controls/calendar_accessible_win.h"

#include <oleacc.h>

#include <atomic>

#include "base/text.h"
#include "controls/calendar_tools.h"
#include "controls/calendar_win.h"
#include "controls/holidays.h"

namespace varion {

namespace {

constexpr LONG kDays = 42;

// oleacc is loaded when a client first asks, so that programs without readers never map it.
using LresultFromObjectFn = LRESULT(WINAPI*)(REFIID, WPARAM, LPUNKNOWN);
LresultFromObjectFn LresultFromObjectProc() {
  static const LresultFromObjectFn proc = [] {
    HMODULE oleacc = LoadLibraryW(L"oleacc.dll");
    return oleacc ? reinterpret_cast<LresultFromObjectFn>(
                        reinterpret_cast<void*>(GetProcAddress(oleacc, "LresultFromObject")))
                  : nullptr;
  }();
  return proc;
}

HRESULT ReturnString(const std::wstring& text, BSTR* out) {
  if (!out) return E_POINTER;
  *out = text.empty() ? nullptr : SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return text.empty() ? S_FALSE : (*out ? S_OK : E_OUTOFMEMORY);
}

bool IsChild(const VARIANT& v, LONG* index) {
  if (v.vt != VT_I4) return false;
  if (index) *index = v.lVal - 1;
  return v.lVal >= 1 && v.lVal <= kDays;
}
bool IsSelf(const VARIANT& v) { return v.vt == VT_I4 && v.lVal == CHILDID_SELF; }

// The calendar as a client area with one cell per day. It holds only the window: a reader may
// keep it after the window is gone, and then every question fails politely.
class CalendarAccessible final : public IAccessible {
 public:
  explicit CalendarAccessible(HWND window) : m_window(window) {}

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IAccessible)) {
      *out = static_cast<IAccessible*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++m_refs; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --m_refs;
    if (left == 0) delete this;
    return left;
  }

  // IDispatch: readers use the vtable; nothing is scripted through names.
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count) *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }

  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** parent) override {
    if (!parent) return E_POINTER;
    *parent = nullptr;
    return S_FALSE;
  }
  STDMETHODIMP get_accChildCount(LONG* count) override {
    if (!count) return E_POINTER;
    *count = Calendar() ? kDays : 0;
    return Calendar() ? S_OK : E_FAIL;
  }
  STDMETHODIMP get_accChild(VARIANT, IDispatch** child) override {
    if (child) *child = nullptr;
    return S_FALSE;  // the days are simple elements of this object
  }
  STDMETHODIMP get_accName(VARIANT id, BSTR* name) override {
    CVelCalendar* c = Calendar();
    if (!c) return E_FAIL;
    LONG index = 0;
    if (IsSelf(id)) return ReturnString(text::Cp1250ToWide(c->Model().GetTitle()), name);
    if (!IsChild(id, &index)) return E_INVALIDARG;
    return ReturnString(SpokenDate(c->Model().GetCellDate(index)), name);
  }
  STDMETHODIMP get_accValue(VARIANT id, BSTR* value) override {
    CVelCalendar* c = Calendar();
    if (!c) return E_FAIL;
    if (!IsSelf(id)) return IsChild(id, nullptr) ? ReturnString({}, value) : E_INVALIDARG;
    return ReturnString(SpokenDate(c->Model().GetFocusedDate()), value);
  }
  STDMETHODIMP get_accDescription(VARIANT id, BSTR* description) override {
    // A day's holiday, as the tooltip names it.
    CVelCalendar* c = Calendar();
    LONG index = 0;
    if (!c || !IsChild(id, &index)) return ReturnString({}, description);
    const COleDateTime date = c->Model().GetCellDate(index);
    const char* holiday = date.IsValid() ? HolidayNameOf(date) : nullptr;
    return ReturnString(holiday ? text::Cp1250ToWide(holiday) : std::wstring(), description);
  }
  STDMETHODIMP get_accRole(VARIANT id, VARIANT* role) override {
    if (!role) return E_POINTER;
    if (!IsSelf(id) && !IsChild(id, nullptr)) return E_INVALIDARG;
    role->vt = VT_I4;
    role->lVal = IsSelf(id) ? ROLE_SYSTEM_TABLE : ROLE_SYSTEM_CELL;
    return S_OK;
  }
  STDMETHODIMP get_accState(VARIANT id, VARIANT* state) override {
    CVelCalendar* c = Calendar();
    if (!state) return E_POINTER;
    if (!c) return E_FAIL;
    state->vt = VT_I4;
    LONG index = 0;
    if (IsSelf(id)) {
      state->lVal = STATE_SYSTEM_FOCUSABLE | (GetFocus() == m_window ? STATE_SYSTEM_FOCUSED : 0);
      return S_OK;
    }
    if (!IsChild(id, &index)) return E_INVALIDARG;
    LONG s = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (index == c->Model().GetFocusedIndex()) {
      s |= STATE_SYSTEM_SELECTED | (GetFocus() == m_window ? STATE_SYSTEM_FOCUSED : 0);
    }
    if (!c->Model().IsInRange(c->Model().GetCellDate(index))) s |= STATE_SYSTEM_UNAVAILABLE;
    state->lVal = s;
    return S_OK;
  }
  STDMETHODIMP get_accHelp(VARIANT, BSTR* help) override { return ReturnString({}, help); }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) override {
    if (file) *file = nullptr;
    if (topic) *topic = 0;
    return S_FALSE;
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* shortcut) override { return ReturnString({}, shortcut); }
  STDMETHODIMP get_accFocus(VARIANT* focus) override {
    CVelCalendar* c = Calendar();
    if (!focus) return E_POINTER;
    focus->vt = VT_EMPTY;
    if (!c || GetFocus() != m_window) return S_FALSE;
    focus->vt = VT_I4;
    focus->lVal = c->Model().GetFocusedIndex() + 1;
    return S_OK;
  }
  STDMETHODIMP get_accSelection(VARIANT* selection) override {
    CVelCalendar* c = Calendar();
    if (!selection) return E_POINTER;
    selection->vt = VT_EMPTY;
    if (!c) return E_FAIL;
    selection->vt = VT_I4;
    selection->lVal = c->Model().GetFocusedIndex() + 1;
    return S_OK;
  }
  STDMETHODIMP get_accDefaultAction(VARIANT, BSTR* action) override { return ReturnString({}, action); }
  STDMETHODIMP accSelect(LONG, VARIANT) override { return E_NOTIMPL; }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT id) override {
    CVelCalendar* c = Calendar();
    if (!left || !top || !width || !height) return E_POINTER;
    if (!c) return E_FAIL;
    RECT r{};
    LONG index = 0;
    if (IsSelf(id)) {
      GetClientRect(m_window, &r);
    } else if (IsChild(id, &index)) {
      const CalRect cell = c->Layout().Cell(index);
      r = RECT{cell.left, cell.top, cell.right, cell.bottom};
    } else {
      return E_INVALIDARG;
    }
    MapWindowPoints(m_window, nullptr, reinterpret_cast<POINT*>(&r), 2);
    *left = r.left;
    *top = r.top;
    *width = r.right - r.left;
    *height = r.bottom - r.top;
    return S_OK;
  }
  STDMETHODIMP accNavigate(LONG, VARIANT, VARIANT* end) override {
    if (end) end->vt = VT_EMPTY;
    return S_FALSE;
  }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* hit) override {
    CVelCalendar* c = Calendar();
    if (!hit) return E_POINTER;
    hit->vt = VT_EMPTY;
    if (!c) return E_FAIL;
    POINT p{x, y};
    ScreenToClient(m_window, &p);
    RECT client;
    GetClientRect(m_window, &client);
    if (!PtInRect(&client, p)) return S_FALSE;
    int cell = -1;
    c->Layout().HitTest(p.x, p.y, &cell);
    hit->vt = VT_I4;
    hit->lVal = cell >= 0 ? cell + 1 : CHILDID_SELF;
    return S_OK;
  }
  STDMETHODIMP accDoDefaultAction(VARIANT) override { return E_NOTIMPL; }
  STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

 private:
  ~CalendarAccessible() = default;
  CVelCalendar* Calendar() const { return IsWindow(m_window) ? CVelCalendar::FromHandle(m_window) : nullptr; }

  HWND m_window;
  std::atomic<ULONG> m_refs{1};
};

}  // namespace

std::wstring SpokenDate(const COleDateTime& date) {
  if (!date.IsValid()) return {};
  return text::Cp1250ToWide(CCalendarUtils::GetDayName(date.GetDayOfWeek())) + L", " +
         std::to_wstring(date.GetDay()) + L" " + CalendarTools::GetMonthDescr(date.GetMonth(), true) + L" " +
         std::to_wstring(date.GetYear());
}

LRESULT AnswerCalendarGetObject(HWND calendar, WPARAM wParam, LPARAM lParam) {
  if (static_cast<LONG>(lParam) != OBJID_CLIENT) return 0;
  const LresultFromObjectFn lresultFromObject = LresultFromObjectProc();
  if (!lresultFromObject) return 0;
  auto* object = new CalendarAccessible(calendar);
  const LRESULT r = lresultFromObject(__uuidof(IAccessible), wParam, object);
  object->Release();  // the result holds its own reference
  return r;
}

void NotifyCalendarFocus(HWND calendar, int index) {
  if (index < 0 || index >= kDays) return;
  NotifyWinEvent(EVENT_OBJECT_FOCUS, calendar, OBJID_CLIENT, index + 1);
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, calendar, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace varion
