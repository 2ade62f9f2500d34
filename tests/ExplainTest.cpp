// Promise: whatever one key of a document is damaged to, the explanation names that key with its outcome, and
// everything else stays as before. The command shows it to programs and to people.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Records/MappingFault.h"
#include "tests/Command.h"
#include "tests/DamagedDocuments.h"
#include "tests/JSONSupport.h"
#include "tool/Explanation.h"

namespace QELModels::test {

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.path << ' ' << line.property << ' ' << line.outcome;
}

namespace {

Lines explained(const tool::Kind& kind, std::string_view document, std::string_view keyPath = {}) {
    Lines lines;
    try {
        tool::explain(kind, json(document), keyPath, [&](const tool::Finding& finding) {
            lines.push_back({finding.path, finding.property, std::string(finding.outcome)});
        });
    } catch (const MappingFault& fault) {
        EXPECT_EQ(lines.back().path, fault.pointer());
        EXPECT_EQ(lines.back().outcome, "fault");
    }
    return lines;
}

// The first line that differs: it would be hard to find among all of them.
std::string firstDifference(const Lines& explained, const Lines& expected) {
    const auto [a, b] = std::mismatch(explained.begin(), explained.end(), expected.begin(), expected.end());
    if (a == explained.end() && b == expected.end()) return {};
    const auto show = [](auto line, auto end) {
        return line == end ? std::string("the end") : testing::PrintToString(*line);
    };
    return "explained " + show(a, explained.end()) + ", not " + show(b, expected.end());
}

class EveryKind : public testing::TestWithParam<tool::Kind> {};

TEST_P(EveryKind, NamesExactlyTheDamagedKey) {
    const LogLines log;  // what is logged of URLs is not looked at here
    const WholeDocument document(GetParam());
    Lines whole = document.lines;
    whole.insert(whole.end(), document.unread.begin(), document.unread.end());
    ASSERT_EQ(firstDifference(explained(GetParam(), document.json()), whole), "") << document.json();
    for (const Place& place : document.places) {
        for (const Damage& damage : allDamages()) {
            if (!applies(damage, place)) continue;
            const std::string damaged = document.damagedJSON(place, damage);
            ASSERT_EQ(firstDifference(explained(GetParam(), damaged), document.linesOf(place, damage)), "")
                << place.path << " is " << damage.name << " in " << damaged;
        }
    }
}

TEST_P(EveryKind, ExplainsARootThatIsNotADictionary) {
    for (const Damage& damage : allDamages()) {
        if (!damage.json || damage.name == "dictionary") continue;
        const std::string outcome = damage.name == "null" ? "null" : "wrongKind";
        EXPECT_EQ(explained(GetParam(), *damage.json), (Lines{{"", "", outcome}})) << damage.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Explain, EveryKind, testing::ValuesIn(tool::kinds().begin(), tool::kinds().end()),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(Explain, LooksForAPageAtItsKeyPath) {
    const Lines lines =
        explained(tool::kindNamed("assets"), R"({"a": {"b~": [null, 3], "c": 1}, "_embedded": 2})", "a.b~");
    EXPECT_EQ(lines,
              (Lines{{"/a/b~0/0", "[0]", "null"},
                     {"/a/b~0/1", "[1]", "wrongKind"},
                     {"/a/c", "", "unread"},
                     {"/_embedded", "", "unread"}}));
}

// --- The command ------------------------------------------------------------------------------------------

TEST(Explain, WritesJSONForPrograms) {
    expect({
        {"explain season --json",
         R"({"seasonNumber": "1", "title": null, "assets": [], "a/\ud800": {}})",
         "{\"path\":\"/seasonNumber\",\"property\":\"seasonNumber\",\"outcome\":\"wrongKind\"}\n"
         "{\"path\":\"/title\",\"property\":\"title\",\"outcome\":\"null\"}\n"
         "{\"path\":\"/assets\",\"property\":\"assets\",\"outcome\":\"set\"}\n"
         "{\"path\":\"/a~1\\ud800\",\"outcome\":\"unread\"}\n"},
        {"explain assets --key-path a.b --json",
         "{}",
         "{\"path\":\"/a/b\",\"property\":\"\",\"outcome\":\"missing\"}\n"},
    });
}

TEST(Explain, ShowsPeopleATableWithoutColourWhenPiped) {
    expect({
        {"explain season",
         R"({"seasonNumber": ")" + std::string(100, 'x') +
             R"(", "title": ["\u001b[31m"], "assets": [7, null], "more": {"a": [true]}})",
         "wrong kind  seasonNumber  /seasonNumber  \"" + std::string(44, 'x') +
             "...\n"
             "refused     title         /title  [\"\\u001b[31m\"]\n"
             "set         assets        /assets\n"
             "wrong kind  assets[0]     /assets/0  7\n"
             "null        assets[1]     /assets/1\n"
             "unread      /more         {\"a\":[true]}\n\n"
             "1 set, 0 missing, 1 null, 1 refused, 2 of the wrong kind, 1 unread\n"},
        {"explain season",
         "[]",
         "wrong kind  the document  []\n\n"
         "0 set, 0 missing, 0 null, 0 refused, 1 of the wrong kind, 0 unread\n"},
    });
    // What a mapping would log is part of the table.
    EXPECT_EQ(run("explain asset", R"({"articleUrl": "a b"})").err, "");
}

TEST(Explain, EndsWhereAMappingFaults) {
    const std::string document = R"({"additional": {"backgroundColor": 5, "image": 6}})";
    const Result json = run("explain category --json", document);
    EXPECT_TRUE(json.out.ends_with(
        "{\"path\":\"/additional/backgroundColor\",\"property\":\"additional.backgroundColor\","
        "\"outcome\":\"fault\"}\n"))
        << json.out;
    const Result table = run("explain category", document);
    EXPECT_TRUE(
        table.out.ends_with("\n\n1 set, 11 missing, 0 null, 0 refused, 0 of the wrong kind, 1 faulty, "
                            "0 unread\n"))
        << table.out;
    for (const Result& result : {json, table}) {
        EXPECT_EQ(result.err, "-: " + std::string(kFault.substr(kFault.find("/additional"))));
        EXPECT_EQ(result.status, 1);
    }
}

}  // namespace
}  // namespace QELModels::test
