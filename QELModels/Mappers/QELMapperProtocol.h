#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Error.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A mapper: the way from a parsed response body to models. Its result is one record or a list of records,
/// never null. It never writes its error parameter: what a document lacks leaves properties empty. It throws
/// `MappingFault`, and has made nothing, for a colour that is neither null nor a string, unless the options
/// say that faults leave their property empty.
template <class M>
concept QELMapperProtocol = requires(const M& mapper, const Representation& representation, Error* error) {
    {*mapper.mappedResponseFromJSONObject(representation, error)};
    {mapper.mappedResponseFromJSONObject(representation)};
};

/// A mapper that also takes options, as mapping from bytes at once needs.
template <class M>
concept QELOptionsMapperProtocol = QELMapperProtocol<M> &&
    requires(const M& mapper, RepresentationView representation, Error* error, const FEMOptions& options) {
    mapper.mappedResponseFromJSONObject(representation, error, options);
};

/// A mapper of pages whose result is what `mappedPage` makes of the list at `listKeyPath()`, with `Model` as
/// elements: so a page can be mapped while it is read. `Self` is the mapper's own class. A class that derives
/// from it may do something else, and is not such a mapper unless it says so.
template <class M>
concept QELPageMapperProtocol = QELMapperProtocol<M> && requires(const M& mapper) {
    typename M::Model;
    requires std::same_as<typename M::Self, M>;
    {std::string_view(mapper.listKeyPath())};
};

/// What mappers of one record do: they map the whole representation, by the class's default mapping.
template <class Model>
Ref<Model> mappedObject(std::optional<RepresentationView> representation, const FEMOptions& options = {}) {
    return FEMDeserializer::objectFromRepresentation(representation, Model::defaultMapping(), options);
}

/// Where the list of a page is in its document: the caller says where the page is.
inline std::string keyPathOfList(std::string_view keyPathOfPage, std::string_view keyPath) {
    std::string joined(keyPathOfPage);
    if (!joined.empty()) joined += '.';
    return joined += keyPath;
}

/// What mappers of pages do: they map what is at a key path, absent included, by the class's default mapping.
template <class Model>
Ref<List<Model>> mappedPage(std::optional<RepresentationView> representation, std::string_view keyPath,
                            FEMOptions options = {}) {
    const std::string listKeyPath = keyPathOfList(options.keyPath, keyPath);
    options.keyPath = listKeyPath;
    const auto list = representation ? representation->valueForKeyPath(keyPath) : std::nullopt;
    return FEMDeserializer::collectionFromRepresentation(list, Model::defaultMapping(), options);
}

/// A mapper of documents that are one record.
template <class M>
class ObjectMapper {
public:
    using Model = M;

    /// The record; an empty one when the representation is not a dictionary, or not there. Never null;
    /// `error` is never written. Throws `MappingFault`.
    Ref<Model> mappedResponseFromJSONObject(std::optional<RepresentationView> representation,
                                            [[maybe_unused]] Error* error = nullptr,
                                            const FEMOptions& options = {}) const {
        return mappedObject<Model>(representation, options);
    }
    Ref<Model> mappedResponseFromJSONObject(std::optional<RepresentationView> representation,
                                            const FEMOptions& options) const {
        return mappedObject<Model>(representation, options);
    }
};

/// A mapper of pages: documents with a list of records. `Mapper` is the class that derives from it and says
/// in `listKeyPath()` where the list is.
template <class Mapper, class M>
class PageMapper {
public:
    using Self = Mapper;
    using Model = M;

    /// The page's records; an empty list when the page has none. Never null; `error` is never written. Throws
    /// `MappingFault`.
    Ref<List<Model>> mappedResponseFromJSONObject(std::optional<RepresentationView> representation,
                                                  [[maybe_unused]] Error* error = nullptr,
                                                  const FEMOptions& options = {}) const {
        return mappedPage<Model>(representation, static_cast<const Mapper&>(*this).listKeyPath(), options);
    }
    Ref<List<Model>> mappedResponseFromJSONObject(std::optional<RepresentationView> representation,
                                                  const FEMOptions& options) const {
        return mappedResponseFromJSONObject(representation, nullptr, options);
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
