// The promise: a block keeps what its records point into, and nothing besides, whatever they are filled with.

#include <gtest/gtest.h>

#include <string>

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Records/Declaration.h"
#include "tests/JSONSupport.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

/// What an application might add: lists of roots, which have blocks of their own, and a root beside them.
class Shelf : public Record<Shelf> {
public:
    Field<List<QELAsset>> before;
    Field<QELAsset> first;
    Field<List<QELAsset>> after;

    static const ObjectClassOf<Shelf> objectClass;
    static const FEMRulesOf<Shelf> defaultRules;
};

constexpr auto declared = declare<Shelf>(property<&Shelf::before>("before"), property<&Shelf::first>("first"),
                                         property<&Shelf::after>("after"));
constexpr auto rules = mapping<declared>(relationship<&Shelf::before>(), relationship<&Shelf::first>(),
                                         relationship<&Shelf::after>());
constinit const FEMRulesOf<Shelf> Shelf::defaultRules = rules;
constinit const ObjectClassOf<Shelf> Shelf::objectClass(describe<declared>("Shelf"));

std::string documentWith(int before, bool first, int after) {
    const auto list = [](const std::string& key, int size) {
        std::string text = '"' + key + "\":[";
        for (int i = 0; i < size; ++i)
            text += (i == 0 ? "{\"title\":\"" : ",{\"title\":\"") + key + std::to_string(i) + "\"}";
        return text + "]";
    };
    return "{" + list("before", before) + (first ? R"(,"first":{"title":"first"},)" : ",") +
           list("after", after) + "}";
}

std::string titles(const List<QELAsset>* list) {
    std::string text;
    for (const QELAsset& asset : *list)
        text += std::string(*asset.title()) + ' ';
    return text;
}

TEST(Block, KeepsTheRootsOfListsOfEverySize) {
    test::CountingZone zone;
    for (int before = 0; before < 10; ++before) {
        for (int after = 0; after < 10; after += 3) {
            for (const bool first : {false, true}) {
                Ref<Shelf> shelf = test::mapped<Shelf>(documentWith(before, first, after), {.zone = &zone});
                ASSERT_EQ(shelf->before()->size(), static_cast<std::size_t>(before));
                ASSERT_EQ(shelf->after()->size(), static_cast<std::size_t>(after));
                EXPECT_TRUE(before != 2 || titles(shelf->before()) == "before0 before1 ");
                EXPECT_TRUE(after != 3 || titles(shelf->after()) == "after0 after1 after2 ");
                EXPECT_EQ(shelf->first() == nullptr ? "" : *shelf->first()->title(), first ? "first" : "");
                // A part of the shelf keeps all of it: a block for each root, and its own.
                const Ref<List<QELAsset>> kept(shelf->before());
                shelf = {};
                EXPECT_GE(zone.pieces(), 1u + static_cast<unsigned>(before + after + first));
            }
            ASSERT_EQ(zone.pieces(), 0u) << before << ' ' << after;
        }
    }
}

}  // namespace
}  // namespace QELMODELS_ABI
}  // namespace QELModels
