#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace QELModels::test {

/// Calls `use` with every sequence of up to `longest` pieces, the shorter ones first, until an assertion
/// fails.
template <class Pieces, class Use>
void forEachSequence(const Pieces& pieces, std::size_t longest, Use use) {
    std::vector<std::size_t> odometer;
    while (odometer.size() <= longest && !testing::Test::HasFatalFailure()) {
        std::vector<typename Pieces::value_type> sequence;
        sequence.reserve(odometer.size());
        for (const std::size_t index : odometer)
            sequence.push_back(pieces[index]);
        use(std::as_const(sequence));
        auto wheel = odometer.begin();
        while (wheel != odometer.end() && ++*wheel == pieces.size())
            *wheel++ = 0;
        if (wheel == odometer.end()) odometer.push_back(0);
    }
}

}  // namespace QELModels::test
