#include "CommandLine/CommandTree.h"

namespace stintbook {

void addDataCommands(CommandTree& tree)
{
    auto noun = tree.noun("data", "Everything that was recorded, as a whole");
    addDataCopyCommands(noun);
    addHistoryCommands(noun);
}

} // namespace stintbook
