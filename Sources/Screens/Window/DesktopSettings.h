#pragma once

namespace stintbook::desktopsettings {

/// Whether this desktop has a program for its settings.
bool canBeOpened();
void open();

} // namespace stintbook::desktopsettings
