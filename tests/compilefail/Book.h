#pragma once

// A record as an application may write it; the files beside this one make mistakes with it.

#include <array>
#include <cstdint>
#include <string>

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

using namespace QELModels;

enum class Binding : std::int64_t { paper, cloth };
enum class Language : std::int64_t { norwegian, english };
struct LanguageWord {
    std::string_view name;
    Language value;
};
constexpr std::array<LanguageWord, 1> kLanguages{{{"no", Language::norwegian}}};

class Book : public Record<Book> {
public:
    Field<Text> title;
    Field<Number> pages;
    Field<Book> sequel;
    Field<Binding> binding;
    bool isLong() const { return pages() > Number(500); }
    static const ObjectClassOf<Book> objectClass;
    static const FEMRulesOf<Book> defaultRules;
};

constexpr auto declared = declare<Book>(
    property<&Book::title>("title"), property<&Book::pages>("pages"), property<&Book::sequel>("sequel"),
    property<&Book::binding>("binding"), property<&Book::isLong>("isLong"));
constexpr auto rules = mapping<declared>(attribute<&Book::title>(), attribute<&Book::pages>());
