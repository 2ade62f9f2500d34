#include "tool/Kinds.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELEditorialsMapper.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Mappers/QELSeasonsMapper.h"
#include "tool/ExitStatus.h"
#include "tool/Texts.h"

namespace QELModels::tool {

namespace {

template <class Mapper>
Value mapWith(RepresentationView document, std::string_view keyPath, const FEMOptions& options) {
    Mapper mapper;
    if constexpr (requires { mapper.setAssetsKeyPath(keyPath); }) mapper.setAssetsKeyPath(keyPath);
    return mapper.mappedResponseFromJSONObject(document, nullptr, options);
}

template <class Mapper>
constexpr Kind single(std::string_view name, const FEMRules& rules) {
    return {name, &rules, {}, false, &mapWith<Mapper>};
}

template <class Mapper>
constexpr Kind page(std::string_view name, const FEMRules& rules, std::string_view keyPath) {
    constexpr bool takesKeyPath = requires(Mapper mapper, std::string_view path) {
        mapper.setAssetsKeyPath(path);
    };
    return {name, &rules, keyPath, takesKeyPath, &mapWith<Mapper>};
}

constexpr std::array<Kind, 8> kKinds{{
    single<QELAssetMapper>("asset", QELAsset::defaultRules),
    page<QELAssetsMapper>("assets", QELAsset::defaultRules, QELAssetsMapper::kDefaultAssetsKeyPath),
    single<QELCategoryMapper>("category", QELCategory::defaultRules),
    page<QELCategoriesMapper>("categories", QELCategory::defaultRules, QELCategoriesMapper::kKeyPath),
    single<QELEditorialMapper>("editorial", QELEditorial::defaultRules),
    page<QELEditorialsMapper>("editorials", QELEditorial::defaultRules, QELEditorialsMapper::kKeyPath),
    single<QELSeasonMapper>("season", QELSeason::defaultRules),
    page<QELSeasonsMapper>("seasons", QELSeason::defaultRules, QELSeasonsMapper::kKeyPath),
}};

}  // namespace

std::span<const Kind> kinds() noexcept {
    return kKinds;
}

std::string kindNames() {
    std::vector<std::string> names;
    names.reserve(kKinds.size());
    for (const Kind& kind : kKinds)
        names.emplace_back(kind.name);
    return joined(names, ", ");
}

const Kind& kindNamed(std::string_view name) {
    const auto* kind =
        std::find_if(kKinds.begin(), kKinds.end(), [name](const Kind& one) { return one.name == name; });
    if (kind == kKinds.end())
        throw UsageError(fmt::format("there is no kind '{}'; the kinds are {}", name, kindNames()));
    return *kind;
}

std::string keyPathFor(const Kind& kind, const std::optional<std::string>& keyPath) {
    if (keyPath && !kind.takesKeyPath) throw UsageError("--key-path goes with assets alone");
    return keyPath.value_or("");
}

}  // namespace QELModels::tool
