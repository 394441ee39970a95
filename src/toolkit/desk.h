// The desk: the short list of things asked of whatever the program runs on.
#pragma once

#include "core/records.h"
#include "display/canvas.h"
#include "toolkit/view.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vael {

enum class Answer { Ok, Yes, No };

/// A message box.
struct Question {
    std::string Text;
    std::string Title;
    enum class Buttons { Ok, YesNo } Choice = Buttons::Ok;
    enum class Sign { None, Exclamation, Question } Icon = Sign::None;
    int DefaultButton = 1;  // 1 the first, 2 the second

    /// What the Enter key gives.
    [[nodiscard]] Answer Default() const {
        if (Choice == Buttons::Ok) return Answer::Ok;
        return DefaultButton == 1 ? Answer::Yes : Answer::No;
    }
};

/// An open or save dialog. The filter is a list "text|mask;mask|text|mask"; its index counts from
/// 1.
struct FileDialog {
    std::string Title;
    std::string Filter;
    int FilterIndex = 1;
    std::string Folder;
    std::string Name;
    bool Multiple = false;
};
struct FileChoice {
    std::vector<std::string> Paths;  // at least one
    int FilterIndex = 1;
};

struct FolderItem {
    std::string Name;
    bool IsFolder = false;
};

/// What is to be printed, and where.
struct PrintOrder {
    std::string Title;
    bool Landscape = false;
    std::string File;  // the PDF to make, taking the place of one that is there; empty: the printer
};

/// A running print job. One that is not ended leaves no file behind.
class PrintJob {
public:
    virtual ~PrintJob() = default;
    /// The whole sheet, its pixels points.
    [[nodiscard]] virtual Surface& Page() = 0;
    virtual bool NextPage() = 0;  // false when the printer failed
    virtual bool End() = 0;
};

class Desk {
public:
    virtual ~Desk() = default;
    virtual Answer Ask(const Question& question) = 0;
    /// Cancelled: no value.
    virtual std::optional<FileChoice> OpenFiles(const FileDialog& dialog) = 0;
    virtual std::optional<FileChoice> SaveFile(const FileDialog& dialog) = 0;
    virtual std::optional<Colour> PickColour(Colour now) = 0;
    virtual std::vector<FolderItem> ListFolder(const std::string& path) = 0;
    virtual bool MakeFolder(const std::string& path) = 0;
    /// Shows a view whose `Visible` is set and returns when it has been cleared.
    virtual void RunModal(View& view) = 0;
    /// Gives the interface a turn: repaints, and takes acts that may run (see toolkit/hand.h).
    virtual void Breathe() = 0;
    virtual void Busy(bool on) = 0;
    virtual bool Launch(const std::string& program, const std::vector<std::string>& words) = 0;
    /// Opens a text file in the system's own editor; false where there is no file or none starts.
    virtual bool OpenText(const std::string& path) = 0;
    [[nodiscard]] virtual bool HasPrinter() = 0;
    /// nullptr when there is no printer, or when the file cannot be made.
    virtual std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder& order) = 0;
    virtual void StayOnTop(View& view, bool on) = 0;
    /// Brings to the screen what changed in the records.
    virtual void Show() = 0;
    /// Ends the program after the running event.
    virtual void Quit() = 0;
};

/// The desk of this process. Faults: Argument when none was set.
[[nodiscard]] Desk& TheDesk();
void UseDesk(Desk* desk);

/// The busy cursor for as long as it lives.
class BusyCursor {
public:
    BusyCursor() { TheDesk().Busy(true); }
    ~BusyCursor() { TheDesk().Busy(false); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

/// Puts a view on top of the others, or back among them, without moving, sizing or activating it.
void TopMost(View& view);
void NoTopMost(View& view);

/// Plain message box with an OK button.
void Say(const std::string& text, const std::string& title = {});
/// Yes/No box with an exclamation icon and No as the default; true for Yes.
[[nodiscard]] bool AskYesNo(const std::string& text, const std::string& title = {});

}  // namespace vael
