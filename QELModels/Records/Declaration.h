#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Property.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Records/detail/DeclarationChecks.h"
#include "QELModels/Records/detail/ObjectAccess.h"

/// @file
/// The words in which a record's source says what the record is made of. They are evaluated at compile time
/// and become constant data. A mistake does not build: the error begins with "record:" or is the name of a
/// function that says what is wrong, and the lines around it name the member or the class.
///
///     static constexpr auto declared = declare<QELAsset>(
///         property<&QELAsset::assetIdentifier>(kQELAssetIdentifier),   // in the order of declaration
///         property<&QELAsset::title>(kQELAssetTitle));
///     using Compared = FieldsOf<&QELAsset::assetIdentifier, &QELAsset::title>;
///     constinit const ObjectClassOf<QELAsset> QELAsset::objectClass(
///         describe<declared, Compared, Compared>("QELAsset", Lives::inItsOwnBlock));

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

/// The value of a computed property.
template <auto Member>
Value computed(const Object& object) {
    return Value((static_cast<const typename MemberOf<Member>::Class&>(object).*Member)());
}

/// All declared properties of one class.
template <class C, auto... Members>
struct DeclaredProperties {
    using Class = C;
    std::array<Property, sizeof...(Members)> properties;
    std::array<std::string_view, sizeof...(Members)> keys;
    std::size_t keyCount = 0;

    template <auto Member>
    static constexpr bool kHas = (std::is_same_v<PropertyOf<Member>, PropertyOf<Members>> || ...);

    /// The declared property of a member. Requires: `kHas<Member>`.
    template <auto Member>
    constexpr const Property* of() const {
        constexpr std::array<bool, sizeof...(Members)> isMember{
            std::is_same_v<PropertyOf<Member>, PropertyOf<Members>>...};
        const auto found = std::find(isMember.begin(), isMember.end(), true);
        return &properties[static_cast<std::size_t>(found - isMember.begin())];
    }

    /// Does not build when the class has a field that is not among the members.
    static consteval void checkThatNoFieldIsLeftOut() {
        constexpr std::size_t kLeftOut = firstFieldNotAmong<C, Members...>();
        FieldIsLeftOut<C, kLeftOut, Members...>::check();
    }
};

}  // namespace detail

/// A property by the name that `propertyKeys` and `dictionaryValue` know it by. A `Field` is a stored
/// property; a getter (a const member function without arguments) is a computed one, which nothing can set.
template <auto Member>
constexpr auto property(std::string_view name) {
    using Pointed = detail::MemberOf<Member>;
    detail::PropertyOf<Member> property{};
    property.name = name;
    if constexpr (detail::checkProperty<Member>()) {
        if constexpr (Pointed::kIsComputed) {
            property.kind =
                std::is_same_v<typename Pointed::Type, bool> ? PropertyKind::boolean : PropertyKind::integer;
            property.compute = &detail::computed<Member>;
        } else {
            using Class = typename Pointed::Class;
            using Slot = detail::FieldAccess::Slot<typename Pointed::Type>;
            property.kind = Slot::kKind;
            property.place = {detail::FieldAccess::slot(detail::example<Class>.*Member),
                              &detail::example<Class>,
                              &Slot::store};
            if constexpr (!std::is_void_v<detail::TargetOf<Member>>)
                property.target = &detail::TargetOf<Member>::objectClass;
        }
    }
    return property;
}

/// The properties of a class, all its fields among them, in the order of declaration.
template <class C, auto... Members>
consteval auto declare(detail::PropertyOf<Members>... properties) {
    detail::checkRecord<C>();
    (detail::checkMemberOf<C, Members>(), ...);
    detail::DeclaredProperties<C, Members...> declared{{properties...}, {}, 0};
    declared.checkThatNoFieldIsLeftOut();
    for (std::size_t i = 0; i < declared.properties.size(); ++i) {
        const std::string_view name = declared.properties[i].name;
        for (std::size_t j = 0; j < i; ++j)
            if (declared.properties[j].name == name) detail::twoPropertiesOfARecordHaveTheSameName();
        if (!name.starts_with("s_")) declared.keys[declared.keyCount++] = name;
    }
    return declared;
}

/// The fields that equality or a hash goes through, in this order.
template <auto... Members>
struct FieldsOf {
    static constexpr bool kIsIdentityFirst = false;

    /// The declared properties of the members.
    template <const auto& Declared>
    static constexpr auto in() {
        (detail::checkCompared<Declared, Members>(), ...);
        return std::array<const Property*, sizeof...(Members)>{Declared.template of<Members>()...};
    }
};
/// The same, after the identity of the object itself.
template <auto... Members>
struct IdentityThenFieldsOf : FieldsOf<Members...> {
    static constexpr bool kIsIdentityFirst = true;
};

namespace detail {

template <const auto& Declared, class Fields>
inline constexpr auto comparedProperties = Fields::template in<Declared>();

template <class C>
constexpr const ObjectClass* modelSuperclass() {
    if constexpr (requires { typename C::Super::Super; })
        return &C::Super::objectClass;
    else
        return nullptr;
}

/// A class that compares nothing by itself.
template <class C>
constexpr DescriptionOf<C> descriptionOf(std::string_view name, const ObjectClass* superclass,
                                         std::span<const Property> properties,
                                         std::span<const std::string_view> propertyKeys, bool isRoot) {
    return {{.name = name,
             .superclass = superclass,
             .modelSuperclass = modelSuperclass<C>(),
             .properties = properties,
             .propertyKeys = propertyKeys,
             .size = sizeof(C),
             .alignment = alignof(C),
             .construct = &ObjectAccess::constructObject<C>,
             .constructList = &ObjectAccess::constructList<C>,
             .isRoot = isRoot,
             .equality = {},
             .hash = {}}};
}

/// The fields of a comparison or a hash as constant data.
template <const auto& Declared, class Fields>
constexpr ComparedFields comparedFields() {
    return {comparedProperties<Declared, Fields>, true, Fields::kIsIdentityFirst};
}

}  // namespace detail

/// Where the records of a class live: in the block of what they are nested in, or each in a block of its own,
/// so that one kept for long keeps neither its siblings nor what it came in.
enum class Lives : bool { inItsOwnersBlock, inItsOwnBlock };

/// A class that compares as its superclass does: by identity, if that is `QELBaseModel`.
template <const auto& Declared>
constexpr auto describe(std::string_view name, Lives lives = Lives::inItsOwnersBlock) {
    using Class = typename std::remove_cvref_t<decltype(Declared)>::Class;
    return detail::descriptionOf<Class>(name,
                                        &Class::Super::objectClass,
                                        Declared.properties,
                                        std::span(Declared.keys).first(Declared.keyCount),
                                        lives == Lives::inItsOwnBlock);
}

/// A class that compares and hashes by fields, after those that its superclass compares and hashes.
template <const auto& Declared, class Equality, class Hash>
constexpr auto describe(std::string_view name, Lives lives = Lives::inItsOwnersBlock) {
    auto description = describe<Declared>(name, lives);
    description.equality = detail::comparedFields<Declared, Equality>();
    description.hash = detail::comparedFields<Declared, Hash>();
    return description;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
