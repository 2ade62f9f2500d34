#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "ByHand.h"
#include "DocumentGenerator.h"
#include "JSON/JSONReader.h"
#include "QELModels/QELModels.h"
#include "RivalOnDemand.h"
#include "Topics.h"

// What an application asks of a filled asset again and again, with the library and with plain structures.
// Each question is asked of all assets of a page, as a listing screen does.
namespace QELModels::bench {

namespace {

constexpr std::size_t kAssets = 50;
constexpr std::uint64_t kSeed = 20150102;

// The pages.

/// The same page as filled by the library and by hand.
struct Page {
    Ref<List<QELAsset>> library;
    std::shared_ptr<const std::vector<byHand::Asset>> byHand;

    const QELAsset& asset(std::size_t i) const { return (*library)[i]; }
    const byHand::Asset& assetByHand(std::size_t i) const { return (*byHand)[i]; }
};

using Edit = void (*)(nlohmann::ordered_json& asset, std::size_t i);

/// A page of the generator, always the same one, with each asset edited.
Page pageWith(Edit edit) {
    auto root = nlohmann::ordered_json::parse(DocumentGenerator(kSeed).assetsPage(kAssets));
    auto& assets = root["_embedded"]["assets"];
    for (std::size_t i = 0; i < kAssets; ++i)
        edit(assets[i], i);
    const Document document("page of 50", root.dump(), kAssets, true);
    const auto representation = representationFromJSON(document.text);
    if (!representation) throw std::runtime_error("the library refuses the page");
    return {QELAssetsMapper().mappedResponseFromJSONObject(*representation),
            std::make_shared<const std::vector<byHand::Asset>>(assetsByHand(document).page)};
}

/// Every second flight has not begun yet.
void putOffFlights(nlohmann::ordered_json& asset, std::size_t i) {
    constexpr std::int64_t kFarAhead = 4'102'444'800;  // 2100-01-01 00:00:00 UTC
    if (i % 2 == 1) asset["flightTimes"]["start"] = kFarAhead;
}

/// Removes what the library compares by identity, so that two assets from different documents can be equal
/// and share no object that would make the comparison short.
void keepOnlyValues(nlohmann::ordered_json& asset, std::size_t) {
    for (const char* const key : {"flightTimes", "series", "images"})
        asset.erase(key);
    for (const char* const key : {"featuredChapters", "chapters", "cuePoints", "nextAsset"})
        asset["additional"].erase(key);
}

/// The same, with another last character in the field that is compared last.
void differLate(nlohmann::ordered_json& asset, std::size_t i) {
    keepOnlyValues(asset, i);
    asset["additional"]["url"].get_ref<std::string&>().back() = '!';
}

// The questions.

/// `library` and `byHand` answer it for all assets of a page; `agree` is whether the answers for one are the
/// same.
struct Question {
    std::string name;
    Way library;
    Way byHand;
    std::function<bool(std::size_t)> agree;
};

template <class Ask, class AskByHand, class Agree>
Question question(std::string name, Ask ask, AskByHand askByHand, Agree agree) {
    const auto ofAll = [](auto askOne) {
        return [askOne] {
            for (std::size_t i = 0; i < kAssets; ++i)
                lookAt(askOne(i));
        };
    };
    return {std::move(name),
            {"QELModels", ofAll(ask), kAssets},
            {"by hand", ofAll(askByHand), kAssets},
            std::move(agree)};
}

/// For answers that can be compared themselves.
template <class Ask, class AskByHand>
Question question(std::string name, Ask ask, AskByHand askByHand) {
    return question(std::move(name), ask, askByHand, [=](std::size_t i) { return ask(i) == askByHand(i); });
}

bool isSameValue(const Value& value, const byHand::Value& other) {
    struct Compare {
        const Value& value;
        bool operator()(std::monostate) const { return value.isNull(); }
        bool operator()(Number number) const { return value.number() == number; }
        bool operator()(std::string_view text) const { return value.text() == text; }
        bool operator()(URLView url) const { return value.url() == url; }
        bool operator()(Date date) const { return value.date() == date; }
        bool operator()(const void*) const { return value.record() != nullptr; }
    };
    return std::visit(Compare{value}, other);
}

bool isSameDictionary(const PropertyDictionary& dictionary, const byHand::Dictionary& other) {
    return std::equal(
        dictionary.begin(),
        dictionary.end(),
        other.entries.begin(),
        other.entries.end(),
        [](const auto& a, const auto& b) { return a.first == b.first && isSameValue(a.second, b.second); });
}

constexpr double kPixelsPerPoint = 2;
constexpr std::array<Size, 5> kCells{{{300, 169}, {160, 90}, {414, 233}, {768, 432}, {1200, 900}}};

/// Seconds before a flight, with at least one for each form of the text.
constexpr std::array<double, 6> kCountdowns{5, 61, 754, 3'661, 86'399, 1'234'567};

Date dateBefore(const QELAsset& asset, double seconds) {
    return dateFromSecondsSince1970(secondsSince1970(*asset.flightTimes()->flightStart()) - seconds);
}

std::vector<Question> makeQuestions() {
    MainScreen::setScale(kPixelsPerPoint);
    const Page page = pageWith(putOffFlights);
    const Page values = pageWith(keepOnlyValues);
    const Page same = pageWith(keepOnlyValues);
    const Page late = pageWith(differLate);
    std::vector<Date> dates;
    for (std::size_t i = 0; i < kAssets; ++i)
        dates.push_back(dateBefore(page.asset(i), kCountdowns[i % kCountdowns.size()]));

    std::vector<Question> questions;
    questions.push_back(question(
        "all properties by name",
        [=](std::size_t i) { return page.asset(i).dictionaryValue(); },
        [=](std::size_t i) {
            return byHand::dictionaryOf({page.byHand, &page.assetByHand(i)});
        },
        [=](std::size_t i) {
            return isSameDictionary(page.asset(i).dictionaryValue(),
                                    byHand::dictionaryOf({page.byHand, &page.assetByHand(i)}));
        }));
    questions.push_back(question(
        "equality, all fields equal",
        [=](std::size_t i) { return values.asset(i).isEqual(&same.asset(i)); },
        [=](std::size_t i) { return values.assetByHand(i) == same.assetByHand(i); },
        [=](std::size_t i) {
            return values.asset(i).isEqual(&same.asset(i)) && values.assetByHand(i) == same.assetByHand(i);
        }));
    questions.push_back(question(
        "equality, last field differs",
        [=](std::size_t i) { return values.asset(i).isEqual(&late.asset(i)); },
        [=](std::size_t i) { return values.assetByHand(i) == late.assetByHand(i); },
        [=](std::size_t i) {
            return !values.asset(i).isEqual(&late.asset(i)) && values.assetByHand(i) != late.assetByHand(i);
        }));
    // The two hash differently, so only what follows from equality can be compared.
    questions.push_back(question(
        "hash",
        [=](std::size_t i) { return values.asset(i).hash(); },
        [=](std::size_t i) { return byHand::hashOf(values.assetByHand(i)); },
        [=](std::size_t i) {
            return values.asset(i).hash() == same.asset(i).hash() &&
                   values.asset(i).hash() != late.asset(i).hash() &&
                   byHand::hashOf(values.assetByHand(i)) == byHand::hashOf(same.assetByHand(i)) &&
                   byHand::hashOf(values.assetByHand(i)) != byHand::hashOf(late.assetByHand(i));
        }));
    questions.push_back(question(
        "whether it is live",
        [=](std::size_t i) { return isLive(page.asset(i)); },
        [=](std::size_t i) { return byHand::isLive(page.assetByHand(i)); }));
    questions.push_back(question(
        "image URL for a cell",
        [=](std::size_t i) {
            return QELKavoHelper::getURLWithSize(*page.asset(i).images()->main(), kCells[i % kCells.size()]);
        },
        [=](std::size_t i) {
            return byHand::imageURL(page.assetByHand(i), kCells[i % kCells.size()], kPixelsPerPoint);
        },
        [=](std::size_t i) {
            const Size cell = kCells[i % kCells.size()];
            const auto url = QELKavoHelper::getURLWithSize(*page.asset(i).images()->main(), cell);
            return url.text() == byHand::imageURL(page.assetByHand(i), cell, kPixelsPerPoint);
        }));
    questions.push_back(question(
        "countdown",
        [=](std::size_t i) {
            return NSStringRepresentingTimeLeftUntilLive(secondsUntilLive(page.asset(i), dates[i]));
        },
        [=](std::size_t i) { return byHand::countdown(page.assetByHand(i), dates[i]); }));
    return questions;
}

bool check() {
    bool agree = true;
    for (const Question& question : makeQuestions()) {
        for (std::size_t i = 0; i < kAssets; ++i) {
            if (question.agree(i)) continue;
            std::fprintf(stderr, "%s: not the same for asset %zu\n", question.name.c_str(), i);
            agree = false;
        }
    }
    return agree;
}

void measure(const Options& options, Report& report) {
    const std::vector<Question> questions = makeQuestions();
    std::vector<Way> ways;
    for (const Question& question : questions) {
        ways.push_back(question.library);
        ways.push_back(question.byHand);
    }
    const std::vector<Times> times = timesInTurn(ways, options);

    Table table({"asked of a filled asset",
                 "ratio",
                 "quartiles",
                 "ns a call",
                 "by hand",
                 "allocations a call",
                 "by hand"});
    for (std::size_t i = 0; i < questions.size(); ++i) {
        const Times& library = times[2 * i];
        const Times& byHand = times[2 * i + 1];
        const auto allocations = [](const Way& way) {
            return fixed(static_cast<double>(heapUseOf(way).allocations) / way.unitsInRun, 1);
        };
        const Quartiles ratio = ratioOf(library, byHand);
        const double libraryTime = quartilesOf(library).median;
        const double byHandTime = quartilesOf(byHand).median;
        table.row({questions[i].name,
                   fixed(ratio.median, 2),
                   range(ratio),
                   fixed(libraryTime, 1),
                   fixed(byHandTime, 1),
                   allocations(questions[i].library),
                   allocations(questions[i].byHand)});
        const auto add = [&](const Way& way, double time, double ratioOfWay) {
            report.add(
                {std::string(kQuestions.name), questions[i].name, way.name, time, "ns a call", ratioOfWay});
        };
        add(questions[i].library, libraryTime, ratio.median);
        add(questions[i].byHand, byHandTime, 1);
    }
    report.show(table);
}

}  // namespace

constinit const Topic kQuestions{"questions", check, measure};

}  // namespace QELModels::bench
