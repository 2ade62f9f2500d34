#include "tool/System.h"
#include "tool/commands/Commands.h"

int main(int count, char* arguments[]) {
    using namespace QELModels::tool;
    return static_cast<int>(runProgram(system::programArguments(count, arguments)));
}
