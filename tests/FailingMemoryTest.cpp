// The promise: wherever memory runs out, all of it is given back, what was there before is as it was, and
// the next time there is memory the same objects do the same work.

#include <gtest/gtest.h>

#include <functional>
#include <unordered_set>

#include "JSON/JSONFromValue.h"
#include "JSON/JSONMapping.h"
#include "QELModels/QELModels.h"
#include "tests/DamagedDocuments.h"
#include "tests/JSONSupport.h"
#include "tool/Explanation.h"

namespace QELModels::test {
namespace {

// While it lives, the n-th request from now on fails, and all that follow it if they do `forGood`.
struct FailingMemory {
    FailingMemory(std::size_t nth, bool forGood) {
        requests.haveFailed = false;
        requests.firstFailing = requests.made + nth;
        requests.lastFailing = forGood ? SIZE_MAX : requests.firstFailing;
    }
    ~FailingMemory() { end(); }
    static void end() { requests.lastFailing = 0; }
};

// Does `work`, which answers a text, with its 1st, 2nd, 3rd ... request for memory failing, once and for
// good, until none need fail. What `work` does `again`, it does with the same objects when there is memory
// again. When all goes well, `kept` pieces are not given back.
template <class Work>
void expectNothingHalfMade(const std::string& name, const Work& work, std::ptrdiff_t kept = 0) {
    const auto again = [](const auto& use) {
        try {
            return use();
        } catch (const std::bad_alloc&) {
            FailingMemory::end();
            return use();
        }
    };
    CountingZone zone;
    const std::string usual = work(zone, again);
    for (const bool forGood : {false, true}) {
        const std::ptrdiff_t before = requests.pieces;
        bool isDone = false;
        std::size_t nth = 0;
        while (!isDone && !testing::Test::HasFailure()) {
            try {
                const FailingMemory failing(++nth, forGood);
                const std::string result = work(zone, again);
                failing.end();
                isDone = !requests.haveFailed;
                EXPECT_EQ(result, usual) << name << " without request " << nth;
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(requests.haveFailed) << name;
            }
            EXPECT_EQ(zone.pieces(), 0U) << name << " at request " << nth;
            EXPECT_EQ(requests.pieces - before, isDone ? kept : 0) << name << " at request " << nth;
        }
        EXPECT_GT(nth, 1U) << name << " needs no memory; what is tested here?";
    }
}

// What needs memory of its own: nesting deeper than usual, an index of many keys, keys that are repeated.
std::string largeValue() {
    std::string text = std::string(40, '[') + '{';
    for (int i = 0; i < 60; ++i)
        text += "\"\\u00e5" + std::to_string(i % 50) + "\":[[]],";
    return text + "\"last\":0}" + std::string(40, ']');
}

struct Keeper final : JSONElementHandler {
    void element(RepresentationView element) override { kept.emplace_back(element); }
    void startOver() override { kept.clear(); }
    std::vector<Representation> kept;
};

// A small document and a large one, of more values than its length promises, ask for memory in different
// ways.
TEST(FailingMemory, LeavesReadersAsTheyWere) {
    std::string zeros = "0";
    while (zeros.size() < 16'500)
        zeros += ",0";
    for (const std::string& more : {std::string("0"), zeros}) {
        const std::string list = "{\"a\":[" + largeValue() + ",[" + more + "]]}";
        for (const std::string& text : {list, list + ", tru"}) {
            expectNothingHalfMade("reading", [&](Zone& zone, auto again) {
                JSONReader reader(100, &zone);
                return again([&] {
                    Keeper keeper;
                    JSONError error;
                    const auto read = reader.read(text, &error);
                    const auto lent = reader.lend(text, &error);
                    const bool isSame = read && lent && *read == *lent;
                    reader.readElements(text, "a", keeper, &error);
                    const auto elements = Representation::array(keeper.kept);
                    return error.reason +
                           (isSame && *(*read)->valueForKey("a") == elements ? "same" : "none");
                });
            });
        }
    }
}

TEST(FailingMemory, LeavesRepresentationsAsTheyWere) {
    const Representation large = json(largeValue()), same = json(largeValue());
    const Representation small{{"a", Representation::array({1, "two", nullptr})}};
    expectNothingHalfMade("building and comparing", [&](Zone& zone, auto) {
        RepresentationBuilder builder(&zone);
        builder.beginDictionary();
        for (int i = 0; i < 60; ++i) {
            builder.key("key " + std::to_string(i % 40));
            builder.beginArray();
            builder.string("\xED\xA0\xBD\xED\xB8\x80 two halves");
            builder.representation(i % 20 == 0 ? large : small);
            builder.endArray();
        }
        builder.endDictionary();
        const Representation all{{"built", builder.finish()}, {"equal", large == same}};
        return jsonFromRepresentation(all, JSONWriter::Layout::indented);
    });
}

// All that is done with a kind of document and its records.
template <class Mapper>
void expectOf(std::string_view name, const Representation& document) {
    const tool::Kind& kind = tool::kindNamed(name);
    const auto madeOrFault = [](const auto& make) {
        try {
            return jsonFromValue(make());
        } catch (const MappingFault& fault) {
            return std::string(fault.pointer()) + fault.what();
        }
    };
    const auto explaining = [&](Zone&, auto) {
        std::string told;
        return madeOrFault([&] {
            tool::explain(kind, document, {}, [&](const tool::Finding& finding) {
                ((told += finding.path) += finding.property) += finding.outcome;
            });
            return Value::text(told);
        });
    };
    // Pages are explained as their records are, which takes a thousand requests.
    if (!kind.isPage() || name == "categories") expectNothingHalfMade("explaining", explaining);
    const std::string text = jsonFromRepresentation(document);
    for (const std::size_t padding : {std::size_t{1}, JSONReader::kUsualWindow}) {
        const std::string bytes = "{\"padding\":\"" + std::string(padding, ' ') + "\"," + text.substr(1);
        expectNothingHalfMade("mapping from bytes", [&](Zone& zone, auto again) {
            JSONReader reader;
            return madeOrFault([&] {
                return again([&] {
                    return mappedResponseFromJSON(reader, bytes, Mapper(), nullptr, {.zone = &zone});
                });
            });
        });
    }
    expectNothingHalfMade("using", [&](Zone& zone, auto) {
        std::string all;
        std::unordered_set<Ref<typename Mapper::Model>, Hash, EqualTo> set;
        const auto use = [&](const Object* object) {
            const Ref record(object->as<typename Mapper::Model>());
            const auto copied = copy(*copy(*copy(*record, &zone), &zone), &zone);
            set.insert(record);
            all += copied->description() + std::to_string(set.count(copied));
            for (const auto& [property, value] : copied->dictionaryValue())
                (all += property) += show(value);
        };
        const std::string shown = madeOrFault([&] {
            const Value made = kind.map(document, {}, {.zone = &zone});
            if (made.record() != nullptr)
                use(made.record());
            else
                for (const Object* object : made.list()->objects())
                    use(object);
            return made;
        });
        return shown + all;
    });
}

Representation whole(std::string_view kind) {
    return json(WholeDocument(tool::kindNamed(kind)).json());
}

TEST(FailingMemory, LeavesNothingOfAMapping) {
    const tool::SilentLog hushed;
    expectOf<QELAssetMapper>("asset", whole("asset"));
    expectOf<QELAssetsMapper>("assets", whole("assets"));
    expectOf<QELCategoryMapper>("category", whole("category"));
    expectOf<QELCategoriesMapper>("categories", whole("categories"));
    expectOf<QELEditorialMapper>("editorial", whole("editorial"));
    expectOf<QELEditorialsMapper>("editorials", whole("editorials"));
    expectOf<QELSeasonMapper>("season", whole("season"));
    expectOf<QELSeasonsMapper>("seasons", whole("seasons"));
    // A fault, a value that is linked, and lists of records that take far more room than they promise.
    const Representation nulls = Representation::array(std::vector<Representation>(20));
    expectOf<QELCategoryMapper>(
        "category", {{"parent", {{"id", 1}}}, {"additional", {{"logo", "a b"}, {"backgroundColor", 5}}}});
    expectOf<QELAssetMapper>("asset", {{"additional", {{"barrels", json(largeValue())}}}});
    expectOf<QELAssetMapper>("asset",
                             {{"title", "&amp;" + std::string(2000, 'x')},
                              {"additional", {{"chapters", nulls}, {"subtitles", nulls}}}});
}

// Each call adds all of its rules, or all of its elements, or none.
TEST(FailingMemory, LeavesMappingsAndCollectionsAsTheyWere) {
    const std::string key(40, 'k'), path = key + '.' + key;
    const std::function<void(FEMMapping&)> steps[] = {
        [&](FEMMapping& mapping) {
            mapping.addAttributesFromDictionary({{"title", path}, {"seasonNumber", key}});
        },
        [&](FEMMapping& mapping) {
            mapping.addAttribute(FEMAttribute::mappingOfProperty(
                "title", path, [key](RepresentationView) { return Value::text(key); }));
        },
        [&](FEMMapping& mapping) {
            mapping.addToManyRelationshipMapping(FEMMapping(QELAsset::objectClass), "assets", path);
        },
        [](FEMMapping& mapping) {
            mapping.addAttributesFromArray({"title", "seasonNumber"});
        },
        [](FEMMapping& mapping) { mapping = FEMMapping(mapping); },
    };
    const Representation document{{key, {{key, "of the document"}}}, {"title", "t"}};
    const Representation elements = Representation::array({document, nullptr, document, document, 1});
    FEMMapping before = QELSeason::defaultMapping();
    for (const auto& step : steps) {
        expectNothingHalfMade("adding", [&](Zone& zone, auto again) {
            FEMMapping mapping(before);
            again([&] { step(mapping); });
            FEMCollection collection(mapping, {.zone = &zone});
            auto next = elements->elements().begin();
            again([&] {
                for (; next != elements->elements().end(); ++next)
                    collection.add(*next);
            });
            const auto made = again([&] { return collection.finish(); });
            return std::to_string(mapping.rules().attributes.size()) + jsonFromValue(Value(made));
        });
        step(before);
    }
}

TEST(FailingMemory, LeavesTheProcessAsItWas) {
    constexpr std::ptrdiff_t kNameTextAndTransformer = 3;
    int names = 0;
    const auto registering = [&](Zone&, auto) {
        const std::string name = "a name that needs memory of its own " + std::to_string(++names);
        try {
            setValueTransformer(std::make_unique<Stamp>("stamp"), name);
        } catch (const std::bad_alloc&) {
            if (valueTransformerForName(name) != nullptr) ADD_FAILURE() << name;
            throw;
        }
        return show(valueTransformerForName(name)->transformedValue({}));
    };
    expectNothingHalfMade("registering", registering, kNameTextAndTransformer);
    expectNothingHalfMade("setting the clock", [&](Zone&, auto again) {
        const StoppedClock clock(7);
        again([&] {
            if (secondsSince1970(Clock::now()) != 7) ADD_FAILURE();
            Clock::setSource([room = std::string(100, 'x')] { return dateFromSecondsSince1970(8); });
        });
        return Number(secondsSince1970(Clock::now())).toString();
    });
    testing::internal::CaptureStderr();
    const std::string line(2000, 'x');
    Log::setSink([](std::string_view text) { static_cast<void>(std::string(text)); });
    {
        const FailingMemory none(1, true);
        Log::write(line);
    }
    Log::setSink({});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), line + '\n');
}

}  // namespace
}  // namespace QELModels::test
