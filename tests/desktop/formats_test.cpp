// Every spectrum form opened and saved in the real window through the program's own file dialogs
// and questions, by mouse and keyboard.
#include "deskworld.h"

#include "core/frmlog.h"
#include "core/graphs.h"
#include "support/smallforms.h"

#include <QFileDialog>
#include <QMessageBox>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;
using test::OnDialog;

VaelAnaView& V() { return frmVaelAna; }

struct Forms : DeskWorld {
    Forms() {
        Desk.OwnDialogs = true;
        store.DataFolder = In("");  // where the dialogs begin
    }
    std::string In(const std::string& name) const {
        return (Folder.path() + QLatin1Char('/')).toStdString() + name;
    }
    std::string Put(const std::string& name, const std::string& bytes) const {
        std::ofstream(In(name), std::ios::binary) << bytes;
        return In(name);
    }
    std::string Bytes(const std::string& name) const {
        std::ifstream in(In(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    /// Types a name over the proposed one, with another kind where one is told, and presses Enter.
    static void TypeName(QFileDialog& box, const std::string& name, int kind = 0) {
        if (kind > 0) {
            auto* kinds = box.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            ASSERT_NE(kinds, nullptr);
            kinds->setFocus();
            QTest::keyClick(kinds, Qt::Key_Home);
            for (int k = 1; k < kind; ++k) QTest::keyClick(kinds, Qt::Key_Down);
        }
        auto* line = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(line, nullptr);
        line->setFocus();
        if (!name.empty()) {
            line->selectAll();
            // The dialog follows a path folder by folder while it is typed.
            QTest::keyClicks(line, QString::fromStdString(name), Qt::NoModifier, 2);
        }
        QTest::keyClick(line, Qt::Key_Return);
    }
    void OpenByName(const std::string& name) {
        OnDialog<QFileDialog>([name](QFileDialog& box) { TypeName(box, name); });
        ClickOn(V().cmdFiles[0]);
    }
    void SaveByName(const std::string& name, int kind = 0) {
        OnDialog<QFileDialog>([name, kind](QFileDialog& box) { TypeName(box, name, kind); });
        ClickOn(V().cmdFiles[1]);
    }
    /// Answers the next question with a key.
    static void Answering(Qt::Key key) {
        OnDialog<QMessageBox>([key](QMessageBox& box) { QTest::keyClick(&box, key); });
    }
    static const SpectrumData& Shown() {
        return store.SpectrumDatas[static_cast<std::size_t>(vael::DataNo())];
    }
};

TEST(FormsOnScreen, EachThatIsReadOpensByItsName) {
    Forms w;
    for (const SmallForm& file : SmallForms()) {
        w.Put(file.Name, file.Bytes);
        w.OpenByName(file.Name);
        EXPECT_EQ(store.GraphTotal, 1) << file.Name;
        EXPECT_EQ(store.GraphList[0].Name, file.Name) << V().lblStatus.Caption;
        EXPECT_EQ(Forms::Shown().DataNo, file.Channels) << file.Name;
        for (std::size_t i = 0; i < file.First.size(); ++i)
            EXPECT_EQ(Forms::Shown().Count[i], file.First[i]) << file.Name << " " << i;
        EXPECT_EQ(V().lblStatus.Caption, "Opened 1 spectrum.") << file.Name;
        EXPECT_EQ(w.Main().windowTitle().toStdString(), "Vael (Data Analyze) --- " + file.Name);
    }
    EXPECT_TRUE(w.Desk.Asked.empty());
    EXPECT_TRUE(w.Faults.empty());
}

TEST(FormsOnScreen, OneThatIsNoFormIsRefusedAndTheNextOpens) {
    Forms w;
    for (const std::string name : {"a.foo", "b.csv", "c.xta", "bare"}) {
        w.Put(name, "5,6\r\n");
        w.OpenByName(name);
        EXPECT_EQ(store.GraphList[0].State, 0) << name;
        EXPECT_EQ(V().lblStatus.Caption, "Not read: " + name + " (the reason stands in the log).");
        EXPECT_NE(frmLog.txtMessage.Text.find(w.In(name) +
                                              ": an extension that can be read was expected"),
                  std::string::npos);
    }
    w.Put("good.npd", NpdText({5, 6}));
    w.OpenByName("good.npd");
    EXPECT_EQ(store.GraphList[0].Name, "good.npd");
}

TEST(FormsOnScreen, EachThatIsWrittenIsSavedByItsNameOrItsKind) {
    Forms w;
    w.Write("abc.npd", FIVE_LINES);
    w.OpenByName("abc.npd");
    const struct {
        const char* Typed;  // empty for the proposal as it stands
        int Kind;           // of the list, counted from 1; 0 leaves it
        const char* Made;
        std::string Beginning;
    } cases[] = {{"", 1, "abc_RAW.npd", "Record length,27\r\n"},
                 {"", 2, "abc_RAW.rpt", " 4096\r\n"},
                 {"", 3, "abc_RAW.xbm", std::string("00\1\0abc_RAW ", 12)},
                 {"", 4, "abc_RAW.csv", "Press X,"},
                 {"", 5, "abc_RAW.gsa", " File: abc_RAW "},
                 {"one.npd", 5, "one.npd", "Record length,27\r\n"},
                 {"two.RPT", 0, "two.RPT", " 4096\r\n"},
                 {"three.xbm", 0, "three.xbm", std::string("00\1\0three ", 10)},
                 {"four.csv", 0, "four.csv", "Press X,"},
                 {"five.gsa", 1, "five.gsa", " File: five "},
                 {"six.xba", 0, "six.xba", std::string("00\1\0six ", 8)},
                 {"seven.xta", 0, "seven.xta", " 4096 \r\n"},
                 {"eight.", 1, "eight.npd", "Record length,27\r\n"}};
    for (const auto& c : cases) {
        w.SaveByName(c.Typed, c.Kind);
        EXPECT_EQ(w.Bytes(c.Made).substr(0, c.Beginning.size()), c.Beginning) << c.Made;
        EXPECT_EQ(V().lblStatus.Caption, "Saved abc.npd as " + std::string(c.Made) + " in " +
                                             w.Folder.path().toStdString() + "/.");
        if (c.Kind > 0) {
            EXPECT_EQ(store.FilterIndex, c.Kind) << c.Made;
        }
    }
    EXPECT_TRUE(w.Desk.Asked.empty()) << w.Desk.Asked.front();
    for (const std::string name : {"x.foo", "x.003", "x.chn", "x.cnf", "x.raw"}) {
        w.SaveByName(name);
        EXPECT_FALSE(std::filesystem::exists(w.In(name)));
        EXPECT_EQ(V().lblStatus.Caption,
                  "Not saved: " + name + " has no extension of a form that is written.");
    }
    EXPECT_TRUE(w.Faults.empty());
}

TEST(FormsOnScreen, EnterAtTheQuestionKeepsTheFileAndYesReplacesIt) {
    Forms w;
    w.Write("abc.npd", FIVE_LINES);
    w.OpenByName("abc.npd");
    for (const std::string name : {"x.npd", "x.rpt", "x.xbm", "x.xba", "x.gsa"}) {
        w.Put(name, "old");
        const std::size_t asked = w.Desk.Asked.size();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            Forms::Answering(key);
            w.SaveByName(name);
            EXPECT_EQ(w.Bytes(name), "old");
            EXPECT_EQ(V().lblStatus.Caption, "Not saved: " + name + " is kept as it was.");
        }
        OnDialog<QMessageBox>([](QMessageBox& box) {
            QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
        });
        w.SaveByName(name);
        EXPECT_GT(w.Bytes(name).size(), 1000u) << name;
        EXPECT_EQ(w.Desk.Asked.size(), asked + 3) << name << ": each time once, and by the writer";
    }
    for (const std::string name : {"x.csv", "x.xta", "temp00.xbm"}) {
        w.Put(name, "old");
        const std::size_t asked = w.Desk.Asked.size();
        w.SaveByName(name);
        EXPECT_GT(w.Bytes(name).size(), 1000u) << name;
        EXPECT_EQ(w.Desk.Asked.size(), asked) << name << " is replaced without a question";
    }
}

TEST(FormsOnScreen, WhatWasSavedOpensAgain) {
    Forms w;
    for (const std::string name : {"again.xbm", "again.xba", "again.rpt"}) {
        w.Write("abc.npd", FIVE_LINES);
        w.OpenByName("abc.npd");
        const SpectrumData before = Forms::Shown();
        w.SaveByName(name);
        w.OpenByName(name);
        EXPECT_EQ(store.GraphList[0].Name, name);
        EXPECT_EQ(Forms::Shown().DataNo, 4096) << name;
        EXPECT_TRUE(Forms::Shown().Count == before.Count) << name;
    }
}

TEST(FormsOnScreen, AWholePathMayBeTyped) {
    Forms w;
    w.Put("a.chn", SmallForms()[7].Bytes);
    store.DataFolder = "/";
    w.OpenByName(w.In("a.chn"));
    EXPECT_EQ(store.GraphList[0].Name, "a.chn");
    EXPECT_EQ(store.DataFolder, w.In(""));
    store.DataFolder = "/";
    w.SaveByName(w.In("b.csv"));
    EXPECT_TRUE(std::filesystem::exists(w.In("b.csv")));
}

TEST(FormsOnScreen, ADialogThatIsLeftByEscapeChangesNoFile) {
    Forms w;
    w.Write("abc.npd", FIVE_LINES);
    w.OpenByName("abc.npd");
    OnDialog<QFileDialog>([](QFileDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    w.ClickOn(V().cmdFiles[1]);
    EXPECT_EQ(store.GraphList[0].Name, "abc.npd");
    EXPECT_FALSE(std::filesystem::exists(w.In("abc_RAW.npd")));
    EXPECT_TRUE(w.Faults.empty());
}

}  // namespace
}  // namespace vael
