#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/RawValue.h"
#include "QELModels/Records/Value.h"

/// @file
/// The words in which a record's source says what the record is made of. They are spoken at compile time and
/// leave constant data behind; what is wrong does not build.
///
///     static constexpr auto declared = declare<QELAsset>(
///         property<&QELAsset::assetIdentifier>(kQELAssetIdentifier),   // in the order of declaration
///         property<&QELAsset::title>(kQELAssetTitle));
///     using Equality = FieldsOf<&QELAsset::assetIdentifier, &QELAsset::title>;
///     constinit const ObjectClass QELAsset::objectClass(
///         describe<declared, Equality, Equality>("QELAsset", Lives::inItsOwnBlock));

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What a pointer to a record's member says of it.
template <class>
struct MemberOf;
template <class F, class C>
struct MemberOf<F C::*> {
    using Class = C;
    using Type = F;
    static constexpr bool kComputed = false;
};
template <class R, class C>
struct MemberOf<R (C::*)() const> {
    using Class = C;
    using Type = R;
    static constexpr bool kComputed = true;
};
template <class R, class C>
struct MemberOf<R (C::*)() const noexcept> : MemberOf<R (C::*)() const> {};

/// An object that shows how all objects of its class lie in memory. The addresses in it are constants, so
/// constant data can say with them where a field lies in each of those. One function for each field would say
/// it too, but so many that are called once a record make an asset a twentieth slower.
template <class Class>
[[gnu::visibility("hidden")]] inline constinit const Class example = ObjectAccess::constant<Class>();
template <class Class>
inline constexpr const Object* exampleOf = &example<Class>;

/// The value of a computed property.
template <auto Member>
Value computed(const Object& object) {
    using Class = typename MemberOf<decltype(Member)>::Class;
    const auto value = (static_cast<const Class&>(object).*Member)();
    if constexpr (std::is_enum_v<decltype(value)>)
        return Value(Number(static_cast<std::int64_t>(value)));
    else if constexpr (std::is_arithmetic_v<decltype(value)>)
        return Value(Number(value));
    else
        return Value(value);
}

/// The declaration of one member. The member is part of its type, so that members are told apart when they
/// are compiled.
template <auto Member>
struct PropertyOf : Property {};

/// A property by the name that `propertyKeys` and `dictionaryValue` know it by. A `Field` is a stored
/// property; a getter (a const member function without arguments) is a computed one, with no place to write
/// to.
template <auto Member>
constexpr auto property(std::string_view name) {
    using Pointed = MemberOf<decltype(Member)>;
    PropertyOf<Member> property{};
    property.name = name;
    if constexpr (Pointed::kComputed) {
        static_assert(std::is_integral_v<typename Pointed::Type> || std::is_enum_v<typename Pointed::Type>,
                      "a computed property is a boolean or an integer");
        property.kind =
            std::is_same_v<typename Pointed::Type, bool> ? PropertyKind::boolean : PropertyKind::integer;
        property.compute = &computed<Member>;
    } else {
        property.kind = Pointed::Type::kKind;
        property.place = FieldAccess::slot(example<typename Pointed::Class>.*Member);
        property.example = exampleOf<typename Pointed::Class>;
        property.putRaw = &RawValue<Pointed::Type::kKind>::put;
        if constexpr (requires { typename Pointed::Type::Target; })
            property.target = &Pointed::Type::Target::objectClass;
    }
    return property;
}

/// All declared properties of one class.
template <class C, auto... Members>
struct Declared {
    using Class = C;
    std::array<Property, sizeof...(Members)> properties;
    std::array<std::string_view, sizeof...(Members)> keys;
    std::size_t keyCount = 0;

    /// The declared property of a member; null when it is not declared.
    template <auto Member>
    constexpr const Property* of() const {
        constexpr std::array<bool, sizeof...(Members)> isIt{
            std::is_same_v<PropertyOf<Member>, PropertyOf<Members>>...};
        const auto found = std::find(isIt.begin(), isIt.end(), true);
        return found == isIt.end() ? nullptr : &properties[static_cast<std::size_t>(found - isIt.begin())];
    }
};

// Not constexpr, so that reaching it in a declaration is an error of the compiler that says this sentence.
inline void twoPropertiesOfARecordHaveTheSameName() {}

/// The properties of a class in the order of declaration. One of another class, or a name that stands twice,
/// does not build.
template <class C, auto... Members>
consteval auto declare(PropertyOf<Members>... properties) {
    static_assert((std::is_same_v<C, typename MemberOf<decltype(Members)>::Class> && ...),
                  "a field of another class");
    Declared<C, Members...> declared{{properties...}, {}, 0};
    for (std::size_t i = 0; i < declared.properties.size(); ++i) {
        const std::string_view name = declared.properties[i].name;
        for (std::size_t j = 0; j < i; ++j)
            if (declared.properties[j].name == name) twoPropertiesOfARecordHaveTheSameName();
        if (!name.starts_with("s_")) declared.keys[declared.keyCount++] = name;
    }
    return declared;
}

/// The fields that equality or a hash goes through, in this order.
template <auto... Members>
struct FieldsOf {
    static constexpr bool kIdentityFirst = false;
    template <const auto& Declared>
    static constexpr std::array<const Property*, sizeof...(Members)> in{Declared.template of<Members>()...};
};
/// The same, after the identity of the object itself.
template <auto... Members>
struct IdentityThenFieldsOf : FieldsOf<Members...> {
    static constexpr bool kIdentityFirst = true;
};

/// The fields of a comparison or a hash as the engine takes them; all are declared and stored.
template <const auto& Declared, class Fields>
constexpr PropertyOrder orderOf() {
    constexpr auto& properties = Fields::template in<Declared>;
    static_assert(std::none_of(properties.begin(), properties.end(), [](auto* p) { return p == nullptr; }),
                  "a field that is not declared");
    static_assert(
        std::none_of(properties.begin(), properties.end(), [](auto* p) { return p->compute != nullptr; }),
        "a computed property is not compared: what it is computed from is");
    return {properties, true, Fields::kIdentityFirst};
}

/// Where the records of a class live: in the block of what they are nested in, or each in a block of its own,
/// so that one kept for long keeps neither its siblings nor what it came in.
enum class Lives : bool { inItsOwnersBlock, inItsOwnBlock };

/// A class that compares by identity. Its superclass is `Class::Super`.
template <const auto& Declared>
constexpr ObjectClass::Description describe(std::string_view name, Lives lives = Lives::inItsOwnersBlock) {
    using Class = typename std::remove_cvref_t<decltype(Declared)>::Class;
    return {name,
            &Class::Super::objectClass,
            Declared.properties,
            std::span(Declared.keys).first(Declared.keyCount),
            sizeof(Class),
            alignof(Class),
            &ObjectAccess::constructObject<Class>,
            &ObjectAccess::constructList<Class>,
            lives == Lives::inItsOwnBlock,
            {},
            {}};
}

/// A class that compares and hashes by fields.
template <const auto& Declared, class Equality, class Hash>
constexpr ObjectClass::Description describe(std::string_view name, Lives lives = Lives::inItsOwnersBlock) {
    ObjectClass::Description description = describe<Declared>(name, lives);
    description.equality = orderOf<Declared, Equality>();
    description.hash = orderOf<Declared, Hash>();
    return description;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
