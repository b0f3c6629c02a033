#pragma once

#include "App/ExportDesk.h"
#include "App/OpenedStore.h"

namespace stintbook {

/// Places the text on the desktop's clipboard through the desktop's own helper program: wl-copy under
/// Wayland, xclip or xsel under X11. A clipboard belongs to a process, and the command line's ends at once.
ExportDesk::Delivery clipboardDelivery(const Environment& environment);

} // namespace stintbook
