// Promise: an audit is the sum of what is explained of each document, and sums of parts are the sum of the
// whole, to the byte, whatever the threads, the files and their order.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "JSON/JSONReader.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Records/MappingFault.h"
#include "tool/Explanation.h"
#include "tool/audit/Audit.h"
#include "tool/audit/AuditDocuments.h"
#include "tool/audit/AuditPage.h"
#include "tool/commands/Commands.h"

namespace QELModels::tool {
namespace {

using Texts = std::vector<std::string>;

// --- A folder of documents --------------------------------------------------------------------------------

/// A new folder that is the current one until the test ends: files have short names in all that is answered.
class Folder {
public:
    Folder() : before_(std::filesystem::current_path()) {
        std::string name = testing::TempDir() + "auditXXXXXX";
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        path_ = name;
        std::filesystem::current_path(path_);
        Log::setSink([](std::string_view) {});
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        Log::setSink({});
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }

    std::string write(const std::string& name, std::string_view text) const {
        std::ofstream(name, std::ios::binary) << text;
        return name;
    }
    std::string writeLines(const std::string& name, const Texts& lines) const {
        std::string text;
        for (const std::string& line : lines)
            text += line + '\n';
        return write(name, text);
    }

private:
    std::filesystem::path before_, path_;
};

std::string json(const Audit& audit) {
    std::string text;
    JSONWriter writer(text);
    audit.write(writer);
    return text;
}

Audit audited(std::string_view kind, const Texts& files, std::size_t threads = 2) {
    return auditDocuments(kindNamed(kind), files, threads);
}

/// All that an audit says, a line for everything that was seen at least once: the unread keys last.
Texts said(const Audit& audit) {
    Texts lines;
    const auto say = [&](std::string_view word, const std::string& what, const AuditTally& tally) {
        std::ostringstream line;
        line << word << ' ' << tally.count << ' ' << what << " at " << tally.example.file << ':'
             << tally.example.line << ' ' << tally.example.pointer;
        lines.push_back(line.str());
    };
    for (const auto& [key, outcomes] : audit.properties)
        for (const FEMOutcome outcome : kAuditOutcomes)
            if (outcomes[outcome].count != 0)
                say(outcomeName(outcome), key.first + " (" + key.second + ")", outcomes[outcome]);
    for (const Audit::UnreadKey* key : audit.unreadMostFrequentFirst())
        say(kUnread, key->first, key->second);
    return lines;
}

/// Those lines that have a word in them.
Texts with(std::string_view word, const Texts& lines) {
    Texts some;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(some), [word](const std::string& line) {
        return line.find(word) != std::string::npos;
    });
    return some;
}

struct Result {
    int status;
    std::string out, err;
};

Result run(const Texts& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = static_cast<int>(runProgram(arguments));
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

// --- What is counted --------------------------------------------------------------------------------------

TEST(Audit, CountsOutcomesAndNamesTheLeastPlace) {
    const Folder folder;
    // Line ends of both kinds, lines that hold nothing, a mark in front, and no line end at the end.
    const std::string lines = folder.write("b.ndjson",
                                           "\xEF\xBB\xBF{\"title\":\"a\",\"seasonNumber\":1}\r\n \n\n"
                                           "{\"title\":null,\"seasonNumber\":\"x\",\"extra\":[1]}\n"
                                           "7\n{\"title\":5,\"other\":1,\"extra\":2,\"a.b~/\":3}");
    const std::string one = folder.write("a.json", "\n{\"title\":\n\"b\",\"assets\":null}");
    const Audit audit = audited("season", {lines, one});
    EXPECT_EQ(audit.documents, 5u);
    EXPECT_EQ(audit.broken.count(), 0u);
    EXPECT_EQ(said(audit),
              (Texts{"wrongKind 1  () at b.ndjson:5 ",
                     "missing 3 /assets (assets) at b.ndjson:1 /assets",
                     "null 1 /assets (assets) at a.json:1 /assets",
                     "set 1 /seasonNumber (seasonNumber) at b.ndjson:1 /seasonNumber",
                     "missing 2 /seasonNumber (seasonNumber) at a.json:1 /seasonNumber",
                     "wrongKind 1 /seasonNumber (seasonNumber) at b.ndjson:4 /seasonNumber",
                     "set 2 /title (title) at a.json:1 /title",
                     "null 1 /title (title) at b.ndjson:4 /title",
                     "refused 1 /title (title) at b.ndjson:6 /title",
                     "unread 2 /extra at b.ndjson:4 /extra",
                     "unread 1 /a.b~0~1 at b.ndjson:6 /a.b~0~1",
                     "unread 1 /other at b.ndjson:6 /other"}));
}

TEST(Audit, PlacesInListsAreLeastByTheirText) {
    const Folder folder;
    std::string elements;
    for (int i = 0; i < 130; ++i)
        elements += i % 7 == 2 || i == 103 ? "5," : i == 104 ? "null," : "{\"odd\":1,\"id\":1},";
    const std::string page = "{\"_embedded\":{\"assets\":[" + elements + "{}]},\"top\":1}";
    const Texts lines = said(audited("assets", {folder.write("p.json", page)}));
    // Elements 2, 9, 16, 23, ..., 100, 107, ..., 128 and 103 are numbers; "100" comes before "103" and "16".
    EXPECT_EQ(with("[*])", lines),
              (Texts{"null 1 /_embedded/assets/* ([*]) at p.json:1 /_embedded/assets/104",
                     "wrongKind 20 /_embedded/assets/* ([*]) at p.json:1 /_embedded/assets/100"}));
    EXPECT_EQ(
        with("Identifier", lines),
        (Texts{"set 109 /_embedded/assets/*/id ([*].assetIdentifier) at p.json:1 /_embedded/assets/0/id",
               "missing 1 /_embedded/assets/*/id ([*].assetIdentifier) at p.json:1 "
               "/_embedded/assets/130/id"}));
    EXPECT_EQ(with(kUnread, lines),
              (Texts{"unread 109 /_embedded/assets/*/odd at p.json:1 /_embedded/assets/0/odd",
                     "unread 1 /top at p.json:1 /top"}));
}

TEST(Audit, RecordsCountAsSetForPeople) {
    const Folder folder;
    const Audit audit = audited(
        "assets",
        {folder.writeLines(
            "p.jsonl",
            {R"({"_embedded":{"assets":[{"additional":{"chapters":[{},{"time":1},7,{},{},{}]}},null,{},{"id":1}]}})",
             R"({"_embedded":{"assets":[]}})",
             "{}",
             "7",
             "[",
             R"({"_embedded":{"assets":5}})"})});
    struct Row {
        Audit::PropertyKey key;
        std::uint64_t records, others;
    };
    for (const auto& [key, records, others] :
         {Row{{"", ""}, 4, 1},
          Row{{"/_embedded/assets", ""}, 2, 2},
          Row{{"/_embedded/assets/*", "[*]"}, 3, 1},
          Row{{"/_embedded/assets/*/additional/chapters/*", "[*].assetAdditional.chapters[*]"}, 5, 1}}) {
        SCOPED_TRACE(key.first);
        const auto property = audit.properties.find(key);
        ASSERT_NE(property, audit.properties.end());
        EXPECT_EQ(property->second[FEMOutcome::set].count, 0u);
        EXPECT_EQ(audit.outcomesOf(*property)[FEMOutcome::set].count, records);
        EXPECT_EQ(audit.outcomesOf(*property).total(), records + others);
    }
    const auto title = audit.properties.find({"/_embedded/assets/*/title", "[*].title"});
    ASSERT_NE(title, audit.properties.end());
    EXPECT_EQ(audit.outcomesOf(*title), title->second);
    // One element that is none does not put a list at the head of those that are filled least.
    const std::string table = run({"audit", "assets", "p.jsonl"}).out;
    EXPECT_NE(table.find("[*]  /_embedded/assets/*\n"
                         "  set                  3  75.0 %\n"
                         "  null                 1  25.0 %  p.jsonl:1 /_embedded/assets/1\n"),
              std::string::npos)
        << table;
}

TEST(Audit, BrokenAndFaultyDocumentsAreNamedAndDoNotStopIt) {
    const Folder folder;
    const std::string lines = folder.writeLines("l.jsonl",
                                                {"{\"id\":1}",
                                                 "{\"id\":",
                                                 R"({"x":1,"category":{"additional":{"backgroundColor":5}}})",
                                                 "{\"id\":2}"});
    const std::string one = folder.write("o.json", "{\n \"a\": \"\\q\"}");
    const Audit audit = audited("asset", {one, lines});
    EXPECT_EQ(audit.documents, 5u);
    EXPECT_EQ(audit.broken.count(), 2u);
    EXPECT_EQ(audit.broken.named(),
              (std::vector<AuditProblem>{{"l.jsonl", 2, 7, "", "the document ends before its value does"},
                                         {"o.json", 2, 8, "", "a bad escape"}}));
    EXPECT_EQ(audit.faulty.count(), 1u);
    ASSERT_EQ(audit.faulty.named().size(), 1u);
    EXPECT_EQ(audit.faulty.named()[0].line, 3u);
    EXPECT_EQ(audit.faulty.named()[0].pointer, "/category/additional/backgroundColor");
    const Texts all = said(audit);
    EXPECT_EQ(with("fault ", all).size(), 1u);
    EXPECT_EQ(with("set 2 /id", all).size(), 1u);
    // Nothing more is told of a document once its mapping has faulted.
    EXPECT_TRUE(with(kUnread, all).empty());
}

// --- Sums -------------------------------------------------------------------------------------------------

// The literal twin: everything that is explained of one document after the other, as texts.
std::string withStars(std::string_view path, char open) {
    std::string text;
    for (std::size_t i = 0; i < path.size(); ++i) {
        text += path[i];
        if (path[i] != open) continue;
        std::size_t end = i + 1;
        while (end < path.size() && std::isdigit(static_cast<unsigned char>(path[end])) != 0)
            ++end;
        if (end == i + 1) continue;
        text += '*';
        i = end - 1;
    }
    return text;
}

struct Document {
    std::string file, text;
    std::uint64_t line;
};

Audit explained(const Kind& kind, const std::vector<Document>& documents) {
    Audit audit;
    audit.kind = kind.name;
    audit.documents = documents.size();
    for (const auto& [file, text, line] : documents) {
        JSONError error;
        const auto document = representationFromJSON(text, &error);
        if (!document) {
            audit.broken.add({file, line, error.column, {}, error.reason});
            continue;
        }
        try {
            explain(kind, *document, {}, [&, &file = file, &line = line](const Finding& finding) {
                const AuditTally seen{1, {file, line, finding.path}};
                const std::string path = withStars(finding.path, '/');
                if (finding.outcome == kUnread) return audit.unread[path].add(seen);
                for (const FEMOutcome outcome : kAuditOutcomes)
                    if (outcomeName(outcome) == finding.outcome)
                        audit.properties[{path, withStars(finding.property, '[')}][outcome].add(seen);
            });
        } catch (const MappingFault& fault) {
            audit.faulty.add({file, line, 0, std::string(fault.pointer()), fault.what()});
        }
    }
    return audit;
}

const Texts kAssets{
    "{}",
    R"({"id":7,"title":"t","published":"x","category":null})",
    R"({"odd":{"a":[1]},"additional":{"chapters":[{"title":"c","odd":1},5,null,{"time":[]},{}]},"also":[]})",
    R"({"also":1,"additional":{"chapters":[1,2,3],"subtitles":{}},"odd":null})",
    R"({"streamType":"sideways","images":[],"category":{"additional":{"odd":1,"image":"ht tp"}}})",
    R"({"id":1,"category":{"additional":{"backgroundColor":[]}},"odd":1})",
    "null"};

/// Pages and single assets, whole ones and broken ones.
rc::Gen<std::string> anyText(bool isPage) {
    const auto asset = rc::gen::elementOf(kAssets);
    const auto broken = rc::gen::element<std::string>("{\"id\":", "[1,]", "nul", "\"\xC3\"");
    if (!isPage) return rc::gen::weightedOneOf<std::string>({{9, asset}, {1, broken}});
    const auto page = rc::gen::map(rc::gen::container<Texts>(asset), [](const Texts& elements) {
        std::string list;
        for (const std::string& element : elements)
            list += (list.empty() ? "" : ",") + element;
        return "{\"odd\":1,\"_embedded\":{\"assets\":[" + list + "],\"odd\":2}}";
    });
    const auto other = rc::gen::element<std::string>("{\"_embedded\":[]}", "[]", "{}", "null");
    return rc::gen::weightedOneOf<std::string>({{8, page}, {1, other}, {1, broken}});
}

RC_GTEST_PROP(AuditSum, IsTheSumOfWhatIsExplainedAndOfItsParts, ()) {
    const Folder folder;
    const bool isPage = *rc::gen::arbitrary<bool>();
    const Kind& kind = kindNamed(isPage ? "assets" : "asset");
    const auto files = *rc::gen::resize(
        5, rc::gen::container<std::vector<Texts>>(rc::gen::container<Texts>(anyText(isPage))));
    Texts names;
    std::vector<Document> documents;
    for (const Texts& lines : files) {
        // The order of names is not the order in which the files are given.
        const std::string name =
            std::string(names.size() % 3, 'z') + std::to_string(names.size()) + ".ndjson";
        names.push_back(folder.writeLines(name, lines));
        for (std::size_t i = 0; i < lines.size(); ++i)
            documents.push_back({name, lines[i], i + 1});
    }
    const Audit whole = auditDocuments(kind, names, 1);
    RC_ASSERT(json(whole) == json(explained(kind, documents)));

    // Any two parts, written and read again, in either order.
    const auto middle = names.begin() + *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(names) + 1);
    Audit sum =
        Audit::read(*representationFromJSON(json(auditDocuments(kind, Texts(middle, names.end()), 2))));
    sum.add(
        Audit::read(*representationFromJSON(json(auditDocuments(kind, Texts(names.begin(), middle), 3)))));
    RC_ASSERT(json(sum) == json(whole));
}

TEST(AuditSum, DoesNotDependOnThreadsAndOrder) {
    const Folder folder;
    // Several pieces a file, a line that is longer than one, and more broken lines than are named.
    const std::string large = R"({"id":"large","odd":")" + std::string(std::size_t{3} << 20, 'x') + "\"}";
    Texts files;
    for (const std::string name : {"c.ndjson", "a.ndjson", "b.ndjson"}) {
        Texts lines;
        for (std::size_t i = 0; i < 3000; ++i)
            lines.push_back(i % 6 == files.size() ? "[" : kAssets[(i * i + files.size()) % kAssets.size()]);
        lines[1000 * files.size() + 1] = large;
        lines[2000] += R"( {"late":true})";
        files.push_back(folder.writeLines(name, lines));
    }
    files.push_back(folder.write("single.json", kAssets[2]));
    const Audit audit = audited("asset", files, 1);
    const std::string expected = json(audit);
    EXPECT_EQ(audit.documents, 9001u);
    EXPECT_EQ(audit.broken.count(), 1502u);
    ASSERT_EQ(audit.broken.named().size(), AuditProblems::kMostNamed);
    EXPECT_EQ(audit.broken.named().front().file, "a.ndjson");
    EXPECT_EQ(audit.broken.named().back().file, "b.ndjson");
    for (const std::size_t threads : {2u, 7u, std::thread::hardware_concurrency() + 1}) {
        std::next_permutation(files.begin(), files.end());
        EXPECT_EQ(json(audited("asset", files, threads)), expected) << threads;
    }
    Audit sum = audited("asset", {files[2]});
    for (const std::size_t i : {3u, 0u, 1u})
        sum.add(audited("asset", {files[i]}));
    EXPECT_EQ(json(sum), expected);
}

