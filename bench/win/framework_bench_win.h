// Resource identifiers of the framework benchmark: controls 1000..1099 in the order of the
// template (50 integer edits, 20 amount edits, 10 date edits, 10 check boxes, 10 combos).
#pragma once

#define IDD_BENCH_FORM 9601
#define IDC_BENCH_FIRST 1000
