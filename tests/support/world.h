// A fresh world for a test: an empty store, views with their form defaults, a program folder.
#pragma once

#include "core/params.h"
#include "core/store.h"
#include "support/folderofprocess.h"
#include "support/freshviews.h"
#include "support/scripteddesk.h"
#include "support/tempfolder.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace vael {

inline std::string BytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The program started in an empty folder, with a scripted desk.
struct World {
    World() {
        store = Store{};
        settings = Settings{};
        FreshViews();
        Form_Load(Folder.Path());
    }
    TempFolder Folder;
    FolderOfProcess Here;
    ScriptedDesk Desk;
};

/// A path of the measured spectra, empty where they are not there.
inline std::string Measured(const std::string& name) {
    const std::string path = std::string(VAEL_MEASURED_DATA) + "/" + name;
    return std::filesystem::exists(path) ? path : std::string();
}

}  // namespace vael
