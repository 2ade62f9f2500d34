#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Values/URL.h"
#include "Topics.h"

// Cleaning of HTML and parsing of URLs. The code written by hand uses the library's functions for both, so
// they are compared with a walk over the bytes, which no such function can beat. Each input comes in three
// sizes: where time is in proportion to the text, a byte takes as long in the longest as in the shortest.
namespace QELModels::bench {

namespace {

constexpr std::array<std::size_t, 3> kSizes{1'000, 32'000, 1'000'000};
constexpr std::array<std::string_view, 3> kSizeNames{"1 KB", "32 KB", "1 MB"};

/// A text that consists of a beginning, one piece repeated, and an end.
struct Input {
    std::string_view name;
    std::string_view begin;
    std::string_view repeated;
    std::string_view end;

    std::string text(std::size_t size) const {
        std::string text(begin);
        while (text.size() + repeated.size() + end.size() <= size)
            text += repeated;
        return text += end;
    }
};

// Each of the unusual ones is hard for an algorithm that looks ahead or goes back.
constexpr std::array kHTML{
    Input{"plain text", "", "Ein kveld ved fjorden fortel folket på øya om fisk, storm og heimveg. ", ""},
    Input{"text with markup",
          "",
          "<p>Kaffe &amp; krim: <b>nytt spor</b> i &quot;saka&quot; p&aring; Ytter&oslash;y i kveld.</p> ",
          ""},
    Input{"tags alone", "", "<b></b>", ""},
    Input{"all '<'", "", "<", ""},
    Input{"all '<', one '>' at the end", "", "<", ">"},
    Input{"all '<>'", "", "<>", ""},
    Input{"tags that never end", "", "<a href=b ", ""},
    Input{"all '&'", "", "&", ""},
    Input{"names alone", "", "&aring;", ""},
    Input{"names that lack their end", "", "&aacute", ""},
    Input{"\"&amp;amp;amp;...\"", "&", "amp;", ""},
    Input{"names that arise from \"&amp;\"", "", "&amp;lt;", "&lt;"},
    Input{"numbers alone", "", "&#229;", ""},
    Input{"numbers that never end", "", "&#22", ""},
    Input{"one number of many digits", "&#", "0", "65;"},
    Input{"\"&#38;#38;#38;...\"", "&", "#38;", ""},
};

constexpr std::array kURLs{
    Input{"a long path", "https://img.example/v1/", "fjordfolket-42/", "main.jpg"},
    Input{"a long query", "https://tv.example/?", "plass=forside&t[]=602x338q50&", ""},
    Input{"a long host", "https://", "fjordfolket.", "example/"},
    Input{"percent-encoded path", "https://img.example/", "%C3%A6", ""},
    Input{"percent-encoded host", "https://", "%C3%A6", "/"},
    Input{"percent-encoded path, the last digit missing", "/", "%41", "%4"},
    Input{"all '%'", "", "%", ""},
    Input{"all '/'", "", "/", ""},
    Input{"all '?'", "", "?", ""},
    Input{"all '#'", "", "#", ""},
    Input{"all ':' after the host", "https://h", ":", ""},
    Input{"userinfo without '@'", "https://", "a:", ""},
    Input{"userinfo and host", "https://", "a:", "@h/"},
    Input{"a long port", "https://h:", "8", "/"},
    Input{"a scheme that never ends", "", "a+", ""},
    Input{"IPv6 look-alike", "https://[", "1:", "]/"},
    Input{"IPv6 look-alike that never ends", "https://[", "1:", ""},
    Input{"future IP literal", "https://[v1.", "a:", "]/"},
};

struct Subject {
    std::string_view name;
    std::string_view limit;
    /// Walks over the bytes of the text: the limit.
    void (*walk)(std::string_view text, char* to);
    /// Does the work; whether the text was accepted.
    bool (*run)(std::string_view text, char* to);
};

void copyText(std::string_view text, char* to) {
    std::memcpy(to, text.data(), text.size());
    lookAt(*to);
}
void searchText(std::string_view text, char*) {
    lookAt(std::memchr(text.data(), '\n', text.size()));
}
bool cleanHTML(std::string_view text, char* to) {
    lookAt(HTMLRemoval::withoutHTMLTags(text, to));
    lookAt(*to);
    return true;
}
bool parseURL(std::string_view text, char*) {
    const auto url = URLView::parse(text);
    lookAt(url);
    return url.has_value();
}

constexpr Subject kCleaning{"HTML cleaned", "limit: memcpy", copyText, cleanHTML};
constexpr Subject kParsing{"URL parsed", "limit: memchr", searchText, parseURL};

std::string speed(double nanosecondsPerByte) {
    // A higher figure means that the text was not read to its end, or depends on the caches more than on the
    // code.
    constexpr double kFastest = 100;
    const double gigabytesPerSecond = 1 / nanosecondsPerByte;
    return gigabytesPerSecond > kFastest ? "> " + fixed(kFastest, 0) : fixed(gigabytesPerSecond, 2);
}

void measureSubject(const Subject& subject, std::span<const Input> inputs, const Options& options,
                    Report& report) {
    std::string buffer(kSizes.back(), '\0');
    char* const to = buffer.data();
    std::vector<std::string> names;
    std::vector<Way> ways;  // one for each size of each input
    for (const Input& input : inputs) {
        const bool isAccepted = subject.run(input.text(kSizes.front()), to);
        names.push_back(std::string(input.name) + (isAccepted ? "" : " (refused)"));
        for (const std::size_t size : kSizes) {
            ways.push_back({"QELModels",
                            [&subject, to, text = input.text(size)] { subject.run(text, to); },
                            static_cast<double>(input.text(size).size())});
        }
    }
    names.emplace_back(subject.limit);
    for (const std::size_t size : kSizes) {
        ways.push_back({std::string(subject.limit),
                        [&subject, to, text = inputs.front().text(size)] { subject.walk(text, to); },
                        static_cast<double>(inputs.front().text(size).size())});
    }
    const std::vector<Times> times = timesInTurn(ways, options);

    std::vector<std::string> head{std::string(subject.name) + ", GB/s"};
    head.insert(head.end(), kSizeNames.begin(), kSizeNames.end());
    head.emplace_back("time a byte, 1 MB to 1 KB");
    Table table(std::move(head));
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::vector<std::string> cells{names[i]};
        std::array<double, kSizes.size()> ofSizes;
        for (std::size_t j = 0; j < kSizes.size(); ++j) {
            const std::size_t place = i * kSizes.size() + j;
            ofSizes[j] = quartilesOf(times[place]).median;
            cells.push_back(speed(ofSizes[j]));
            report.add({std::string(kTexts.name),
                        std::string(subject.name) + ": " + names[i] + ", " + std::string(kSizeNames[j]),
                        ways[place].name,
                        ofSizes[j],
                        "ns a byte"});
        }
        cells.push_back(fixed(ofSizes.back() / ofSizes.front(), 2));
        table.row(std::move(cells));
    }
    report.show(table);
}

void measure(const Options& options, Report& report) {
    measureSubject(kCleaning, kHTML, options, report);
    measureSubject(kParsing, kURLs, options, report);
}

}  // namespace

constinit const Topic kTexts{"texts", nullptr, measure};

}  // namespace QELModels::bench
