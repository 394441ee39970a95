// The table of keys in the manual against the keys that work.
#include "support/plotted.h"

#include "core/pointing.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vael {
namespace {

using Name = KeyPress::Name;

/// The first column of the table, in its order.
std::vector<std::string> ToldKeys() {
    std::vector<std::string> keys;
    std::ifstream in(VAEL_SOURCE_DIR "/docs/keys.md");
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("| ", 0) != 0) continue;
        const std::string key = line.substr(2, line.find(" |", 2) - 2);
        if (key != "Key") keys.push_back(key);
    }
    return keys;
}

/// The keys of the main window's menu items and buttons.
std::vector<std::string> ShortcutsOfRecords() {
    std::vector<std::string> keys;
    for (const Control* control : frmVaelAna.Controls()) {
        std::string key;
        if (control->Kind == ControlKind::Menu) key = static_cast<const Menu*>(control)->Shortcut;
        if (control->Kind == ControlKind::Button)
            key = static_cast<const Button*>(control)->Shortcut;
        if (!key.empty()) keys.push_back(key);
    }
    return keys;
}

/// The keys that the window's preview takes: all with no modifier, and the arrows with each.
std::set<std::string> KeysOfPreview() {
    static const std::map<Name, const char*> names{{Name::Left, "Left"},
                                                   {Name::Right, "Right"},
                                                   {Name::Up, "Up"},
                                                   {Name::Down, "Down"},
                                                   {Name::PageUp, "Page Up"},
                                                   {Name::PageDown, "Page Down"},
                                                   {Name::Home, "Home"},
                                                   {Name::End, "End"},
                                                   {Name::Add, "Number pad +"},
                                                   {Name::Subtract, "Number pad -"},
                                                   {Name::Decimal, "Number pad ."},
                                                   {Name::Enter, "Enter"},
                                                   {Name::Escape, "Escape"},
                                                   {Name::Space, "Space"},
                                                   {Name::Delete, "Delete"},
                                                   {Name::F1, "F1"},
                                                   {Name::F2, "F2"},
                                                   {Name::F3, "F3"},
                                                   {Name::F4, "F4"},
                                                   {Name::F5, "F5"},
                                                   {Name::F6, "F6"},
                                                   {Name::F7, "F7"},
                                                   {Name::F8, "F8"},
                                                   {Name::F9, "F9"},
                                                   {Name::F10, "F10"},
                                                   {Name::F11, "F11"},
                                                   {Name::F12, "F12"}};
    std::set<std::string> taken;
    for (const auto& [name, word] : names) {
        if (MainKeys({.Key = name})) taken.insert(word);
        if (name != Name::Left && name != Name::Right) continue;
        if (MainKeys({.Key = name, .Shift = true})) taken.insert(std::string("Shift+") + word);
        if (MainKeys({.Key = name, .Ctrl = true})) taken.insert(std::string("Ctrl+") + word);
        if (MainKeys({.Key = name, .Alt = true})) taken.insert(std::string("Alt+") + word);
    }
    return taken;
}

TEST(Keys, NoKeyIsGivenTwice) {
    Plotted w;
    std::set<std::string> seen = KeysOfPreview();
    for (const std::string& key : ShortcutsOfRecords())
        EXPECT_TRUE(seen.insert(key).second) << key << " has two meanings";
}

TEST(Keys, TheTableOfTheManualTellsEachKeyOnceAndNoOther) {
    Plotted w;
    w.Open({w.Spectrum("a.npd")});
    std::set<std::string> work = KeysOfPreview();
    for (const std::string& key : ShortcutsOfRecords()) work.insert(key);
    std::set<std::string> told;
    for (const std::string& key : ToldKeys()) {
        EXPECT_TRUE(told.insert(key).second) << key << " is told twice";
        EXPECT_TRUE(work.contains(key)) << key << " is told and does nothing";
    }
    for (const std::string& key : work)
        EXPECT_TRUE(told.contains(key)) << key << " works and is not told";
    EXPECT_GT(told.size(), 30U);
}

TEST(Keys, OfMenusAreUnderlinedOnceEach) {
    Plotted w;
    std::set<char> letters;
    for (const Control* control : frmVaelAna.Controls()) {
        if (control->Kind != ControlKind::Menu) continue;
        const auto& item = static_cast<const Menu&>(*control);
        if (!item.Parent.empty()) continue;
        const std::size_t at = item.Caption.find('&');
        ASSERT_NE(at, std::string::npos) << item.Caption;
        EXPECT_TRUE(letters.insert(item.Caption[at + 1]).second) << item.Caption;
    }
    EXPECT_EQ(letters.size(), 9U);
}

}  // namespace
}  // namespace vael
