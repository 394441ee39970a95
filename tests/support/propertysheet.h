// The property sheet with two spectra opened, for its tests.
#pragma once

#include "support/plotted.h"

#include <string>

namespace vael {

inline constexpr const char* SAVE_QUESTION = "Property is changed. Do you want to save this file?";

/// Two spectra: a.npd in row 0 and slot 0, b.npd in row 1 and slot 1, which is the current one.
struct PropertySheet : Plotted {
    PropertySheet() {
        Open({Spectrum("a.npd"), Spectrum("b.npd")});
        Record(0).SampleName = "first";
        Record(1).SampleName = "second";
    }
    static PropertyRecord& Record(int slot) {
        return store.PropertyRecords[static_cast<std::size_t>(slot)];
    }
    static void Show(int row) {
        Change_cboGrphSel(0, row);
        EXPECT_TRUE(Click(frmVaelAna.mnuProperty));
        EXPECT_TRUE(frmProperty.Visible);
        EXPECT_EQ(frmProperty.Slot, row);
    }
    static void Default() { EXPECT_TRUE(Click(frmVaelAna.optEGC[0])); }
    static void Put(NumberBox& box, const std::string& text) {
        EXPECT_TRUE(Type(box, text)) << box.Name;
        EXPECT_TRUE(Leave(box)) << box.Name;
    }
};

}  // namespace vael
