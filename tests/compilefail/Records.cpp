// What is wrong with a class of records as a whole: records are made by mapping alone, each of a class that
// has a description and rules of its own.

#include "Book.h"
#include "QELModels/Mappers/QELAssetMapper.h"

#ifdef FIXED
class Stray : public Record<Stray> {
public:
    Field<Text> title;
    static const ObjectClassOf<Stray> objectClass;
};
class Heir : public Record<Heir, QELAsset> {
public:
    Field<Text> will;
    static const ObjectClassOf<Heir> objectClass;
    static const FEMRulesOf<Heir> defaultRules;
};
class Orphan : public Record<Orphan, QELAsset> {
public:
    Field<Text> home;
    static const ObjectClassOf<Orphan> objectClass;
};
class Builder : public Record<Builder> {
public:
    Field<Text> name;
    static const ObjectClassOf<Builder> objectClass;
};
#else
class Stray : public QELBaseModel {
public:
    Field<Text> title;
    static const ObjectClass objectClass;
};
class Heir : public QELAsset {
public:
    Field<Text> will;
};
class Orphan : public Record<Orphan, QELAsset> {
public:
    Field<Text> home;
};
class Builder : public Record<Builder> {
public:
    using Record::Record;
    Field<Text> name;
    static const ObjectClassOf<Builder> objectClass;
};
#endif
class Ruled : public Record<Ruled, Book> {
public:
    static const ObjectClassOf<Ruled> objectClass;
#ifdef FIXED
    static const FEMRulesOf<Ruled> defaultRules;
#endif
};

// expect: a class C of records derives from Record<C>, or from Record<C, Base> | Stray
constexpr auto ofStray = property<&Stray::title>("title");
// expect: a class C of records derives from Record<C>, or from Record<C, Base> | Heir
constexpr auto ofHeir = property<&Heir::will>("will");
// expect: a class C declares 'static const ObjectClassOf<C> objectClass' of its own | Orphan
constexpr auto ofOrphan = property<&Orphan::home>("home");
// expect: a class of records has public fields, and no constructor | Builder
constexpr auto ofBuilder = property<&Builder::name>("name");
// expect: a class C declares 'static const FEMRulesOf<C> defaultRules' of its own | Ruled
FEMMapping mappingOfRuled() {
    return Ruled::defaultMapping();
}

FEMMapping mappingOfAssets() {
    return QELAsset::defaultMapping();
}
#ifdef FIXED
auto inherited(const QELAsset& asset) {
    return asset.as<QELAsset>();
}
auto made(RepresentationView document) {
    return FEMDeserializer::objectFromRepresentation<QELAsset>(document, mappingOfAssets());
}
constinit const FEMRulesOf<Book> Book::defaultRules = rules;
constinit const ObjectClassOf<Book> Book::objectClass(describe<declared>("Book"));
std::optional<Number> identifier() {
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(Representation());
    const std::optional<std::string_view> title = asset->title();
    return title ? asset->assetIdentifier() : std::nullopt;
}
#else
class Squatter : public QELAsset {
public:
    Field<Text> claim;
};
class Tenant : public QELAsset {
public:
    Field<Text> rent;
};
// expect: a class C declares 'static const ObjectClassOf<C> objectClass' of its own | Squatter
auto inherited(const QELAsset& asset) {
    return asset.as<Squatter>();
}
// expect: a class C declares 'static const ObjectClassOf<C> objectClass' of its own | Tenant
auto made(RepresentationView document) {
    return FEMDeserializer::objectFromRepresentation<Tenant>(document, mappingOfAssets());
}
// expect: (use of|call to)[a-z -]* ?.?deleted (function|constructor) .*FEMMappingOf | FEMMappingOf
const FEMMappingOf<Book> ofTemporaryRules(rules);
constexpr auto declaredOfRuled = declare<Ruled>();
// expect: these are the rules of another class | FEMRulesOf<.*Ruled
const FEMRulesOf<Ruled> rulesOfRuled = rules;
// expect: this is the description of another class | ObjectClassOf<.*Book
const ObjectClassOf<Book> classOfBook(describe<declaredOfRuled>("Book"));
// expect: deleted function .*QELAsset::QELAsset|deleted default constructor of 'const .*QELAsset' | QELAsset
const QELAsset onTheStack;
auto title(const QELAsset& asset) {
    // expect: (use of|call to)[a-z -]* ?.?deleted (function|copy constructor|constructor) | Field
    const Field<Text> copied = asset.title;
    return sizeof(copied);
}
#endif
