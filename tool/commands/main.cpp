#include <string>
#include <vector>

#include "tool/commands/Commands.h"

int main(int count, char* arguments[]) {
    // Without a program's name, as some callers start programs, there are no arguments either.
    char** first = count > 0 ? arguments + 1 : arguments;
    return static_cast<int>(QELModels::tool::runProgram(std::vector<std::string>(first, arguments + count)));
}
