// Files of control-surface page tables.
#include "Host/HostError.h"
#include "Host/PageTableFile.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"
#include "Tests/Fuzz/MemoryFile.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace varno::fuzz {
namespace {

// What of the product a planted fault replaces.
struct PageTableCalls {
    std::function<PageTableFile(const std::string&)> read = [](const std::string& path) {
        return PageTableFile::read(path);
    };
    std::function<AAX_Result(const PageTableContent&, IACFUnknown*)> fill = fillPageTable;
    /// What is done to the tables of a file, which the file cannot do itself.
    std::function<void(PageTableContent&)> change = [](PageTableContent&) {};
};

class PageTableTarget : public FuzzTarget {
public:
    explicit PageTableTarget(PageTableCalls calls = {})
        : mCalls(std::move(calls)) {}

    void run(std::string_view input) override {
        mFile.set(input);
        try {
            const PageTableFile file = mCalls.read(mFile.path());
            for (const PageTableFile::Effect& effect : file.effects()) {
                require(file.hasEffect(effect.manufacturerID, effect.productID,
                                       effect.plugInIDs.empty() ? 0 : effect.plugInIDs.front()) ==
                            !effect.plugInIDs.empty(),
                        "an effect of the file is not found");
                checkTables(effect.tables);
                for (const PageTableFile::Layout& layout : effect.layouts) {
                    require(!layout.name.empty(), "a layout has no name");
                    checkTables(layout.tables);
                }
            }
        } catch (const HostError& error) {
            require(std::string_view(error.what()).find(mFile.path()) != std::string_view::npos,
                    "a message does not name the file");
        }
        mEffect.soundValues();
    }

private:
    void checkTables(const std::vector<PageTableFile::Table>& tables) {
        for (const PageTableFile::Table& table : tables) {
            checkContent(table.content, table.pageSize);
            checkFilled(table.content);
        }
    }

    void checkContent(PageTableContent content, std::int32_t pageSize) const {
        mCalls.change(content);
        for (const PageSlots& page : content.pages) {
            for (const auto& [slot, parameter] : page) {
                require(slot >= 0 && slot < pageSize, "a slot is not of its page");
                require(!parameter.empty(), "a slot has a parameter without a name");
            }
        }
        for (const auto& [parameter, names] : content.names) {
            for (const auto& [length, name] : names) {
                require(!name.empty() && name.size() <= static_cast<std::size_t>(length),
                        "a name is longer than it says");
            }
        }
    }

    // A page table of the host's holds what the file has.
    void checkFilled(const PageTableContent& content) {
        const HostReference<PageTable> table(new PageTable(mEffect.get().module().context()), "page table");
        require(mCalls.fill(content, table.get()) == AAX_SUCCESS,
                "a page table does not take what a file has");
        require(table->content().pages == content.pages, "a page table has other pages than the file");
        for (const auto& [parameter, names] : content.names) {
            const auto found = table->content().names.find(parameter);
            require(names.empty() || (found != table->content().names.end() && found->second == names),
                    "a page table has other names than the file");
        }
    }

    PageTableCalls mCalls;
    MemoryFile mFile;
    FuzzedInstance mEffect;
};

std::vector<std::string> pageTableSeeds() {
    const std::string effect =
        R"(<pageTables><effect manufacturer="Mrvk" product="Vdsp" plugIns="VDRm VDRs">)";
    return {
        effect + R"(<names parameter="Gain"><name length="3">Gai</name><name length="4">Gain</name></names>
<table type="CtSf" pageSize="8"><page><control slot="0" parameter="Gain"/><control slot="7" parameter="Mix"/></page>
<page/></table><layout name="Strip"><table type="CtSf" pageSize="1"><page/></table></layout></effect></pageTables>)",
        effect +
            R"(<table type="&#65;BCD" pageSize="0x10"><page><control slot="-1" parameter="A"/></page></table>)"
            "</effect></pageTables>",
        R"(<?xml version="1.0" encoding="UTF-16"?><!-- c --><pageTables><![CDATA[x]]></pageTables>)",
        "<pageTables><effect/></pageTables>",
        std::string("\xFF\xFE<\0p\0", 6),
        ""};
}

// The planted faults.

AAX_Result fillAllButThePages(const PageTableContent& content, IACFUnknown* table) {
    return fillPageTable({{}, content.names}, table);
}

void moveSlots(PageTableContent& content) {
    for (PageSlots& page : content.pages) {
        if (!page.empty()) {
            page[page.rbegin()->first + 1] = "X";
        }
    }
}

void lengthenNames(PageTableContent& content) {
    for (auto& [parameter, names] : content.names) {
        for (auto& [length, name] : names) {
            name += '.';
        }
    }
}

PageTableFile readWithoutItsName(const std::string& path) {
    try {
        return PageTableFile::read(path);
    } catch (const HostError&) {
        throw HostError("damaged");
    }
}

} // namespace

FuzzSubject pageTableSubject() {
    return {
        "pageTable",
        makerOf<PageTableTarget>(),
        pageTableSeeds(),
        {{"the pages are lost", makerOf<PageTableTarget>(PageTableCalls{.fill = fillAllButThePages})},
         {"a slot lies behind its page", makerOf<PageTableTarget>(PageTableCalls{.change = moveSlots})},
         {"a name is too long", makerOf<PageTableTarget>(PageTableCalls{.change = lengthenNames})},
         {"a message does not name the file", makerOf<PageTableTarget>(PageTableCalls{readWithoutItsName})}},
        {"Host/PageTableReader.cpp", "Host/PageTableFile.cpp", "Host/PageTable.cpp"}};
}

} // namespace varno::fuzz
