// Documents are mapped, and what was mapped is read, shared and freed on many threads at once, while the
// registry, the log, the clock and the screen change under them.

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <latch>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "QELModels/Process/MainScreen.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

constexpr int kRounds = 2000;

class Threads {
public:
    explicit Threads(std::vector<std::function<void(int round)>> works)
        : ready_(static_cast<std::ptrdiff_t>(works.size())) {
        for (auto& work : works)
            running_.emplace_back([this, work] {
                ready_.arrive_and_wait();
                for (int round = 0; round < kRounds; ++round)
                    work(round);
            });
    }
    ~Threads() {
        for (std::thread& thread : running_)
            thread.join();
    }

private:
    std::latch ready_;  // none begins before all are there
    std::vector<std::thread> running_;
};

const Representation& page() {
    static const Representation document = json(R"({"_embedded": {"assets": [
        {"id": 1, "title": "&lt;", "articleUrl": "no url", "flightTimes": {"start": 5},
         "images": {"main": "http://i.example/m"},
         "additional": {"cuePoints": [{"timeline": 2}, {"timeline": 1}], "chapters": [{"title": "&gt;"}]}},
        {"id": 2, "category": {"title": "&lt;", "additional": {"description": "&gt;"}}}]}})");
    return document;
}

TEST(Threads, MapWhileTheStateOfTheProcessChanges) {
    std::atomic<int> lines{0};
    std::atomic<int> surprises{0};
    const auto expect = [&surprises](bool isAsExpected) { surprises += isAsExpected ? 0 : 1; };
    const auto isOneOf = [](std::string_view shown, std::string_view html) {
        return shown == html || shown == R"("one")" || shown == R"("two")" || shown == "null";
    };
    static const Stamp one("one");
    static const Stamp two("two");
    const Replaced html(kQELHTMLTransformer, valueTransformerForName(kQELHTMLTransformer));
    const Replaced other("other", nullptr);
    const StoppedClock clock(10);
    const auto takesLines = [&lines](std::string_view line) {
        lines += line == "Unable to transform URL no url";
    };
    Log::setSink(takesLines);
    const auto maps = [&](int) {
        const auto assets = QELAssetsMapper().mappedResponseFromJSONObject(page());
        const QELAsset& first = assets->front();
        expect(isOneOf(showAt(first, "title"), R"("<")"));
        expect(isOneOf(showAt(first, "assetAdditional.chapters[0].title"), R"(">")"));
        expect(isOneOf(showAt((*assets)[1], "category.additional.categoryDescription"), R"(">")"));
        expect(isLive(first));
        const double seconds = secondsUntilLive(first);
        expect(seconds == -5 || seconds == -95);
        const auto url = QELKavoHelper::getURLWithSize(*first.images()->main(), {100, 100});
        expect(url.text().starts_with("http://i.example/m?t"));
    };
    {
        const Threads threads({
            maps,
            maps,
            maps,
            [&](int round) {
                const ValueTransformer* const inTurn[] = {&one, &two, nullptr};
                registerValueTransformer(inTurn[round % 3], kQELHTMLTransformer);
                registerValueTransformer(&one, "other");
                expect(valueTransformerForName("other") == &one);
            },
            [&](int round) {
                Clock::setSource([at = round % 2 == 0 ? 10 : 100] { return dateFromSecondsSince1970(at); });
                Log::setSink(takesLines);
                MainScreen::setScale(1 + round % 3);
            },
        });
    }
    Log::setSink({});
    MainScreen::setScale(1);
    EXPECT_EQ(surprises, 0);
    EXPECT_EQ(lines, 3 * kRounds);
}

TEST(Threads, ReadShareCopyAndFreeTheSameRecords) {
    Log::setSink([](std::string_view) {});
    auto assets = QELAssetsMapper().mappedResponseFromJSONObject(page());
    Ref<QELAsset> shared(&assets->front());
    const std::uint64_t hash = shared->hash();
    const Value text = at(*shared, "title");
    const Value tree = Value(page());
    assets = nullptr;
    std::atomic<int> surprises{0};
    const auto uses = [&, shared](int) {
        const Ref<QELAsset> copied = copy(*copy(*shared));
        const Value sameText = text;
        const Value sameTree = tree;
        const auto sorted = sortedAdCuePoints(*copied->assetAdditional());
        const bool isAsExpected =
            copied->isEqual(shared.get()) && copied->hash() == hash && show(sameText) == R"("<")" &&
            sameTree == tree && *sorted->front().timeline() == 1 &&
            copied->dictionaryValue().size() == QELAsset::objectClass.propertyKeys().size() &&
            mappedObject<QELAsset>(*page()->valueForKeyPath("_embedded.assets")->elements().begin())
                    ->title() == "<";
        surprises += isAsExpected ? 0 : 1;
    };
    shared = nullptr;  // the threads hold the last uses
    { const Threads threads({uses, uses, uses, uses}); }
    Log::setSink({});
    EXPECT_EQ(surprises, 0);
}

}  // namespace
}  // namespace QELModels::test
