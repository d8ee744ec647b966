#ifndef VARNO_FILES_HIDDENFILES_H
#define VARNO_FILES_HIDDENFILES_H

#include "Files/Transfer.h"

#include <filesystem>

namespace varno {

// Files that are on their way to their names. Where a folder cannot hold files without a name, and while a
// file takes the place of another, they have hidden names in the folder of their target, which a program that
// is killed leaves behind.

/// Keeps removeStaleFiles() of this and other programs out of a folder while it exists. Hidden names are made
/// and given away under it. Does nothing where the folder cannot be read or locked. [any]
class FolderInUse {
public:
    /// @param goOn called while a removal in this folder is waited for
    FolderInUse(const std::filesystem::path& folder, const GoOn& goOn);

private:
    FileDescriptor mFolder;
};

/// The folder that a file is in.
std::filesystem::path folderOf(const std::filesystem::path& file);

/// A name for a file beside `target`, which no other file has.
std::filesystem::path hiddenNameBeside(const std::filesystem::path& target);

/// Creates a file without a name in a folder, of mode `mode` without the bits of the user's mask.
/// @return nothing open where the file system has no such files or the system cannot give them names later
FileDescriptor openUnnamed(const std::filesystem::path& folder, unsigned mode);

/// Gives a file of openUnnamed() a name. @return 0 or the system's error number, EEXIST where a file has it
int linkUnnamed(const FileDescriptor& file, const std::filesystem::path& name);

/// Creates a file with a hidden name beside `target` and locks it, so that removeStaleFiles() leaves it.
/// @param name receives the name @return nothing open where that fails, with the reason in errno
FileDescriptor openHidden(const std::filesystem::path& target, unsigned mode, const GoOn& goOn,
                          std::filesystem::path& name);

/// Gives a file another name, which replaces what has it. @return 0 or the system's error number
int renameOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// Gives a file another name unless something has that, in one step where the file system offers it.
/// @return 0 or the system's error number, EEXIST where the name is taken
int renameToNew(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes the user's files of hidden names from a folder that no program holds, where no program uses the
/// folder. Does nothing where the folder is large and was read a short while ago: it is read again when this
/// process has called as often as a fixed share of its entries. Nothing is reported. [any]
void removeStaleFiles(const std::filesystem::path& folder);

} // namespace varno

#endif
