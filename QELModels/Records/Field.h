#pragma once

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/detail/FieldProbe.h"
#include "QELModels/Records/detail/FieldTraits.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
struct FieldAccess;
}

/// One stored property of a record, called to read it. What it lends lives as long as the record that it was
/// read from; the record's block owns it. Only the mapping engine and copies write a field, before anybody
/// can read it.
///
/// | The field         | reads as                            | empty                                   |
/// |-------------------|-------------------------------------|-----------------------------------------|
/// | `Field<Number>`   | `std::optional<Number>`             | nothing                                 |
/// | `Field<Text>`     | `std::optional<std::string_view>`   | nothing; the text is WTF-8              |
/// | `Field<URL>`      | `std::optional<URLView>`            | nothing                                 |
/// | `Field<Date>`     | `std::optional<Date>`               | nothing                                 |
/// | `Field<Color>`    | `std::optional<Color>`              | nothing                                 |
/// | `Field<Array>`    | `std::optional<RepresentationView>` | nothing; a raw sub-tree as it came      |
/// | `Field<Dictionary>` | the same                          | nothing                                 |
/// | `Field<T>`        | `const T*`, a nested record         | null                                    |
/// | `Field<List<T>>`  | `const List<T>*`                    | null, not the same as an empty list    |
/// | `Field<bool>`     | `bool`                              | false                                   |
/// | `Field<E>`, `Field<std::int64_t>` | an enumeration, an integer | zero                             |
template <class T>
class Field {
    using Traits = detail::FieldTraits<T>;
    using Slot = typename Traits::Slot;

public:
    /// The kind of property that the field is.
    static constexpr PropertyKind kKind = Slot::kKind;

    constexpr Field() noexcept = default;
    /// For those who make records. Not explicit: records are aggregates, made of a base and probes.
    constexpr Field(const detail::FieldProbe& probe) noexcept {
        if (probe.slot != nullptr) *probe.slot = &slot_;
    }
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    /// What the property holds.
    auto operator()() const noexcept requires(!Traits::kLends) { return Traits::read(slot_); }
    auto operator()() const noexcept QELMODELS_LENT requires(Traits::kLends) { return Traits::read(slot_); }

private:
    friend struct detail::FieldAccess;
    Slot slot_{};
};

namespace detail {

/// The one way to a field's memory, for the tables of properties.
struct FieldAccess {
    template <class T>
    static constexpr const void* slot(const Field<T>& field) noexcept {
        return &field.slot_;
    }
    // A class of its own: clang looks at an alias with the rights of whoever uses it.
    template <class F>
    struct SlotOf {
        using Type = typename F::Slot;
    };
    template <class F>
    using Slot = typename SlotOf<F>::Type;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