// --- The command ------------------------------------------------------------------------------------------

constexpr std::string_view kNothing =
    R"({"kind":"season","documents":0,"broken":{"count":0,"named":[]},"faulty":{"count":0,"named":[]},)"
    R"("properties":[],"unread":[]})";

TEST(AuditCommand, MergesWhatItWrites) {
    const Folder folder;
    folder.writeLines("a.ndjson", {"{\"title\":\"a\"}", "{", "{\"\\ud800\":1}"});
    folder.write("b.json", R"({"title":5,"odd":"<&\"'>"})");
    const std::string whole = run({"audit", "season", "b.json", "a.ndjson", "--json", "--threads", "2"}).out;
    folder.write("A", run({"audit", "season", "a.ndjson", "--json"}).out);
    folder.write("B", run({"audit", "season", "b.json", "--json"}).out);
    for (const Texts& arguments :
         {Texts{"audit", "--merge", "A", "B"}, Texts{"audit", "B", "A", "--merge"}}) {
        const Result merged = run(arguments);
        EXPECT_EQ(merged.out, whole);
        EXPECT_EQ(merged.err, "");
        EXPECT_EQ(merged.status, 0);
    }
    EXPECT_NE(
        whole.find(R"("unread":[{"path":"/odd","count":1,"example":{"file":"b.json","line":1,"pointer":)"
                   R"("/odd"}},{"path":"/\ud800")"),
        std::string::npos);
    EXPECT_EQ(whole.back(), '\n');
}

