#include "Measuring.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <numeric>
#include <random>

namespace QELModels::bench {

namespace {

double threadNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double nanosecondsOf(const Way& way, int repetitions) {
    // The first run is not counted: it finds the caches and the heap as the previous way left them.
    way.run();
    const double start = threadNanoseconds();
    for (int i = 0; i < repetitions; ++i)
        way.run();
    return threadNanoseconds() - start;
}

}  // namespace

Quartiles quartilesOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto at = [&values](double part) {
        return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
    };
    return {at(0.25), at(0.5), at(0.75)};
}

std::vector<Times> timesInTurn(std::span<const Way> ways, const Options& options) {
    constexpr int kLeastRepetitions = 2;
    std::vector<int> repetitions;
    for (const Way& way : ways) {
        const double turn = std::chrono::duration<double, std::nano>(options.turn).count();
        repetitions.push_back(std::max(kLeastRepetitions, static_cast<int>(turn / nanosecondsOf(way, 1))));
    }
    // The order changes from round to round, so that no way always follows the same one.
    std::vector<std::size_t> order(ways.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::minstd_rand shuffler;
    std::vector<Times> times(ways.size());
    for (int round = 0; round < options.rounds; ++round) {
        std::shuffle(order.begin(), order.end(), shuffler);
        for (const std::size_t i : order) {
            const double units = ways[i].unitsInRun * repetitions[i];
            times[i].push_back(nanosecondsOf(ways[i], repetitions[i]) / units);
        }
    }
    return times;
}

Quartiles ratioOf(const Times& times, const Times& baseline) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < times.size(); ++round)
        ratios.push_back(times[round] / baseline[round]);
    return quartilesOf(std::move(ratios));
}

HeapUse heapUseOf(const Way& way) {
    way.run();
    HeapMeter meter;
    way.run();
    return meter.stop();
}

}  // namespace QELModels::bench
