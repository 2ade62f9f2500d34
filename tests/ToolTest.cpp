// Promise: the command writes what other programs read from it: results, messages and exit status, to the
// byte.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tool/Display.h"

extern char** environ;

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

using Arguments = std::vector<std::string>;

// --- Running the command ----------------------------------------------------------------------------------

struct Files {
    int in, out, err;
};

pid_t start(const Arguments& arguments, const Files& files) {
    Arguments all{QELMODELS_COMMAND};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> texts;
    for (std::string& text : all)
        texts.push_back(text.data());
    texts.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, files.in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, files.out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, files.err, STDERR_FILENO);
    pid_t process = 0;
    EXPECT_EQ(posix_spawn(&process, all[0].c_str(), &actions, nullptr, texts.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

int exitStatus(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A nameless file that is gone when the test is.
class Scratch {
public:
    explicit Scratch(std::string_view content = {}) : file_(std::tmpfile()) {
        std::fwrite(content.data(), 1, content.size(), file_);
        std::rewind(file_);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { std::fclose(file_); }
    int descriptor() const { return fileno(file_); }
    std::string content() const {
        std::string text;
        std::array<char, 4096> piece{};
        std::rewind(file_);
        while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), file_))
            text.append(piece.data(), size);
        return text;
    }

private:
    std::FILE* file_;
};

struct Result {
    int status;
    std::string out, err;
};

Result run(const Arguments& arguments, std::string_view input = {}) {
    const Scratch in(input), out, err;
    const int status = exitStatus(start(arguments, {in.descriptor(), out.descriptor(), err.descriptor()}));
    return {status, out.content(), err.content()};
}

std::string example(const std::string& name) {
    return QELMODELS_EXAMPLES_DIR "/documents/" + name;
}

/// The arguments of a call, what it is given, and all that it answers.
struct Row {
    Arguments arguments;
    std::string in, out, err;
    int status = 0;
};

void expect(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        std::string call;
        for (const std::string& argument : row.arguments)
            call += argument + ' ';
        SCOPED_TRACE(call + "< " + row.in);
        const Result result = run(row.arguments, row.in);
        EXPECT_EQ(result.out, row.out);
        EXPECT_EQ(result.err, row.err);
        EXPECT_EQ(result.status, row.status);
    }
}

bool contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

// --- Results ----------------------------------------------------------------------------------------------

constexpr std::string_view kColoured =
    R"({"additional":{"playerBranding":{"id":1}},"category":{"additional":{"backgroundColor":5}}})";
constexpr std::string_view kFault =
    "/category/additional/backgroundColor: QELUIColorTransformer: a colour must be a string, not 5\n";
constexpr std::string_view kEmptySeries = R"({"title":null,"seasonNumber":null,"assets":null})";

TEST(Tool, MapPrintsTheModel) {
    EXPECT_EQ(
        run({"map", "asset"}, R"({"id": 42, "streamType": "live"})").out,
        "{\n  \"assetIdentifier\": 42,\n  \"title\": null,\n  \"titleFront\": null,\n"
        "  \"assetDescription\": null,\n  \"assetDescriptionFront\": null,\n  \"displays\": null,\n"
        "  \"showDisplays\": false,\n  \"createdAt\": null,\n  \"updatedAt\": null,\n"
        "  \"publishedAt\": null,\n  \"flightTimes\": null,\n  \"duration\": null,\n  \"assetType\": 0,\n"
        "  \"streamType\": 2,\n  \"status\": null,\n  \"series\": null,\n"
        "  \"streamConfiguration\": null,\n  \"articleUrl\": null,\n  \"category\": null,\n"
        "  \"images\": null,\n  \"streamUrls\": null,\n  \"assetAdditional\": null\n}\n");
    const std::string season = R"({"seasonNumber":1.0,"title":"&#xD800;<b>\u00e5</b>","more":[1]})";
    const std::string seasonOut = "{\"title\":\"\\ud800\xC3\xA5\",\"seasonNumber\":1,\"assets\":null}";
    expect({
        {{"map", "season", "-", "--compact"}, season, seasonOut + "\n", ""},
        {{"map", "season", "--compact"}, "[5]", std::string(kEmptySeries) + "\n", ""},
        {{"map", "seasons", "--compact"},
         "{\"_embedded\":{\"seasons\":[" + season + ",null]}}",
         "[" + seasonOut + "," + std::string(kEmptySeries) + "]\n",
         ""},
        {{"map", "seasons"}, "{}", "[]\n", ""},
        {{"map", "editorials", "--compact"},
         R"({"_embedded":{"editorial":[{"key":"k","assetsIds":[true,{"z":1,"a":2}]}]}})",
         R"([{"key":"k","assetsIdentifiers":[true,{"z":1,"a":2}],"assets":null}])"
         "\n",
         ""},
    });
    const std::string elsewhere = R"({"top":{"list":[{"id":5}]},"_embedded":{"assets":[{"id":6},{"id":7}]}})";
    const auto identifiers = [&](const Arguments& arguments) {
        const std::string text = run(arguments, elsewhere).out;
        return std::string(contains(text, "\"assetIdentifier\":5") ? "5" : "") +
               (contains(text, "\"assetIdentifier\":6") && contains(text, "\"assetIdentifier\":7") ? "67"
                                                                                                   : "");
    };
    EXPECT_EQ(identifiers({"map", "assets", "--compact"}), "67");
    EXPECT_EQ(identifiers({"map", "assets", "--compact", "--key-path", ""}), "67");
    EXPECT_EQ(identifiers({"map", "assets", "--compact", "--key-path", "top.list"}), "5");
}

