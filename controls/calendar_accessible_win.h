// What screen readers see of a month calendar: an accessible object whose name is the month's
// title, whose value is the focused day written out ("wtorek, 31 grudnia 2024"), and whose 42
// children are the days of the grid.
#pragma once

#include <windows.h>

#include <string>

#include "base/date_time.h"

namespace varion {

// The day as a reader speaks it: weekday, day, month in the genitive, year; "" for a day that is
// not valid.
std::wstring SpokenDate(const COleDateTime& date);

// Answers WM_GETOBJECT for the calendar window: an object for OBJID_CLIENT, 0 for anything else
// (the window then passes the message on).
LRESULT AnswerCalendarGetObject(HWND calendar, WPARAM wParam, LPARAM lParam);

// Tells accessibility clients that the focused day moved: a focus event on the day's child and
// a value change on the calendar. `index` is the focused cell, 0..41.
void NotifyCalendarFocus(HWND calendar, int index);

}  // namespace varion
