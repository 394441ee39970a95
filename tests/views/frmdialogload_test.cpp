// The program's own file dialog, by its properties and by the user's hand.
#include "support/world.h"

#include "core/folders.h"
#include "core/frminput.h"

#include <gtest/gtest.h>

#include <functional>

using namespace vael;

namespace {

using Names = std::vector<std::string>;

struct Loading : World {
    Loading() {
        for (const char* name :
             {"a.npd", "B.NPD", "c d,e.npd", "run.001", "run.199", "run.300", "x.xbm", "試料.npd"})
            Folder.Write(name, "12345");
        std::filesystem::create_directories(Folder.Path("inner/deep"));
        Folder.Write("inner/in.npd", "1");
        frmDialogLoad.SetExt("npd,xbm,000");
        frmDialogLoad.Directory(Folder.Path());
        frmDialogLoad.DefExt("npd");
    }
    /// Opens the dialog and acts while it stands.
    bool Run(std::function<void()> act) {
        Desk.OnModal([act = std::move(act)](View&) { act(); });
        return OpenDialogLoad();
    }
    static int At(const ListBox& list, const std::string& name) {
        const auto found = std::find(list.Items.begin(), list.Items.end(), name);
        EXPECT_NE(found, list.Items.end()) << name;
        return static_cast<int>(found - list.Items.begin());
    }
};

DialogLoadView& V() { return frmDialogLoad; }

}  // namespace

TEST(Masks, NumberedFilesStandForTheirThreeHundred) {
    EXPECT_EQ(MaskOfKind("000"), "*.0??;*.1??;*.2??");
    EXPECT_EQ(MaskOfKind("npd"), "*.npd");
    EXPECT_TRUE(FitsMasks("a.001", "*.0??;*.1??;*.2??"));
    EXPECT_TRUE(FitsMasks("a.b.299", "*.0??;*.1??;*.2??"));
    EXPECT_FALSE(FitsMasks("a.300", "*.0??;*.1??;*.2??"));
    EXPECT_FALSE(FitsMasks("a.0123", "*.0??;*.1??;*.2??"));
    EXPECT_TRUE(FitsMasks("A.NPD", "*.npd"));
    EXPECT_FALSE(FitsMasks("a.npdx", "*.npd"));
    EXPECT_TRUE(FitsMasks("anything", "*"));
}

TEST(FileDialogue, ShowsFoldersAndTheFilesOfTheChosenKind) {
    Loading w;
    EXPECT_EQ(V().Caption, "Files");
    EXPECT_EQ(V().dirDirectory.Items, (Names{"..", "inner"}));
    EXPECT_EQ(V().filFiles.Items, (Names{"B.NPD", "a.npd", "c d,e.npd", "試料.npd"}));
    EXPECT_EQ(V().lblDirectory.Caption, w.Folder.Path());
    w.Run([&] {
        Pick(V().cmbExtName, 2);
        EXPECT_EQ(V().mask(), "*.0??;*.1??;*.2??");
        EXPECT_EQ(V().filFiles.Items, (Names{"run.001", "run.199"}));
        Pick(V().cmbExtName, 1);
        EXPECT_EQ(V().mask(), "*.xbm");
        EXPECT_EQ(V().filFiles.Items, (Names{"x.xbm"}));
        Click(V().cmdCan);
    });
    V().mask("*.3??");
    EXPECT_EQ(V().filFiles.Items, (Names{"run.300"}));
}

TEST(FileDialogue, AChosenFileComesBackWithItsFolder) {
    Loading w;
    EXPECT_TRUE(w.Run([&] {
        Pick(V().filFiles, w.At(V().filFiles, "c d,e.npd"));
        EXPECT_EQ(V().txtSelFile.Text, "c d,e.npd");
        Click(V().cmdSet);
    }));
    EXPECT_EQ(V().FileName(), "c d,e.npd");
    EXPECT_EQ(V().Directory(), w.Folder.Path() + "/") << "the separator is put behind it";
    EXPECT_EQ(V().SelectFileNo(), 1);
    EXPECT_EQ(V().Paths(), (Names{w.Folder.Path("c d,e.npd")}));
    EXPECT_TRUE(w.Run([&] {
        DoubleClick(V().filFiles, w.At(V().filFiles, "a.npd"));
        EXPECT_FALSE(V().Visible) << "a double click is a choice";
    }));
    EXPECT_EQ(V().Directory(), w.Folder.Path() + "/") << "and no second one";
}

