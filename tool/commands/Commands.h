#pragma once

#include <string>
#include <vector>

#include "QELModels/Platform/Export.h"
#include "tool/CommandLine.h"

namespace QELModels::tool {

/// Runs the program with all its commands. The program's name is not among the arguments.
ExitStatus runProgram(std::vector<std::string> arguments);

}  // namespace QELModels::tool
