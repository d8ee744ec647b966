/// Files of control-surface page tables, and how a module reads them.
#ifndef VARNO_HOST_PAGETABLEFILE_H
#define VARNO_HOST_PAGETABLEFILE_H

#include "AAX.h"
#include "AAX_IACFPageTableController.h"
#include "Host/HostObject.h"
#include "Host/PageTable.h"

#include <filesystem>
#include <string>
#include <vector>

namespace varno {

struct InstanceState;

/// Table type of this host's own: the controls of a surface, page after page.
inline constexpr AAX_CTypeID kControlSurfaceTable = AAX_FourCC("CtSf");

/// A page table file in memory. The file is XML in UTF-8:
///
///     <pageTables>
///       <effect manufacturer="Mrvk" product="Vdsp" plugIns="VDRm VDRs">
///         <names parameter="Gain"> <name length="3">Gai</name> ... </names>
///         ...
///         <table type="CtSf" pageSize="8">
///           <page> <control slot="0" parameter="Gain"/> ... </page>
///           ...
///         </table>
///         ...
///         <layout name="Strip"> <table ...> ... </table> ... </layout>
///       </effect>
///     </pageTables>
///
/// Identifiers are four-character codes, `plugIns` any number of them separated by blanks. Slots count from 0
/// and stay below the page size. `names` gives a parameter's shorter names, each under the length in
/// characters that it is meant for and fits in; they belong to every table of the effect. A value type. [any]
class PageTableFile {
public:
    /// Reads a file. Throws HostError naming the file and what is wrong.
    static PageTableFile read(const std::filesystem::path& path);

    /// Whether the file has tables of the effect with these identifiers.
    bool hasEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID, AAX_CTypeID plugInID) const;
    /// The effect's table of a type and page size; null when there is none.
    const PageTableContent* tableOfEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID,
                                          AAX_CTypeID plugInID, AAX_CTypeID tableType,
                                          std::int32_t pageSize) const;
    /// The first table of a type and page size in a layout of this name; null when there is none.
    const PageTableContent* tableOfLayout(const std::string& layoutName, AAX_CTypeID tableType,
                                          std::int32_t pageSize) const;

    struct Table {
        AAX_CTypeID type = 0;
        std::int32_t pageSize = 0;
        PageTableContent content;
    };
    struct Layout {
        std::string name;
        std::vector<Table> tables;
    };
    struct Effect {
        AAX_CTypeID manufacturerID = 0;
        AAX_CTypeID productID = 0;
        std::vector<AAX_CTypeID> plugInIDs;
        std::vector<Table> tables;
        std::vector<Layout> layouts;
    };

    /// Everything in the file, in its order.
    const std::vector<Effect>& effects() const { return mEffects; }

private:
    const Effect* find(AAX_CTypeID manufacturerID, AAX_CTypeID productID, AAX_CTypeID plugInID) const;

    std::vector<Effect> mEffects;
};

/// Page-table controller versions 1 and 2. Version 1 reads the page-table resource that the effect names; a
/// resource that is missing or damaged counts as having no table. [main]
class HostPageTableController final : public Facet<AAX_IACFPageTableController_V2> {
public:
    HostPageTableController(IACFUnknown& owner, InstanceState& state);

    AAX_Result CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID, std::int32_t plugInID,
                                  std::uint32_t tableType, std::int32_t tablePageSize,
                                  IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, std::uint32_t tableType,
                                 std::int32_t tablePageSize, IACFUnknown* table) const override;
    AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                          std::int32_t manufacturerID, std::int32_t productID,
                                          std::int32_t plugInID, std::uint32_t tableType,
                                          std::int32_t tablePageSize, IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                         std::uint32_t tableType, std::int32_t tablePageSize,
                                         IACFUnknown* table) const override;

private:
    std::string resourcePath() const;

    InstanceState& mState;
};

} // namespace varno

#endif
