#include "CommandLine/CommandTree.h"
#include "CommandLine/StoreTables.h"

namespace stintbook {

void addStoreCommands(CommandTree& tree)
{
    auto noun = tree.noun("store", "Where everything is kept");
    auto info = noun.verb("info", "Path, version, counts, span, sizes and last cleanup");
    info.runs([](Session& session) { printStoreInformation(session); });
    auto check = noun.verb("check", "Name everything that is wrong with the store; changes nothing");
    check.runs([](Session& session) { printStoreCheck(session); });
}

} // namespace stintbook