TEST(Tool, LinesAreDocumentsOfTheirOwn) {
    const std::string one = R"({"title":null,"seasonNumber":1,"assets":null})";
    expect({
        {{"map", "season", "--lines"},
         "{\"seasonNumber\":1}\n\n\r\n  \n{\"seasonNumber\":1}\r\n{\"id\" 2}\n{\"seasonNumber\":1}",
         one + "\n" + one + "\nnull\n" + one + "\n",
         "-:6:7: ':' is missing\n{\"id\" 2}\n      ^\n",
         1},
        {{"map", "asset", "--lines"},
         "\n" + std::string(kColoured) + "\n{\"id\":\r\n",
         "null\nnull\n",
         "-:2: " + std::string(kFault) +
             "-:3:7: the document ends before its value does\n{\"id\":\n      ^\n",
         1},
        {{"map", "asset", "--lines"}, "", "", ""},
        {{"facts", "editorial", "--lines"},
         "{\"key\":\"category-7\"}\n{}\n",
         "{\"categoryIdentifier\":7}\n{\"categoryIdentifier\":-1}\n",
         ""},
    });
}

TEST(Tool, LinesAreAnsweredAsTheyCome) {
    int in[2], out[2];
    ASSERT_EQ(pipe2(in, O_CLOEXEC), 0);
    ASSERT_EQ(pipe2(out, O_CLOEXEC), 0);
    const pid_t process = start({"facts", "editorial", "--lines"}, {in[0], out[1], STDERR_FILENO});
    close(in[0]);
    close(out[1]);
    for (const std::string number : {"1", "2"}) {
        const std::string line = "{\"key\":\"category-" + number + "\"}\n";
        ASSERT_EQ(write(in[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
        std::array<char, 64> answer{};  // reading waits for it, and fails by the test's time limit
        const ssize_t size = read(out[0], answer.data(), answer.size());
        EXPECT_EQ(std::string(answer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))),
                  "{\"categoryIdentifier\":" + number + "}\n");
    }
    close(in[1]);
    close(out[0]);
    EXPECT_EQ(exitStatus(process), 0);
}

TEST(Tool, FactsHaveTheOperationsNames) {
    const std::string document =
        R"({"id":20.5,"duration":1500,"streamType":"live","flightTimes":{"start":100},)"
        R"("category":{"isSeries":true,"lastAsset":{"id":20.5},"showCategory":true,)"
        R"("additional":{"showComments":false}},)"
        R"("streamConfiguration":{"properties":["tokenSecured"]},)"
        R"("additional":{"chapters":[],"settings":{"showAds":false,"showComments":true},)"
        R"("cuePoints":[{"timeline":9},{"timeline":-1}]}})";
    const Result result = run({"facts", "asset", "--at", "100.5", "--playhead", "3723"}, document);
    EXPECT_EQ(result.err, "");
    const std::size_t cuePoints = result.out.find("\"sortedAdCuePoints\"");
    ASSERT_NE(cuePoints, std::string::npos);
    EXPECT_EQ(
        result.out.substr(0, cuePoints),
        "{\n  \"shareURLString\": \"https://tv.example/#!/20.5\",\n"
        "  \"commentsShareURLString\": \"https://tv.example/?id=20.5\",\n"
        "  \"shareURLFromPlayhead\": \"https://tv.example/#!/20.5/01h02m03s\",\n"
        "  \"durationInSeconds\": 1.5,\n  \"featuredChaptersOrDefaultChapters\": [],\n"
        "  \"isLive\": true,\n  \"wasLive\": false,\n  \"secondsUntilLive\": -0.5,\n"
        "  \"hasLiveStreamType\": true,\n  \"isLastAssetInCategory\": true,\n"
        "  \"remotePlaybackAllowed\": true,\n  \"showAds\": false,\n  \"isSeries\": true,\n"
        "  \"showCategory\": true,\n  \"categoryShowComments\": false,\n  \"settingsShowComments\": true,\n"
        "  \"showPlayerLogo\": false,\n  \"isInvalidObject\": false,\n  \"isSecured\": true,\n  ");
    EXPECT_LT(result.out.find("-1", cuePoints), result.out.find("9", cuePoints));

    const std::string empty = run({"facts", "asset", "--at", "-7"}, "{}").out;
    EXPECT_TRUE(contains(empty, "\"secondsUntilLive\": 7,"));
    EXPECT_TRUE(contains(empty, "\"sortedAdCuePoints\": null\n}"));
    EXPECT_TRUE(contains(empty, "\"featuredChaptersOrDefaultChapters\": null,"));
    EXPECT_FALSE(contains(empty, "shareURLFromPlayhead"));
    expect({{{"facts", "category"},
             R"({"id":42,"parentId":2.5})",
             "{\n  \"editorialKey\": \"category-42\",\n  \"parentCategoryEditorialKey\": \"category-2.5\",\n"
             "  \"allowAllDevices\": true\n}\n",
             ""}});
}

TEST(Tool, NextFindsTheEpisodeThatFollows) {
    const std::string season = example("season.json");
    const auto beginning = [](const Arguments& arguments, std::string_view input = {}) {
        const Result result = run(arguments, input);
        return result.out.substr(0, result.out.find(','));
    };
    EXPECT_EQ(beginning({"next", season, "--after", "20102"}), "{\n  \"assetIdentifier\": 20103");
    EXPECT_EQ(beginning({"next", season, "--video", example("asset.json")}),
              "{\n  \"assetIdentifier\": 20103");
    EXPECT_EQ(
        beginning({"next", season, "--video", "-"}, R"({"series":{"seasonNumber":1,"episodeNumber":0}})"),
        "{\n  \"assetIdentifier\": 20101");
    const std::string two = R"({"seasonNumber":1,"assets":[{"id":9007199254740992},)"
                            R"({"id":3,"series":{"seasonNumber":1,"episodeNumber":1}}]})";
    expect({
        {{"next", "-", "--after", "3.0"}, two, "null\n", ""},
        {{"next", "-", "--after", "9007199254740993"},
         two,
         "",
         "-: no asset of the season has the identifier 9007199254740993\n",
         1},
        {{"next", "-", "--video", example("asset.json")},
         R"({"assets":[)" + std::string(kColoured) + "]}",
         "",
         "-: /assets/0" + std::string(kFault),
         1},
    });
}

TEST(Tool, ImageURLsComeOneALine) {
    const std::string url = "https://img.example/a.jpg", asked = url + "?t[]=";
    expect({
        {{"image-url", url, "--size", "320x180", "1x1", "--size", "640x360"},
         "",
         asked + "320x180q80\n" + asked + "80x45q80\n" + asked + "640x360q50\n",
         ""},
        {{"image-url", url, "--size", "160x90.5", "--screen-scale", "2", "--scale", "2"},
         "",
         asked + "665x374q80\n",
         ""},
        {{"image-url", "--size", "10x10", url, "--auto", "width"}, "", asked + "x50q80\n", ""},
        {{"image-url", "--size", "-5xinf", "--auto", "height", url}, "", asked + "316q80\n", ""},
        {{"image-url", "", "--size", "nanxnan"}, "", "?t[]=2048x1536q50\n", ""},
        {{"image-url", "no url", "--size", "1x1"}, "", "", "no valid URL: no url\n", 1},
    });
}

TEST(Tool, TextsKeepTheirLastByte) {
    const std::string html = "<b>\xC3\xA5 &amp;lt; &#xD800;</b>";
    expect({
        {{"text", "strip"}, html + "\n\n", "\xC3\xA5 &lt; \xEF\xBF\xBD\n\n", ""},
        {{"text", "decode"}, html, "<b>\xC3\xA5 &lt; \xEF\xBF\xBD</b>", ""},
        {{"text", "encode"}, "a<&", "a&lt;&amp;", ""},
        {{"text", "strip"}, "", "", ""},
        {{"text", "strip", "--json"},
         "\"<i>a\\nb &#xD800;\"\n\r\n\"\\udc00\"",
         "\"a\\nb \\ud800\"\n\"\\udc00\"\n",
         ""},
        {{"text", "strip", "--json"}, "\"a\"\n[]\n\"b\"\n", "\"a\"\n", "-:2:1: not a string\n[]\n^\n", 1},
        {{"text", "strip"}, "a\nb\xC3\n", "", "-:2:2: not UTF-8\nb\xEF\xBF\xBD\n ^\n", 1},
        {{"text", "strip"}, "a\xED\xA0\x80", "", "-:1:2: not UTF-8\na\xEF\xBF\xBD\n ^\n", 1},
    });
}

TEST(Tool, DurationsAndColours) {
    expect({
        {{"duration", "93784", "-.5", "nan", "--", "-1"},
         "",
         "{\"days\":1,\"hours\":2,\"minutes\":3,\"seconds\":4,\"countdown\":\"01 dag, 02 timer, 03 min og 04 "
         "sek\","
         "\"named\":\"02h03m04s\",\"clock\":\"02:03:04\"}\n"
         "{\"days\":0,\"hours\":0,\"minutes\":0,\"seconds\":0,\"countdown\":\"00 "
         "sekunder\",\"named\":\"00m00s\","
         "\"clock\":\"00:00\"}\n"
         "{\"days\":0,\"hours\":0,\"minutes\":0,\"seconds\":0,\"countdown\":\"00 "
         "sekunder\",\"named\":\"00m00s\","
         "\"clock\":\"00:00\"}\n"
         "{\"days\":0,\"hours\":0,\"minutes\":0,\"seconds\":-1,\"countdown\":\"18446744073709551615 "
         "sekunder\","
         "\"named\":\"00m18446744073709551615s\",\"clock\":\"00:18446744073709551615\"}\n",
         ""},
        {{"color", "#ff0033", "[00000]", "", "--", "--00000", "-h"},
         "",
         "{\"red\":1,\"green\":0,\"blue\":0.2,\"alpha\":1}\n{\"red\":0,\"green\":0,\"blue\":0,\"alpha\":1}"
         "\nnull\n"
         "{\"red\":0,\"green\":0,\"blue\":0,\"alpha\":1}\nnull\n",
         ""},
    });
    for (const std::string infinite : {"inf", "-inf"})
        EXPECT_TRUE(contains(run({"duration", infinite}).out, "106751991167300,"));
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
        {{"list", "--at", "100", "--size", "320x180", "--screen-scale", "2"},
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
             "  video of a past broadcast | off air since 1970-01-01 00:00 UTC\n  no image\n",
         ""},
        {{"list", "--at", "0"},
         R"({"key":"category-42","_embedded":{"assets":[{}]}})",
         "Editorial \"category-42\": 1 asset\nSeen at 1970-01-01 00:00 UTC\n\n"
         "(no title)\n  video on demand\n  ads, comments\n",
         ""},
        {{"list", "--at", "1e300"},
         R"({"seasonNumber":2,"title":"H&oslash;st","assets":[]})",
         "Season 2 \"H\xC3\xB8st\": 0 episodes\nSeen at 1e+300 s from 1970\n",
         ""},
        {{"list", "--at", "0"},
         R"({"id":1})",
         "Page of 0 assets\nNothing stands at _embedded.assets, and it is neither a season nor an editorial\n"
         "Seen at 1970-01-01 00:00 UTC\n",
         ""},
    });
}

