#include "Host/PageTableFile.h"

#include "Host/HostError.h"
#include "Host/InstanceHost.h"

#include <algorithm>
#include <optional>
#include <pugixml.hpp>
#include <sstream>

namespace varno {

namespace {

using Table = PageTableFile::Table;

// Reads one file; every failure names it.
class Reader {
public:
    explicit Reader(std::filesystem::path path)
        : mPath(std::move(path)) {}

    std::vector<PageTableFile::Effect> run() const {
        pugi::xml_document document;
        const pugi::xml_parse_result parsed = document.load_file(mPath.c_str());
        if (!parsed) {
            fail(parsed.description());
        }
        const pugi::xml_node root = document.child("pageTables");
        if (!root) {
            fail("no element <pageTables>");
        }
        std::vector<PageTableFile::Effect> effects;
        for (const pugi::xml_node node : root.children("effect")) {
            effects.push_back(readEffect(node));
        }
        return effects;
    }

private:
    [[noreturn]] void fail(const std::string& text) const {
        throw HostError("page table file " + mPath.string() + ": " + text);
    }

    AAX_CTypeID toCode(const std::string& text) const {
        if (text.size() != 4) {
            fail("found identifier " + quoted(text) + ", expected four characters");
        }
        AAX_CTypeID code = 0;
        for (const char character : text) {
            code = (code << 8) | static_cast<unsigned char>(character);
        }
        return code;
    }

    AAX_CTypeID codeAttribute(const pugi::xml_node& node, const char* name) const {
        return toCode(textAttribute(node, name));
    }

    std::string textAttribute(const pugi::xml_node& node, const char* name) const {
        std::string text = node.attribute(name).as_string();
        if (text.empty()) {
            fail(std::string("<") + node.name() + "> has no attribute " + quoted(name));
        }
        return text;
    }

    std::int32_t numberAttribute(const pugi::xml_node& node, const char* name, std::int32_t lowest,
                                 std::int32_t highest) const {
        const std::string text = textAttribute(node, name);
        const std::int32_t number = node.attribute(name).as_int(lowest - 1);
        if (number < lowest || number > highest) {
            fail(std::string("<") + node.name() + "> has " + name + " " + quoted(text) + ", expected " +
                 std::to_string(lowest) + " to " + std::to_string(highest));
        }
        return number;
    }

    PageTableFile::Effect readEffect(const pugi::xml_node& node) const {
        PageTableFile::Effect effect;
        effect.manufacturerID = codeAttribute(node, "manufacturer");
        effect.productID = codeAttribute(node, "product");
        std::istringstream plugIns(textAttribute(node, "plugIns"));
        for (std::string id; plugIns >> id;) {
            effect.plugInIDs.push_back(toCode(id));
        }
        const NameVariations names = readNames(node);
        effect.tables = readTables(node, names);
        for (const pugi::xml_node layout : node.children("layout")) {
            effect.layouts.push_back({textAttribute(layout, "name"), readTables(layout, names)});
        }
        return effect;
    }

    NameVariations readNames(const pugi::xml_node& effect) const {
        NameVariations names;
        for (const pugi::xml_node node : effect.children("names")) {
            auto& variations = names[textAttribute(node, "parameter")];
            for (const pugi::xml_node name : node.children("name")) {
                const std::string text = name.child_value();
                const std::int32_t length = numberAttribute(name, "length", 1, kLongestName);
                if (text.empty() || text.size() > static_cast<std::size_t>(length)) {
                    fail("name " + quoted(text) + " does not fit in " + std::to_string(length) +
                         " characters");
                }
                variations[length] = text;
            }
        }
        return names;
    }

    std::vector<Table> readTables(const pugi::xml_node& parent, const NameVariations& names) const {
        std::vector<Table> tables;
        for (const pugi::xml_node node : parent.children("table")) {
            Table table{
                codeAttribute(node, "type"), numberAttribute(node, "pageSize", 1, kLargestPage), {{}, names}};
            for (const pugi::xml_node page : node.children("page")) {
                table.content.pages.push_back(readPage(page, table.pageSize));
            }
            tables.push_back(std::move(table));
        }
        return tables;
    }

    PageSlots readPage(const pugi::xml_node& node, std::int32_t pageSize) const {
        PageSlots slots;
        for (const pugi::xml_node control : node.children("control")) {
            slots[numberAttribute(control, "slot", 0, pageSize - 1)] = textAttribute(control, "parameter");
        }
        return slots;
    }

    static constexpr std::int32_t kLargestPage = 1024;
    static constexpr std::int32_t kLongestName = 255;

    std::filesystem::path mPath;
};

const PageTableContent* findTable(const std::vector<Table>& tables, AAX_CTypeID type, std::int32_t pageSize) {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const Table& table) {
        return table.type == type && table.pageSize == pageSize;
    });
    return found == tables.end() ? nullptr : &found->content;
}

