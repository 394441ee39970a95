// Drives, folders and the files of a kind, as the program's own file views list them.
#pragma once

#include "toolkit/controls.h"

#include <string>
#include <vector>

namespace vael {

/// The drive that is always there, and the entry that leads to the folder above.
inline constexpr const char* ROOT_DRIVE = "/";
inline constexpr const char* FOLDER_UP = "..";

/// The root and, behind it, the media that are mounted in the usual places.
[[nodiscard]] std::vector<std::string> Drives();
[[nodiscard]] bool FolderOpens(const std::string& path);
[[nodiscard]] std::string WithSeparator(std::string folder);

/// Fills the lists with the folders of a folder and its files that fit the masks; nothing is
/// selected then.
void ListFolderIn(const std::string& folder, const std::string& masks, ListBox& folders,
                  ListBox& files);
/// The folder that an entry of such a list leads to.
[[nodiscard]] std::string FolderOfEntry(const std::string& folder, const std::string& entry);

/// The selected names of a list, and names joined by ";".
[[nodiscard]] std::vector<std::string> PickedNames(const ListBox& files);
[[nodiscard]] std::string JoinedNames(const std::vector<std::string>& names);
/// The names in a box that a list fills. What was picked and not typed over keeps its blanks; else
/// "," and ";" and blanks separate where the list takes several.
[[nodiscard]] std::vector<std::string> NamesIn(const std::string& text, const ListBox& files);

/// Whether a name fits one of the masks ("*", "?"; capitals and small letters are the same).
[[nodiscard]] bool FitsMasks(const std::string& name, const std::string& masks);

}  // namespace vael
