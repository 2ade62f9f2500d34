#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "Heap.h"
#include "Options.h"

namespace QELModels::bench {

/// Makes the compiler compute `value`, although nobody uses it.
template <class T>
inline void lookAt(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

struct Quartiles {
    double first;
    double median;
    double third;
};
Quartiles quartilesOf(std::vector<double> values);

/// One way of doing what is measured.
struct Way {
    std::string name;
    std::function<void()> run;
    double unitsInRun;  ///< how many assets, calls or bytes a run is over
};

/// Nanoseconds for a unit of a way, one number for each round.
using Times = std::vector<double>;

/// Runs the ways in turns, so that what slows the machine down for a while slows all of them down. The times
/// are in the order of the ways. They are the processor's time of this thread, without what other programs
/// take.
std::vector<Times> timesInTurn(std::span<const Way> ways, const Options& options);

/// The time of one way divided by that of another, round by round.
Quartiles ratioOf(const Times& times, const Times& baseline);

/// What a run asks of the heap when its buffers are in place.
HeapUse heapUseOf(const Way& way);

}  // namespace QELModels::bench
