// The promise: what is mapped while a page is read is what is mapped afterwards, with the same options.

#include "JSON/JSONMapping.h"

#include <gtest/gtest.h>

#include <string>

#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/TestSupport.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

// Larger than what is read at once.
std::string pageOf(const std::string& lists) {
    return R"({"unread": ")" + std::string(2 * JSONReader::kUsualWindow, 'x') + R"(", "_embedded": {)" +
           lists + "}}";
}

TEST(JSONMapping, TakesEveryOption) {
    const std::string page =
        pageOf(R"("categories": [{"id": 1}, {"id": 2, "additional": {"backgroundColor": 5, "logo": "l"}}])");
    JSONReader reader;
    EXPECT_THROW(mappedResponseFromJSON(reader, page, QELCategoriesMapper()), MappingFault);
    test::CountingZone zone;
    {
        FEMOptions options;
        options.faultsLeaveEmpty = true;
        options.zone = &zone;
        const auto list = mappedResponseFromJSON(reader, page, QELCategoriesMapper(), nullptr, options);
        ASSERT_EQ(list->size(), 2u);
        EXPECT_EQ((*list)[1].categoryIdentifier(), Number(2));
        EXPECT_FALSE((*list)[1].additional()->backgroundColor());
        EXPECT_GT(zone.pieces(), 2u);
    }
    EXPECT_EQ(zone.pieces(), 0u);
}

}  // namespace
}  // namespace QELMODELS_ABI
}  // namespace QELModels
