#pragma once

#include <string>
#include <vector>

#include "QELModels/Platform/Export.h"

namespace CLI {
class App;
}

namespace QELModels::tool {

/// The program as its own definitions describe it: all that the manual and the completions are made of.
struct Manual {
    /// An argument by place, or an option.
    struct Argument {
        std::vector<std::string>
            names;         ///< of an option, such as "--help" and "-h"; empty: an argument by place
        std::string type;  ///< what the help calls the value; empty when there is none
        std::string description;
        std::vector<std::string> words;  ///< all values that there are, where they are few
        bool isRepeated = false;

        bool isFile() const { return type.ends_with("FILE") || type == "OUT"; }
    };

    struct Command {
        std::string name;
        std::vector<std::string> usage;  ///< one line for each way to call it
        std::string description;
        std::vector<Argument> arguments;
        std::vector<Argument> options;

        std::vector<std::string> optionNames() const;
        /// The names of the options that have a value.
        std::vector<std::string> valuedOptionNames() const;
    };

    Command program;  ///< with the options of the program itself
    std::string footer;
    std::vector<Command> commands;

    std::vector<std::string> commandNames() const;
};

/// The manual of a program, without the commands that are hidden from people.
Manual manualOf(const CLI::App& program);

/// The page of the manual, for `man`.
std::string manualPage(const Manual& manual);
/// The completions for three shells.
std::string bashCompletion(const Manual& manual);
std::string zshCompletion(const Manual& manual);
std::string fishCompletion(const Manual& manual);

}  // namespace QELModels::tool
