#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <numeric>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "DocumentGenerator.h"
#include "Heap.h"
#include "Rivals.h"

// From the bytes of a document to filled assets: the library beside the same work written by hand, all in one
// run.
namespace QELModels::bench {

namespace {

constexpr std::array kRivals{&kLibrary, &kOnDemand, &kRapidJSON, &kNlohmann, &kDOMParse, &kStructuralIndex};
constexpr const Rival& kBaseline = kOnDemand;

constexpr std::uint64_t kSeed = 20150101;

struct Options {
    bool checkOnly = false;
    int rounds = 25;
    /// How long a rival runs before the next one has its turn, unless one document takes longer.
    std::chrono::milliseconds turn{10};
};

struct Measurement {
    std::vector<double> microsecondsPerAsset;  ///< one for each round
    std::vector<double> ratios;                ///< to the baseline in the same round
    HeapUse call;                              ///< of one call with its buffers in place, result freed
    HeapUse firstCall;                         ///< of one call without buffers, result kept
    HeapUse kept;                              ///< of one call with its buffers in place, result kept
};

double quantile(std::vector<double> values, double part) {
    const auto at =
        values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}
double median(const std::vector<double>& values) {
    return quantile(values, 0.5);
}

std::vector<Document> makeDocuments() {
    DocumentGenerator generator(kSeed);
    std::vector<Document> documents;
    documents.emplace_back("one asset", generator.asset(), 1, false);
    documents.emplace_back("page of 1", generator.assetsPage(1), 1, true);
    documents.emplace_back("page of 50", generator.assetsPage(50), 50, true);
    documents.emplace_back("page of 1,000", generator.assetsPage(1000), 1000, true);
    return documents;
}

// Whether the rivals do the same work.

bool agreeOn(const Document& document) {
    const std::uint64_t expected = kBaseline.digest(document);
    bool agree = true;
    for (const Rival* rival : kRivals) {
        if (rival->digest == nullptr) continue;
        const std::uint64_t digest = rival->digest(document);
        if (digest == expected) continue;
        std::fprintf(stderr,
                     "%.*s: digest %016llx on '%.*s' instead of %016llx\n",
                     static_cast<int>(rival->name.size()),
                     rival->name.data(),
                     static_cast<unsigned long long>(digest),
                     static_cast<int>(document.name.size()),
                     document.name.data(),
                     static_cast<unsigned long long>(expected));
        agree = false;
    }
    return agree;
}

bool allAgree(const std::vector<Document>& documents) {
    constexpr std::uint64_t kOtherSeeds = 40;
    bool agree = true;
    for (const Document& document : documents)
        agree = agreeOn(document) && agree;
    for (std::uint64_t seed = 1; seed <= kOtherSeeds; ++seed) {
        DocumentGenerator generator(seed);
        agree = agreeOn({"one asset", generator.asset(), 1, false}) && agree;
        agree = agreeOn({"small page", generator.assetsPage(seed % 8), seed % 8, true}) && agree;
    }
    return agree;
}

// Measuring.

/// The processor's time that this thread has taken: what other programs take from the machine does not count.
double threadMicroseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

double microsecondsOf(const Rival& rival, const Document& document, int repetitions) {
    // The first call finds the caches and the heap as the rival before has left them.
    rival.read(document);
    const double start = threadMicroseconds();
    for (int i = 0; i < repetitions; ++i)
        rival.read(document);
    return threadMicroseconds() - start;
}

void measureHeap(const Rival& rival, const Document& document, Measurement& to) {
    rival.forgetBuffers();
    {
        HeapMeter meter;
        const auto result = rival.keep == nullptr ? nullptr : rival.keep(document);
        if (result == nullptr) rival.read(document);
        to.firstCall = meter.stop();
    }
    {
        HeapMeter meter;
        const auto result = rival.keep == nullptr ? nullptr : rival.keep(document);
        to.kept = meter.stop();
    }
    HeapMeter meter;
    rival.read(document);
    to.call = meter.stop();
}

std::vector<Measurement> measure(const Document& document, const Options& options) {
    constexpr int kLeastRepetitions = 2;
    std::vector<Measurement> measurements(kRivals.size());
    std::array<int, kRivals.size()> repetitions{};
    for (std::size_t i = 0; i < kRivals.size(); ++i) {
        measureHeap(*kRivals[i], document, measurements[i]);
        const double turn = std::chrono::duration<double, std::micro>(options.turn).count();
        const double fitting = turn / microsecondsOf(*kRivals[i], document, 1);
        repetitions[i] = std::max(kLeastRepetitions, static_cast<int>(fitting));
    }
    // The rivals take turns, so that whatever slows the machine down for a while slows all of them down; the
    // order changes from round to round, so that none always follows the same one.
    std::array<std::size_t, kRivals.size()> order;
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::minstd_rand shuffler;
    for (int round = 0; round < options.rounds; ++round) {
        std::shuffle(order.begin(), order.end(), shuffler);
        for (const std::size_t i : order) {
            const double assets = static_cast<double>(document.assets) * repetitions[i];
            measurements[i].microsecondsPerAsset.push_back(
                microsecondsOf(*kRivals[i], document, repetitions[i]) / assets);
        }
        const auto baseline = std::find(kRivals.begin(), kRivals.end(), &kBaseline) - kRivals.begin();
        const double baselineTime =
            measurements[static_cast<std::size_t>(baseline)].microsecondsPerAsset.back();
        for (Measurement& measurement : measurements)
            measurement.ratios.push_back(measurement.microsecondsPerAsset.back() / baselineTime);
    }
    return measurements;
}

// Tables.

std::string machine() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        const auto colon = line.find(':');
        if (line.starts_with("model name") && colon != std::string::npos) return line.substr(colon + 2);
    }
    return "unknown processor";
}

