#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include "DocumentGenerator.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Records/ObjectClass.h"
#include "RawText.h"
#include "Records.h"
#include "Rivals.h"
#include "Topics.h"

// From the bytes of a document to filled assets: the library and the same work written by hand.
namespace QELModels::bench {

namespace {

constexpr std::array kRivals{
    &kLibrary, &kLibraryByTheDocument, &kOnDemand, &kRapidJSON, &kNlohmann, &kDOMParse, &kStructuralIndex};
constexpr std::size_t kBaseline = 2;

constexpr std::uint64_t kSeed = 20150101;

std::vector<Document> makeDocuments() {
    DocumentGenerator generator(kSeed);
    std::vector<Document> documents;
    documents.emplace_back("one asset", generator.asset(), 1, false);
    documents.emplace_back("page of 1", generator.assetsPage(1), 1, true);
    documents.emplace_back("page of 50", generator.assetsPage(50), 50, true);
    documents.emplace_back("page of 1,000", generator.assetsPage(1000), 1000, true);
    return documents;
}

bool isLimit(const Rival& rival) {
    return rival.digest == nullptr;
}

// Whether the rivals do the same work.

bool agreeOn(const Document& document) {
    const std::uint64_t expected = kRivals[kBaseline]->digest(document);
    bool agree = true;
    for (const Rival* rival : kRivals) {
        if (isLimit(*rival)) continue;
        const std::uint64_t digest = rival->digest(document);
        if (digest == expected) continue;
        std::fprintf(stderr,
                     "%.*s: digest %016llx on '%.*s' instead of %016llx\n",
                     static_cast<int>(rival->name.size()),
                     rival->name.data(),
                     static_cast<unsigned long long>(digest),
                     static_cast<int>(document.name.size()),
                     document.name.data(),
                     static_cast<unsigned long long>(expected));
        agree = false;
    }
    return agree;
}

void say(const ObjectClass& isa, std::string_view property, const char* problem) {
    const std::string_view name = isa.name();
    std::fprintf(stderr,
                 "%.*s.%.*s %s\n",
                 static_cast<int>(name.size()),
                 name.data(),
                 static_cast<int>(property.size()),
                 property.data(),
                 problem);
}

/// Whether a record that is written by hand has a member for each property of the library's class that a
/// mapping can fill, and no others.
template <RecordByHand Record>
bool hasAllProperties(const ObjectClass& isa) {
    bool hasAll = true;
    for (const Property& property : isa.properties()) {
        bool isKnown = property.isComputed();
        forEachMember<Record>([&](const auto& member) { isKnown = isKnown || member.name == property.name; });
        if constexpr (requires { Record::kNeverFilled; })
            isKnown = isKnown || std::ranges::count(Record::kNeverFilled, property.name) != 0;
        if (isKnown) continue;
        say(isa, property.name, "is not in the benchmark's own record, see Records.h");
        hasAll = false;
    }
    forEachMember<Record>([&]<class Type>(const Member<Record, Type>& member) {
        const Property* const property = isa.property(member.name);
        if (property == nullptr) {
            say(isa, member.name, "is in the benchmark's own record, see Records.h, but is not declared");
            hasAll = false;
            return;
        }
        using Nested = Present<Type>;
        if constexpr (RecordByHand<Nested>)
            hasAll = hasAllProperties<Nested>(*property->target) && hasAll;
        else if constexpr (ListByHand<Nested>)
            hasAll = hasAllProperties<ElementOf<Nested>>(*property->target) && hasAll;
    });
    return hasAll;
}

bool check() {
    if (!hasAllProperties<Asset<RawText>>(QELAsset::objectClass)) return false;
    constexpr std::uint64_t kOtherSeeds = 40;
    bool agree = true;
    for (const Document& document : makeDocuments())
        agree = agreeOn(document) && agree;
    for (std::uint64_t seed = 1; seed <= kOtherSeeds; ++seed) {
        DocumentGenerator generator(seed);
        agree = agreeOn({"one asset", generator.asset(), 1, false}) && agree;
        agree = agreeOn({"small page", generator.assetsPage(seed % 8), seed % 8, true}) && agree;
    }
    return agree;
}

// Measuring.

struct HeapUses {
    HeapUse call;       ///< of one call with its buffers in place, result freed
    HeapUse firstCall;  ///< of one call without buffers, result kept
    HeapUse kept;       ///< of one call with its buffers in place, result kept
};

HeapUses heapUsesOf(const Rival& rival, const Document& document) {
    HeapUses uses;
    rival.forgetBuffers();
    {
        HeapMeter meter;
        const auto result = isLimit(rival) ? nullptr : rival.keep(document);
        if (result == nullptr) rival.read(document);
        uses.firstCall = meter.stop();
    }
    {
        HeapMeter meter;
        const auto result = isLimit(rival) ? nullptr : rival.keep(document);
        uses.kept = meter.stop();
    }
    HeapMeter meter;
    rival.read(document);
    uses.call = meter.stop();
    return uses;
}

/// Measures one document. Returns the ratio of each rival to the baseline.
std::vector<double> measureDocument(const Document& document, const Options& options, Report& report) {
    const double assets = static_cast<double>(document.assets);
    const double bytes = static_cast<double>(document.text.size());
    std::vector<Way> ways;
    std::vector<HeapUses> heap;
    for (const Rival* rival : kRivals) {
        ways.push_back({std::string(rival->name), [rival, &document] { rival->read(document); }, assets});
        heap.push_back(heapUsesOf(*rival, document));
    }
    const std::vector<Times> times = timesInTurn(ways, options);

    Table table({"bytes to filled assets",
                 "ratio",
                 "quartiles",
                 "µs an asset",
                 "MB/s",
                 "allocations an asset",
                 "KB kept an asset",
                 "KB at the peak of a first call, an asset"});
    std::vector<double> ratios;
    for (std::size_t i = 0; i < kRivals.size(); ++i) {
        const Quartiles ratio = ratioOf(times[i], times[kBaseline]);
        const double nanoseconds = quartilesOf(times[i]).median;
        const std::string ratioText = fixed(ratio.median, 2);
        table.row(
            {i == kBaseline ? bold(ways[i].name) : ways[i].name,
             i == kBaseline ? bold(ratioText) : ratioText,
             range(ratio),
             fixed(nanoseconds / 1e3, 2),
             fixed(bytes / assets / nanoseconds * 1e3, 0),
             fixed(static_cast<double>(heap[i].call.allocations) / assets, 1),
             isLimit(*kRivals[i]) ? "" : fixed(static_cast<double>(heap[i].kept.held) / assets / 1e3, 1),
             fixed(static_cast<double>(heap[i].firstCall.peak) / assets / 1e3, 1)});
        report.add({std::string(kDocuments.name),
                    std::string(document.name),
                    ways[i].name,
                    nanoseconds,
                    "ns an asset",
                    ratio.median});
        ratios.push_back(ratio.median);
    }
    report.say("\n" + bold(document.name) + " (" + fixed(bytes / assets / 1e3, 1) + " KB an asset)\n");
    report.show(table);
    return ratios;
}

void measure(const Options& options, Report& report) {
    std::vector<std::string> head{"ratio to code written by hand"};
    std::vector<std::vector<double>> ratios;
    for (const Document& document : makeDocuments()) {
        ratios.push_back(measureDocument(document, options, report));
        head.emplace_back(document.name);
    }
    Table summary(std::move(head));
    for (std::size_t i = 0; i < kRivals.size(); ++i) {
        if (isLimit(*kRivals[i])) continue;
        std::vector<std::string> cells{std::string(kRivals[i]->name)};
        for (const std::vector<double>& ofDocument : ratios)
            cells.push_back(fixed(ofDocument[i], 2));
        summary.row(std::move(cells));
    }
    report.show(summary);
}

}  // namespace

constinit const Topic kDocuments{"documents", check, measure};

}  // namespace QELModels::bench
