// Icons of our own: line drawings in one stroke width, in the ink of the palette.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace vael {

/// The drawing of that name (":/icons/NAME.svg"), sharp at single, double and triple density, grey
/// where the control is disabled. An empty icon for a name that there is not.
[[nodiscard]] QIcon SymbolIcon(const QString& name, const QPalette& palette);

/// The mark of a command that ended in a fault, in its own colours.
[[nodiscard]] QIcon FaultIcon();

/// The icon of the program, in its own colours.
[[nodiscard]] QIcon ProgramIcon();

}  // namespace vael
