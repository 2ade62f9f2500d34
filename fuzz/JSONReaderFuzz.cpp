// Any bytes: the reader and the naive one agree on the value, or on what is wrong and where; and what was
// read is written as JSON that reads back.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "JSON/JSONReader.h"
#include "JSON/JSONWriter.h"
#include "tests/NaiveJSONOracle.h"

namespace {

// Little enough for small inputs to exceed it.
constexpr std::size_t kMaxDepth = 40;

void fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

struct Elements final : QELModels::JSONElementHandler {
    void element(QELModels::RepresentationView) override { ++count; }
    void startOver() override { count = 0; }
    std::size_t count = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace QELModels;
    static JSONReader reader(kMaxDepth);
    const std::string_view document(reinterpret_cast<const char*>(data), size);

    JSONError error;
    const std::optional<Representation> value = reader.read(document, &error);
    const std::string disagreement = NaiveJSONOracle::disagreement(document, value, error, kMaxDepth);
    if (!disagreement.empty()) fail(disagreement);
    // What is lent is the same.
    Elements elements;
    const auto lent = reader.lend(document);
    if (lent.has_value() != value.has_value() || (value && !(*lent == value->view())))
        fail("lent another value");
    if (reader.readElements(document, "a", elements) != value.has_value()) fail("lent elements of no JSON");
    if (!value) return 0;
    std::size_t expected = 0;
    if (const auto list = value->view().valueForKey("a")) expected = list->elements().size();
    if (elements.count != expected) fail("lent other elements");

    for (const auto layout : {JSONWriter::Layout::compact, JSONWriter::Layout::indented}) {
        const std::string text = jsonFromRepresentation(*value, layout);
        const std::optional<Representation> again = reader.read(text, &error);
        if (!again) fail("not JSON: " + error.reason + " in " + text);
        // The texts are compared, since the shortest digits of a double beyond 2^53 are those of another
        // integer.
        if (jsonFromRepresentation(*again, layout) != text) fail("does not read back: " + text);
    }
    return 0;
}
