// A desk without anybody at it: answers questions with their default and keeps what boxes say.
#pragma once

#include "toolkit/desk.h"

#include <string>
#include <vector>

namespace vael {

class BatchDesk : public Desk {
public:
    std::vector<std::string> Said;  // texts of message boxes, in order
    std::string NextFile;           // what the open dialog answers; empty cancels

    Answer Ask(const Question& question) override;
    std::optional<FileChoice> OpenFiles(const FileDialog& dialog) override;
    std::optional<FileChoice> SaveFile(const FileDialog&) override { return std::nullopt; }
    std::optional<Colour> PickColour(Colour) override { return std::nullopt; }
    std::vector<FolderItem> ListFolder(const std::string&) override { return {}; }
    bool MakeFolder(const std::string&) override { return false; }
    void RunModal(View& view) override;
    void Breathe() override {}
    void Busy(bool) override {}
    bool Launch(const std::string&, const std::vector<std::string>&) override { return false; }
    bool OpenText(const std::string&) override { return false; }
    [[nodiscard]] bool HasPrinter() override { return false; }
    std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder&) override { return nullptr; }
    void StayOnTop(View&, bool) override {}
    void Show() override {}
    void Quit() override {}
};

}  // namespace vael
