// An application as others write it, against the public headers alone: it reads JSON, maps it, derives from
// the interfaces that are made for that, and catches what the library throws. Returns 0 when all is well,
// else the number of the line that is not.

#include <JSON/JSONReader.h>
#include <QELModels/Mappers/QELAssetMapper.h>
#include <QELModels/Mapping/FEMMapping.h>
#include <QELModels/Mapping/FEMObserver.h>
#include <QELModels/Records/MappingFault.h>
#include <QELModels/Transformers/QELValueTransformerRegistry.h>

#include <exception>
#include <memory>
#include <optional>
#include <string>

namespace {

using namespace QELModels;

/// A title in the application's own house style.
class LoudTransformer : public ValueTransformer {
public:
    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::text; }
    Value transformedValue(std::optional<RepresentationView> value) const override {
        const auto text = value ? value->text() : std::nullopt;
        return text ? Value::text(std::string(*text) + "!") : Value();
    }
};

class RefusalCounter : public FEMObserver {
public:
    void ruleApplied(const FEMEvent& event) override {
        if (event.outcome == FEMOutcome::refused) ++refused;
    }
    int refused = 0;
};

bool unknownPropertyIsFault() {
    FEMMapping mapping = QELAsset::defaultMapping();
    try {
        mapping.addAttributeWithProperty("titel", "title");
    } catch (const std::exception& fault) {
        return std::string(fault.what()).find("titel") != std::string::npos;
    }
    return false;
}

bool colourThatIsNoStringIsFault() {
    const auto document = representationFromJSON(R"({"category": {"additional": {"backgroundColor": 7}}})");
    if (!document) return false;
    try {
        QELAssetMapper().mappedResponseFromJSONObject(*document);
    } catch (const MappingFault& fault) {
        return fault.pointer() == "/category/additional/backgroundColor";
    }
    return false;
}

}  // namespace

int main() {
    const auto document = representationFromJSON(R"({"id": 42, "title": "Fjord", "streamType": "livet"})");
    if (!document) return __LINE__;

    RefusalCounter counter;
    setValueTransformer(std::make_unique<LoudTransformer>(), kQELHTMLTransformer);
    FEMOptions options;
    options.observer = &counter;
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(*document, nullptr, options);
    if (asset->assetIdentifier() != Number(42)) return __LINE__;
    if (asset->title() != "Fjord!") return __LINE__;
    if (counter.refused != 1) return __LINE__;
    if (!unknownPropertyIsFault()) return __LINE__;
    if (!colourThatIsNoStringIsFault()) return __LINE__;
    return 0;
}
