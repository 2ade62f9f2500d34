// Promise: the manual and the shells' completions have every command and option that the help has, the
// programs that read them find no fault in them, and they complete what may follow at the cursor.

#include <gtest/gtest.h>

#include <ostream>
#include <regex>
#include <set>
#include <string>

#include "tests/Command.h"

namespace QELModels::test {
namespace {

// What a line for the shell answers, messages included; $Q is the command.
ShellAnswer shell(const std::string& line) {
    return askShell(QELMODELS_COMMAND, line);
}

// What a test cannot do without and does not have; empty if it has all.
std::string missing(const std::string& program) {
    if (!hasShell()) return "no POSIX shell";
    return shell("command -v " + program).status == 0 ? std::string() : "no " + program;
}

// The first group of each match.
std::set<std::string> found(const std::string& text, const char* expression) {
    const std::regex regex(expression);
    std::set<std::string> all;
    for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
        all.insert(at->str(1));
    return all;
}

TEST(Generate, HasAllThatTheHelpHas) {
    const std::string help = run("--help").out;
    const auto commands = found(help.substr(help.find("\nCommands:")), "\n  ([a-z][-a-z]*) ");
    ASSERT_GE(commands.size(), 11U);
    ASSERT_FALSE(commands.contains("generate")) << "it is for those who build packages";
    for (const std::string form : {"man", "bash", "zsh", "fish"}) {
        const Result generated = run("generate " + form);
        ASSERT_EQ(generated.status, 0) << generated.err;
        // The manual writes every dash as a minus sign, fish names options without dashes.
        const std::string text = std::regex_replace(generated.out, std::regex(R"(\\-)"), "-");
        for (const std::string& command : commands) {
            EXPECT_NE(text.find(form == "zsh" ? "'" + command + ":" : command), std::string::npos)
                << form << ' ' << command;
            for (const std::string& option : found(run(command + " --help").out, "[ ,]--([-a-z]+)"))
                EXPECT_NE(text.find((form == "fish" ? " -l " : "--") + option), std::string::npos)
                    << form << ' ' << command << " --" << option;
        }
    }
}

struct Reader {
    const char *program, *check;
};
void PrintTo(const Reader& reader, std::ostream* out) {
    *out << reader.program;
}
class EveryReader : public testing::TestWithParam<Reader> {};

TEST_P(EveryReader, FindsNoFault) {
    if (const std::string what = missing(GetParam().program); !what.empty()) GTEST_SKIP() << what;
    const ShellAnswer answer = shell(GetParam().check);
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.text, "");
}

INSTANTIATE_TEST_SUITE_P(
    Generate, EveryReader,
    testing::Values(Reader{"man", "$Q generate man | MANWIDTH=80 man --warnings -l - >/dev/null"},
                    Reader{"bash", "$Q generate bash | bash -n"}, Reader{"zsh", "$Q generate zsh | zsh -n"},
                    Reader{"fish", "$Q generate fish | fish -n"}),
    [](const auto& reader) { return std::string(reader.param.program); });

// What is typed, the word at the cursor last, and what completes that word.
struct Completion {
    std::string before, word, expected;
};
const Completion kCompletions[] = {
    {"", "ex", "explain"},
    {"facts", "", "asset category editorial"},
    {"map --compact", "edi", "editorial editorials"},
    {"map --key-path asset", "seasons", "seasons"},
    {"image-url --auto", "", "height width"},
    {"text", "de", "decode"},
    {"audit asset a.json", "--thr", "--threads"},
};

// The script's answer, one word a line, in the order of the alphabet.
void expectCompletions(std::string callWith(const Completion&)) {
    for (const Completion& row : kCompletions) {
        SCOPED_TRACE("qelmodels " + row.before + " " + row.word);
        EXPECT_EQ(shell(callWith(row) + " | cut -f1 | LC_ALL=C sort | paste -sd' '").text,
                  row.expected + "\n");
    }
}

TEST(Generate, CompletesInBash) {
    if (const std::string what = missing("bash"); !what.empty()) GTEST_SKIP() << what;
    expectCompletions([](const Completion& row) {
        return "bash -c 'source <($Q generate bash); COMP_WORDS=(qelmodels " + row.before + " \"" + row.word +
               "\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _qelmodels; printf \"%s\\n\" "
               "\"${COMPREPLY[@]}\"'";
    });
}

TEST(Generate, CompletesInFish) {
    if (const std::string what = missing("fish"); !what.empty()) GTEST_SKIP() << what;
    expectCompletions([](const Completion& row) {
        return "fish --no-config -c '$Q generate fish | source; complete -C \"qelmodels " + row.before +
               (row.before.empty() ? "" : " ") + row.word + "\"'";
    });
}

}  // namespace
}  // namespace QELModels::test
