// Identifiers of the parameter dialogs' templates and controls in the library's resources. The
// templates stay below 20000, where the library's own resources live; the controls are shared by
// the three templates, so one dialog base finds them in each.
#pragma once

#define IDD_PARAMDLG_STRING 16100
#define IDD_PARAMDLG_CURRENCY 16101
#define IDD_PARAMDLG_DATE 16102

#define IDC_PARAMDLG_LABEL 1600     // the parameter's label or prompt
#define IDC_PARAMDLG_OPERATOR 1601  // the operators the record allows (drop-down list)
#define IDC_PARAMDLG_VALUE 1602     // the value, or the lower bound of a range
#define IDC_PARAMDLG_VALUE2 1603    // the upper bound of a range
#define IDC_PARAMDLG_ANY 1604       // "any value", where the record allows it
#define IDC_PARAMDLG_TO 1605        // the text between the two bounds
