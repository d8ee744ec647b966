#include "Describe/PageTableReport.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "Host/HostError.h"
#include "Host/PageTableFile.h"
#include "Settings/ParameterValue.h"

#include <algorithm>

namespace varno {
namespace {

std::string pageTablePath(const Instance& instance) {
    const auto* resource = instance.effect().resource(AAX_eResourceType_PageTable);
    if (resource == nullptr) {
        throw WorkError("the module has no page table for effect " + inQuotes(instance.effect().id));
    }
    return instance.module().resourcePath(resource->fileName).string();
}

PageTableFile readFileOfTables(const std::string& path) {
    try {
        return PageTableFile::read(path);
    } catch (const HostError& error) {
        throw WorkError(error.what());
    }
}

bool isOf(const EffectDescription& effect, const PageTableFile::Effect& entry) {
    return std::ranges::any_of(effect.variants, [&](const VariantDescription& variant) {
        return std::ranges::any_of(entry.plugInIDs, [&](AAX_CTypeID id) { return variant.hasPlugInID(id); });
    });
}

PageTableReport reportOf(const PageTableFile::Table& table, const std::string& layout,
                         const std::string& path, const Instance& instance) {
    PageTableReport report{codeText(table.type), table.pageSize, layout, {}};
    const auto& pages = table.content.pages;
    for (std::size_t page = 0; page < pages.size(); ++page) {
        for (const auto& [slot, id] : pages[page]) {
            const std::string where = path + ", table " + report.type + ", page " + std::to_string(page) +
                                      ", slot " + std::to_string(slot);
            const auto& parameter = requireParameter(instance, id, where, kExitWorkFailed);
            report.rows.push_back({page, slot, id, parameter.name});
        }
    }
    return report;
}

Json::Object rowJson(const PageTableRow& row) {
    return {{"page", row.page}, {"slot", row.slot}, {"id", row.id}, {"name", row.name}};
}

Json::Object tableJson(const PageTableReport& table) {
    return {{"type", table.type},
            {"page_size", table.pageSize},
            {"layout", table.layout.empty() ? Json() : Json(table.layout)},
            {"controls", jsonArray(table.rows, rowJson)}};
}

} // namespace

std::vector<PageTableReport> readPageTables(const Instance& instance) {
    const std::string path = pageTablePath(instance);
    const PageTableFile file = readFileOfTables(path);
    const auto entry = std::ranges::find_if(
        file.effects(), [&](const auto& effect) { return isOf(instance.effect(), effect); });
    if (entry == file.effects().end()) {
        throw WorkError(path + ": has no page table for effect " + inQuotes(instance.effect().id));
    }
    std::vector<PageTableReport> reports;
    for (const auto& table : entry->tables) {
        reports.push_back(reportOf(table, "", path, instance));
    }
    for (const auto& layout : entry->layouts) {
        for (const auto& table : layout.tables) {
            reports.push_back(reportOf(table, layout.name, path, instance));
        }
    }
    return reports;
}

std::string pageTablesText(const std::vector<PageTableReport>& tables) {
    std::string text;
    for (const auto& table : tables) {
        text += text.empty() ? "" : "\n";
        text += "Table " + table.type + ", pages of " + std::to_string(table.pageSize);
        text += table.layout.empty() ? "\n" : ", layout " + inQuotes(table.layout) + '\n';
        TextTable controls({{"  PAGE", Align::kRight},
                            {"SLOT", Align::kRight},
                            {"ID", Align::kLeft},
                            {"NAME", Align::kLeft}});
        for (const auto& row : table.rows) {
            controls.addRow({std::to_string(row.page), std::to_string(row.slot), row.id, row.name});
        }
        text += controls.text();
    }
    return text;
}

std::string pageTablesJson(const std::vector<PageTableReport>& tables) {
    return jsonText(jsonArray(tables, tableJson));
}

} // namespace varno
