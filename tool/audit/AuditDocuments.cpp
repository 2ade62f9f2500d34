#include "tool/audit/AuditDocuments.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
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
#include "tool/Documents.h"
#include "tool/audit/AuditCollector.h"

namespace QELModels::tool {

namespace {

// Long enough that threads seldom meet, and short enough that all end at much the same time.
constexpr std::size_t kPieceBytes = std::size_t{1} << 20;
constexpr std::chrono::milliseconds kProgressInterval{100};
constexpr std::array<std::string_view, 2> kLinesSuffixes{".ndjson", ".jsonl"};
constexpr std::string_view kWhiteSpace = " \t\r";

struct File {
    std::string path;
    std::string name;  // what the answer calls it: its path as UTF-8
    bool isLines;
    std::optional<std::uint64_t> size;  // of a regular file
};

// A path may be any bytes, a text may not.
std::string wellFormed(std::string text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    for (std::size_t at = 0;
         (at += Text::firstMalformedByte(std::string_view(text).substr(at))) < text.size();)
        text.replace(at, 1, kReplacement);
    return text;
}

std::vector<File> filesNamed(std::span<const std::string> paths) {
    std::vector<File> files;
    for (const std::string& path : paths) {
        struct stat status {};
        const bool isKnown = path != kStandardInput && ::stat(path.c_str(), &status) == 0;
        const bool isRegular = isKnown && S_ISREG(status.st_mode);
        // What cannot be read is said at once, not after an hour; but a pipe is opened only once.
        if (!isKnown || isRegular || S_ISDIR(status.st_mode)) {
            Input input(path);
            std::string nothing;
            if (isKnown && !isRegular) input.readMore(nothing);
        }
        const bool isLines = std::any_of(kLinesSuffixes.begin(),
                                         kLinesSuffixes.end(),
                                         [&](std::string_view suffix) { return path.ends_with(suffix); });
        const auto size =
            isRegular ? std::optional(static_cast<std::uint64_t>(status.st_size)) : std::nullopt;
        files.push_back({path, wellFormed(path), isLines, size});
    }
    std::stable_sort(
        files.begin(), files.end(), [](const File& a, const File& b) { return a.name < b.name; });
    return files;
}

// A file's text, or some of its lines.
struct Piece {
    const File* file = nullptr;
    std::uint64_t firstLine = 1;
    std::string text;
};

// Hands out the files piece by piece, in order, to threads that ask for more.
class Pieces {
public:
    explicit Pieces(const std::vector<File>& files) : files_(files) {}

    /// Puts the next piece in place of the last; false when there is none. Throws `BadInput`.
    bool next(Piece& piece) {
        if (!take(piece)) return false;
        if (!piece.file->isLines) piece.text = Input(piece.file->path).readAll();
        bytes_ += piece.text.size();
        return true;
    }
    /// Lets the other threads come to an end.
    void stop() {
        const std::lock_guard lock(mutex_);
        nextFile_ = files_.size();
        lines_.reset();
    }
    std::uint64_t bytes() const noexcept { return bytes_; }

private:
    bool take(Piece& piece) {
        const std::lock_guard lock(mutex_);
        for (;;) {
            if (lines_ != nullptr) {
                piece.file = &files_[nextFile_ - 1];
                if (takeLines(piece)) return true;
                lines_.reset();
            }
            if (nextFile_ == files_.size()) return false;
            piece.file = &files_[nextFile_++];
            piece.firstLine = 1;
            if (!piece.file->isLines) return true;
            lines_ = std::make_unique<Input>(piece.file->path);
            nextLine_ = 1;
        }
    }

    // Whole lines, as many as a piece holds, or one that is longer.
    bool takeLines(Piece& piece) {
        std::string& text = piece.text;
        text.assign(behindLines_);
        behindLines_.clear();
        std::size_t end = std::string::npos;
        for (std::size_t wanted = kPieceBytes, searched = text.size(); end == std::string::npos;) {
            bool isAtEnd = false;
            while (!isAtEnd && text.size() < wanted)
                isAtEnd = !lines_->readMore(text);
            const std::size_t found = std::string_view(text).substr(searched).rfind('\n');
            if (isAtEnd)
                end = text.size();
            else if (found != std::string_view::npos)
                end = searched + found + 1;
            searched = text.size();
            wanted = text.size() + kPieceBytes;
        }
        behindLines_.assign(text, end);
        text.resize(end);
        piece.firstLine = nextLine_;
        for (const char* at = text.data(); at != nullptr;) {
            at = static_cast<const char*>(
                std::memchr(at, '\n', static_cast<std::size_t>(text.data() + text.size() - at)));
            if (at == nullptr) break;
            ++at;
            ++nextLine_;
        }
        return !text.empty();
    }

    const std::vector<File>& files_;
    std::mutex mutex_;
    std::size_t nextFile_ = 0;
    std::unique_ptr<Input> lines_;  // the file that is handed out line by line
    std::uint64_t nextLine_ = 1;
    std::string behindLines_;  // the beginning of a line whose end has not been read yet
    std::atomic<std::uint64_t> bytes_ = 0;
};

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
        std::uint64_t number = piece.firstLine;
        for (std::string_view rest = piece.text; !rest.empty(); ++number) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            const std::string_view line = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
            if (line.find_first_not_of(kWhiteSpace) != std::string_view::npos) add(line, *piece.file, number);
        }
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

}  // namespace

Audit auditDocuments(const Kind& kind,
                     std::span<const std::string> paths,
                     std::size_t threads,
                     const std::function<void(const AuditProgress&)>& progress) {
    const std::vector<File> files = filesNamed(paths);
    const bool isSizeKnown =
        std::all_of(files.begin(), files.end(), [](const File& file) { return file.size.has_value(); });
    AuditProgress state;
    for (const File& file : files)
        state.allBytes += isSizeKnown ? *file.size : 0;

    Pieces pieces(files);
    std::atomic<std::uint64_t> documents = 0;
    std::vector<std::future<Audit>> workers;
    const auto start = [&](std::launch how) {
        workers.push_back(std::async(how, [&] { return Worker(kind, pieces, documents).work(); }));
    };
    try {
        while (workers.size() < threads)
            start(std::launch::async);
    } catch (const std::system_error&) {
        // The system has no more threads to give: those that there are do all the work.
        if (workers.empty()) start(std::launch::deferred);
    }

    Audit audit;
    audit.kind = kind.name;
    std::exception_ptr failure;
    for (std::future<Audit>& worker : workers) {
        while (progress && worker.wait_for(kProgressInterval) == std::future_status::timeout) {
            state.documents = documents;
            state.bytes = pieces.bytes();
            progress(state);
        }
        try {
            audit.add(worker.get());
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
    return audit;
}

}  // namespace QELModels::tool
