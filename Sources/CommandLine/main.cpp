#include <initializer_list>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

#include "CommandLine/CommandTree.h"

namespace {

/// A standard stream that the caller closed would lend its number to a file that is opened later, which then
/// received what is printed. Opened the wrong way round, it refuses as a closed one does.
void occupyClosedStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

} // namespace

int main(int argumentCount, char** arguments)
{
    using namespace stintbook;
    occupyClosedStreams();
    CommandTree tree;
    addRecordingCommands(tree);
    addDayCommands(tree);
    addWorkCommands(tree);
    addClientCommands(tree);
    addProjectCommands(tree);
    addRuleCommands(tree);
    addBillingCommands(tree);
    addExportCommands(tree);
    addDataCommands(tree);
    addPreferenceCommands(tree);
    addStoreCommands(tree);
    return tree.run(argumentCount, arguments, processEnvironment(), std::cout, std::cerr);
}
