#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Options.h"
#include "Plot.h"
#include "Report.h"
#include "Topics.h"

// The command line; it runs the parts one after the other.
namespace QELModels::bench {

namespace {

// The processes that threads are compared with are started by forking, while there is one thread only.
constexpr std::array kTopics{&kDocuments, &kQuestions, &kTexts, &kThreads};

void draw(const Report& report, const std::string& file) {
    const std::string plot = plotOf(report.figures(), machineAndCompiler());
    if (plot.empty()) return;
    std::ofstream out(file, std::ios::binary);
    if (!(out << plot) || !out.flush()) throw std::runtime_error("cannot write '" + file + "'");
    report.say("\nDrawn in " + file + ".\n");
}

int run(const Options& options) {
    const auto isAsked = [&options](const Topic& topic) {
        return options.only.empty() || options.only == topic.name;
    };
    bool isChecked = false;
    for (const Topic* topic : kTopics) {
        if (!isAsked(*topic) || topic->check == nullptr) continue;
        isChecked = true;
        if (topic->check()) continue;
        std::fputs("The library and the code written by hand differ, so there is nothing to compare.\n",
                   stderr);
        return 1;
    }
    if (options.checkOnly && !isChecked) {
        std::fputs("This part has nothing written by hand that could be checked.\n", stderr);
        return 1;
    }
    if (options.checkOnly) {
        std::puts("The library and the code written by hand do the same work.");
        return 0;
    }
    Report report(options.csv);
    report.say(machineAndCompiler() + "; " + std::to_string(options.rounds) +
               " rounds, all in turn, medians; freeing the result is included\n");
    for (const Topic* topic : kTopics) {
        if (isAsked(*topic)) topic->measure(options, report);
    }
    if (!options.plotFile.empty()) draw(report, options.plotFile);
    return 0;
}

}  // namespace

}  // namespace QELModels::bench

int main(int argc, char** argv) try {
    using namespace QELModels::bench;
    std::array<std::string_view, kTopics.size()> names;
    std::transform(
        kTopics.begin(), kTopics.end(), names.begin(), [](const Topic* topic) { return topic->name; });
    const auto options = parseOptions({argv + 1, static_cast<std::size_t>(argc - 1)}, names);
    if (!options || options->help) {
        std::fwrite(kUsage.data(), 1, kUsage.size(), options ? stdout : stderr);
        return options ? 0 : 2;
    }
    return run(*options);
} catch (const std::exception& error) {
    std::fprintf(stderr, "qelmodels-bench: %s\n", error.what());
    return 1;
}
