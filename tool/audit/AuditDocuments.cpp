#include "tool/audit/AuditDocuments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <exception>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "JSON/JSONReader.h"
#include "QELModels/Values/Text.h"
#include "tool/Input.h"
#include "tool/Lines.h"
#include "tool/System.h"
#include "tool/audit/AuditCollector.h"

namespace QELModels::tool {

namespace {

// Long enough that threads seldom wait for each other, and short enough that they end at about the same time.
constexpr std::size_t kPieceBytes = std::size_t{1} << 20;
constexpr std::chrono::milliseconds kProgressInterval{100};
constexpr std::array<std::string_view, 2> kLinesSuffixes{".ndjson", ".jsonl"};

// --- Files ------------------------------------------------------------------------------------------------

struct File {
    std::string path;
    std::string name;  // its path as UTF-8, as results call it
    bool isLines;
    std::optional<std::uint64_t> size;  // of a regular file
};

// A path may be any bytes, a text may not.
std::string wellFormed(std::string text) {
    constexpr std::string_view kReplacementUTF8 = "\xEF\xBF\xBD";
    for (std::size_t at = 0;
         (at += Text::firstMalformedByte(std::string_view(text).substr(at))) < text.size();)
        text.replace(at, 1, kReplacementUTF8);
    return text;
}

std::optional<std::uint64_t> regularSize(const std::string& path) {
    if (path == kStandardInput) return std::nullopt;
    const std::optional<system::FileStatus> status = system::statusOf(path);
    return status ? status->size : std::nullopt;
}

// The files in the order of their names. A file that cannot be read is reported at once, not after an hour.
std::vector<File> filesNamed(std::span<const std::string> paths) {
    std::vector<File> files;
    for (const std::string& path : paths) {
        requireReadable(path);
        const bool isLines = std::any_of(kLinesSuffixes.begin(),
                                         kLinesSuffixes.end(),
                                         [&](std::string_view suffix) { return path.ends_with(suffix); });
        files.push_back({path, wellFormed(path), isLines, regularSize(path)});
    }
    std::stable_sort(
        files.begin(), files.end(), [](const File& a, const File& b) { return a.name < b.name; });
    return files;
}

// The size of all files together; 0 when that of one is not known.
std::uint64_t allBytesOf(const std::vector<File>& files) {
    std::uint64_t bytes = 0;
    for (const File& file : files) {
        if (!file.size) return 0;
        bytes += *file.size;
    }
    return bytes;
}

// --- Pieces -----------------------------------------------------------------------------------------------

// The text of a file, or some of its lines.
struct Piece {
    const File* file = nullptr;
    std::uint64_t firstLine = 1;
    std::string text;
};

// Hands out the files piece by piece, in order, to threads that ask for more.
class Pieces {
public:
    explicit Pieces(const std::vector<File>& files) : files_(files) {}

    // Puts the next piece in place of the last one; false at the end. Throws `BadInput`.
    bool next(Piece& piece) {
        if (!take(piece)) return false;
        if (!piece.file->isLines) piece.text = Input(piece.file->path).readAll();
        bytes_ += piece.text.size();
        return true;
    }
    // Lets the other threads come to an end.
    void stop() {
        const std::lock_guard lock(mutex_);
        nextFile_ = files_.size();
        lines_.reset();
    }
    std::uint64_t bytes() const noexcept { return bytes_; }

private:
    struct LinesFile {
        explicit LinesFile(const File& itsFile) : file(itsFile), input(file.path), pieces(input) {}

        const File& file;
        Input input;
        LinePieces pieces;
        std::uint64_t nextLine = 1;
    };

    // Takes lines, or a whole file that is then read outside of the lock.
    bool take(Piece& piece) {
        const std::lock_guard lock(mutex_);
        while (lines_ == nullptr || !takeLines(piece)) {
            lines_.reset();
            if (nextFile_ == files_.size()) return false;
            const File& file = files_[nextFile_++];
            if (!file.isLines) {
                piece.file = &file;
                return true;
            }
            lines_ = std::make_unique<LinesFile>(file);
        }
        return true;
    }

    bool takeLines(Piece& piece) {
        if (!lines_->pieces.next(piece.text, kPieceBytes)) return false;
        piece.file = &lines_->file;
        piece.firstLine = lines_->nextLine;
        lines_->nextLine += lineFeedsIn(piece.text);
        return true;
    }

    const std::vector<File>& files_;
    std::mutex mutex_;
    std::size_t nextFile_ = 0;
    std::unique_ptr<LinesFile> lines_;  // the file that is handed out line by line
    std::atomic<std::uint64_t> bytes_ = 0;
};

// --- Threads ----------------------------------------------------------------------------------------------

// One thread's work.
class Worker {
public:
    Worker(const Kind& kind, Pieces& pieces, std::atomic<std::uint64_t>& documents)
        : collector_(kind), pieces_(pieces), documents_(documents) {}

    Audit work() {
        try {
            for (Piece piece; pieces_.next(piece);)
                piece.file->isLines ? addLines(piece) : add(piece.text, *piece.file, std::nullopt);
        } catch (...) {
            pieces_.stop();
            throw;
        }
        return collector_.audit();
    }

private:
    void addLines(const Piece& piece) {
        for (TextLines lines(piece.text, piece.firstLine); lines.next();)
            add(lines.line(), *piece.file, lines.number());
    }

    void add(std::string_view text, const File& file, std::optional<std::uint64_t> line) {
        documents_.fetch_add(1, std::memory_order_relaxed);
        JSONError error;
        if (const auto document = reader_.read(text, &error))
            collector_.add(*document, file.name, line.value_or(1));
        else
            collector_.addBroken({file.name, line.value_or(error.line), error.column, {}, error.reason});
    }

    AuditCollector collector_;
    Pieces& pieces_;
    std::atomic<std::uint64_t>& documents_;
    JSONReader reader_;
};

std::vector<std::future<Audit>> started(std::size_t threads, const std::function<Audit()>& work) {
    std::vector<std::future<Audit>> workers;
    try {
        while (workers.size() < threads)
            workers.push_back(std::async(std::launch::async, work));
    } catch (const std::system_error&) {
        // The system has no more threads to give: those that were started do all the work, or this thread
        // does.
        if (workers.empty()) workers.push_back(std::async(std::launch::deferred, work));
    }
    return workers;
}

// What the workers have counted. When some of them throw, the first of these exceptions is thrown after all
// workers are done.
Audit sumOf(std::vector<std::future<Audit>> workers, const std::function<void()>& showProgress) {
    Audit sum;
    std::exception_ptr failure;
    for (std::future<Audit>& worker : workers) {
        while (showProgress && worker.wait_for(kProgressInterval) == std::future_status::timeout)
            showProgress();
        try {
            sum.add(worker.get());
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
    return sum;
}

}  // namespace

Audit auditDocuments(const Kind& kind, std::span<const std::string> paths, std::size_t threads,
                     const std::function<void(const AuditProgress&)>& progress) {
    const std::vector<File> files = filesNamed(paths);
    Pieces pieces(files);
    std::atomic<std::uint64_t> documents = 0;
    std::function<void()> showProgress;
    if (progress)
        showProgress = [&, allBytes = allBytesOf(files)] { progress({documents, pieces.bytes(), allBytes}); };
    Audit audit =
        sumOf(started(threads, [&] { return Worker(kind, pieces, documents).work(); }), showProgress);
    audit.kind = kind.name;
    return audit;
}

}  // namespace QELModels::tool
