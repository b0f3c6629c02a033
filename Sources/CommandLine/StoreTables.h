#pragma once

#include "CommandLine/Session.h"

namespace stintbook {

void printStoreInformation(Session& session);
/// The findings one by one, as they come. Ends the command when there are any.
void printStoreCheck(Session& session);

} // namespace stintbook
