// What the user sets in the lattice view: mode, crystal, system, seeds, pick-up range, angle.
#pragma once

#include <cstdint>

namespace vael {

/// The names of the first ten crystals into the list, in the order of the file; names that are
/// blank are left out.
void FillCrystalList();

/// The crystal of the selected line, 0 to 30; -1 for none.
[[nodiscard]] std::int16_t SelectedCrystal();

/// Handlers. Those of option and lists return at once while `Loading` is 1. Those of boxes are run
/// when the box is left; false keeps the focus in it.
void optSelectMode_Click(int index);
void cmbElement_Click();
void cmbLatticeType_Click();
[[nodiscard]] bool txtSeedConstant_Leave(int index);
[[nodiscard]] bool txtPickupRange_Leave();
[[nodiscard]] bool txt2Theta_Leave();

}  // namespace vael