// --- Messages ---------------------------------------------------------------------------------------------

TEST(Tool, BadInputHasItsPlace) {
    expect({
        {{"map", "asset"}, "", "", "-:1:1: the document is empty\n\n^\n", 1},
        {{"list"},
         "{\"a\":\t1,\n \"\xC3\xA5\": \"\\q\"}\n",
         "",
         "-:2:9: a bad escape\n \"\xC3\xA5\": \"\\q\"}\n       ^\n",
         1},
        {{"facts", "asset"},
         "\xEF\xBB\xBF{} x",
         "",
         "-:1:7: something follows the document's value\n\xEF\xBB\xBF{} x\n   ^\n",
         1},
        {{"map", "asset"}, std::string(kColoured), "", "-: " + std::string(kFault), 1},
        {{"list"},
         "{\"_embedded\":{\"assets\":[{}," + std::string(kColoured) + "]}}",
         "",
         "-: /_embedded/assets/1" + std::string(kFault),
         1},
        {{"map", "asset", "no/such.json"},
         "",
         "",
         "no/such.json: cannot be read: No such file or directory\n",
         1},
        {{"map", "asset", "/"}, "", "", "/: cannot be read: Is a directory\n", 1},
    });
    EXPECT_TRUE(run({"map", "asset"}, std::string(100'000, '[')).err.starts_with("-:1:1025: "));
}

TEST(Tool, BadUsageIsOneLineThatPointsToHelp) {
    const std::string season = example("season.json");
    const Arguments calls[] = {
        {},
        {"bogus"},
        {"map"},
        {"map", "film"},
        {"map", "asset", "--bogus"},
        {"map", "asset", "a", "b"},
        {"map", "category", "--key-path", "x"},
        {"facts", "season"},
        {"facts", "asset", "--at", "now"},
        {"facts", "asset", "--at", "inf"},
        {"facts", "asset", "--at", ""},
        {"list", "--size", "320"},
        {"list", "--screen-scale", "2x"},
        {"next", season},
        {"next", season, "--after", "1", "--video", season},
        {"next", season, "--after", "x"},
        {"next", "-", "--video", "-"},
        {"image-url", "https://img.example/"},
        {"image-url", "--size", "1x1"},
        {"image-url", "https://img.example/", "--size", "1x1", "x1"},
        {"image-url", "https://img.example/", "--size", "1x1", "--auto", "both"},
        {"text"},
        {"text", "shout"},
        {"duration"},
        {"duration", "1", "2s"},
        {"duration", "+1"},
        {"color"},
        {"color", "--compact"},
    };
    for (const Arguments& call : calls) {
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
    for (const std::string command :
         {"", "list", "map", "facts", "next", "image-url", "text", "duration", "color"}) {
        SCOPED_TRACE(command);
        const Arguments base = command.empty() ? Arguments{} : Arguments{command};
        const auto with = [&base](const std::string& option) {
            Arguments arguments = base;
            arguments.push_back(option);
            return run(arguments);
        };
        const Result help = with("--help"), version = with("--version");
        EXPECT_TRUE(contains(help.out, "Usage: qelmodels " + command));
        EXPECT_TRUE(version.out.starts_with("qelmodels 1."));
        for (const Result& result : {help, version}) {
            EXPECT_EQ(result.status, 0);
            EXPECT_EQ(result.err, "");
        }
    }
    EXPECT_TRUE(contains(run({"map", "film", "--bogus", "--help"}).out, "Usage: "));
}

TEST(Tool, EndsQuietlyWithoutAReaderAndLoudlyWithoutRoom) {
    const Scratch err;
    int out[2];
    ASSERT_EQ(pipe2(out, O_CLOEXEC), 0);
    close(out[0]);
    const Scratch in("{}");
    EXPECT_EQ(exitStatus(start({"map", "asset"}, {in.descriptor(), out[1], err.descriptor()})), 0);
    close(out[1]);
    EXPECT_EQ(err.content(), "");

    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) GTEST_SKIP() << "no device that is always full";
    const Scratch again("{}");
    EXPECT_EQ(exitStatus(start({"map", "asset"}, {again.descriptor(), full, err.descriptor()})), 1);
    close(full);
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
        {"A\xCC\x8A"
         "b",
         2,
         "A\xCC\x8A"
         "b",
         2},
        {"a\tb\nc", 9, "a b c", 5},
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
    const auto excerpt = [](std::string text, const std::string& mark) {
        const std::size_t at = text.find(mark);
        const std::string lines = tool::excerpt(text, at == std::string::npos ? text.size() : at);
        return lines;
    };
    EXPECT_EQ(excerpt("one\ntwo X\r\nthree", "X"), "two X\n    ^");
    EXPECT_EQ(excerpt("one\n", "end"), "\n^");
    EXPECT_EQ(excerpt("\xE6\x97\xA5"
                      "A\xCC\x8A X",
                      "X"),
              "\xE6\x97\xA5"
              "A\xCC\x8A X\n    ^");

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
}  // namespace QELMODELS_ABI
}  // namespace QELModels
