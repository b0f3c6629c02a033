#include <iostream>

#include "CommandLine/CommandTree.h"

int main(int argumentCount, char** arguments)
{
    using namespace stintbook;
    CommandTree tree;
    addRecordingCommands(tree);
    addDayCommands(tree);
    addWorkCommands(tree);
    addClientCommands(tree);
    addProjectCommands(tree);
    addRuleCommands(tree);
    addBillingCommands(tree);
    addExportCommands(tree);
    addStoreCommands(tree);
    return tree.run(argumentCount, arguments, processEnvironment(), std::cout, std::cerr);
}
