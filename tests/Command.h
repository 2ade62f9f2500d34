#pragma once

// The words in which the tests of the command speak: what it is given, and all that it answers.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/Process.h"
#include "tool/Texts.h"

namespace QELModels::test {

using Texts = std::vector<std::string>;

/// The arguments of a call: texts, or one line with blanks between them.
struct Arguments : Texts {
    Arguments(std::initializer_list<std::string> texts) : Texts(texts) {}
    Arguments(const std::string& line) : Texts(tool::split(line, ' ')) {}
    Arguments(const char* line) : Arguments(std::string(line)) {}
};

/// Starts the command.
inline Process start(const Arguments& arguments, const Files& files) {
    Texts all{QELMODELS_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return startProgram(all, files);
}

/// A nameless file that is gone when the test is.
class Scratch {
public:
    explicit Scratch(std::string_view content = {}) : file_(openScratchFile()) {
        std::fwrite(content.data(), 1, content.size(), file_);
        std::rewind(file_);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { std::fclose(file_); }
    int descriptor() const { return fileno(file_); }
    std::string content() const {
        std::rewind(file_);
        return readAll(file_);
    }

private:
    std::FILE* file_;
};

struct Result {
    int status;
    std::string out, err;
};

inline Result run(const Arguments& arguments, std::string_view input = {}) {
    const Scratch in(input), out, err;
    const int status = exitStatus(start(arguments, {in.descriptor(), out.descriptor(), err.descriptor()}));
    return {status, out.content(), err.content()};
}

/// The arguments of a call, what it is given, and all that it answers.
struct Call {
    Arguments arguments;
    std::string in, out, err = {};
    int status = 0;
};

inline void expect(const std::vector<Call>& calls) {
    for (const Call& call : calls) {
        SCOPED_TRACE(testing::PrintToString(Texts(call.arguments)) + " < " + call.in);
        const Result result = run(call.arguments, call.in);
        EXPECT_EQ(result.out, call.out);
        EXPECT_EQ(result.err, call.err);
        EXPECT_EQ(result.status, call.status);
    }
}

/// A new folder that is the current one until the test ends: files have short names in all that is answered.
class Folder {
public:
    Folder() : before_(std::filesystem::current_path()), path_(makeFolder()) {
        std::filesystem::current_path(path_);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }

    std::string write(const std::string& name, std::string_view text) const {
        std::ofstream(pathOf(name), std::ios::binary) << text;
        return name;
    }
    std::string writeLines(const std::string& name, const Texts& lines) const {
        std::string text;
        for (const std::string& line : lines)
            text += line + '\n';
        return write(name, text);
    }

private:
    std::filesystem::path before_, path_;
};

inline std::string fileText(const std::string& name) {
    std::ifstream file(pathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline bool contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

/// A document of the examples.
inline std::string example(const std::string& name) {
    return QELMODELS_EXAMPLES_DIR "/documents/" + name;
}

/// A fault of a mapping, and what is reported of it after the asset's pointer.
inline constexpr std::string_view kFaultyAsset = R"({"category":{"additional":{"backgroundColor":5}}})";
inline constexpr std::string_view kFault =
    "/category/additional/backgroundColor: QELUIColorTransformer: a colour must be a string, not 5\n";

}  // namespace QELModels::test
