#include "Platform/WaylandProtocols.h"

// Generated C; the declarations above give its tables their linkage.
extern "C" {
#include <ext-idle-notify-v1-code.h>
#include <idle-code.h>
#include <wlr-foreign-toplevel-management-unstable-v1-code.h>
}
