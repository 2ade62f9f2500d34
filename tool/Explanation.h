#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Representation/Representation.h"
#include "tool/Kinds.h"

namespace QELModels::tool {

/// The word for an outcome: `set`, `missing`, `null`, `refused`, `wrongKind` or `fault`.
std::string_view outcomeName(FEMOutcome outcome) noexcept;

/// The word for a key that no rule reads.
inline constexpr std::string_view kUnread = "unread";

/// Maps a document and reports to an observer what became of every rule, in the order of application. An
/// empty key path means the kind's own. A page that is not a dictionary is one event at the document's root.
/// Throws `MappingFault`, which the last event reports too.
void observeMapping(const Kind& kind, RepresentationView document, std::string_view keyPath,
                    FEMObserver& observer);

/// Keeps the library's log quiet while it lives: a mapping reports to its observer what it logs, and where.
class SilentLog {
public:
    SilentLog() {
        Log::setSink([](std::string_view) {});
    }
    SilentLog(const SilentLog&) = delete;
    SilentLog& operator=(const SilentLog&) = delete;
    ~SilentLog() { Log::setSink({}); }
};

/// Visits every key of a document that no rule reads.
void enumerateUnreadKeys(const Kind& kind, RepresentationView document, std::string_view keyPath,
                         const FEMUnreadKeys::Visit& visit);

/// What became of one rule, or a key that no rule reads.
struct Finding {
    std::string path;                         ///< a JSON Pointer from the document's root
    std::string property;                     ///< empty for a root, and for a key that is not read
    std::string_view outcome;                 ///< the word for it
    std::optional<RepresentationView> value;  ///< nothing when it is missing
};

/// Visits all findings of a document: those of the rules, then the unread keys. A fault is the last finding,
/// and its `MappingFault` is thrown.
void explain(const Kind& kind, RepresentationView document, std::string_view keyPath,
             const std::function<void(const Finding& finding)>& visit);

}  // namespace QELModels::tool
