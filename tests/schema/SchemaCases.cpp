// Writes, for each kind, its schema and then documents with the places where the mapping finds a value that
// it has no use for: the example of the kind, the whole document, and every way to damage one of its keys.

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "JSON/JSONReader.h"
#include "JSON/JSONWriter.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/DamagedDocuments.h"
#include "tool/Explanation.h"
#include "tool/generate/Schema.h"

namespace {

using namespace QELModels;
using test::WholeDocument;

void print(const std::string& line) {
    std::fputs((line + '\n').c_str(), stdout);
}

void printSchema(const tool::Kind& kind) {
    std::string line;
    JSONWriter json(line);
    json.beginDictionary();
    json.key("kind");
    json.string(kind.name);
    json.key("schema");
    json.representation(*representationFromJSON(schemaOf(kind)));
    json.endDictionary();
    print(line);
}

void printCase(const tool::Kind& kind, std::string_view name, std::string_view text,
               bool textsMayDiffer = false) {
    const Representation document = *representationFromJSON(text);
    std::string line;
    JSONWriter json(line);
    json.beginDictionary();
    json.key("name");
    json.string(name);
    json.key("document");
    json.representation(document);
    json.key("errors");
    json.beginArray();
    try {
        tool::explain(kind, document, {}, [&](const tool::Finding& finding) {
            for (const std::string_view outcome : {"refused", "wrongKind", "fault"})
                if (finding.outcome == outcome) json.string(finding.path);
        });
    } catch (const MappingFault&) {
        // What became of its rule is among the findings.
    }
    json.endArray();
    json.key("textsMayDiffer");
    json.number(Number(textsMayDiffer));
    json.endDictionary();
    print(line);
}

std::string exampleOf(const tool::Kind& kind) {
    std::string name(kind.name);
    if (kind.isPage()) name += "-page";
    std::ifstream file(QELMODELS_EXAMPLES_DIR "/documents/" + name + ".json");
    return {std::istreambuf_iterator<char>(file), {}};
}

void printCases(const tool::Kind& kind) {
    printSchema(kind);
    printCase(kind, "the example", exampleOf(kind), true);
    const WholeDocument document(kind);
    printCase(kind, "the whole document", document.json());
    for (const test::Place& place : document.places)
        for (const test::Damage& damage : test::allDamages())
            if (applies(damage, place))
                printCase(kind,
                          place.path + " is " + std::string(damage.name),
                          document.damagedJSON(place, damage));
    for (const test::Damage& damage : test::allDamages())
        if (damage.json) printCase(kind, "the root is " + std::string(damage.name), *damage.json);
}

}  // namespace

int main() {
    Log::setSink([](std::string_view) {});
    for (const tool::Kind& kind : tool::kinds())
        printCases(kind);
}
