// Resource identifiers of the framework's Windows tests (framework_wintest.rc).
#pragma once

#define IDS_TEST_MINCHARS 9001
#define IDS_TEST_OTHER 9002
#define IDS_TEST_FILL 9003

#define IDD_TEST_EXCHANGE 9101
#define IDD_TEST_FORM 9102
#define IDD_TEST_PAGE 9103
#define IDD_TEST_FLEX 9104
#define IDA_TEST 9110

// Exchange template.
#define IDC_X_NUMBER 101
#define IDC_X_EDIT 102
#define IDC_X_STATIC 103
#define IDC_X_AMOUNT 104
#define IDC_X_DATE 105
#define IDC_X_CHECK 110
#define IDC_X_CHECK3 111
#define IDC_X_RADIO1 120
#define IDC_X_RADIO2 121
#define IDC_X_RADIO_LABEL 122
#define IDC_X_RADIO3 123
#define IDC_X_AFTER_GROUP 124
#define IDC_X_YES 125
#define IDC_X_NO 126
#define IDC_X_COMBO 130
#define IDC_X_DROPLIST 131
#define IDC_X_LIST 140
#define IDC_X_CHECKLIST 150
#define IDC_X_SCROLL 160
#define IDC_X_SLIDER 161
#define IDC_X_DATEPICK 170
#define IDC_X_TIMEPICK 171
#define IDC_X_TIMEEDIT 172
#define IDC_X_COLOR 180
#define IDC_X_ANALITYKA 190
#define IDC_X_MISSING 999

// Form template.
#define IDC_F_NAME 201
#define IDC_F_NIP 202
#define IDC_F_LIMIT 203
#define IDC_F_DATE 204
#define IDC_F_BRANCH 205
#define IDC_F_NOTE 206
#define IDC_F_LABEL 207
#define IDC_F_INFO 208
#define IDC_F_CLOSE 209
#define IDC_F_PAGE 210
#define IDC_F_CHECK 211
#define IDC_F_DISABLED 212

// Nested page template.
#define IDC_P_CITY 301
#define IDC_P_STREET 302
