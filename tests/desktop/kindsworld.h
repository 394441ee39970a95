// A view with one control of each kind that has a widget of its own ways, and its form.
#pragma once

#include "deskworld.h"

#include "desktop/griditems.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>
#include <string>
#include <vector>

namespace vael::test {

using CellKind = Grid::CellKind;
using Texts = std::vector<std::string>;

struct KindsView : View {
    KindsView() : View("frmKinds", "Kinds") {
        cboScale.Editable = true;
        lstMany.Multiple = true;
        cmdKey.Shortcut = "Ctrl+K";
        cmdPlain.Shortcut = "K";
        cmdFunction.Shortcut = "F7";
        cmdKey.Click = [this] { Done.push_back("Ctrl+K"); };
        cmdPlain.Click = [this] { Done.push_back("K"); };
        cmdFunction.Click = [this] { Done.push_back("F7"); };
        cboScale.Click = [this] { Done.push_back("pick " + cboScale.Text()); };
        cboScale.Enter = [this] { Done.push_back("enter " + cboScale.Text()); };
        lstOne.Click = [this] { Done.push_back("click " + lstOne.Text()); };
        lstOne.DoubleClick = [this] { Done.push_back("double " + lstOne.Text()); };
        txtName.DoubleClick = [this] { Done.push_back("double " + txtName.Text); };
        lstMany.Click = [this] { Done.push_back("many"); };
        tabPages.Click = [this] { Done.push_back("tab"); };
        sprTable.CellClick = [this](int c, int r) { Tell("press", c, r); };
        sprTable.CellEdit = [this](int c, int r) { Tell("edit", c, r); };
        for (int c = 1; c <= 4; ++c) sprTable.At(c, 0).Text = "head" + std::to_string(c);
        for (int r = 1; r <= 3; ++r) {
            sprTable.At(1, r).Kind = CellKind::Tick;
            sprTable.At(2, r).Kind = CellKind::Swatch;
            sprTable.At(2, r).Fill = Rgb(200, 30, 40);
            sprTable.At(3, r).Text = "name" + std::to_string(r);
            sprTable.At(4, r).Text = "1.5";
            sprTable.At(4, r).Editable = true;
        }
        sprTable.At(2, 3).Kind = CellKind::Button;
        sprTable.At(2, 3).Text = "Go";
        sprTable.At(2, 2).Kind = CellKind::Picture;
        sprTable.At(2, 2).Text = "open";
        sprTable.Widths = {4, 5, 6, 9, 7};
        picPlot.Wheel = [this](double notches, double x, bool sideways) {
            Notches = notches;
            WheelX = x;
            Sideways = sideways;
        };
        lblMemo.Caption = "d:A=2.0391";
        lblMemo.MouseDown = [this](MouseButton, double x, double y) { X0 = x, Y0 = y; };
        lblMemo.MouseMove = [this](MouseButton, double x, double y) {
            fraMemo.Left += static_cast<int>(std::lround(x - X0));
            fraMemo.Top += static_cast<int>(std::lround(y - Y0));
        };
        fraMemo.Left = fraMemo.Top = 20;
        Visible = true;
    }
    void Tell(const std::string& what, int c, int r) {
        Done.push_back(what + " " + std::to_string(c) + "," + std::to_string(r));
    }
    Texts Done;
    double Notches = 0.0;
    double WheelX = 0.0;
    bool Sideways = false;
    double X0 = 0.0;
    double Y0 = 0.0;

    Grid sprTable{*this, "sprTable", 4, 3};
    Tabs tabPages{*this, "tabPages", {"PeakData", "UsePeak"}};
    ListBox lstOne{*this, "lstOne", {"a", "b", "c"}};
    ListBox lstMany{*this, "lstMany", {"a", "b", "c", "d"}};
    ListBox cboScale{*this, "cboScale", {"1K", "2K", "auto"}, 1};
    Button cmdKey{*this, "cmdKey", "Key"};
    Button cmdPlain{*this, "cmdPlain", "Plain"};
    Button cmdFunction{*this, "cmdFunction", "Function"};
    TextBox txtName{*this, "txtName"};
    ListBox cboClosed{*this, "cboClosed", {"x", "y"}, 0};
    Picture picPlot{*this, "picPlot"};
    Frame fraMemo{*this, "fraMemo"};
    Label lblMemo{*this, "lblMemo"};
};

inline void LayOut(QMainWindow& window) {
    auto* all = new QWidget(&window);
    int y = 0;
    const auto put = [&](QWidget* widget, const char* name, int height = 28) {
        widget->setParent(all);
        widget->setObjectName(QLatin1String(name));
        widget->setGeometry(0, y, 420, height);
        y += height + 2;
    };
    put(new GridWidget, "sprTable", 120);
    put(new QTabBar, "tabPages");
    put(new QListWidget, "lstOne", 70);
    put(new QListWidget, "lstMany", 90);
    put(new QComboBox, "cboScale");
    put(new QPushButton, "cmdKey");
    put(new QPushButton, "cmdPlain");
    put(new QToolButton, "cmdFunction");
    put(new QLineEdit, "txtName");
    put(new QComboBox, "cboClosed");
    put(new PictureWidget, "picPlot", 120);
    auto* memo = new QFrame(all->findChild<QWidget*>(QStringLiteral("picPlot")));
    memo->setObjectName(QStringLiteral("fraMemo"));
    memo->setProperty("floating", true);
    auto* text = new QLabel(memo);
    text->setObjectName(QStringLiteral("lblMemo"));
    (new QVBoxLayout(memo))->addWidget(text);
    window.setCentralWidget(all);
    window.resize(430, y);
}

struct KindsWorld : DeskWorld {
    KindsWorld() {
        EXPECT_TRUE(Kinds.Missing().empty());
        Bring();
        Kinds.activateWindow();
        Settle();
    }
    ~KindsWorld() { V.Visible = false; }
    KindsWorld(const KindsWorld&) = delete;
    KindsWorld& operator=(const KindsWorld&) = delete;
    void Bring() {
        Kinds.Bring();
        Settle();
    }
    template <class W>
    W& Of(const char* name) {
        return *Kinds.findChild<W*>(QLatin1String(name));
    }
    GridWidget& Table() { return Of<GridWidget>("sprTable"); }
    void ClickCell(int column, int row) {
        QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, Table().MiddleOf(column, row));
        Bring();
    }
    [[nodiscard]] QString CellText(int column, int row) {
        return Table().model()->index(row - 1, column - 1).data().toString();
    }
    static KindsView& TheView() {
        static KindsView* view = new KindsView;
        view->~KindsView();
        return *new (view) KindsView;
    }
    KindsView& V = TheView();
    Form Kinds{V, LayOut};
};

}  // namespace vael::test
