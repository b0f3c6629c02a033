#pragma once

#include "CommandLine/Session.h"

namespace stintbook {

void printStoreInformation(Session& session);

} // namespace stintbook