TEST(FileDialogue, SeveralNamesAreJoinedAndEachKeepsItsBlanks) {
    Loading w;
    V().MultiSelect(true);
    EXPECT_TRUE(w.Run([&] {
        PickMany(V().filFiles, {0, 2, 3});
        EXPECT_EQ(V().txtSelFile.Text, "B.NPD;c d,e.npd;試料.npd");
        Click(V().cmdSet);
    }));
    EXPECT_EQ(V().FileName(), "B.NPD;c d,e.npd;試料.npd");
    EXPECT_EQ(V().SelectFileNo(), 3);
    EXPECT_EQ(V().Paths().at(1), w.Folder.Path("c d,e.npd"));
    EXPECT_TRUE(w.Run([] {
        Type(V().txtSelFile, "one.npd; two.npd,three.npd");
        Click(V().cmdSet);
    }));
    EXPECT_EQ(V().SelectFileNo(), 3) << "typed names are separated as lists are";
    EXPECT_EQ(V().Paths().at(2), w.Folder.Path("three.npd"));
}

TEST(FileDialogue, AWholePathThatIsTypedBringsItsFolder) {
    Loading w;
    EXPECT_TRUE(w.Run([&] {
        Type(V().txtSelFile, w.Folder.Path("inner/in.npd"));
        PressEnter(V().txtSelFile);
    }));
    EXPECT_EQ(V().FileName(), "in.npd");
    EXPECT_EQ(V().Directory(), w.Folder.Path("inner") + "/");
}

TEST(FileDialogue, WithoutANameItAsksForOne) {
    Loading w;
    w.Desk.ExpectQuestion("Please input file name");
    EXPECT_FALSE(w.Run([] {
        Type(V().txtSelFile, "  ");
        Click(V().cmdSet);
        EXPECT_TRUE(V().Visible);
        Key(V(), {.Key = KeyPress::Name::Escape});
    }));
    EXPECT_EQ(V().FileName(), "");
}

TEST(FileDialogue, CancelAndTheCloseBoxGiveNoName) {
    Loading w;
    for (const bool box : {false, true}) {
        EXPECT_FALSE(w.Run([&] {
            Pick(V().filFiles, 0);
            if (box)
                Close(V());
            else
                Click(V().cmdCan);
        }));
        EXPECT_EQ(V().FileName(), "");
        EXPECT_EQ(V().SelectFileNo(), 0);
    }
}

TEST(FileDialogue, ADoubleClickGoesIntoAFolderAndUpAgain) {
    Loading w;
    w.Run([&] {
        DoubleClick(V().dirDirectory, w.At(V().dirDirectory, "inner"));
        EXPECT_EQ(V().Directory(), w.Folder.Path("inner"));
        EXPECT_EQ(V().dirDirectory.Items, (Names{"..", "deep"}));
        EXPECT_EQ(V().filFiles.Items, (Names{"in.npd"}));
        DoubleClick(V().dirDirectory, 0);
        EXPECT_EQ(V().Directory(), w.Folder.Path());
        Click(V().cmdCan);
    });
    V().Directory("/");
    EXPECT_EQ(std::count(V().dirDirectory.Items.begin(), V().dirDirectory.Items.end(), ".."), 0);
    V().Directory(w.Folder.Path("absent"));
    EXPECT_EQ(V().Directory(), "/") << "a folder that does not open is not shown";
}

