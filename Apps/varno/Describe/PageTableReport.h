#ifndef VARNO_APPS_VARNO_DESCRIBE_PAGETABLEREPORT_H
#define VARNO_APPS_VARNO_DESCRIBE_PAGETABLEREPORT_H

#include "Host/Instance.h"

#include <string>
#include <vector>

namespace varno {

/// A parameter that a control surface shows. Pages and slots count from 0, as page tables count them.
struct PageTableRow {
    std::size_t page = 0;
    std::int32_t slot = 0;
    std::string id;   ///< Of the parameter.
    std::string name; ///< Of the parameter.
};

/// One page table of an effect.
struct PageTableReport {
    std::string type;        ///< Four characters: "CtSf".
    std::int32_t pageSize{}; ///< Slots of a page.
    std::string layout;      ///< The layout that it belongs to; empty for the effect's own table.
    std::vector<PageTableRow> rows;
};

/// The tables in the page table file of an effect, in the file's order, those of layouts last.
/// @param instance of the effect; gives the names of the parameters
/// @throws WorkError where the effect names no page table file, the file cannot be read or has no table for
///         this effect, or a table holds a parameter that the effect does not have
std::vector<PageTableReport> readPageTables(const Instance& instance);

/// A table for people for each page table.
std::string pageTablesText(const std::vector<PageTableReport>& tables);

/// The same as a JSON array.
std::string pageTablesJson(const std::vector<PageTableReport>& tables);

} // namespace varno

#endif
