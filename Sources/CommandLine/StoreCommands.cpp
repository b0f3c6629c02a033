#include "CommandLine/CommandTree.h"
#include "CommandLine/StoreTables.h"

namespace stintbook {

void addStoreCommands(CommandTree& tree)
{
    auto noun = tree.noun("store", "Where everything is kept");
    auto info = noun.verb("info", "Path, version, counts and sizes");
    info.runs([](Session& session) { printStoreInformation(session); });
}

} // namespace stintbook
