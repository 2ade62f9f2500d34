#include "tool/Messages.h"

#include <fmt/format.h>

#include "tool/Display.h"

namespace QELModels::tool {

std::string messageAt(std::string_view name, std::uint64_t line, std::size_t column, std::string_view reason,
                      std::string_view text, std::size_t offset) {
    return fmt::format("{}:{}:{}: {}\n{}", name, line, column, reason, excerpt(text, offset));
}

std::string faultMessage(std::string_view place, const MappingFault& fault) {
    if (!fault.hasPointer()) return fmt::format("{}: {}", place, fault.what());
    return fmt::format("{}: {}: {}", place, fault.pointer(), fault.what());
}

}  // namespace QELModels::tool
