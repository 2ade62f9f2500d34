#pragma once

#include <string_view>

#include "Options.h"
#include "Report.h"

namespace QELModels::bench {

/// One topic of the benchmark.
struct Topic {
    std::string_view name;
    /// Whether the library and the code written by hand do the same work. Differences are written to stderr.
    /// Null when no code written by hand is compared with the library.
    bool (*check)();
    void (*measure)(const Options&, Report&);
};

extern const Topic kDocuments;  ///< from the bytes of a document to filled assets
extern const Topic kQuestions;  ///< what an application asks of a filled asset, again and again
extern const Topic kTexts;      ///< cleaning of HTML and parsing of URLs, on usual and on the worst inputs
extern const Topic kThreads;    ///< two threads at once

}  // namespace QELModels::bench
