// Drives, folders and the files of a kind, as the program's own file views list them.
#include "core/folders.h"

#include "core/text.h"
#include "toolkit/desk.h"

#include <sys/stat.h>  // a medium is a folder on another device than the one above it
#include <algorithm>
#include <filesystem>

namespace vael {
namespace {

namespace fs = std::filesystem;

bool IsMountPoint(const fs::path& folder) {
    struct stat own {};
    struct stat above {};
    return ::stat(folder.c_str(), &own) == 0 && ::stat(folder.parent_path().c_str(), &above) == 0 &&
           own.st_dev != above.st_dev;
}

/// Media stand up to two folders below the usual places.
void AddMedia(const fs::path& place, int depth, std::vector<std::string>& drives) {
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(place, none)) {
        std::error_code bad;
        if (!entry.is_directory(bad) || entry.is_symlink(bad)) continue;
        if (IsMountPoint(entry.path()))
            drives.push_back(entry.path().string());
        else if (depth > 1)
            AddMedia(entry.path(), depth - 1, drives);
    }
}

bool FitsMask(std::string_view name, std::string_view mask) {
    if (mask.empty()) return name.empty();
    if (mask.front() == '*') {
        for (std::size_t skip = 0; skip <= name.size(); ++skip)
            if (FitsMask(name.substr(skip), mask.substr(1))) return true;
        return false;
    }
    if (name.empty() || (mask.front() != '?' && mask.front() != name.front())) return false;
    return FitsMask(name.substr(1), mask.substr(1));
}

}  // namespace

bool FolderOpens(const std::string& path) {
    std::error_code none;
    const fs::directory_iterator content(path, none);
    return !none;
}

std::vector<std::string> Drives() {
    std::vector<std::string> drives{ROOT_DRIVE};
    for (const char* place : {"/media", "/run/media", "/mnt"}) AddMedia(place, 2, drives);
    std::sort(drives.begin() + 1, drives.end());
    return drives;
}

std::string WithSeparator(std::string folder) {
    if (folder.empty() || !IsSeparator(folder.back())) folder += PATH_SEPARATOR;
    return folder;
}

void ListFolderIn(const std::string& folder, const std::string& masks, ListBox& folders,
                  ListBox& files) {
    folders.Items.clear();
    files.Items.clear();
    if (fs::path(folder).has_relative_path()) folders.Items.push_back(FOLDER_UP);
    for (const FolderItem& item : TheDesk().ListFolder(folder)) {
        if (item.IsFolder)
            folders.Items.push_back(item.Name);
        else if (FitsMasks(item.Name, masks))
            files.Items.push_back(item.Name);
    }
    folders.Index = -1;
    files.Index = -1;
    files.Picked.clear();
}

std::string FolderOfEntry(const std::string& folder, const std::string& entry) {
    const fs::path here(folder);
    const fs::path bare = here.has_filename() ? here : here.parent_path();
    return (entry == FOLDER_UP ? bare.parent_path() : bare / entry).string();
}

std::vector<std::string> PickedNames(const ListBox& files) {
    std::vector<std::string> names;
    if (files.Multiple) {
        for (const int row : files.Picked)
            names.push_back(files.Items[static_cast<std::size_t>(row)]);
    } else if (files.Index >= 0) {
        names.push_back(files.Text());
    }
    return names;
}

std::string JoinedNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ";") + name;
    return text;
}

std::vector<std::string> NamesIn(const std::string& text, const ListBox& files) {
    const std::vector<std::string> picked = PickedNames(files);
    if (text == JoinedNames(picked)) return picked;
    if (files.Multiple) return SplitFileList(text);
    return {Trim(text)};
}

bool FitsMasks(const std::string& name, const std::string& masks) {
    const std::string small = LowerCase(name);
    const auto parts = SplitFileList(LowerCase(masks));
    return std::any_of(parts.begin(), parts.end(),
                       [&](const std::string& mask) { return FitsMask(small, mask); });
}

}  // namespace vael
