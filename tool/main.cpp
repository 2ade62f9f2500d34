#include <string>
#include <vector>

#include "tool/CommandLine.h"

int main(int count, char* arguments[]) {
    using namespace QELModels::tool;
    // Without a program's name, as some callers start programs, there are no arguments either.
    char** first = count > 0 ? arguments + 1 : arguments;
    return static_cast<int>(CommandLine().run(std::vector<std::string>(first, arguments + count)));
}
