#pragma once

// A record as an application may write it; each file beside this one makes one mistake with it.

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Records/Declaration.h"

using namespace QELModels;

class Book : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;
    Field<Text> title;
    Field<Number> pages;
    Field<Book> sequel;
    bool isLong() const { return pages() > Number(500); }
    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};
