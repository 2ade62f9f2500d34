// The clock, the log and the main screen may be used and replaced at any time and from any thread: before the
// first static initialiser, after the last destructor, and by many at once.

#include <QELModels/Process/Clock.h>
#include <QELModels/Process/Log.h>
#include <QELModels/Process/MainScreen.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace Clock = QELModels::Clock;
namespace Log = QELModels::Log;
namespace MainScreen = QELModels::MainScreen;
using QELModels::Date;
using QELModels::dateFromSecondsSince1970;
using QELModels::secondsSince1970;

// Uses all three while statics are made and while they are torn down; the program fails if the latter does.
class Early {
public:
    Early() {
        Clock::setSource([] { return dateFromSecondsSince1970(12); });
        Log::setSink([this](std::string_view line) { line_ = line; });
        MainScreen::setScale(3);
        Log::write("early");
        isReady_ = line_ == "early" && secondsSince1970(Clock::now()) == 12 && MainScreen::scale() == 3;
        Clock::setSource({});
        Log::setSink({});
        MainScreen::setScale(1);
        isReady_ = isReady_ && MainScreen::scale() == 1;
    }
    ~Early() {
        Clock::setSource([] { return dateFromSecondsSince1970(34); });
        Log::setSink([](std::string_view line) {
            if (line != "late") std::_Exit(EXIT_FAILURE);
        });
        Log::write("late");
        if (secondsSince1970(Clock::now()) != 34) std::_Exit(EXIT_FAILURE);
    }

    bool isReady() const { return isReady_; }

private:
    std::string line_;
    bool isReady_ = false;
};

const Early early;

double secondsOfSystem() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

// Runs `work` with 0, 1, ... on as many threads at once.
void inParallel(int threads, const std::function<void(int)>& work) {
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i)
        running.emplace_back(work, i);
    for (std::thread& thread : running)
        thread.join();
}

TEST(ProcessState, IsReadyBeforeAnyStaticInitialiser) {
    EXPECT_TRUE(early.isReady());
}

TEST(Clock, IsTheSystemsUnlessSet) {
    const double before = secondsOfSystem();
    const double now = secondsSince1970(Clock::now());
    EXPECT_LE(before, now);
    EXPECT_LE(now, secondsOfSystem());

    Clock::setSource([] { return dateFromSecondsSince1970(-1.5); });
    EXPECT_EQ(Clock::now(), dateFromSecondsSince1970(-1.5));
    Clock::setSource([]() -> Date { throw std::runtime_error("stopped"); });
    EXPECT_THROW(Clock::now(), std::runtime_error);

    Clock::setSource({});
    EXPECT_LE(before, secondsSince1970(Clock::now()));
}

TEST(Clock, LetsGoOfASourceWhenItsLastCallEnds) {
    auto held = std::make_shared<double>(7);
    const std::weak_ptr<double> watched = held;
    Clock::setSource([held = std::move(held)] {
        Clock::setSource({});
        return dateFromSecondsSince1970(*held);  // still there, though replaced meanwhile
    });
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(secondsSince1970(Clock::now()), 7);
    EXPECT_TRUE(watched.expired());
}

TEST(Log, WritesLinesToStandardErrorUnlessSet) {
    const std::string longLine(2000, 'x');
    testing::internal::CaptureStderr();
    Log::write("one");
    Log::write(longLine);
    std::vector<std::string> lines;
    Log::setSink([&lines](std::string_view line) { lines.emplace_back(line); });
    Log::write("two");
    Log::setSink([](std::string_view) { throw std::runtime_error("full"); });
    Log::write("three");
    Log::setSink({});
    Log::write("");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\n" + longLine + "\nthree\n\n");
    EXPECT_EQ(lines, std::vector<std::string>{"two"});
}

TEST(ProcessState, IsUsedAndChangedByManyThreadsAtOnce) {
    constexpr int kThreads = 6;
    constexpr int kRounds = 3000;
    const auto aliveSources = std::make_shared<int>();
    std::atomic<int> linesTaken{0};
    std::atomic<int> surprises{0};

    Log::setSink([&linesTaken](std::string_view) { ++linesTaken; });
    inParallel(kThreads, [&](int thread) {
        for (int round = 0; round < kRounds; ++round) {
            if (thread % 2 == 0) {
                // Every source holds its answer on the heap, where it would be missed.
                Clock::setSource([alive = aliveSources, answer = std::make_shared<double>(thread)] {
                    return dateFromSecondsSince1970(*answer);
                });
                Log::setSink([&linesTaken](std::string_view) { ++linesTaken; });
                MainScreen::setScale(1 + thread % 3);
            } else {
                const double answer = secondsSince1970(Clock::now());
                const bool isOfASource = answer == 0 || answer == 2 || answer == 4;
                const bool isOfTheSystem = answer > 1e9;
                const double scale = MainScreen::scale();
                if (!isOfASource && !isOfTheSystem) ++surprises;
                if (scale != 1 && scale != 2 && scale != 3) ++surprises;
                Log::write("line");
            }
        }
    });
    Clock::setSource({});
    Log::setSink({});
    MainScreen::setScale(1);
    EXPECT_EQ(surprises, 0);
    EXPECT_EQ(linesTaken, kThreads / 2 * kRounds);
    EXPECT_EQ(aliveSources.use_count(), 1) << "a replaced source was kept";
}

TEST(Log, KeepsLinesWholeWhenManyWriteAtOnce) {
    constexpr int kThreads = 4;
    constexpr int kLines = 200;
    testing::internal::CaptureStderr();
    inParallel(kThreads, [](int thread) {
        const std::string line(static_cast<std::size_t>(100 + 300 * thread), static_cast<char>('a' + thread));
        for (int i = 0; i < kLines; ++i)
            Log::write(line);
    });
    std::istringstream written(testing::internal::GetCapturedStderr());
    int count = 0;
    for (std::string line; std::getline(written, line); ++count) {
        ASSERT_EQ(line, std::string(static_cast<std::size_t>(100 + 300 * (line.at(0) - 'a')), line[0]));
    }
    EXPECT_EQ(count, kThreads * kLines);
}

}  // namespace
