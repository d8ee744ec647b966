// Reads page table files with the library that reads XML.
#include "Host/HostError.h"
#include "Host/PageTableFile.h"

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

} // namespace

PageTableFile PageTableFile::read(const std::filesystem::path& path) {
    PageTableFile file;
    file.mEffects = Reader(path).run();
    return file;
}

} // namespace varno
