// Resource identifiers of the contractor form of the gallery (contractor_form_win.rc).
#pragma once

#define IDD_GALLERY_CONTRACTOR 9501
#define IDC_GC_NAME 9511
#define IDC_GC_NIP 9512
#define IDC_GC_LIMIT 9513
#define IDC_GC_FROM 9514
#define IDC_GC_TO 9515
#define IDC_GC_BRANCH 9516
#define IDC_GC_EMAIL 9517
#define IDC_GC_NOTE 9518
#define IDC_GC_LABEL 9520
