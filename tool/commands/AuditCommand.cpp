#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "JSON/JSONWriter.h"
#include "tool/Explanation.h"
#include "tool/Kinds.h"
#include "tool/Options.h"
#include "tool/System.h"
#include "tool/audit/Audit.h"
#include "tool/audit/AuditDocuments.h"
#include "tool/audit/AuditPage.h"
#include "tool/audit/AuditTable.h"

namespace QELModels::tool {

namespace {

constexpr std::size_t kMostThreads = 256;

struct Options {
    std::string kind;
    std::vector<std::string> files;
    bool isJSON = false;
    bool isMerge = false;
    std::optional<std::string> page;
    std::optional<std::size_t> threads;
};

void declare(CLI::App& command, Options& options) {
    addKind(command, options.kind, "What the documents are: " + kindNames() + "; not with --merge");
    addRepeated(command,
                "FILE",
                "",
                Required::no,
                options.files,
                "Documents; a name that ends in .ndjson or .jsonl: one on every line");
    addFlag(command, "--json", options.isJSON, "For programs, and for --merge");
    addOptional(command, "--html", "OUT", options.page, "Write one page for a browser to the file OUT");
    addFlag(command, "--merge", options.isMerge, "Add up what --json has written, as --json writes it");
    addCount(command,
             "--threads",
             options.threads,
             kMostThreads,
             "How many work at once; as many as there are processors");
    addClosingWords(command,
                    "Broken and faulty documents are part of the answer; the exit status is 0 all the same.");
}

// A bar on standard error that shows how far the work has come, and is wiped out at its end.
class ProgressBar {
public:
    void show(const AuditProgress& progress) {
        constexpr std::uint64_t kMegabyte = 1'000'000;
        constexpr std::size_t kCells = 30;
        std::string bar;
        if (progress.allBytes != 0) {
            const double done =
                std::min(1.0, static_cast<double>(progress.bytes) / static_cast<double>(progress.allBytes));
            const auto cells = static_cast<std::size_t>(done * kCells);
            bar = fmt::format("[{:<{}}] {:3.0f} %  ", std::string(cells, '#'), kCells, done * 100);
        }
        std::string line = fmt::format("{}{} MB, {} documents",
                                       bar,
                                       countText(progress.bytes / kMegabyte),
                                       countText(progress.documents));
        const std::size_t size = line.size();
        line.append(std::max(width_, size) - size, ' ');
        width_ = size;
        write("\r" + line);
    }
    ~ProgressBar() {
        if (width_ != 0) write("\r" + std::string(width_, ' ') + "\r");
    }

private:
    // What cannot be written of a bar is lost.
    static void write(const std::string& text) { system::write(system::kErrors, text.data(), text.size()); }

    std::size_t width_ = 0;
};

// A file for a page. It is opened before the work begins: a file that cannot be written is reported at once.
class PageFile {
public:
    explicit PageFile(const std::string& name) : name_(name), file_(system::openForWriting(name)) {
        if (file_ < 0) fail(errno);
    }
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;
    ~PageFile() { system::close(file_); }

    void write(std::string_view text) {
        if (!system::empty(file_)) fail(errno);
        if (const int error = writeAll(file_, text); error != 0) fail(error);
    }

private:
    [[noreturn]] void fail(int error) const {
        throw OutputFailure(
            fmt::format("cannot write {}: {}", name_, std::generic_category().message(error)));
    }

    std::string name_;
    int file_;
};

Audit merged(const std::vector<std::string>& files, Session& session) {
    std::optional<Audit> sum;
    for (const std::string& file : files) {
        try {
            const Audit audit = Audit::read(session.readDocument(file));
            if (!sum) {
                sum.emplace();
                sum->kind = audit.kind;
            }
            if (audit.kind != sum->kind)
                throw NotAnAudit(fmt::format("/kind: this one is of kind {}, not {}", audit.kind, sum->kind));
            sum->add(audit);
        } catch (const NotAnAudit& problem) {
            throw BadInput(fmt::format("{}: {}", file, problem.what()));
        }
    }
    return *std::move(sum);
}

Audit audited(const Kind& kind, const Options& options) {
    if (options.files.empty()) throw UsageError("FILE is required");
    const SilentLog silentLog;
    const std::size_t threads = options.threads.value_or(
        std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads));
    if (!system::isTerminal(system::kErrors)) return auditDocuments(kind, options.files, threads);
    ProgressBar bar;
    return auditDocuments(
        kind, options.files, threads, [&bar](const AuditProgress& progress) { bar.show(progress); });
}

ExitStatus run(const Options& options, Session& session) {
    if (options.isJSON && options.page) throw UsageError("--json and --html exclude each other");
    // When audits are merged, the first argument is a file too.
    std::vector<std::string> audits{options.kind};
    audits.insert(audits.end(), options.files.begin(), options.files.end());
    const Kind* kind = options.isMerge ? nullptr : &kindNamed(options.kind);

    std::optional<PageFile> page;
    if (options.page) page.emplace(*options.page);
    const Audit audit = kind == nullptr ? merged(audits, session) : audited(*kind, options);
    if (page) {
        page->write(auditPage(audit));
    } else if (options.isJSON || options.isMerge) {
        std::string text;
        JSONWriter writer(text);
        audit.write(writer);
        session.output.write(text + '\n');
    } else {
        writeAuditTable(audit, Output::isColored(), session.output);
    }
    return ExitStatus::success;
}

}  // namespace

void addAuditCommand(CommandLine& commandLine) {
    commandLine.add<Options>("audit",
                             "KIND FILE... [--json | --html OUT] [--threads N]\n"
                             "       qelmodels audit --merge FILE... [--html OUT]",
                             "What becomes of every property in many documents",
                             declare,
                             run);
}

}  // namespace QELModels::tool
