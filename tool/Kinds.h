#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels::tool {

/// A kind of document, and the mapper for it.
struct Kind {
    /// Maps a document as an application does; throws `MappingFault`. An empty key path means the kind's own.
    using Map = Value (*)(RepresentationView document, std::string_view keyPath, const FEMOptions& options);

    std::string_view name;
    const FEMRules* rules;     ///< of the record, or of the page's records
    std::string_view keyPath;  ///< where a page has its list; empty for a single record
    bool takesKeyPath;         ///< whether its mapper takes another key path
    Map map;

    bool isPage() const noexcept { return !keyPath.empty(); }
};

/// All kinds, in the order in which they are listed for people.
std::span<const Kind> kinds() noexcept;

/// Their names, for people.
std::string kindNames();

/// The kind with that name; throws `UsageError` when no kind has it.
const Kind& kindNamed(std::string_view name);

/// The key path that was given, or an empty one; throws `UsageError` for a kind that does not take one.
std::string keyPathFor(const Kind& kind, const std::optional<std::string>& keyPath);

}  // namespace QELModels::tool