std::optional<PageTableFile> readFile(const char* path, AAX_ETextEncoding encoding) {
    if (path == nullptr || encoding != AAX_eTextEncoding_UTF8) {
        return std::nullopt;
    }
    try {
        return PageTableFile::read(path);
    } catch (const HostError&) {
        return std::nullopt;
    }
}

AAX_Result copy(const PageTableContent* content, IACFUnknown* table) {
    return content == nullptr ? AAX_ERROR_UNKNOWN_ID : fillPageTable(*content, table);
}

} // namespace

PageTableFile PageTableFile::read(const std::filesystem::path& path) {
    PageTableFile file;
    file.mEffects = Reader(path).run();
    return file;
}

const PageTableFile::Effect* PageTableFile::find(AAX_CTypeID manufacturerID, AAX_CTypeID productID,
                                                 AAX_CTypeID plugInID) const {
    const auto found = std::find_if(mEffects.begin(), mEffects.end(), [&](const Effect& effect) {
        return effect.manufacturerID == manufacturerID && effect.productID == productID &&
               std::count(effect.plugInIDs.begin(), effect.plugInIDs.end(), plugInID) > 0;
    });
    return found == mEffects.end() ? nullptr : &*found;
}

bool PageTableFile::hasEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID, AAX_CTypeID plugInID) const {
    return find(manufacturerID, productID, plugInID) != nullptr;
}

const PageTableContent* PageTableFile::tableOfEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID,
                                                     AAX_CTypeID plugInID, AAX_CTypeID tableType,
                                                     std::int32_t pageSize) const {
    const Effect* effect = find(manufacturerID, productID, plugInID);
    return effect == nullptr ? nullptr : findTable(effect->tables, tableType, pageSize);
}

const PageTableContent* PageTableFile::tableOfLayout(const std::string& layoutName, AAX_CTypeID tableType,
                                                     std::int32_t pageSize) const {
    for (const Effect& effect : mEffects) {
        for (const Layout& layout : effect.layouts) {
            const PageTableContent* table = findTable(layout.tables, tableType, pageSize);
            if (layout.name == layoutName && table != nullptr) {
                return table;
            }
        }
    }
    return nullptr;
}

HostPageTableController::HostPageTableController(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

std::string HostPageTableController::resourcePath() const {
    const std::string& file = mState.pageTableFile;
    return file.empty() ? std::string() : (mState.context->resources / file).string();
}

AAX_Result HostPageTableController::CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID,
                                                       std::int32_t plugInID, std::uint32_t tableType,
                                                       std::int32_t tablePageSize, IACFUnknown* table) const {
    const AAX_Result result =
        CopyTableForEffectFromFile(resourcePath().c_str(), AAX_eTextEncoding_UTF8, manufacturerID, productID,
                                   plugInID, tableType, tablePageSize, table);
    return result == AAX_ERROR_INVALID_PATH ? AAX_ERROR_UNKNOWN_ID : result;
}

AAX_Result HostPageTableController::CopyTableOfLayout(const char* effectID, const char* layoutName,
                                                      std::uint32_t tableType, std::int32_t tablePageSize,
                                                      IACFUnknown* table) const {
    if (effectID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (effectID != mState.effectID) {
        return AAX_ERROR_UNKNOWN_PLUGIN;
    }
    const AAX_Result result = CopyTableOfLayoutFromFile(resourcePath().c_str(), AAX_eTextEncoding_UTF8,
                                                        layoutName, tableType, tablePageSize, table);
    return result == AAX_ERROR_INVALID_PATH ? AAX_ERROR_UNKNOWN_ID : result;
}

AAX_Result HostPageTableController::CopyTableForEffectFromFile(
    const char* path, AAX_ETextEncoding encoding, std::int32_t manufacturerID, std::int32_t productID,
    std::int32_t plugInID, std::uint32_t tableType, std::int32_t tablePageSize, IACFUnknown* table) const {
    mState.gate.check("CopyTableForEffectFromFile");
    if (path == nullptr || table == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto file = readFile(path, encoding);
    if (!file) {
        return AAX_ERROR_INVALID_PATH;
    }
    const auto manufacturer = static_cast<AAX_CTypeID>(manufacturerID);
    const auto product = static_cast<AAX_CTypeID>(productID);
    const auto plugIn = static_cast<AAX_CTypeID>(plugInID);
    if (!file->hasEffect(manufacturer, product, plugIn)) {
        return AAX_ERROR_UNKNOWN_PLUGIN;
    }
    return copy(file->tableOfEffect(manufacturer, product, plugIn, tableType, tablePageSize), table);
}

AAX_Result HostPageTableController::CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding,
                                                              const char* layoutName, std::uint32_t tableType,
                                                              std::int32_t tablePageSize,
                                                              IACFUnknown* table) const {
    mState.gate.check("CopyTableOfLayoutFromFile");
    if (path == nullptr || layoutName == nullptr || table == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto file = readFile(path, encoding);
    return file ? copy(file->tableOfLayout(layoutName, tableType, tablePageSize), table)
                : AAX_ERROR_INVALID_PATH;
}

} // namespace varno