std::string_view compiler() {
#if defined(__clang__)
    return "clang " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

void print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void printDocument(const Document& document, const std::vector<Measurement>& measurements) {
    const double assets = static_cast<double>(document.assets);
    const double bytes = static_cast<double>(document.text.size());
    std::printf("\n**%.*s** (%.1f KB an asset)\n\n",
                static_cast<int>(document.name.size()),
                document.name.data(),
                bytes / assets / 1e3);
    print(
        "| bytes to filled assets | ratio | quartiles | µs an asset | MB/s | allocations an asset "
        "| KB kept an asset | KB at the peak of a first call, an asset |\n"
        "|---|--:|--:|--:|--:|--:|--:|--:|\n");
    for (std::size_t i = 0; i < kRivals.size(); ++i) {
        const Measurement& measurement = measurements[i];
        const double time = median(measurement.microsecondsPerAsset);
        const char* const bold = kRivals[i] == &kBaseline ? "**" : "";
        std::printf("| %s%.*s%s | %s%.2f%s | %.2f to %.2f | %.2f | %.0f | %.1f |",
                    bold,
                    static_cast<int>(kRivals[i]->name.size()),
                    kRivals[i]->name.data(),
                    bold,
                    bold,
                    median(measurement.ratios),
                    bold,
                    quantile(measurement.ratios, 0.25),
                    quantile(measurement.ratios, 0.75),
                    time,
                    bytes / assets / time,
                    static_cast<double>(measurement.call.allocations) / assets);
        if (kRivals[i]->keep == nullptr) {
            print(" |");
        } else {
            std::printf(" %.1f |", static_cast<double>(measurement.kept.held) / assets / 1e3);
        }
        std::printf(" %.1f |\n", static_cast<double>(measurement.firstCall.peak) / assets / 1e3);
    }
}

void printSummary(const std::vector<Document>& documents, const std::vector<std::vector<Measurement>>& all) {
    print("\n| ratio to code written by hand |");
    for (const Document& document : documents)
        std::printf(" %.*s |", static_cast<int>(document.name.size()), document.name.data());
    print("\n|---|");
    for (std::size_t i = 0; i < documents.size(); ++i)
        print("--:|");
    for (std::size_t i = 0; i < kRivals.size(); ++i) {
        std::printf("\n| %.*s |", static_cast<int>(kRivals[i]->name.size()), kRivals[i]->name.data());
        for (const auto& measurements : all)
            std::printf(" %.2f |", median(measurements[i].ratios));
    }
    print("\n");
}

// The command line.

constexpr std::string_view kUsage =
    "usage: qelmodels-bench [--check] [--rounds N] [--turn MILLISECONDS]\n"
    "  --check   only see that all rivals fill the same fields\n"
    "  --rounds  how often each rival has its turn (25)\n"
    "  --turn    how long a turn takes at least (10)\n";

std::optional<int> positiveNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1) return std::nullopt;
    return value;
}

std::optional<Options> parseOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        if (name == "--check") {
            options.checkOnly = true;
            continue;
        }
        if (i + 1 == arguments.size()) return std::nullopt;
        const auto value = positiveNumber(arguments[++i]);
        if (!value) return std::nullopt;
        if (name == "--rounds") {
            options.rounds = *value;
        } else if (name == "--turn") {
            options.turn = std::chrono::milliseconds(*value);
        } else {
            return std::nullopt;
        }
    }
    return options;
}

int run(const Options& options) {
    const std::vector<Document> documents = makeDocuments();
    if (!allAgree(documents)) {
        print("The rivals do not fill the same fields, so there is nothing to compare.\n");
        return 1;
    }
    if (options.checkOnly) {
        print("All rivals fill the same fields.\n");
        return 0;
    }
    std::printf(
        "%s, %u processors; %.*s; %d rounds, rivals in turn, medians; freeing the result is included\n",
        machine().c_str(),
        std::thread::hardware_concurrency(),
        static_cast<int>(compiler().size()),
        compiler().data(),
        options.rounds);
    std::vector<std::vector<Measurement>> all;
    for (const Document& document : documents) {
        all.push_back(measure(document, options));
        printDocument(document, all.back());
        std::fflush(stdout);
    }
    printSummary(documents, all);
    return 0;
}

}  // namespace

}  // namespace QELModels::bench

int main(int argc, char** argv) try {
    using namespace QELModels::bench;
    const auto options = parseOptions({argv + 1, static_cast<std::size_t>(argc - 1)});
    if (!options) {
        std::fwrite(kUsage.data(), 1, kUsage.size(), stderr);
        return 2;
    }
    return run(*options);
} catch (const std::exception& error) {
    std::fprintf(stderr, "qelmodels-bench: %s\n", error.what());
    return 1;
}