TEST(FileDialogue, ADriveThatFailsFallsBackToTheOneThatIsAlwaysThere) {
    Loading w;
    w.Run([&] {
        EXPECT_EQ(V().drvDrive.Items.front(), "/");
        V().drvDrive.Items = {"/", w.Folder.Path("gone")};
        w.Desk.ExpectQuestion("Can not use this drive!");
        Pick(V().drvDrive, 1);
        EXPECT_EQ(V().drive(), "/");
        EXPECT_EQ(V().Directory(), "/");
        V().drvDrive.Items = {"/", w.Folder.Path("inner")};
        Pick(V().drvDrive, 1);
        EXPECT_EQ(V().Directory(), w.Folder.Path("inner"));
        Click(V().cmdCan);
    });
    w.Desk.ExpectQuestion("Can not use this drive!");
    V().drive("q:");
    EXPECT_EQ(V().drive(), "/");
}

TEST(FileDialogue, ANewFolderIsAskedForAndMadeOnce) {
    Loading w;
    w.Run([&] {
        const auto answer = [&](const std::string& text) {
            w.Desk.OnModal([text](View& view) {
                EXPECT_EQ(view.Name, "frmInput");
                EXPECT_EQ(frmInput.lblInputName.Caption, "New Path");
                Type(frmInput.txtInput, text);
                Click(text.empty() ? frmInput.cmdCan : frmInput.cmdOk);
            });
            Click(V().cmdMkDir);
        };
        answer("made");
        EXPECT_TRUE(std::filesystem::is_directory(w.Folder.Path("made")));
        EXPECT_EQ(V().dirDirectory.Items, (Names{"..", "inner", "made"}));
        answer("inner");  // there already: nothing is said
        answer("");
        w.Desk.ExpectQuestion("The folder " + w.Folder.Path("a.npd/x") + " could not be made.");
        answer("a.npd/x");
        Click(V().cmdCan);
    });
}

TEST(FileDialogue, InfoTellsTheSizeOfTheChosenFile) {
    Loading w;
    w.Run([&] {
        w.Desk.ExpectQuestion("Please input file name");
        Click(V().cmdDetails);
        Pick(V().filFiles, w.At(V().filFiles, "a.npd"));
        struct tm when {};
        std::time_t then = 1000000000;  // 2001-09-09 in every zone
        ::localtime_r(&then, &when);
        char date[40];
        ASSERT_GT(std::strftime(date, sizeof date, "%Y/%m/%d %H:%M", &when), 0U);
        std::filesystem::last_write_time(w.Folder.Path("a.npd"),
                                         std::chrono::file_clock::from_sys(
                                             std::chrono::sys_seconds(std::chrono::seconds(then))));
        w.Desk.ExpectQuestion("a.npd: 5 bytes, " + std::string(date));
        Click(V().cmdDetails);
        Click(V().cmdCan);
    });
}

TEST(FileDialogue, ThePropertiesSetWhatIsShown) {
    Loading w;
    EXPECT_TRUE(V().cmdMkDir.Visible);
    EXPECT_FALSE(V().frmSelWin.Visible);
    V().DialogCaption("Open a spectrum");
    V().VisibleMkDir(false);
    V().VisibleWin(true);
    V().MaxGrp(10);
    V().DefGraph(2);
    V().FileName("start.npd");
    w.Run([] {
        EXPECT_EQ(V().Caption, "Open a spectrum");
        EXPECT_EQ(V().cboGSel.Items.front(), "1Graph");
        EXPECT_EQ(V().cboGSel.Items.back(), "10Graph");
        EXPECT_EQ(V().cboGSel.Text(), "3Graph");
        EXPECT_EQ(V().optGSel[0].Caption, "PileUp");
        EXPECT_EQ(V().txtSelFile.Text, "start.npd");
        EXPECT_FALSE(Click(V().cmdMkDir));
        Click(V().optGSel[1]);
        Pick(V().cboGSel, 4);
        Click(V().cmdSet);
    });
    EXPECT_EQ(V().ModeSelect(), 1);
    EXPECT_EQ(V().GraphNo(), 4);
    EXPECT_EQ(V().FileName(), "start.npd");
}
