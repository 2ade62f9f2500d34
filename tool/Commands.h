#pragma once

#include "QELModels/Platform/Export.h"

/// @file
/// The commands, one a source file. Each adds itself to the command line.

namespace QELModels::tool {

class CommandLine;

void addListCommand(CommandLine& commandLine);
void addMapCommand(CommandLine& commandLine);
void addFactsCommand(CommandLine& commandLine);
void addNextCommand(CommandLine& commandLine);
void addImageURLCommand(CommandLine& commandLine);
void addTextCommand(CommandLine& commandLine);
void addDurationCommand(CommandLine& commandLine);
void addColorCommand(CommandLine& commandLine);
void addExplainCommand(CommandLine& commandLine);
void addAuditCommand(CommandLine& commandLine);
void addSchemaCommand(CommandLine& commandLine);
void addGenerateCommand(CommandLine& commandLine);

}  // namespace QELModels::tool
