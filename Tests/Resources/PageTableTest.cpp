#include "Host/PageTable.h"
#include "Host/Module.h"
#include "Host/PageTableFile.h"
#include "Tests/Support/HostFixture.h"

#include <gmock/gmock.h>
#include <set>

namespace varno {
namespace {

// The effect with its page-table resource.
class PageTableResourceTest : public HostFixture {
protected:
    PageTableResourceTest()
        : HostFixture(linkedEntryPoints()) {
        options.resources = VARNO_RESOURCES;
    }

    static std::multiset<std::string> mappedParameters(const PageTableContent& table) {
        std::multiset<std::string> ids;
        for (const PageSlots& page : table.pages) {
            for (const auto& [slot, id] : page) {
                ids.insert(id);
            }
        }
        return ids;
    }

    static std::multiset<std::string> allParameters(const Instance& instance) {
        std::multiset<std::string> ids;
        for (const ParameterInfo& info : instance.parameters()) {
            ids.insert(info.id);
        }
        return ids;
    }
};

TEST_F(PageTableResourceTest, EveryPageSizeReachesEveryParameterOnce) {
    for (const std::int32_t channels : {1, 2}) {
        Instance instance(module(), {.channels = channels});
        for (const std::int32_t pageSize : {8, 16}) {
            const auto table = instance.pageTable(kControlSurfaceTable, pageSize);
            ASSERT_TRUE(table) << channels << " channels, " << pageSize << " controls";
            EXPECT_EQ(allParameters(instance), mappedParameters(table->content()));
        }
    }
}

TEST_F(PageTableResourceTest, EveryParameterHasNamesForSmallDisplays) {
    Instance instance(module(), {});
    const auto table = instance.pageTable(kControlSurfaceTable, 8);
    ASSERT_TRUE(table);
    const NameVariations& names = table->content().names;
    EXPECT_EQ(instance.parameters().size(), names.size());
    std::set<std::string> shortest;
    for (const ParameterInfo& info : instance.parameters()) {
        ASSERT_EQ(1U, names.count(info.id)) << info.id;
        EXPECT_EQ(3, names.at(info.id).begin()->first) << info.id;
        shortest.insert(names.at(info.id).begin()->second);
    }
    EXPECT_EQ(instance.parameters().size(), shortest.size())
        << "two parameters share a name of three characters";
}

TEST_F(PageTableResourceTest, TheLayoutsTogetherReachEveryParameterOnce) {
    Instance instance(module(), {});
    const PageTableFile file = PageTableFile::read(module()->resourcePath("Varno-S.xml"));
    std::multiset<std::string> ids;
    for (const char* layout : {"Dynamics", "Drive"}) {
        const PageTableContent* table = file.tableOfLayout(layout, kControlSurfaceTable, 8);
        ASSERT_NE(nullptr, table) << layout;
        ids.merge(mappedParameters(*table));
    }
    EXPECT_EQ(allParameters(instance), ids);
}

TEST_F(PageTableResourceTest, EveryPlugInIdentifierHasTheTables) {
    const PageTableFile file = PageTableFile::read(module()->resourcePath("Varno-S.xml"));
    ASSERT_EQ(1U, file.effects().size());
    const EffectDescription& effect = module()->description().effects[0];
    for (const AAX_CTypeID id : file.effects()[0].plugInIDs) {
        EXPECT_TRUE(effect.variants[0].hasPlugInID(id) || effect.variants[1].hasPlugInID(id)) << codeText(id);
    }
    EXPECT_EQ(6U, file.effects()[0].plugInIDs.size());
}

} // namespace
} // namespace varno
