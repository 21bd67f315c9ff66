// Identifiers of the host's own resources. The library's templates use identifiers below 20000,
// and its templates are searched before the program's, so a host keeps its own above that.
#pragma once

#define IDD_HOST_CONTRACTOR 20001
#define IDC_HOST_NAME 20101
#define IDC_HOST_LIMIT 20102
#define IDC_HOST_SINCE 20103
#define IDC_HOST_NIP 20104
#define IDC_HOST_BRANCH 20105
