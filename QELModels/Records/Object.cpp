#include "QELModels/Records/Object.h"

#include <cassert>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/detail/PropertySlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

std::uint64_t identityHash(const Object& object) noexcept {
    return detail::hashOfWord(reinterpret_cast<std::uintptr_t>(&object));
}

}  // namespace

bool Object::isKindOf(const ObjectClass& isa) const noexcept {
    return isa_->isSameOrDerivedFrom(isa);
}

bool Object::isEqual(const Object* other) const {
    if (other == this) return true;
    if (other == nullptr || other->isa_ != isa_) return false;
    return isEqualAs(*isa_, other);
}

bool Object::isEqualAs(const ObjectClass& isa, const Object* other) const {
    if (other == this) return true;
    if (other == nullptr) return false;
    assert(isKindOf(isa) && other->isKindOf(isa));
    bool comparesFields = false;
    const ObjectClass* declaring = &isa;
    do {
        const ComparedFields& equality = declaring->equality();
        if (equality.isIdentityFirst) return false;
        for (const Property* property : equality.properties)
            if (!detail::equalFields(*property, *this, *other)) return false;
        comparesFields |= equality.isDeclared;
        declaring = declaring->modelSuperclass();
    } while (declaring != nullptr);
    return comparesFields;
}

std::uint64_t Object::hash() const {
    std::uint64_t h = 0;
    bool hashesFields = false;
    for (const ObjectClass* declaring = isa_; declaring != nullptr;
         declaring = declaring->modelSuperclass()) {
        const ComparedFields& hash = declaring->hash();
        if (!hash.isDeclared) continue;
        if (hash.isIdentityFirst) h = detail::hashCombine(h, identityHash(*this));
        for (const Property* property : hash.properties)
            h = detail::hashCombine(h, detail::hashOfField(*property, *this));
        hashesFields = true;
    }
    return hashesFields ? h : identityHash(*this);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
