// The desk on Qt: windows, message boxes, file dialogs, the modal loop, breathing, the printer.
#pragma once

#include "desktop/form.h"
#include "toolkit/desk.h"

#include <QObject>

#include <memory>
#include <vector>

namespace vael {

/// Makes the forms of all views and shows them. While a command runs it swallows the user's acts on
/// every form that may not act, instead of queueing them; close boxes go through the view.
class QtDesk : public QObject, public Desk {
    Q_OBJECT
public:
    QtDesk();
    ~QtDesk() override;

    [[nodiscard]] const std::vector<std::unique_ptr<Form>>& Forms() const { return forms_; }
    /// nullptr when the view has no form.
    [[nodiscard]] Form* FormOfView(const View& view) const;

    Answer Ask(const Question& question) override;
    std::optional<FileChoice> OpenFiles(const FileDialog& dialog) override;
    std::optional<FileChoice> SaveFile(const FileDialog& dialog) override;
    std::optional<Colour> PickColour(Colour now) override;
    std::vector<FolderItem> ListFolder(const std::string& path) override;
    bool MakeFolder(const std::string& path) override;
    void RunModal(View& view) override;
    void Breathe() override;
    void Busy(bool on) override;
    bool OpenText(const std::string& path) override;
    bool Launch(const std::string& program, const std::vector<std::string>& words) override;
    [[nodiscard]] bool HasPrinter() override;
    std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder& order) override;
    void StayOnTop(View& view, bool on) override;
    void Show() override;
    void Quit() override;

    bool eventFilter(QObject* target, QEvent* event) override;

private:
    [[nodiscard]] QWidget* Above() const;
    bool GiveKey(Form& form, QObject& target, const QEvent& event);
    std::vector<std::unique_ptr<Form>> forms_;
    bool quitting_ = false;
    bool showing_ = false;
    int busy_ = 0;
};

/// A filter list "text|mask;mask|text|mask" as Qt takes it: one entry a filter, "text (mask mask)".
[[nodiscard]] QStringList QtFilters(const std::string& filter);

}  // namespace vael
