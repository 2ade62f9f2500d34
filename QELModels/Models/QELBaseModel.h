#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/detail/RuleChecks.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What a record holds, by property name, in the order of declaration. An empty property is there with null;
/// booleans and integers come as numbers; nested records and lists are the record's own.
class QELMODELS_EXPORT PropertyDictionary {
public:
    /// A property's name and its value.
    using Entry = std::pair<std::string_view, Value>;
    using const_iterator = std::vector<Entry>::const_iterator;

    /// A dictionary of these entries, in this order.
    explicit PropertyDictionary(std::vector<Entry> entries) noexcept : entries_(std::move(entries)) {}

    /// The value of a property; null when the record has no property of that name.
    const Value* find(std::string_view name) const noexcept QELMODELS_LENT;
    std::size_t size() const noexcept { return entries_.size(); }
    const_iterator begin() const noexcept QELMODELS_LENT { return entries_.begin(); }
    const_iterator end() const noexcept QELMODELS_LENT { return entries_.end(); }

private:
    std::vector<Entry> entries_;
};

/// The root of all model classes. A record is filled by a mapping, never changed afterwards, and may be read
/// from any thread. What it lends (texts, nested records, lists) lives as long as the record; a `Ref` to any
/// record keeps it.
class QELMODELS_EXPORT QELBaseModel : public Object {
public:
    /// For the engine, which alone makes records.
    constexpr explicit QELBaseModel(const Construction& construction) noexcept : Object(construction) {}

    /// Null here; each model class has a mapping of its own, which is made anew at every call.
    static std::optional<FEMMapping> defaultMapping() { return std::nullopt; }

    /// The record's values by property name, those of inherited properties first.
    PropertyDictionary dictionaryValue() const;

    /// A record of the same class that shares everything nested with this one, and keeps what it shares.
    /// `zone` is where its memory comes from; null: the usual place. Throws `MappingFault` for a class with a
    /// property that cannot be set (`QELStreamConfiguration`).
    Ref<QELBaseModel> copyWithZone(Zone* zone) const;

    /// The class and its properties as text, for people: `<QELAssetLead assetLeadIdentifier: 1234>`.
    std::string description() const;
    std::string debugDescription() const { return description(); }

    static const ObjectClassOf<QELBaseModel> objectClass;
};

/// What a model class derives from: `class C : public Record<C>`, or `class C : public Record<C, Base>` for a
/// record that extends another one, `Base`, by fields and rules of its own. The class declares a `Field` for
/// each property, `objectClass` and `defaultRules`. It has no constructor: records are made by mapping alone.
/// The names of its properties are not among those of `Base`.
///
/// Its source says in three lists what it is made of, where a document keeps it, and what makes two of its
/// records equal (`Declaration.h`, `FEMRuleWords.h`).
template <class C, class Base = QELBaseModel>
class Record : public Base {
public:
    /// The class itself, and the one that it extends.
    using Self = C;
    using Super = Base;

    /// For the engine, which alone makes records. Not explicit: records are aggregates, made of a base and
    /// probes.
    constexpr Record(const Construction& construction) noexcept
        : Record(construction, std::make_index_sequence<detail::fieldCount<Base>()>{}) {}

    /// How a document fills a record of the class, made anew at every call.
    static FEMMappingOf<C> defaultMapping() {
        detail::checkRules<C>();
        return FEMMappingOf<C>(C::defaultRules);
    }

protected:
    /// Whether two records agree in what the class `C` compares, whatever more specific classes they are of.
    /// False for null.
    bool isEqualByFields(const C* other) const { return this->isEqualAs(C::objectClass, other); }

private:
    template <std::size_t... I>
    constexpr Record(const Construction& construction, std::index_sequence<I...>) noexcept
        : Base{{construction}, detail::kNoProbe<I>...} {}
};

/// A copy as `copyWithZone` makes it, of the class that the caller knows.
template <std::derived_from<QELBaseModel> T>
Ref<T> copy(const T& record, Zone* zone = nullptr) {
    return Ref<T>::adopt(static_cast<const T*>(record.copyWithZone(zone).release()));
}

/// A model class: records with equality, hash, description and copies, and a default mapping of their own.
template <class T>
concept QELModel = std::derived_from<T, QELBaseModel> && requires(const T& record, Zone* zone) {
    { T::defaultMapping() } -> std::same_as<FEMMappingOf<T>>;
    { T::objectClass } -> std::same_as<const ObjectClassOf<T>&>;
    { record.isEqual(&record) } -> std::same_as<bool>;
    { record.copyWithZone(zone) } -> std::same_as<Ref<QELBaseModel>>;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
