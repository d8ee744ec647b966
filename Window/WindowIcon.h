#ifndef VARNO_WINDOW_WINDOWICON_H
#define VARNO_WINDOW_WINDOWICON_H

#include <cstdint>
#include <filesystem>
#include <vector>

namespace varno {

/// The pictures of the product's icon in the form of _NET_WM_ICON: for each width, height and its pixels as
/// 0xAARRGGBB, row by row. Pictures that are missing or cannot be read are left out; empty without any.
/// @param resources folder with icons/SIZExSIZE/varno-s.png; empty for none
std::vector<std::uint32_t> windowIcon(const std::filesystem::path& resources);

} // namespace varno

#endif
