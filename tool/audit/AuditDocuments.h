#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "QELModels/Platform/Export.h"
#include "tool/Kinds.h"
#include "tool/audit/Audit.h"

namespace QELModels::tool {

/// How far an audit has come.
struct AuditProgress {
    std::uint64_t documents = 0;
    std::uint64_t bytes = 0;     ///< of what has been read
    std::uint64_t allBytes = 0;  ///< of all that there is to read; 0 when that is not known
};

/// Audits all documents of all files. Files that end in ".ndjson" or ".jsonl" hold a document on every line,
/// all others hold one. The result does not depend on the number of threads or on the order of the files.
///
/// `progress` is called several times a second on the calling thread; it may be empty. Throws `BadInput`
/// when a file cannot be read. Memory is bounded by the longest document and the distinct paths.
Audit auditDocuments(const Kind& kind, std::span<const std::string> files, std::size_t threads,
                     const std::function<void(const AuditProgress&)>& progress = {});

}  // namespace QELModels::tool
