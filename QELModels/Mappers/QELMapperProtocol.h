#pragma once

#include <concepts>
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
/// `MappingFault`, and has made nothing, for a colour that is neither null nor a string.
template <class M>
concept QELMapperProtocol = requires(const M& mapper, const Representation& representation, Error* error) {
    {*mapper.mappedResponseFromJSONObject(representation, error)};
    {mapper.mappedResponseFromJSONObject(representation)};
};

/// A mapper of pages whose result is what `mappedPage` makes of the list at `listKeyPath()`, with `Model` as
/// elements: so a page can be mapped while it is read. `Self` is the mapper's own class. A class that derives
/// from it may do something else, and is no such mapper unless it says so.
template <class M>
concept QELPageMapperProtocol = QELMapperProtocol<M> && requires(const M& mapper) {
    typename M::Model;
    requires std::same_as<typename M::Self, M>;
    {std::string_view(mapper.listKeyPath())};
};

/// The rule of mappers of one record: the whole representation, by the class's default mapping.
template <class Model>
Ref<Model> mappedObject(RepresentationView representation, const FEMOptions& options = {}) {
    const FEMMapping mapping = Model::defaultMapping();
    Ref<Object> object = FEMDeserializer::objectFromRepresentation(representation, mapping, options);
    return Ref<Model>::adopt(static_cast<const Model*>(object.release()));
}

/// Where the list of a page stands in its document: the caller says where the page does.
inline std::string keyPathOfList(std::string_view keyPathOfPage, std::string_view keyPath) {
    std::string joined(keyPathOfPage);
    if (!joined.empty()) joined += '.';
    return joined += keyPath;
}

/// The rule of mappers of pages: what stands at a key path, absent included, by the class's default mapping.
template <class Model>
Ref<List<Model>> mappedPage(RepresentationView representation, std::string_view keyPath,
                            FEMOptions options = {}) {
    const std::string listKeyPath = keyPathOfList(options.keyPath, keyPath);
    options.keyPath = listKeyPath;
    const auto found = representation.valueForKeyPath(keyPath);
    const FEMMapping mapping = Model::defaultMapping();
    Ref<ListBase> list = FEMDeserializer::collectionFromRepresentation(found, mapping, options);
    return Ref<List<Model>>::adopt(static_cast<const List<Model>*>(list.release()));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
