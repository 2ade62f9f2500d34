// Promise: an audit is the sum of what is explained of each document, and sums of parts are the sum of the
// whole, to the byte, whatever the threads, the files and their order.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "JSON/JSONReader.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/Command.h"
#include "tool/Explanation.h"
#include "tool/System.h"
#include "tool/audit/Audit.h"
#include "tool/audit/AuditDocuments.h"
#include "tool/audit/AuditPage.h"

namespace QELModels::tool {
namespace {

using test::contains;
using test::run;
using test::Texts;

/// A folder of documents, in which nothing is logged.
class Folder : public test::Folder {
    SilentLog silentLog_;
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

// --- What is counted --------------------------------------------------------------------------------------

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
            explain(kind, *document, {}, [&, &inFile = file, &inLine = line](const Finding& finding) {
                const AuditTally seen{1, {inFile, inLine, finding.path}};
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

TEST(Audit, CountsFilesAndLines) {
    const Folder folder;
    // Line ends of both kinds, lines without a document, a mark at the start, and no line end at the end.
    const Texts lines{"\xEF\xBB\xBF{\"title\":\"a\",\"seasonNumber\":1}",
                      R"({"title":null,"seasonNumber":"x","extra":[1]})",
                      "7",
                      R"({"title":5,"other":1,"extra":2,"a.b~/":3})"};
    const std::string one = "\n{\"title\":\n\"b\",\"assets\":null}", broken = "{\n \"a\": \"\\q\"}";
    folder.write("b.ndjson", lines[0] + "\r\n \n\n" + lines[1] + "\n" + lines[2] + "\n" + lines[3]);
    folder.write("a.json", one);
    folder.write("c.json", broken);
    EXPECT_EQ(json(audited("season", {"b.ndjson", "c.json", "a.json"})),
              json(explained(kindNamed("season"),
                             {{"b.ndjson", lines[0], 1},
                              {"b.ndjson", lines[1], 4},
                              {"b.ndjson", lines[2], 5},
                              {"b.ndjson", lines[3], 6},
                              {"a.json", one, 1},
                              {"c.json", broken, 2}})));
}

TEST(Audit, PlacesInListsAreLeastByTheirText) {
    const Folder folder;
    std::string elements;
    for (int i = 0; i < 130; ++i)
        elements += i % 7 == 2 || i == 103 ? "5," : i == 104 ? "null," : "{\"odd\":1,\"id\":1},";
    const std::string page = "{\"_embedded\":{\"assets\":[" + elements + "{}]},\"top\":1}";
    const Audit audit = audited("assets", {folder.write("p.json", page)});
    EXPECT_EQ(json(audit), json(explained(kindNamed("assets"), {{"p.json", page, 1}})));
    // Elements 2, 9, 16, 23, ..., 100, 107, ..., 128 and 103 are numbers; "100" comes before "103" and "16".
    EXPECT_EQ(audit.properties.at({"/_embedded/assets/*", "[*]"})[FEMOutcome::wrongKind],
              (AuditTally{20, {"p.json", 1, "/_embedded/assets/100"}}));
}

TEST(Audit, RecordsCountAsSetForPeople) {
    const Folder folder;
    const std::string file =
        folder.write("p.jsonl",
                     R"({"_embedded":{"assets":[{"additional":{"chapters":)"
                     R"([{},{"time":1},7,{},{},{}]}},null,{},{"id":1}]}})"
                     "\n"
                     "{\"_embedded\":{\"assets\":[]}}\n{}\n7\n[\n{\"_embedded\":{\"assets\":5}}\n");
    const Audit audit = audited("assets", {file});
    const struct {
        Audit::PropertyKey key;
        std::uint64_t records, others;
    } rows[] = {
        {{"", ""}, 4, 1},
        {{"/_embedded/assets", ""}, 2, 2},
        {{"/_embedded/assets/*", "[*]"}, 3, 1},
        {{"/_embedded/assets/*/additional/chapters/*", "[*].assetAdditional.chapters[*]"}, 5, 1},
    };
    for (const auto& [key, records, others] : rows) {
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
    // One element that is not a record does not make the list one of the properties that are filled least.
    const std::string table = run("audit assets p.jsonl").out;
    EXPECT_TRUE(contains(table,
                         "[*]  /_embedded/assets/*\n"
                         "  set                  3  75.0 %\n"
                         "  null                 1  25.0 %  p.jsonl:1 /_embedded/assets/1\n"))
        << table;
}

// --- Sums -------------------------------------------------------------------------------------------------

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

RC_GTEST_PROP(Audit, IsTheSumOfWhatIsExplainedAndOfItsParts, ()) {
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

TEST(Audit, DoesNotDependOnThreadsAndOrder) {
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

TEST(Audit, MergesWhatItWrites) {
    const Folder folder;
    folder.writeLines("a.ndjson", {"{\"title\":\"a\"}", "{", "{\"\\ud800\":1,\"zz\":1}", "{\"zz\":1}"});
    folder.write("b.json", R"({"title":5,"odd":"<&\"'>"})");
    const std::string whole = run("audit season b.json a.ndjson --json --threads 2").out;
    folder.write("A", run("audit season a.ndjson --json").out);
    folder.write("B", run("audit season b.json --json").out);
    test::expect({{"audit --merge A B", "", whole}, {"audit B A --merge", "", whole}});
    // The most frequent key that is not read comes first, then the paths decide.
    EXPECT_TRUE(contains(whole, R"("unread":[{"path":"/zz","count":2,)"));
    EXPECT_TRUE(contains(whole,
                         R"({"path":"/odd","count":1,"example":{"file":"b.json","line":1,"pointer":"/odd"}},)"
                         R"({"path":"/\ud800")"));
    EXPECT_EQ(whole.back(), '\n');
}

TEST(Audit, ReadsPipesOnce) {
    const std::string document = R"({"title":"a"})";
    for (const std::string name : {"-", "/dev/stdin"}) {
        if (name != "-" && !system::statusOf(name)) continue;  // not every system has a file of that name
        const test::Pipe in = test::openPipe();
        ASSERT_EQ(system::write(in.in, document.data(), document.size()), std::ssize(document));
        system::close(in.in);
        const test::Scratch out, err;
        const test::Process process =
            test::start({"audit", "season", name}, {in.out, out.descriptor(), err.descriptor()});
        system::close(in.out);
        EXPECT_EQ(test::exitStatus(process), 0) << err.content();
        EXPECT_TRUE(out.content().starts_with("1 documents of kind season, 0 broken")) << out.content();
        EXPECT_TRUE(contains(out.content(), "  set                  1   100 %  " + name + ":1 /title\n"));
    }
}

TEST(Audit, ReportsWhatIsWrong) {
    const Folder folder;
    folder.write("good", kNothing);
    folder.write("d.json", "{}");
    const auto changed = [](std::string_view from, std::string_view to) {
        std::string text(kNothing);
        return text.replace(text.find(from), from.size(), to);
    };
    const auto withProperty = [&](const std::string& set) {
        return changed("\"properties\":[]", R"("properties":[{"path":"","property":"","set":)" + set + "}]");
    };
    const struct {
        std::string audit, message;
    } rows[] = {
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
        {withProperty("5"), "bad: /properties/0/set: 'count' is missing\n"},
        {withProperty(R"({"count":1,"example":null})"),
         "bad: /properties/0/set/example: does not go with the count\n"},
        {changed("\"unread\":[]", R"("unread":[{"path":5}])"), "bad: /unread/0/path: not a string\n"}};
    for (const auto& row : rows) {
        folder.write("bad", row.audit);
        SCOPED_TRACE(row.audit);
        test::expect({{"audit --merge good bad", "", "", row.message, 1}});
    }
    // A file that cannot be read ends it, so that a part is not taken for the whole.
    test::expect({
        {"audit asset d.json none.json --json",
         "",
         "",
         "none.json: cannot be read: No such file or directory\n",
         1},
        {"audit asset d.json .", "", "", ".: cannot be read: Is a directory\n", 1},
        {"audit asset d.json --html no/such.html",
         "",
         "",
         "qelmodels: cannot write no/such.html: No such file or directory\n",
         1},
    });
}

TEST(Audit, ShowsPeopleProblemsFirst) {
    const Folder folder;
    folder.writeLines("s.ndjson",
                      {"{\"title\":\"a\",\"odd\":1}", "{\"title\":\"b\",\"seasonNumber\":[]}", "["});
    test::expect({{"audit season s.ndjson",
                   "",
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
                   "  s.ndjson:3:2: the document ends before its value does\n"}});
    EXPECT_EQ(shareText(1, 100000), "<0.1 %");
    EXPECT_EQ(shareText(99999, 100000), "99.9 %");
    EXPECT_EQ(countText(1234567), "1,234,567");
}

std::size_t countOf(std::string_view piece, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string_view::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

TEST(Audit, PageHoldsEverythingAndLoadsNothing) {
    const Folder folder;
    folder.writeLines("&lt;b&gt;.ndjson",
                      {R"({"title":5,"</code><script>alert(1)</script>":1,"\"'&\u202e\ud800":2})",
                       "[",
                       R"({"title":"x","assets":[{"category":{"additional":{"backgroundColor":1}}}]})"});
    folder.write("page.html", std::string(1 << 20, 'x'));
    test::expect({{"audit season &lt;b&gt;.ndjson --html page.html", "", ""}});
    const std::string page = test::fileText("page.html");
    const Audit audit = audited("season", {"&lt;b&gt;.ndjson"});
    const struct {
        std::string piece;
        std::size_t count;
    } rows[] = {
        {"<details>", audit.properties.size() + audit.unread.size()},
        {"<code>/&quot;&#39;&amp;\xEF\xBF\xBD\xEF\xBF\xBD</code>", 2},  // the key and its example
        {"<script>", 1},
        {"alert(1)", 3},  // as text alone: to filter by, to read, and in the example
        {"<code>&amp;lt;b&amp;gt;.ndjson:2:2</code> the document ends", 1},
        {"<code>&amp;lt;b&amp;gt;.ndjson:3 /assets/0/category/additional/backgroundColor</code>", 1},
        {"http:", 0},
        {"https:", 0},
        {" src=", 0},
        {"@import", 0},
        {"url(", 0},
    };
    for (const auto& [piece, count] : rows)
        EXPECT_EQ(countOf(piece, page), count) << piece;
    EXPECT_TRUE(page.ends_with("</script>\n"));
}

TEST(Audit, PageMarksCountsOfProblems) {
    const Folder folder;
    folder.write("good.json", R"({"title":"a"})");
    folder.writeLines("bad.ndjson",
                      {"[", R"({"title":5,"assets":[)" + std::string(test::kFaultyAsset) + "]}"});
    const auto marked = [](const std::string& file) {
        const std::string page = auditPage(audited("season", {file}));
        Texts names;
        constexpr std::string_view kMark = "<div class=\"bad\"><dt>";
        for (std::size_t at = page.find(kMark); at != std::string::npos; at = page.find(kMark, at + 1))
            names.push_back(
                page.substr(at + kMark.size(), page.find('<', at + kMark.size()) - at - kMark.size()));
        EXPECT_EQ(countOf("<div><dt>", page) + names.size(), 6u);
        return names;
    };
    EXPECT_EQ(marked("good.json"), Texts{});
    EXPECT_EQ(marked("bad.ndjson"), (Texts{"broken", "faulty", "with problems"}));
}

}  // namespace
}  // namespace QELModels::tool
