// Promise: the command writes what other programs read from it: results, messages and exit status, to the
// byte.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <new>
#include <regex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/Command.h"
#include "tests/JSONSupport.h"
#include "tool/CommandLine.h"
#include "tool/Display.h"
#include "tool/System.h"

namespace QELModels::test {
namespace {

const std::string kEmptySeason = "{\"title\":null,\"seasonNumber\":null,\"assets\":null}";

// --- Results ----------------------------------------------------------------------------------------------

TEST(Tool, MapPrintsTheModel) {
    const std::string season = R"({"seasonNumber":1.0,"title":"&#xD800;<b>\u00e5</b>","more":[1]})";
    const std::string mapped = "{\"title\":\"\\ud800\xC3\xA5\",\"seasonNumber\":1,\"assets\":null}";
    expect({
        {"map season",
         season,
         "{\n  \"title\": \"\\ud800\xC3\xA5\",\n  \"seasonNumber\": 1,\n  \"assets\": null\n}\n"},
        {"map season - --compact", season, mapped + "\n"},
        {"map season --compact", "[5]", kEmptySeason + "\n"},
        {"map seasons --compact",
         "{\"_embedded\":{\"seasons\":[" + season + ",null]}}",
         "[" + mapped + "," + kEmptySeason + "]\n"},
        {"map seasons", "{}", "[]\n"},
        {"map editorials --compact",
         R"({"_embedded":{"editorial":[{"key":"k","assetsIds":[true,{"z":1,"a":2}]}]}})",
         "[{\"key\":\"k\",\"assetsIdentifiers\":[true,{\"z\":1,\"a\":2}],\"assets\":null}]\n"},
    });
    const std::string page = R"({"top":{"list":[{"id":5}]},"_embedded":{"assets":[{"id":6},{"id":7}]}})";
    const auto identifiers = [&](const Arguments& arguments) {
        std::string all;
        const Representation models = json(run(arguments, page).out);
        for (const RepresentationView model : models.view().elements())
            all += model.valueForKey("assetIdentifier")->number()->toString();
        return all;
    };
    EXPECT_EQ(identifiers("map assets"), "67");
    EXPECT_EQ(identifiers("map assets --key-path "), "67");
    EXPECT_EQ(identifiers("map assets --key-path top.list"), "5");
}

TEST(Tool, LinesAreDocumentsOfTheirOwn) {
    const std::string one = R"({"title":null,"seasonNumber":1,"assets":null})";
    expect({
        {"map season --lines",
         "{\"seasonNumber\":1}\n\n\r\n  \n{\"seasonNumber\":1}\r\n{\"id\" 2}\n{\"seasonNumber\":1}",
         one + "\n" + one + "\nnull\n" + one + "\n",
         "-:6:7: ':' is missing\n{\"id\" 2}\n      ^\n",
         1},
        {"map asset --lines",
         "\n" + std::string(kFaultyAsset) + "\n{\"id\":\r\n",
         "null\nnull\n",
         "-:2: " + std::string(kFault) +
             "-:3:7: the document ends before its value does\n{\"id\":\n      ^\n",
         1},
        {"map asset --lines", "", ""},
        {"facts editorial --lines",
         "{\"key\":\"category-7\"}\n{}\n",
         "{\"categoryIdentifier\":7}\n{\"categoryIdentifier\":-1}\n"},
    });
}

TEST(Tool, LinesAreAnsweredAsTheyCome) {
    const Pipe in = openPipe(), out = openPipe();
    const Process process = start("facts editorial --lines", {in.out, out.in, 2});
    tool::system::close(in.out);
    tool::system::close(out.in);
    for (const std::string number : {"1", "2"}) {
        const std::string line = "{\"key\":\"category-" + number + "\"}\n";
        ASSERT_EQ(tool::system::write(in.in, line.data(), line.size()), std::ssize(line));
        std::array<char, 64> answer{};  // reading waits for it, and fails by the test's time limit
        const std::ptrdiff_t size = tool::system::read(out.out, answer.data(), answer.size());
        EXPECT_EQ(std::string(answer.data(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(size, 0))),
                  "{\"categoryIdentifier\":" + number + "}\n");
    }
    tool::system::close(in.in);
    tool::system::close(out.out);
    EXPECT_EQ(exitStatus(process), 0);
}

/// The names of the functions that a header declares for a model, in their order.
Texts operationsIn(const std::string& header) {
    const std::string text = fileText(QELMODELS_MODELS_DIR "/" + header);
    const std::regex declaration(R"(QELMODELS_EXPORT [^;/]*?(\w+)\(\s*const QEL)");
    Texts names;
    for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at)
        if (names.empty() || names.back() != at->str(1)) names.push_back(at->str(1));
    return names;
}

TEST(Tool, FactsAreAllOperations) {
    // Where the facts of a kind are not the operations of its header, and why.
    struct Exception {
        std::string kind, name;
        enum { furtherFact, noFact } what;
        const char* reason;
    };
    std::vector<Exception> exceptions{
        {"asset", "sortedAdCuePoints", Exception::furtherFact, "declared for the asset's additional data"}};
    const std::pair<std::string, std::string> kinds[] = {{"asset", "QELAsset+Utilities.h"},
                                                         {"category", "QELCategory+Utilities.h"},
                                                         {"editorial", "QELEditorial+Utilities.h"}};
    for (const auto& [kind, header] : kinds) {
        Texts expected = operationsIn(header), facts;
        ASSERT_FALSE(expected.empty()) << header;
        std::erase_if(exceptions, [&, &asked = kind](const Exception& exception) {
            if (exception.kind != asked) return false;
            if (exception.what == Exception::furtherFact) expected.push_back(exception.name);
            return exception.what == Exception::furtherFact || std::erase(expected, exception.name) != 0;
        });
        const Representation answer = json(run({"facts", kind, "--playhead", "1"}, "{}").out);
        for (const auto& [key, value] : answer.view().members())
            facts.emplace_back(key);
        EXPECT_EQ(facts, expected);
    }
    EXPECT_TRUE(exceptions.empty()) << exceptions[0].name << " is not an exception of " << exceptions[0].kind;
}

TEST(Tool, FactsAreWhatTheOperationsAnswer) {
    const std::string document =
        R"({"id":20.5,"duration":1500,"streamType":"live","flightTimes":{"start":100},)"
        R"("category":{"isSeries":true,"lastAsset":{"id":20.5},"showCategory":true,)"
        R"("additional":{"showComments":false}},)"
        R"("streamConfiguration":{"properties":["tokenSecured"]},)"
        R"("additional":{"chapters":[],"settings":{"showAds":false,"showComments":true},)"
        R"("cuePoints":[{"timeline":9},{"timeline":-1}]}})";
    const struct {
        Arguments arguments;
        std::string document, facts;
    } rows[] = {
        {"facts asset --at 100.5 --playhead 3723",
         document,
         R"({"shareURLString":"https://tv.example/#!/20.5",)"
         R"("commentsShareURLString":"https://tv.example/?id=20.5",)"
         R"("shareURLFromPlayhead":"https://tv.example/#!/20.5/01h02m03s","durationInSeconds":1.5,)"
         R"("featuredChaptersOrDefaultChapters":[],"isLive":true,"wasLive":false,"secondsUntilLive":-0.5,)"
         R"("hasLiveStreamType":true,"isLastAssetInCategory":true,"remotePlaybackAllowed":true,)"
         R"("showAds":false,"isSeries":true,"showCategory":true,"categoryShowComments":false,)"
         R"("settingsShowComments":true,"showPlayerLogo":false,"isInvalidObject":false,"isSecured":true})"},
        {"facts asset --at -7 --playhead nan",
         "{}",
         R"({"secondsUntilLive":7,"sortedAdCuePoints":null,"featuredChaptersOrDefaultChapters":null})"},
        {"facts category",
         R"({"id":42,"parentId":2.5})",
         R"({"editorialKey":"category-42","parentCategoryEditorialKey":"category-2.5","allowAllDevices":true})"},
        {"facts editorial", R"({"key":"category-7"})", R"({"categoryIdentifier":7})"},
    };
    for (const auto& row : rows) {
        const Representation answered = json(run(row.arguments, row.document).out),
                             expected = json(row.facts);
        for (const auto& [name, fact] : expected.view().members()) {
            const auto answer = answered.view().valueForKey(name);
            ASSERT_TRUE(answer) << name;
            EXPECT_EQ(jsonFromRepresentation(*answer), jsonFromRepresentation(fact)) << name;
        }
    }
    const std::string sorted = run("facts asset", document).out;
    EXPECT_LT(sorted.find("-1", sorted.find("sortedAdCuePoints")), sorted.rfind("9"));
    EXPECT_FALSE(contains(sorted, "shareURLFromPlayhead"));
    expect({{"facts editorial", "{}", "{\n  \"categoryIdentifier\": -1\n}\n"}});
}

TEST(Tool, NextFindsTheEpisodeThatFollows) {
    const std::string season = example("season.json");
    const auto next = [](const Arguments& arguments, std::string_view input = {}) {
        const std::string out = run(arguments, input).out;
        return out.substr(0, out.find(','));
    };
    const std::string second = "{\n  \"assetIdentifier\": 20103";
    EXPECT_EQ(next({"next", season, "--after", "20102"}), second);
    EXPECT_EQ(next({"next", season, "--video", example("asset.json")}), second);
    EXPECT_EQ(next({"next", season, "--video", "-"}, R"({"series":{"seasonNumber":1,"episodeNumber":0}})"),
              "{\n  \"assetIdentifier\": 20101");
    // Identifiers differ in all 64 bits, beyond what a double holds.
    const std::string large = R"({"seasonNumber":1,"assets":[{"id":9007199254740992},)"
                              R"({"id":-9007199254740993},{"id":18446744073709551615},)"
                              R"({"id":3,"series":{"seasonNumber":1,"episodeNumber":1}}]})";
    const auto noAsset = [](const std::string& identifier) {
        return "-: no asset of the season has the identifier " + identifier + "\n";
    };
    const std::string unknown[] = {"9007199254740993", "-9007199254740992", "18446744073709551614"};
    for (const std::string& identifier : unknown)
        expect({{{"next", "-", "--after=" + identifier}, large, "", noAsset(identifier), 1}});
    for (const std::string known : {"3.0", "-9007199254740993", "18446744073709551615"})
        expect({{{"next", "-", "--after=" + known}, large, "null\n"}});
}

TEST(Tool, ImageURLsComeOneALine) {
    const std::string url = "https://img.example/a.jpg", asked = url + "?t[]=";
    expect({
        {{"image-url", url, "--size", "320x180", "1x1", "--size", "640x360"},
         "",
         asked + "320x180q80\n" + asked + "80x45q80\n" + asked + "640x360q50\n"},
        {{"image-url", url, "--size", "160x90.5", "--screen-scale", "2", "--scale", "2"},
         "",
         asked + "665x374q80\n"},
        {{"image-url", "--size", "10x10", url, "--auto", "width"}, "", asked + "x50q80\n"},
        {{"image-url", "--size", "-5xinf", "--auto", "height", url}, "", asked + "316q80\n"},
        {{"image-url", "", "--size", "nanxnan"}, "", "?t[]=2048x1536q50\n"},
        {{"image-url", "no url", "--size", "1x1"}, "", "", "no valid URL: no url\n", 1},
    });
}

TEST(Tool, TextsKeepTheirLastByte) {
    const std::string html = "<b>\xC3\xA5 &amp;lt; &#xD800;</b>";
    expect({
        {"text strip", html + "\n\n", "\xC3\xA5 &lt; \xEF\xBF\xBD\n\n"},
        {"text decode", html, "<b>\xC3\xA5 &lt; \xEF\xBF\xBD</b>"},
        {"text encode", "a<&", "a&lt;&amp;"},
        {"text strip", "", ""},
        {"text strip --json", "\"<i>a\\nb &#xD800;\"\n\r\n\"\\udc00\"", "\"a\\nb \\ud800\"\n\"\\udc00\"\n"},
        {"text strip --json", "\"a\"\n[]\n\"b\"\n", "\"a\"\n", "-:2:1: not a string\n[]\n^\n", 1},
        {"text strip", "a\nb\xC3\n", "", "-:2:2: not UTF-8\nb\xEF\xBF\xBD\n ^\n", 1},
        {"text strip", "a\xED\xA0\x80", "", "-:1:2: not UTF-8\na\xEF\xBF\xBD\n ^\n", 1},
    });
}

TEST(Tool, DurationsAndColours) {
    expect({
        {"duration 93784 -- -1",
         "",
         R"({"days":1,"hours":2,"minutes":3,"seconds":4,"countdown":"01 dag, 02 timer, 03 min og 04 sek",)"
         "\"named\":\"02h03m04s\",\"clock\":\"02:03:04\"}\n"
         R"({"days":0,"hours":0,"minutes":0,"seconds":-1,"countdown":"18446744073709551615 sekunder",)"
         "\"named\":\"00m18446744073709551615s\",\"clock\":\"00:18446744073709551615\"}\n"},
        {{"color", "#ff0033", "[00000]", "", "--", "--00000", "-h"},
         "",
         "{\"red\":1,\"green\":0,\"blue\":0.2,\"alpha\":1}\n{\"red\":0,\"green\":0,\"blue\":0,\"alpha\":1}"
         "\nnull\n"
         "{\"red\":0,\"green\":0,\"blue\":0,\"alpha\":1}\nnull\n"},
    });
    EXPECT_EQ(run("duration -.5 nan").out, run("duration 0 0").out);
    EXPECT_EQ(run("duration 0e999 5e-324").out, run("duration 0 0").out);
    EXPECT_TRUE(contains(run("duration -inf").out, "106751991167300,"));
}

TEST(Tool, ListIsForPeople) {
    const std::string page =
        R"({"_embedded":{"assets":[)"
        R"({"id":1,"title":"\u00d8ya \u001b[2J","duration":61000,"published":0,)"
        R"("category":{"title":"F&aelig;rder"},"series":{"seasonNumber":2,"episodeNumber":3},)"
        R"("images":{"main":"https://img.example/1"},)"
        R"("streamConfiguration":{"properties":["tokenSecured"]}},)"
        R"({"streamType":"live","flightTimes":{"start":1000}},)"
        R"({"streamType":"live","flightTimes":{"start":10},"assetType":"audio"},)"
        R"({"streamType":"wasLive","flightTimes":{"start":10,"end":20},"duration":3723000,)"
        R"("additional":{"settings":{"showAds":false,"showComments":false}}}]}})";
    const std::string gap(58, ' ');
    expect({
        {"list --at 100 --size 320x180 --screen-scale 2",
         page,
         "Page of 4 assets\nSeen at 1970-01-01 00:01 UTC\n\n"
         "\xC3\x98ya \xE2\x90\x9B[2J" +
             gap +
             "         01:01\n"
             "  video on demand\n  F\xC3\xA6rder | season 2 episode 3 | 1970-01-01 00:00 UTC\n"
             "  id 1 | ads, comments, token security\n  https://img.example/1?t[]=640x360q50\n\n"
             "(no title)\n  live video | live in 15 minutter og 00 sekunder\n  ads, comments\n  no image\n\n"
             "(no title)\n  live audio | LIVE NOW\n  ads, comments\n  no image\n\n"
             "(no title)" +
             gap +
             "    01:02:03\n"
             "  video of a past broadcast | off air since 1970-01-01 00:00 UTC\n  no image\n"},
        {"list --at 0",
         R"({"key":"category-42","_embedded":{"assets":[{}]}})",
         "Editorial \"category-42\": 1 asset\nSeen at 1970-01-01 00:00 UTC\n\n"
         "(no title)\n  video on demand\n  ads, comments\n"},
        {"list --at 1e300",
         R"({"seasonNumber":2,"title":"H&oslash;st","assets":[{"duration":61000,"title":")" +
             std::string(90, 'x') + "\"}]}",
         "Season 2 \"H\xC3\xB8st\": 1 episode\nSeen at 1e+300 s from 1970\n\n" + std::string(70, 'x') +
             "...  01:01\n  video on demand\n  ads, comments\n"},
        {"list --at 0",
         R"({"id":1})",
         "Page of 0 assets\nNothing stands at _embedded.assets, and it is neither a season nor an editorial\n"
         "Seen at 1970-01-01 00:00 UTC\n"},
    });
}

// --- Messages ---------------------------------------------------------------------------------------------

TEST(Tool, BadInputHasItsPlace) {
    expect({
        {"map asset", "", "", "-:1:1: the document is empty\n\n^\n", 1},
        {"list",
         "{\"a\":\t1,\n \"\xC3\xA5\": \"\\q\"}\n",
         "",
         "-:2:9: a bad escape\n \"\xC3\xA5\": \"\\q\"}\n       ^\n",
         1},
        {"facts asset",
         "\xEF\xBB\xBF{} x",
         "",
         "-:1:7: something follows the document's value\n\xEF\xBB\xBF{} x\n   ^\n",
         1},
        {"map asset no/such.json", "", "", "no/such.json: cannot be read: No such file or directory\n", 1},
        {"map asset /", "", "", "/: cannot be read: Is a directory\n", 1},
    });
    EXPECT_TRUE(run("map asset", std::string(100'000, '[')).err.starts_with("-:1:1025: "));
}

TEST(Tool, NamesOfFilesAreUTF8) {
    const Folder folder;
    const std::string name = folder.write("\xC3\xA5 \xE6\x97\xA5.json", "{");
    expect({{{"map", "season", name},
             "",
             "",
             name + ":1:2: the document ends before its value does\n{\n ^\n",
             1}});
}

TEST(Tool, FaultsOfMappingsHaveTheirPlace) {
    const std::string asset(kFaultyAsset), assets = "{\"assets\":[{}," + asset + "]}";
    const std::string category = R"({"additional":{"backgroundColor":5}})";
    const struct {
        Arguments arguments;
        std::string document, pointer;
    } rows[] = {
        {"map asset", asset, {}},
        {"map assets", "{\"_embedded\":" + assets + "}", "/_embedded/assets/1"},
        {"facts asset", asset, {}},
        {"list", "{\"_embedded\":" + assets + "}", "/_embedded/assets/1"},
        {"list", "{\"key\":\"k\",\"_embedded\":" + assets + "}", "/_embedded/assets/1"},
        {"list", assets, "/assets/1"},
        {"next - --after 1", assets, "/assets/1"},
        {{"next", "-", "--video", example("asset.json")}, assets, "/assets/1"},
        {{"next", example("season.json"), "--video", "-"}, asset, {}},
    };
    for (const auto& row : rows)
        expect({{row.arguments, row.document, "", "-: " + row.pointer + std::string(kFault), 1}});
    const std::string fault(kFault.substr(kFault.find("/additional")));
    expect({{"facts category", category, "", "-: " + fault, 1}});
}

// A command of the test's own that maps a document and forgets that it may fault, and others that throw.
using Work = tool::ExitStatus (*)(const Texts& arguments, tool::Session& session);
Work workOnTrial;

TEST(Tool, WhateverACommandThrowsBecomesAMessage) {
    const Folder folder;
    const std::string file = folder.write("faulty.json", kFaultyAsset);
    const struct {
        Work work;
        std::string message;
    } rows[] = {
        {[](const Texts& arguments, tool::Session& session) {
             QELAssetMapper().mappedResponseFromJSONObject(session.readDocument(arguments[0]));
             return tool::ExitStatus::success;
         },
         file + ": " + std::string(kFault)},
        {[](const Texts&, tool::Session&) -> tool::ExitStatus { throw MappingFault("no such property"); },
         "qelmodels: no such property\n"},
        {[](const Texts&, tool::Session&) -> tool::ExitStatus { throw std::bad_alloc(); },
         "qelmodels: not enough memory\n"},
        {[](const Texts&, tool::Session&) -> tool::ExitStatus { throw std::length_error("too long"); },
         "qelmodels: too long\n"},
    };
    const tool::AddCommand add = [](tool::CommandLine& commandLine) {
        commandLine.addPlain("try", "FILE", "On trial", workOnTrial);
    };
    for (const auto& row : rows) {
        workOnTrial = row.work;
        testing::internal::CaptureStderr();
        EXPECT_EQ(tool::CommandLine(std::span(&add, 1)).run({"try", file}), tool::ExitStatus::badInput);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), row.message);
    }
}

TEST(Tool, BadUsageIsOneLineThatPointsToHelp) {
    const Texts calls = tool::split(
        "bogus;map;map film;map asset --bogus;map asset a b;map category --key-path x;facts season;"
        "facts asset --at now;facts asset --at inf;facts asset --at ;list --size 320;list --screen-scale 2x;"
        "next S;next S --after 1 --video S;next S --after x;next - --video -;image-url https://img.example/;"
        "image-url --size 1x1;image-url https://img.example/ --size 1x1 x1;"
        "image-url https://img.example/ --size 1x1 --auto both;text;text shout;duration;duration 1 2s;"
        "duration +1;duration 1e400;duration -1e309;duration .00002e-320;color;color "
        "--compact;explain;explain film;explain season --key-path a;schema;"
        "schema film;generate csh;audit;audit asset;audit thing S;audit asset S --json --html o;"
        "audit asset S --threads 0;audit assets S --key-path a",
        ';');
    std::vector<Arguments> all(calls.begin(), calls.end());
    all.push_back({});
    for (Arguments& call : all) {
        std::replace(call.begin(), call.end(), std::string("S"), example("season.json"));
        const Result result = run(call, "{}");
        SCOPED_TRACE(result.err);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        EXPECT_TRUE(result.err.starts_with("qelmodels"));
        EXPECT_TRUE(contains(result.err, "--help)\n"));
    }
}

TEST(Tool, HelpAndVersionWorkEverywhere) {
    const struct {
        Arguments arguments;
        std::string answer;
    } rows[] = {{"--help", "Usage: qelmodels COMMAND"},
                {"--version", "qelmodels 1."},
                {"map film --bogus --help", "Usage: qelmodels map"},
                {"map --version", "qelmodels 1."},
                {"color --help", "Usage: qelmodels color"},
                {"color --version", "qelmodels 1."}};
    for (const auto& row : rows) {
        const Result result = run(row.arguments);
        EXPECT_TRUE(contains(result.out, row.answer)) << result.out;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }
}

TEST(Tool, EndsQuietlyWithoutAReaderAndLoudlyWithoutRoom) {
    const Scratch err;
    const Pipe out = openPipe();
    tool::system::close(out.out);
    const Scratch in("{}");
    EXPECT_EQ(exitStatus(start("map asset", {in.descriptor(), out.in, err.descriptor()})), 0);
    tool::system::close(out.in);
    EXPECT_EQ(err.content(), "");

    constexpr const char* kFull = "/dev/full";
    const int full = tool::system::statusOf(kFull) ? tool::system::openForWriting(kFull) : -1;
    if (full < 0) GTEST_SKIP() << "no device that is always full";
    const Scratch again("{}");
    EXPECT_EQ(exitStatus(start("map asset", {again.descriptor(), full, err.descriptor()})), 1);
    tool::system::close(full);
    EXPECT_EQ(err.content(), "qelmodels: cannot write: No space left on device\n");
}

// --- What a terminal shows --------------------------------------------------------------------------------

TEST(Display, TextsAreCutAtColumnsNotBytes) {
    const struct {
        std::string text;
        std::size_t columns;
        std::string expected;
        std::size_t width;
    } rows[] = {
        {"\xC3\x85lesund", 7, "\xC3\x85lesund", 7},
        {"\xC3\x85lesund", 6, "\xC3\x85le...", 6},
        {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", 6, "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", 6},
        {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", 5, "\xE6\x97\xA5...", 5},
        {"A\xCC\x8Az", 2, "A\xCC\x8Az", 2},
        {"a\tb\nc", 9, "a b c", 5},
        {"\xEE\x80\x80", 9, "\xEE\x80\x80", 1},
        {"s\xC2\xADt", 9, "st", 2},
        {"\x1B\x7F\xED\xA0\x80\xC2\x9B\xE2\x80\xAE\xFF",
         9,
         "\xE2\x90\x9B\xE2\x90\xA1\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
         6},
    };
    for (const auto& row : rows) {
        const tool::Shown result = tool::shown(row.text, row.columns);
        EXPECT_EQ(result.text, row.expected);
        EXPECT_EQ(result.width, row.width);
    }
}

TEST(Display, ExcerptsPointAtThePlace) {
    const auto excerpt = [](const std::string& text, const std::string& mark) {
        return tool::excerpt(text, std::min(text.find(mark), text.size()));
    };
    EXPECT_EQ(excerpt("one\ntwo X\r\nthree", "X"), "two X\n    ^");
    EXPECT_EQ(excerpt("one\n", "end"), "\n^");
    const std::string wideAndNarrow = "\xE6\x97\xA5 \xCC\x8A X";
    EXPECT_EQ(excerpt(wideAndNarrow, "X"), wideAndNarrow + "\n    ^");

    // Both ends of a long line are cut, and no letter is.
    std::string letters;
    for (int i = 0; i < 500; ++i)
        letters += "\xC3\xB8";
    const std::string cut = excerpt(letters + "X" + letters, "X");
    const std::size_t end = cut.find('\n');
    EXPECT_EQ(cut.substr(0, end).find('X'), 3 + 32 * 2U);
    EXPECT_EQ(cut.substr(end), "\n" + std::string(3 + 32, ' ') + "^");
    EXPECT_EQ(end, 3 + 32 * 2 + 1 + 39 * 2 + 3U);
    EXPECT_TRUE(cut.starts_with("...\xC3\xB8") && cut.substr(0, end).ends_with("\xC3\xB8..."));
}

}  // namespace
}  // namespace QELModels::test
