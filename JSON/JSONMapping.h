#pragma once

#include <string_view>
#include <utility>

#include "JSON/JSONReader.h"
#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

/// The list at a key path, mapped while it is read, as `mappedResponseFromJSON` says; without an observer.
QELMODELS_EXPORT Ref<ListBase> mappedList(JSONReader& reader, std::string_view bytes,
                                          std::string_view keyPath, const FEMMapping& mapping,
                                          JSONError* error, const FEMOptions& options);

}  // namespace detail

/// Models straight from the bytes of a document, which is not kept: a large page is never held as a whole,
/// which is quicker too. The result is the mapper's, and null when the document is not JSON: then `error`,
/// unless null, says why. It throws what the mapper throws.
///
/// All of this is as if the document had been read first and mapped then, save for what map rules do besides
/// (writing to the log): of a page, they are applied while it is read. So they may have been applied when a
/// mistake is found further on, and once more when a key on the way to the list is repeated, whose last value
/// counts: only the end of the document says that it is not. With an observer, a page is read as a whole. Map
/// rules and observers leave the reader alone.
template <QELOptionsMapperProtocol Mapper>
auto mappedResponseFromJSON(JSONReader& reader, std::string_view bytes, const Mapper& mapper,
                            JSONError* error = nullptr, const FEMOptions& options = {})
    -> decltype(mapper.mappedResponseFromJSONObject(std::declval<RepresentationView>(), nullptr, options)) {
    // A reader keeps the memory that it lends from, so a large document is not lent.
    if (bytes.size() <= JSONReader::kUsualWindow) {
        const auto document = reader.lend(bytes, error);
        if (!document) return {};
        return mapper.mappedResponseFromJSONObject(*document, nullptr, options);
    }
    if constexpr (QELPageMapperProtocol<Mapper>) {
        if (options.observer == nullptr) {
            using Model = typename Mapper::Model;
            const FEMMapping mapping = Model::defaultMapping();
            auto list = detail::mappedList(reader, bytes, mapper.listKeyPath(), mapping, error, options);
            return Ref<List<Model>>::adopt(static_cast<const List<Model>*>(list.release()));
        }
    }
    const auto document = reader.read(bytes, error);
    if (!document) return {};
    return mapper.mappedResponseFromJSONObject(*document, nullptr, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