TEST(AuditCommand, SaysWhatIsWrong) {
    const Folder folder;
    folder.write("good", kNothing);
    folder.write("d.json", "{}");
    const auto changed = [](std::string_view from, std::string_view to) {
        std::string text(kNothing);
        return text.replace(text.find(from), from.size(), to);
    };
    const std::string begun = R"({"path":"","property":"","set":)";
    struct Row {
        std::string audit, message;
    };
    const std::vector<Row> rows{
        {"[1,", "bad:1:4: the document ends before its value does\n[1,\n   ^\n"},
        {"[]", "bad: : 'kind' is missing\n"},
        {changed("season", "seasonal"), "bad: /kind: no kind of document\n"},
        {changed("season", "asset"), "bad: /kind: this one is of kind asset, not season\n"},
        {changed(":0,", ":-1,"), "bad: /documents: not a count\n"},
        {changed(":0,", ":1.5,"), "bad: /documents: not a count\n"},
        {changed(":0,", ":9007199254740993,"), "bad: /documents: not a count\n"},
        {changed(":0,", ":true,"), "bad: /documents: not a number\n"},
        {changed("\"count\":0", "\"count\":1"), "bad: /broken/named: does not go with the count\n"},
        {changed("\"count\":0,\"named\":[]",
                 R"("count":1,"named":[{"file":"f","line":1,"column":1,"reason":"r"}])"),
         "bad: /documents: fewer than are broken or faulty\n"},
        {changed("\"properties\":[]", "\"properties\":{}"), "bad: /properties: not an array\n"},
        {changed("\"properties\":[]", "\"properties\":[" + begun + "5}]"),
         "bad: /properties/0/set: 'count' is missing\n"},
        {changed("\"properties\":[]", "\"properties\":[" + begun + R"({"count":1,"example":null}}])"),
         "bad: /properties/0/set/example: does not go with the count\n"},
        {changed("\"unread\":[]", R"("unread":[{"path":5}])"), "bad: /unread/0/path: not a string\n"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.audit);
        folder.write("bad", row.audit);
        const Result result = run({"audit", "--merge", "good", "bad"});
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, row.message);
        EXPECT_EQ(result.status, 1);
    }
    // A file that cannot be read stops it: nobody takes a part for the whole.
    EXPECT_EQ(run({"audit", "asset", "d.json", "none.json", "--json"}).err,
              "none.json: cannot be read: No such file or directory\n");
    const Result folderGiven = run({"audit", "asset", "d.json", "."});
    EXPECT_EQ(folderGiven.status, 1);
    EXPECT_EQ(folderGiven.out, "");
    EXPECT_EQ(run({"audit", "asset", "d.json", "--html", "no/such.html"}).status, 1);
    const std::vector<Texts> misused{{"audit"},
                                     {"audit", "asset"},
                                     {"audit", "thing", "d.json"},
                                     {"audit", "asset", "d.json", "--json", "--html", "o"},
                                     {"audit", "asset", "d.json", "--threads", "0"},
                                     {"audit", "assets", "d.json", "--key-path", "a"}};
    for (const Texts& arguments : misused)
        EXPECT_EQ(run(arguments).status, 2) << testing::PrintToString(arguments);
}

