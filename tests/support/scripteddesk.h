// A desk that follows a script: it fails the test on a question nobody expected.
#pragma once

#include "toolkit/desk.h"
#include "toolkit/hand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vael {

class ScriptedDesk : public Desk {
public:
    ScriptedDesk() {
        UseDesk(this);
        ResetHands();
        OnFault([this](View&, const std::string& sentence) { Faults.push_back(sentence); });
    }
    ~ScriptedDesk() override {
        EXPECT_TRUE(questions_.empty()) << "never asked: " << questions_.front().first;
        EXPECT_TRUE(looks_.empty()) << "a box that was expected never came";
        EXPECT_TRUE(files_.empty()) << "an open dialog that was expected never came";
        EXPECT_TRUE(saves_.empty()) << "a save dialog that was expected never came";
        EXPECT_TRUE(colours_.empty()) << "a colour dialog that was expected never came";
        OnFault([](View&, const std::string&) {});
        UseDesk(nullptr);
    }
    ScriptedDesk(const ScriptedDesk&) = delete;
    ScriptedDesk& operator=(const ScriptedDesk&) = delete;

    // The script.
    void ExpectQuestion(std::string text, Answer answer = Answer::Ok) {
        questions_.emplace_back(std::move(text), answer);
    }
    /// A box whose text the test looks at itself.
    void ExpectAny(std::function<void(const std::string&)> look) {
        looks_.push_back(std::move(look));
    }
    void ChooseFiles(std::vector<std::string> paths) {
        files_.push_back(FileChoice{.Paths = std::move(paths), .FilterIndex = 1});
    }
    void CancelOpen() { files_.push_back(std::nullopt); }
    void SaveAs(std::string path, int filterIndex = 1) {
        saves_.push_back(FileChoice{.Paths = {std::move(path)}, .FilterIndex = filterIndex});
    }
    void CancelSave() { saves_.push_back(std::nullopt); }
    /// The system's colour dialog gives a colour, or none when it is cancelled.
    void PickInDialog(std::optional<Colour> colour) { colours_.push_back(colour); }
    /// Acts as the user while the next modal view stands.
    void OnModal(std::function<void(View&)> act) { modals_.push_back(std::move(act)); }
    std::function<void()> OnBreathe = [] {};

    // What happened.
    std::vector<std::string> Faults;
    std::vector<Question> Asked;
    std::vector<FileDialog> OpenDialogs;
    std::vector<std::string> OpenedTexts;
    bool EditorStarts = true;
    std::vector<std::string> Launched;
    bool ProgramStarts = false;
    /// Starts a print job, on the printer or in a file; empty where there is no printer.
    std::function<std::unique_ptr<PrintJob>(const PrintOrder&)> Printer;
    std::function<void()> OnLaunch;  // what stands at the moment of the start
    std::vector<FileDialog> SaveDialogs;
    std::vector<Colour> ColoursOffered;  // what the colour dialogs began with
    int Shows = 0;
    int BusyDepth = 0;
    int BusyTurns = 0;
    bool HasQuit = false;

    Answer Ask(const Question& question) override {
        Asked.push_back(question);
        if (!looks_.empty()) {
            const auto look = std::move(looks_.front());
            looks_.pop_front();
            look(question.Text);
            return question.Default();
        }
        if (questions_.empty()) {
            ADD_FAILURE() << "nobody expected the question: " << question.Text;
            return question.Default();
        }
        const auto [text, answer] = questions_.front();
        questions_.pop_front();
        EXPECT_EQ(question.Text, text);
        return answer;
    }
    std::optional<FileChoice> OpenFiles(const FileDialog& dialog) override {
        OpenDialogs.push_back(dialog);
        if (files_.empty()) {
            ADD_FAILURE() << "nobody expected an open dialog";
            return std::nullopt;
        }
        auto choice = files_.front();
        files_.pop_front();
        return choice;
    }
    std::optional<FileChoice> SaveFile(const FileDialog& dialog) override {
        SaveDialogs.push_back(dialog);
        if (saves_.empty()) {
            ADD_FAILURE() << "nobody expected a save dialog";
            return std::nullopt;
        }
        auto choice = saves_.front();
        saves_.pop_front();
        return choice;
    }
    std::optional<Colour> PickColour(Colour now) override {
        ColoursOffered.push_back(now);
        if (colours_.empty()) {
            ADD_FAILURE() << "nobody expected a colour dialog";
            return std::nullopt;
        }
        const auto picked = colours_.front();
        colours_.pop_front();
        return picked;
    }
    std::vector<FolderItem> ListFolder(const std::string& path) override {
        std::vector<FolderItem> items;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(path, none))
            items.push_back({entry.path().filename().string(), entry.is_directory()});
        std::sort(items.begin(), items.end(),
                  [](const FolderItem& a, const FolderItem& b) { return a.Name < b.Name; });
        return items;
    }
    bool MakeFolder(const std::string& path) override {
        std::error_code bad;
        return std::filesystem::create_directories(path, bad);
    }
    void RunModal(View& view) override {
        if (modals_.empty()) {
            ADD_FAILURE() << "nobody closes the modal view " << view.Name;
            view.Visible = false;
            return;
        }
        auto act = std::move(modals_.front());
        modals_.pop_front();
        act(view);
        EXPECT_FALSE(view.Visible) << view.Name << " was left open";
        view.Visible = false;
    }
    void Breathe() override { OnBreathe(); }
    void Busy(bool on) override {
        BusyDepth += on ? 1 : -1;
        if (on) ++BusyTurns;
    }
    bool Launch(const std::string& program, const std::vector<std::string>&) override {
        Launched.push_back(program);
        if (OnLaunch) OnLaunch();
        return ProgramStarts;
    }
    bool OpenText(const std::string& path) override {
        OpenedTexts.push_back(path);
        return EditorStarts;
    }
    [[nodiscard]] bool HasPrinter() override { return Printer != nullptr; }
    std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder& order) override {
        return Printer ? Printer(order) : nullptr;
    }
    void StayOnTop(View& view, bool on) override { view.OnTop = on; }
    void Show() override { ++Shows; }
    void Quit() override { HasQuit = true; }

private:
    std::deque<std::pair<std::string, Answer>> questions_;
    std::deque<std::function<void(const std::string&)>> looks_;
    std::deque<std::optional<FileChoice>> files_;
    std::deque<std::optional<FileChoice>> saves_;
    std::deque<std::optional<Colour>> colours_;
    std::deque<std::function<void(View&)>> modals_;
};

}  // namespace vael
