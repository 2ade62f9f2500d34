#include "JSON/JSONMapping.h"

#include <exception>
#include <string>

#include "QELModels/Mapping/FEMCollection.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

// Adds the elements of a list to a collection. The first exception waits until the document is known to be
// well formed, and is forgotten when its list does not count.
class Collector final : public JSONElementHandler {
public:
    explicit Collector(FEMCollection& collection) noexcept : collection_(collection) {}

    void element(RepresentationView element) override {
        if (exception_ != nullptr) return;
        try {
            collection_.add(element);
        } catch (...) {
            exception_ = std::current_exception();
        }
    }

    void startOver() override {
        collection_.clear();
        exception_ = nullptr;
    }

    Ref<ListBase> finish() {
        if (exception_ != nullptr) std::rethrow_exception(exception_);
        return collection_.finish();
    }

private:
    FEMCollection& collection_;
    std::exception_ptr exception_;
};

}  // namespace

Ref<ListBase> mappedList(JSONReader& reader, std::string_view bytes, std::string_view keyPath,
                         const FEMMapping& mapping, JSONError* error, const FEMOptions& options) {
    const std::string listKeyPath = keyPathOfList(options.keyPath, keyPath);
    FEMOptions optionsOfList = options;
    optionsOfList.keyPath = listKeyPath;
    FEMCollection collection(mapping, optionsOfList);
    Collector collector(collection);
    if (!reader.readElements(bytes, keyPath, collector, error)) return {};
    return collector.finish();
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
