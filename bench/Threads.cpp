#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "DocumentGenerator.h"
#include "JSON/JSONReader.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "Topics.h"

// Two threads that map different pages at once, compared with two processes that do the same and share
// nothing: if the threads take longer, that time is spent on memory to which both of them write.
namespace QELModels::bench {

namespace {

constexpr std::size_t kWorkers = 2;
constexpr std::size_t kAssets = 50;

/// If two processors are free, one process alone takes about as long as two at once. If they share one, it
/// takes half as long.
constexpr double kLeastOfFreeMachine = 0.8;

/// How often a worker maps its page when it is told to.
struct Work {
    std::string page;
    int repetitions;

    void run() const {
        JSONReader reader;
        for (int i = 0; i < repetitions; ++i) {
            const auto representation = reader.read(page);
            if (!representation) throw std::runtime_error("the library refuses the page");
            lookAt(QELAssetsMapper().mappedResponseFromJSONObject(*representation));
        }
    }
};

constexpr char kGo = 'g';
constexpr char kStop = 's';
constexpr char kDone = 'd';

class Pipe {
public:
    Pipe() {
        if (pipe(ends_.data()) != 0) throw std::runtime_error("no pipe");
    }
    ~Pipe() {
        for (const int end : ends_)
            close(end);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void put(char byte) const {
        if (write(ends_[1], &byte, 1) != 1) throw std::runtime_error("a worker is gone");
    }
    char take() const {
        char byte = kStop;
        if (read(ends_[0], &byte, 1) != 1) throw std::runtime_error("a worker is gone");
        return byte;
    }

private:
    std::array<int, 2> ends_{};
};

/// A thread or a process. Both are controlled through pipes, so that they are started and awaited in the same
/// way.
class Worker {
public:
    virtual ~Worker() = default;

    void start() const { orders_.put(kGo); }
    void await() const { answers_.take(); }

protected:
    void stop() const { orders_.put(kStop); }
    void serve(const Work& work) const {
        while (orders_.take() == kGo) {
            work.run();
            answers_.put(kDone);
        }
    }

private:
    Pipe orders_;
    Pipe answers_;
};

class ThreadWorker : public Worker {
public:
    explicit ThreadWorker(const Work& work) : thread_([this, &work] { serve(work); }) {}
    ~ThreadWorker() override {
        stop();
        thread_.join();
    }

private:
    std::thread thread_;
};

/// Requires: this process has one thread only.
class ProcessWorker : public Worker {
public:
    explicit ProcessWorker(const Work& work) : process_(fork()) {
        if (process_ < 0) throw std::runtime_error("no process");
        if (process_ > 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // no child outlives its parent
        serve(work);
        _exit(0);
    }
    ~ProcessWorker() override {
        stop();
        waitpid(process_, nullptr, 0);
    }

private:
    pid_t process_;
};

template <class Kind>
class Team {
public:
    explicit Team(const std::array<Work, kWorkers>& works) : workers_{Kind(works[0]), Kind(works[1])} {}

    /// The time until the first `count` workers, started at once, are done.
    double milliseconds(std::size_t count) const {
        const auto begin = std::chrono::steady_clock::now();
        for (std::size_t i = 0; i < count; ++i)
            workers_[i].start();
        for (std::size_t i = 0; i < count; ++i)
            workers_[i].await();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    }

private:
    std::array<Kind, kWorkers> workers_;
};

int repetitionsFor(const std::string& page, const Options& options) {
    // Times that depend on the scheduler need longer turns than the time of one thread.
    constexpr int kTurns = 5;
    const Work once{page, 1};
    const Way way{"once", [&once] { once.run(); }, 1};
    const double turn = std::chrono::duration<double, std::nano>(options.turn * kTurns).count();
    return 1 + static_cast<int>(turn / quartilesOf(timesInTurn({&way, 1}, options).front()).median);
}

void measure(const Options& options, Report& report) {
    std::array<Work, kWorkers> works;
    for (std::size_t i = 0; i < kWorkers; ++i)
        works[i].page = DocumentGenerator(i + 1).assetsPage(kAssets);
    const int repetitions = repetitionsFor(works[0].page, options);
    for (Work& work : works)
        work.repetitions = repetitions;

    const Team<ProcessWorker> processes(works);
    const Team<ThreadWorker> threads(works);
    // A first turn fills the caches and the heaps.
    processes.milliseconds(kWorkers);
    threads.milliseconds(kWorkers);
    std::vector<double> ofThreads;
    std::vector<double> ofProcesses;
    std::vector<double> ofOne;
    std::vector<double> shares;
    for (int round = 0; round < options.rounds; ++round) {
        if (round % 2 == 0) ofThreads.push_back(threads.milliseconds(kWorkers));
        ofProcesses.push_back(processes.milliseconds(kWorkers));
        if (round % 2 == 1) ofThreads.push_back(threads.milliseconds(kWorkers));
        ofOne.push_back(processes.milliseconds(1));
        shares.push_back(ofProcesses.back() / ofThreads.back());
    }

    const Quartiles share = quartilesOf(shares);
    const std::string name = "two pages of " + std::to_string(kAssets) + " at once";
    Table table({"wall-clock time",
                 "share of what two processes do",
                 "quartiles",
                 "ms, two threads",
                 "ms, two processes",
                 "ms, one process alone"});
    table.row({name,
               fixed(share.median, 3),
               range(share),
               fixed(quartilesOf(ofThreads).median, 1),
               fixed(quartilesOf(ofProcesses).median, 1),
               fixed(quartilesOf(ofOne).median, 1)});
    report.show(table);
    if (quartilesOf(ofOne).median < kLeastOfFreeMachine * quartilesOf(ofProcesses).median) {
        report.say(
            "\nOne process alone takes far less than two: other programs keep the processors busy, and the "
            "share says "
            "little.\n");
    }
    report.add({std::string(kThreads.name), name, "QELModels", share.median, "share"});
}

}  // namespace

constinit const Topic kThreads{"threads", nullptr, measure};

}  // namespace QELModels::bench