TEST(AuditCommand, ShowsPeopleProblemsFirst) {
    const Folder folder;
    folder.writeLines("s.ndjson",
                      {"{\"title\":\"a\",\"odd\":1}", "{\"title\":\"b\",\"seasonNumber\":[]}", "["});
    const Result result = run({"audit", "season", "s.ndjson"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "3 documents of kind season, 1 broken, 0 faulty\n"
              "3 properties, 1 with problems, 1 unread keys\n\n"
              "seasonNumber  /seasonNumber\n"
              "  missing              1  50.0 %  s.ndjson:1 /seasonNumber\n"
              "  wrong kind           1  50.0 %  s.ndjson:2 /seasonNumber\n\n"
              "assets  /assets\n"
              "  missing              2   100 %  s.ndjson:1 /assets\n\n"
              "title  /title\n"
              "  set                  2   100 %  s.ndjson:1 /title\n\n"
              "Keys that no rule reads\n"
              "            1  /odd  s.ndjson:1 /odd\n\n"
              "Broken documents\n"
              "  s.ndjson:3:2: the document ends before its value does\n");
    EXPECT_EQ(shareText(1, 100000), "<0.1 %");
    EXPECT_EQ(shareText(99999, 100000), "99.9 %");
    EXPECT_EQ(countText(1234567), "1,234,567");
}

TEST(AuditPage, HoldsEverythingAndLoadsNothing) {
    const Folder folder;
    folder.writeLines("<b>.ndjson",
                      {R"({"title":5,"</code><script>alert(1)</script>":1,"\"'&\u202e\ud800":2})",
                       "[",
                       R"({"title":"x","assets":[{"category":{"additional":{"backgroundColor":1}}}]})"});
    folder.write("page.html", std::string(1 << 20, 'x'));
    const Result result = run({"audit", "season", "<b>.ndjson", "--html", "page.html"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out + result.err, "");
    std::ifstream file("page.html", std::ios::binary);
    const std::string page(std::istreambuf_iterator<char>(file), {});
    const auto count = [&page](std::string_view piece) {
        std::size_t found = 0;
        for (std::size_t at = page.find(piece); at != std::string::npos; at = page.find(piece, at + 1))
            ++found;
        return found;
    };
    const Audit audit = audited("season", {"<b>.ndjson"});
    EXPECT_EQ(count("<details>"), audit.properties.size() + audit.unread.size());
    EXPECT_EQ(count("<code>/&quot;&#39;&amp;\xEF\xBF\xBD\xEF\xBF\xBD</code>"),
              2u);  // the key and its example
    EXPECT_EQ(count("<script>"), 1u);
    EXPECT_EQ(count("alert(1)"), 3u);  // as text alone: to filter by, to read, and in the example
    EXPECT_EQ(count("<code>&lt;b&gt;.ndjson:2:2</code> the document ends"), 1u);
    EXPECT_EQ(count("<code>&lt;b&gt;.ndjson:3 /assets/0/category/additional/backgroundColor</code>"), 1u);
    EXPECT_EQ(count("http:") + count("https:") + count(" src=") + count("@import") + count("url("), 0u);
    EXPECT_EQ(page.substr(page.size() - 10), "</script>\n");
}

}  // namespace
}  // namespace QELModels::tool
